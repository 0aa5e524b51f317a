// What one token tells.

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "backend/tokens/token_sequence.h"

namespace vexa {
namespace {

TokenInfoObj number(std::string_view text) { return {TokenKind::number, 0, text, 0, text.size()}; }

TEST(Token, ReadsIntegers) {
    EXPECT_EQ(number("12").getIntegerValue(), 12);
    EXPECT_EQ(number("+12").getIntegerValue(), 12);
    EXPECT_EQ(number("-2147483648").getIntegerValue(), -2147483647 - 1);
    EXPECT_EQ(number("2147483648").getIntegerValue(), std::nullopt);
    EXPECT_EQ(number("2.0").getIntegerValue(), std::nullopt);
    EXPECT_EQ(number("1e3").getIntegerValue(), std::nullopt);
    EXPECT_EQ(TokenInfoObj(TokenKind::literal, 0, "12", 0, 4).getIntegerValue(), std::nullopt);
    EXPECT_TRUE(number("7").isInteger());
    EXPECT_FALSE(number("7.5").isInteger());
}

TEST(Token, ReadsNumbers) {
    EXPECT_EQ(number("2.5").getDoubleValue(), 2.5);
    EXPECT_EQ(number(".5").getDoubleValue(), 0.5);
    EXPECT_EQ(number("5.").getDoubleValue(), 5.0);
    EXPECT_EQ(number("+1e3").getDoubleValue(), 1000.0);
    EXPECT_EQ(number("-.5").getDoubleValue(), -0.5);
    EXPECT_EQ(number("1e999").getDoubleValue(), std::nullopt);
    EXPECT_EQ(TokenInfoObj(TokenKind::word, 0, "inf", 0, 3).getDoubleValue(), std::nullopt);
}

TEST(Token, SpellsWordsWithoutRegardToCase) {
    const TokenInfoObj word(TokenKind::word, 0, "Größe", 0, 7);
    EXPECT_TRUE(word.spells("GRÖßE"));
    EXPECT_FALSE(word.spells("Größ"));
    EXPECT_EQ(word.getUpperString().substr(0, 4), "GRÖ");
    EXPECT_TRUE(TokenInfoObj(TokenKind::operatorToken, TokenSequenceBase::all, "all", 0, 3).spells("ALL"));
    EXPECT_FALSE(TokenInfoObj(TokenKind::literal, 0, "YES", 0, 5).spells("YES"));
    EXPECT_FALSE(TokenInfoObj(TokenKind::operatorToken, TokenSequenceBase::asterisk, "*", 0, 1).spells("*"));
}

TEST(Token, AllIsAnOperatorThatReadsAsAWord) {
    const TokenInfoObj all(TokenKind::operatorToken, TokenSequenceBase::all, "All", 0, 3);
    EXPECT_TRUE(all.isOperator());
    EXPECT_FALSE(all.isWord());
    EXPECT_TRUE(all.isWordLike());
    EXPECT_EQ(all.getUpperString(), "ALL");
    EXPECT_EQ(all.getOperatorCode(), 35);
    EXPECT_FALSE(TokenInfoObj(TokenKind::operatorToken, TokenSequenceBase::plus, "+", 0, 1).isWordLike());
}

}  // namespace
}  // namespace vexa
