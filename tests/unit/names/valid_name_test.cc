#include "backend/names/valid_name.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/text/installed_character_set.h"

namespace vexa {
namespace {

TEST(ValidName, AcceptsNames) {
    for (const char* name : {"a", "Z", "@", "#x", "$1", "a.b", "a_b", "doc.1", "a..b", "a__1", "\u00e4",
                             "\u6f22\u5b57", "a\u00e4_\u6f22", "ALL"}) {
        EXPECT_EQ(ValidateVexaNameCheckLastChar(name), 0) << name;
    }
    EXPECT_EQ(ValidateVexaNameCheckLastChar(std::string(65, 'a').c_str()), 0);
}

TEST(ValidName, RefusesEverythingElse) {
    for (const char* name : {"", "1a", "_a", ".a", "a.", "a_", "a b", " a", "a ", "a-b", "a*", "*", "a/b",
                             "a\\b", "a'b", "a\n", "[", "\u00e4.", "\u00e4_"}) {
        EXPECT_NE(ValidateVexaNameCheckLastChar(name), 0) << name;
    }
    EXPECT_NE(ValidateVexaNameCheckLastChar(nullptr), 0);
}

TEST(ValidName, TakesATrailByteAsPartOfItsCharacter) {
    const InstalledCharacterSet installed("Shift_JIS");
    EXPECT_EQ(ValidateVexaNameCheckLastChar("\x83\x5C"), 0);  // a trail byte like a backslash
    EXPECT_EQ(ValidateVexaNameCheckLastChar("\x83\x5F"), 0);  // a trail byte like an underscore, at the end
    EXPECT_NE(ValidateVexaNameCheckLastChar("\x83\x5C\\"), 0);
    EXPECT_NE(ValidateVexaNameCheckLastChar("\x83\x5C_"), 0);
}

}  // namespace
}  // namespace vexa
