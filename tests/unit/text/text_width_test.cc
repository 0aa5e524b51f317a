#include "backend/text/text_width.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

using std::string;

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
