#include "backend/platform/text_width.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vexa {
namespace {

using std::string;
using ::testing::ElementsAre;

TEST(DisplayWidth, CountsColumns) {
    const struct {
        string text;
        std::size_t width;
    } cases[] = {
        {"", 0},
        {"abc", 3},
        {"M\u00fcller", 6},
        {"\u6f22\u5b57", 4},
        {"\uff21", 2},              // full-width A
        {"\uff71", 1},              // half-width katakana
        {"\uac00", 2},              // Hangul syllable
        {"\u1112\u1161\u11ab", 2},  // the same from its letters
        {"e\u0301", 1},             // combining accent
        {"a\u20dd", 1},             // enclosing circle
        {"a\u200bb", 2},            // zero-width space
        {"a\u00adb", 3},            // soft hyphen, shown
        {"\U0001F600", 2},
        {"\U0001F1E9\U0001F1EA", 2},  // a flag
        {"\u00a7\u03b1", 2},          // ambiguous characters are narrow
        {"a\tb", 3},
        {"\x1b[0m", 4},
        {"\x7f", 1},
        {"\xff", 1},
        {"\u202e", 1},  // shown as a replacement
    };
    for (const auto& one : cases) EXPECT_EQ(displayWidth(one.text), one.width) << one.text;
}

TEST(WrapText, BreaksAtLineEndsThenAtBlanksThenInsideWords) {
    EXPECT_THAT(wrapText("", 10), ElementsAre(""));
    EXPECT_THAT(wrapText("one two", 10), ElementsAre("one two"));
    EXPECT_THAT(wrapText("one two three", 7), ElementsAre("one two", "three"));
    EXPECT_THAT(wrapText("one two three", 8), ElementsAre("one two", "three"));
    EXPECT_THAT(wrapText("one  two", 5), ElementsAre("one", "two"));
    EXPECT_THAT(wrapText("  one two", 6), ElementsAre("  one", "two"));
    EXPECT_THAT(wrapText("one two  ", 7), ElementsAre("one two"));
    EXPECT_THAT(wrapText("abcdefgh", 3), ElementsAre("abc", "def", "gh"));
    EXPECT_THAT(wrapText("a bcdefg hi", 4), ElementsAre("a", "bcde", "fg", "hi"));
    EXPECT_THAT(wrapText("a\nb\r\nc\rd", 10), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(wrapText("a\n\nb\n", 10), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(wrapText("ab", 0), ElementsAre("a", "b"));
    EXPECT_THAT(wrapText("     ", 3), ElementsAre(""));
}

TEST(WrapText, MeasuresWideAndCombiningCharacters) {
    EXPECT_THAT(wrapText("\u6f22\u5b57\u8a9e", 4), ElementsAre("\u6f22\u5b57", "\u8a9e"));
    EXPECT_THAT(wrapText("\u6f22\u5b57", 3), ElementsAre("\u6f22", "\u5b57"));
    EXPECT_THAT(wrapText("\u6f22\u5b57", 1), ElementsAre("\u6f22", "\u5b57"));
    EXPECT_THAT(wrapText("e\u0301e\u0301", 1), ElementsAre("e\u0301", "e\u0301"));
    EXPECT_THAT(wrapText("x \u6f22\u5b57", 4), ElementsAre("x", "\u6f22\u5b57"));
}

TEST(WrapText, NoLineIsWiderThanAsked) {
    const string text = "Lorem \u6f22\u5b57 ipsum  dolore\u0301 \U0001F600\U0001F600 sit-amet-consectetur x";
    for (std::size_t width = 2; width < 40; ++width) {
        for (const string& line : wrapText(text, width)) EXPECT_LE(displayWidth(line), width) << line;
    }
}

TEST(PrintableText, ShowsWhatWouldSteerTheTerminal) {
    const struct {
        string text, shown;
    } cases[] = {
        {"", ""},
        {"plain \u00e4\u6f22", "plain \u00e4\u6f22"},
        {"a\nb\tc\r", "a\u240ab\u2409c\u240d"},
        {"\x1b[2J", "\u241b[2J"},
        {string("\0", 1), "\u2400"},
        {"\x7f", "\u2421"},
        {"\u009b2J", "\uFFFD2J"},  // the one-byte form of ESC [
        {"\x9b", "\uFFFD"},
        {"a\u202eb", "a\uFFFDb"},
        {"a\u2028b", "a\uFFFDb"},
        {"e\u0301", "e\u0301"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(printableText(one.text), one.shown) << one.text;
        EXPECT_EQ(displayWidth(printableText(one.text)), displayWidth(one.text)) << one.text;
    }
}

}  // namespace
}  // namespace vexa
