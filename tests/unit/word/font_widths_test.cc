// Widths of texts in print.
#include "frontend/export/font_widths.h"

#include <gtest/gtest.h>

#include <string>

namespace vexa::frontend {
namespace {

TEST(FontWidths, KnowsTheLettersOfEachKind) {
    EXPECT_DOUBLE_EQ(FontWidths("sans-serif", 10, false).width("Ai"), 6.67 + 2.22);
    EXPECT_DOUBLE_EQ(FontWidths("sans-serif", 10, true).width("Ai"), 7.22 + 2.78);
    EXPECT_DOUBLE_EQ(FontWidths("serif", 10, false).width("Ai"), 7.22 + 2.78);
    EXPECT_DOUBLE_EQ(FontWidths("Times New Roman", 10, true).width("Ai"), 7.22 + 2.78);
    EXPECT_DOUBLE_EQ(FontWidths("Courier New", 10, true).width("Ai"), 12);
    EXPECT_DOUBLE_EQ(FontWidths("Unheard of", 10, false).width("Ai"), 6.67 + 2.22);
    EXPECT_GT(FontWidths("Verdana", 10, false).width("Ai"), FontWidths("Arial", 10, false).width("Ai"));
}

TEST(FontWidths, KnowsLettersBeyondThoseOfEnglish) {
    const FontWidths font("sans-serif", 10, false);
    EXPECT_DOUBLE_EQ(font.width("\u00e4\u0142"), font.width("al"));
    EXPECT_DOUBLE_EQ(font.width("e\u0301"), font.width("e"));
    EXPECT_DOUBLE_EQ(font.width("\u8868\u683c"), 20);
    EXPECT_GT(font.width("\u0416"), font.width("\u0436"));
    EXPECT_DOUBLE_EQ(font.width("\x01\xFF"), 6.2);
}

TEST(FontWidths, SeesLinesAndWords) {
    const FontWidths font("monospace", 10, false);
    const TextExtent extent = font.extent("one two\r\nthree-four\nx");
    EXPECT_EQ(extent.lines, 3U);
    EXPECT_DOUBLE_EQ(extent.width, 60);
    EXPECT_DOUBLE_EQ(extent.word, 36);  // "three-"
    EXPECT_DOUBLE_EQ(font.extent("\u8868\u683c").word, 10);
    EXPECT_EQ(font.extent("").lines, 1U);
}

TEST(FontWidths, CountsLinesOfAColumn) {
    const FontWidths font("monospace", 10, false);
    EXPECT_EQ(font.linesIn("one two three", 200), 1U);
    EXPECT_EQ(font.linesIn("one two three", 42), 2U);
    EXPECT_EQ(font.linesIn("one two three", 30), 3U);
    EXPECT_EQ(font.linesIn("one\ntwo", 200), 2U);
    EXPECT_EQ(font.linesIn("abcdefghij", 30), 2U);
    EXPECT_EQ(font.linesIn("", 30), 1U);
    EXPECT_GT(font.linesIn(std::string(1000, 'x'), 0), 100U);
}

TEST(FontWidths, NamesTheKindOfAFamily) {
    EXPECT_EQ(genericFamily("GEORGIA"), "serif");
    EXPECT_EQ(genericFamily("Consolas"), "monospace");
    EXPECT_EQ(genericFamily(""), "sans-serif");
}

}  // namespace
}  // namespace vexa::frontend
