// The keyword that a misspelt word was meant to be.

#include "backend/syntax/nearest_keyword.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace vexa {
namespace {

const std::vector<std::string_view> kKeywords = {"NAME", "MINIMIZED", "TYPE", "LOCK", "NO"};

TEST(NearestKeyword, FindsEachKindOfSlip) {
    EXPECT_EQ(nearestKeyword("NAMEE", kKeywords), "NAME");  // one too many
    EXPECT_EQ(nearestKeyword("NME", kKeywords), "NAME");    // one missing
    EXPECT_EQ(nearestKeyword("LOCG", kKeywords), "LOCK");   // one changed
    EXPECT_EQ(nearestKeyword("tpye", kKeywords), "TYPE");   // neighbours swapped, small letters
    EXPECT_EQ(nearestKeyword("MINIMISEDD", kKeywords), "MINIMIZED");
}

TEST(NearestKeyword, LeavesFarWordsAlone) {
    EXPECT_EQ(nearestKeyword("COLOUR", kKeywords), "");
    EXPECT_EQ(nearestKeyword("X", kKeywords), "");
    EXPECT_EQ(nearestKeyword("", kKeywords), "");
    EXPECT_EQ(nearestKeyword(std::string(100'000, 'N'), kKeywords), "");
    EXPECT_EQ(nearestKeyword("NAME", std::vector<std::string_view>{}), "");
}

TEST(ListKeywords, JoinsThem) {
    EXPECT_EQ(listKeywords({}), "");
    EXPECT_EQ(listKeywords(std::vector<std::string_view>{"A"}), "A");
    EXPECT_EQ(listKeywords(std::vector<std::string_view>{"A", "B"}), "A or B");
    EXPECT_EQ(listKeywords(std::vector<std::string_view>{"A", "B", "C"}), "A, B or C");
}

}  // namespace
}  // namespace vexa
