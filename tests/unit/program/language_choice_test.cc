#include "apps/vexa/language_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vexa::program {
namespace {

using testing::ElementsAreArray;

TEST(LanguageChoice, FindsTheFoldersThatACodeCanMean) {
    const struct {
        const char* code;
        std::vector<std::string> folders;
    } cases[] = {
        {"de", {"de"}},
        {"de_AT", {"de_AT", "de"}},
        {"DE", {"DE", "de"}},
        {"pt", {"pt", "pt_BR"}},
        {"pt-br", {"pt-br", "pt_BR", "pt"}},
        {"pt_PT", {"pt_PT", "pt", "pt_BR"}},
        {"zh", {"zh", "zh_CN"}},
        {"zh_TW", {"zh_TW", "zh", "zh_CN"}},
        {"zh_HK", {"zh_HK", "zh_TW", "zh", "zh_CN"}},
        {"zh-Hant", {"zh-Hant", "zh_HANT", "zh_TW", "zh", "zh_CN"}},
        {"zh-Hant-TW", {"zh-Hant-TW", "zh_HANT_TW", "zh_TW", "zh", "zh_CN"}},
        {"zh_Hans_SG", {"zh_Hans_SG", "zh_HANS_SG", "zh_CN", "zh"}},
        {"es_419", {"es_419", "es"}},
    };
    for (const auto& one : cases) {
        EXPECT_THAT(languageFolders(one.code), ElementsAreArray(one.folders)) << one.code;
    }
}

TEST(LanguageChoice, TakesTheLanguageOutOfALocale) {
    EXPECT_EQ(languageOfLocale("de_DE.UTF-8@euro"), "de_DE");
    EXPECT_EQ(languageOfLocale("de@euro"), "de");
    EXPECT_EQ(languageOfLocale("zh-TW"), "zh-TW");
    EXPECT_EQ(languageOfLocale("en_/.."), "en_/..");
    EXPECT_EQ(languageOfLocale(""), "");
}

TEST(LanguageChoice, KnowsTheFormOfACode) {
    for (const char* code : {"en", "fil", "pt_BR", "pt-BR", "es_419", "zh-Hant", "zh-Hant-TW"}) {
        EXPECT_TRUE(isLanguageCode(code)) << code;
    }
    for (const char* code : {"", "e", "engl", "en_", "en_U", "en_/..", "../en", "en/", "12", "en_US_x",
                             "en__US", "a_b_c", "en_US_", "zh_Hant_TW_x1"}) {
        EXPECT_FALSE(isLanguageCode(code)) << code;
    }
}

}  // namespace
}  // namespace vexa::program
