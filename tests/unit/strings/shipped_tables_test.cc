// The string tables that are delivered with the program.

#include <gtest/gtest.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "backend/strings/string_table.h"
#include "backend/strings/table_dictionary.h"

namespace vexa {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesIn(const fs::path& folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(folder)) found.push_back(entry.path());
    return found;
}

/// The folders of the languages; files beside them are no tables.
std::vector<fs::path> languages() {
    std::vector<fs::path> found = filesIn(VEXA_STRING_TABLES);
    std::erase_if(found, [](const fs::path& path) { return !fs::is_directory(path); });
    EXPECT_EQ(found.size(), 12U);
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
    const std::vector<fs::path> english = filesIn(tables / "en");
    EXPECT_FALSE(english.empty());
    for (const fs::path& language : languages()) {
        EXPECT_EQ(filesIn(language).size(), english.size()) << language;
        for (const fs::path& table : english) {
            const std::multiset<std::string> keys = keysOf(table);
            EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), keys.size()) << table;
            EXPECT_EQ(keysOf(language / table.filename()), keys) << language;
        }
    }
}

/// The months of a date in a language, as the character-set library's locale data have them.
std::vector<std::string> monthsOf(const std::string& language) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::DateFormatSymbols symbols(icu::Locale(language.c_str()), status);
    std::int32_t count = 0;
    const icu::UnicodeString* const names =
        symbols.getMonths(count, icu::DateFormatSymbols::FORMAT, icu::DateFormatSymbols::WIDE);
    std::vector<std::string> months;
    for (std::int32_t i = 0; i < count; ++i) names[i].toUTF8String(months.emplace_back());
    EXPECT_TRUE(U_SUCCESS(status)) << language;
    return months;
}

TEST(ShippedTables, HaveTheMonthsAsTheyStandInADate) {
    const char* const keys[] = {"TFOJanuary",   "TFOFebruary", "TFOMarch",    "TFOApril",
                                "TFOMay",       "TFOJune",     "TFOJuly",     "TFOAugust",
                                "TFOSeptember", "TFOOctober",  "TFONovember", "TFODecember"};
    for (const fs::path& language : languages()) {
        FacSTDictionary dictionary(language.string());
        dictionary.SetProcedure("Output Modify");
        std::vector<std::string> months;
        for (const char* key : keys) months.push_back(dictionary.LookUp(key));
        EXPECT_EQ(months, monthsOf(language.filename().string())) << language;
    }
}

}  // namespace
}  // namespace vexa
