#include "backend/text/text_encoding.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "backend/text/look_alikes.h"

namespace vexa {
namespace {

std::string wideText(std::size_t unit, bool bigEndian, bool withMark, std::string_view text) {
    std::string bytes;
    const auto add = [&](unsigned code) {
        for (std::size_t i = 0; i < unit; ++i) {
            const std::size_t place = bigEndian ? unit - 1 - i : i;
            bytes += static_cast<char>(place < 2 ? code >> (8 * place) & 255U : 0);
        }
    };
    if (withMark) add(0xFEFF);
    for (const char c : text) add(static_cast<unsigned char>(c));
    return bytes;
}

TEST(WideEncoding, IsFoundInBothOrdersWithAMarkAndWithout) {
    for (const bool bigEndian : {false, true}) {
        for (const bool withMark : {false, true}) {
            for (const std::size_t unit : {std::size_t{2}, std::size_t{4}}) {
                const std::string bytes = wideText(unit, bigEndian, withMark, "OUTPUT NEW.\n* \xE9.\n");
                const std::optional<WideEncoding> found = findWideEncoding(bytes);
                ASSERT_TRUE(found) << unit << bigEndian << withMark;
                EXPECT_EQ(found->name,
                          std::string(unit == 2 ? "UTF-16" : "UTF-32") + (bigEndian ? "BE" : "LE"));
                EXPECT_EQ(found->mark.empty(), !withMark);
                EXPECT_EQ(found->offset, withMark || bigEndian ? 0U : 1U);
            }
        }
    }
}

TEST(WideEncoding, IsNotFoundInOtherTexts) {
    EXPECT_FALSE(findWideEncoding(""));
    EXPECT_FALSE(findWideEncoding("OUTPUT NEW."));
    EXPECT_FALSE(findWideEncoding("\xEF\xBB\xBFOUTPUT NEW."));
    EXPECT_FALSE(findWideEncoding(std::string("ECHO 'a") + '\0' + "b'. ECHO 'c'."));
    EXPECT_FALSE(findWideEncoding("\xE6\xBC\xA2"));
}

TEST(FirstUnreadable, IsWhereABrokenCharacterBegins) {
    const auto utf8 = CharacterSet::find("UTF-8");
    EXPECT_EQ(firstUnreadable("a\nb\xC3\xA9 \xE9", *utf8), 6U);
    EXPECT_EQ(firstUnreadable("\xC3\xA9", *utf8), std::string_view::npos);
    const auto japanese = CharacterSet::find("Shift_JIS");
    ASSERT_NE(japanese, nullptr);
    EXPECT_EQ(firstUnreadable("\x8A\xBF\n\x8A\xBF\xFF", *japanese), 5U);
    EXPECT_EQ(firstUnreadable("\x8A\xBF", *japanese), std::string_view::npos);
}

struct GuessCase {
    const char* bytes;
    const char* language;
    const char* name;
};

TEST(LikelyCharacterSet, IsTheOneThatReadsTheText) {
    const GuessCase cases[] = {
        {"caf\xE9", "en", "windows-1252"},
        {"na\x93ve\x94 caf\xE9", "", "windows-1252"},
        {"\x8A\xBF\x8E\x9A\x82\xA9\x82\xC8", "en", "Shift_JIS"},
        {"\x8A\xBF\x8E\x9A", "ja", "Shift_JIS"},
        {"\xCF\xF0\xE8\xE2\xE5\xF2", "ru", "windows-1251"},
        {"\xBA\xBA\xD7\xD6", "zh-CN", "GB18030"},
        {"\xBA\x7E\xA6\x72", "zh-TW", "Big5"},
        {"\xC7\xD1\xB1\xDB", "ko", "EUC-KR"},
        {"Za\xBF\xF3\xB3\xE6", "pl", "windows-1250"},
    };
    for (const GuessCase& each : cases) {
        EXPECT_EQ(likelyCharacterSet(each.bytes, each.language), each.name) << each.language;
    }
}

TEST(SurelyUtf8, NeedsMoreThanChance) {
    const auto japanese = CharacterSet::find("Shift_JIS");
    const auto western = CharacterSet::find("windows-1252");
    ASSERT_NE(japanese, nullptr);
    ASSERT_NE(western, nullptr);
    EXPECT_TRUE(
        isSurelyUtf8("\xEF\xBB\xBF"
                     "a",
                     *japanese));
    EXPECT_TRUE(isSurelyUtf8("\xE6\xBC\xA2\xE5\xAD\x97", *japanese));
    EXPECT_FALSE(isSurelyUtf8("\xC3\xA9 \xC3\xA9", *japanese));
    EXPECT_TRUE(isSurelyUtf8("\xC3\xA9 \xC3\xA9", *western));
    EXPECT_FALSE(isSurelyUtf8("\xC3\xA9", *western));
    EXPECT_FALSE(isSurelyUtf8("\xE6\xBC\xA2\xE5\xAD\x97\xE9", *western));
    EXPECT_FALSE(isSurelyUtf8("abc", *western));
}

TEST(MostlyReadable, TellsADamagedPlaceFromAnotherCharacterSet) {
    const auto utf8 = CharacterSet::find("UTF-8");
    EXPECT_TRUE(isMostlyReadable("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9 \xC3 ", *utf8));
    EXPECT_FALSE(isMostlyReadable("caf\xE9 na\xEFve \xC3\xA9", *utf8));
}

TEST(LookAlikes, AreFoundByTheirCode) {
    ASSERT_NE(findLookAlike(0xA0), nullptr);
    EXPECT_EQ(findLookAlike(0xA0)->name, "NO-BREAK SPACE");
    ASSERT_NE(findLookAlike(0x201E), nullptr);
    EXPECT_EQ(findLookAlike(0x201E)->plain, "\"");
    ASSERT_NE(findLookAlike(0xFF3D), nullptr);
    EXPECT_EQ(findLookAlike(0xFF3D)->plain, "]");
    ASSERT_NE(findLookAlike(0xFEFF), nullptr);
    EXPECT_EQ(findLookAlike(0xFEFF)->plain, "");
    for (const char32_t code : {U' ', U'"', U'e', U'\u00E9', U'\u6F22', U'\uFF21', char32_t{0x10FFFF}}) {
        EXPECT_EQ(findLookAlike(code), nullptr);
    }
}

TEST(HexadecimalByte, HasTwoCapitalDigits) {
    EXPECT_EQ(hexadecimalByte('\xE9'), "E9");
    EXPECT_EQ(hexadecimalByte('\n'), "0A");
}

}  // namespace
}  // namespace vexa
