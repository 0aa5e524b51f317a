// The string tables that are delivered with the program.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "backend/strings/string_table.h"
#include "backend/strings/table_dictionary.h"

namespace vexa {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(folder)) found.push_back(entry.path());
    return found;
}

std::multiset<std::string> keysOf(const fs::path& table) {
    std::vector<keyValueGloss> entries;
    const FileResult result = FacSTStringTable().GetKeysAndValues(table.string(), entries);
    EXPECT_TRUE(result) << table << ": " << result.reason;
    std::multiset<std::string> keys;
    for (const keyValueGloss& entry : entries) {
        EXPECT_NE(entry.value, "") << table << ": " << entry.key;
        keys.insert(entry.key);
    }
    return keys;
}

TEST(ShippedTables, EveryLanguageHasTheKeysOfEnglishOnce) {
    const fs::path tables = VEXA_STRING_TABLES;
    const std::vector<fs::path> english = entriesOf(tables / "en");
    EXPECT_FALSE(english.empty());
    for (const fs::path& language : entriesOf(tables)) {
        EXPECT_EQ(entriesOf(language).size(), english.size()) << language;
        for (const fs::path& table : english) {
            const std::multiset<std::string> keys = keysOf(table);
            EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), keys.size()) << table;
            EXPECT_EQ(keysOf(language / table.filename()), keys) << language;
        }
    }
}

TEST(ShippedTables, HaveTheTwelveMonths) {
    const struct {
        const char *key, *english, *german;
    } months[] = {
        {"TFOJanuary", "January", "Januar"},
        {"TFOFebruary", "February", "Februar"},
        {"TFOMarch", "March", "M\u00e4rz"},
        {"TFOApril", "April", "April"},
        {"TFOMay", "May", "Mai"},
        {"TFOJune", "June", "Juni"},
        {"TFOJuly", "July", "Juli"},
        {"TFOAugust", "August", "August"},
        {"TFOSeptember", "September", "September"},
        {"TFOOctober", "October", "Oktober"},
        {"TFONovember", "November", "November"},
        {"TFODecember", "December", "Dezember"},
    };
    const std::string tables = VEXA_STRING_TABLES;
    FacSTDictionary english(tables + "/en/");
    FacSTDictionary german(tables + "/de/");
    english.SetProcedure("Output Modify");
    german.SetProcedure("Output Modify");
    for (const auto& month : months) {
        EXPECT_EQ(english.LookUp(month.key), month.english);
        EXPECT_EQ(german.LookUp(month.key), month.german);
    }
}

}  // namespace
}  // namespace vexa
