#include "module/stbprint/table_files.h"

#include <gtest/gtest.h>
#include "tests/unit/text/installed_character_set.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

#include "backend/strings/string_table.h"

namespace vexa {
namespace {

bool isKnown(std::string_view file) {
    return std::find(kStringTableFiles.begin(), kStringTableFiles.end(), file) != kStringTableFiles.end();
}

TEST(TableFiles, AreNinetyFourDifferentNamesOfTables) {
    EXPECT_EQ(std::set<std::string_view>(kStringTableFiles.begin(), kStringTableFiles.end()).size(), 94U);
    for (const std::string_view file : kStringTableFiles) {
        EXPECT_TRUE(file.ends_with(".xlf")) << file;
        EXPECT_EQ(file.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789"), file.size() - 4) << file;
    }
}

TEST(TableFiles, HaveEveryTableThatThereIs) {
    int tables = 0;
    for (const auto& language : std::filesystem::directory_iterator(VEXA_STRING_TABLES)) {
        if (!language.is_directory()) {
            continue;  // beside the languages stand files that belong to all of them
        }
        EXPECT_NE(std::find(kLanguages.begin(), kLanguages.end(), language.path().filename().string()),
                  kLanguages.end())
            << language.path();
        for (const auto& table : std::filesystem::directory_iterator(language)) {
            EXPECT_TRUE(isKnown(table.path().filename().string())) << table.path();
            ++tables;
        }
    }
    EXPECT_GE(tables, 12);
}

TEST(TableFiles, HaveTheTablesOfTheCommands) {
    for (const char* procedure :
         {"Output Activate", "Output Close", "Output Comment", "Output Display", "Output Export",
          "Output Modify", "Output Name", "Output New", "Output Open", "Output Save", "Stb Print"}) {
        EXPECT_TRUE(isKnown(stringTableFile(procedure))) << procedure;
    }
}

TEST(BaseFolder, IsCutAtTheLastSeparatorAndThenAtTheLastBackslash) {
    const struct {
        const char *path, *base;
    } cases[] = {
        {"c:\\product\\lang\\en\\", "c:\\product\\lang"},
        {"c:\\product\\lang\\en/", "c:\\product\\lang"},
        {"c:\\product\\lang/en\\", "c:\\product"},      // the second cut knows no slash
        {"c:/product/lang/en/", "c:/product/lang/en"},  // and is left out here
        {"c:\\product\\lang\\en", "c:\\product"},
        {"\\en\\", ""},
        {"en\\", "en"},
        {"en", "en"},
        {"", ""},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(baseFolder(one.path), one.base) << one.path;
    }
}

TEST(BaseFolder, IsNotCutWithinACharacter) {
    const InstalledCharacterSet installed("Shift_JIS");
    EXPECT_EQ(baseFolder("c:\\lang\\\x95\\\\"),
              "c:\\lang");  // the last letter ends in the byte of a backslash
}

}  // namespace
}  // namespace vexa
