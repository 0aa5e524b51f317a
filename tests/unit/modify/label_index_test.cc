#include "frontend/modify/label_index.h"

#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

TEST(LabelIndex, NumbersAreDecimal) {
    EXPECT_EQ(indexText(IndexNotation::number, 12), "12");
    EXPECT_EQ(indexText(IndexNotation::number, -3), "-3");
}

TEST(LabelIndex, LettersGoOnWithTwo) {
    EXPECT_EQ(indexText(IndexNotation::smallLetters, 1), "a");
    EXPECT_EQ(indexText(IndexNotation::smallLetters, 26), "z");
    EXPECT_EQ(indexText(IndexNotation::smallLetters, 27), "aa");
    EXPECT_EQ(indexText(IndexNotation::smallLetters, 52), "az");
    EXPECT_EQ(indexText(IndexNotation::smallLetters, 53), "ba");
    EXPECT_EQ(indexText(IndexNotation::smallLetters, 702), "zz");
    EXPECT_EQ(indexText(IndexNotation::capitalLetters, 703), "AAA");
}

TEST(LabelIndex, NumeralsEndAt3999) {
    EXPECT_EQ(indexText(IndexNotation::smallRoman, 4), "iv");
    EXPECT_EQ(indexText(IndexNotation::smallRoman, 1994), "mcmxciv");
    EXPECT_EQ(indexText(IndexNotation::capitalRoman, 3888), "MMMDCCCLXXXVIII");
    EXPECT_EQ(indexText(IndexNotation::capitalRoman, 3999), "MMMCMXCIX");
    EXPECT_EQ(indexText(IndexNotation::capitalRoman, 4000), "4000");
}

TEST(LabelIndex, WhatIsNotAboveZeroIsDecimal) {
    for (const IndexNotation each : {IndexNotation::smallLetters, IndexNotation::capitalLetters,
                                     IndexNotation::smallRoman, IndexNotation::capitalRoman}) {
        EXPECT_EQ(indexText(each, 0), "0");
        EXPECT_EQ(indexText(each, -5), "-5");
    }
}

TEST(LabelIndex, GoesPastTheGreatestNumberOfARequest) {
    EXPECT_EQ(indexText(IndexNotation::number, std::int64_t{INT32_MAX} + 1), "2147483648");
    EXPECT_EQ(indexText(IndexNotation::smallLetters, std::int64_t{INT32_MAX}), "fxshrxw");
}

}  // namespace
}  // namespace vexa::frontend
