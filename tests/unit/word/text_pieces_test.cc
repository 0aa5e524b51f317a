// Long texts in pieces.
#include "frontend/export/word/text_pieces.h"

#include <gtest/gtest.h>

#include <string>

namespace vexa::frontend {
namespace {

TEST(TextPieces, TakesLongTextsOnly) {
    TextPieces pieces(4);
    std::string text = "abc";
    pieces.take(text);
    EXPECT_EQ(text, "abc");
    text += "de";
    pieces.take(text);
    EXPECT_EQ(text, "");
    text = "fghij";
    pieces.take(text);
    EXPECT_EQ(pieces.join("k"), "abcdefghijk");
    EXPECT_EQ(pieces.join("l"), "l");
}

TEST(TextPieces, GivesPiecesInTheirOrder) {
    TextPieces pieces(1);
    std::string whole;
    for (std::string text : {"one ", "two ", "three "}) pieces.take(text);
    pieces.release([&whole](const std::string& piece) { whole += piece; });
    EXPECT_EQ(whole, "one two three ");
    pieces.release([&whole](const std::string& piece) { whole += piece; });
    EXPECT_EQ(whole, "one two three ");
}

}  // namespace
}  // namespace vexa::frontend
