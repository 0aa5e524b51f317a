// How wide text stands in a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vexa {

/// Columns that UTF-8 text takes in a terminal: wide characters two, combining and other zero-width
/// characters none, control characters one (they are shown as a replacement). Sequences that some terminals
/// join into one sign (emoji with a joiner, a skin colour or a variation selector) are counted by their
/// parts.
[[nodiscard]] std::size_t displayWidth(std::string_view text);
/// Columns of one character.
[[nodiscard]] std::size_t characterWidth(char32_t code);

/// UTF-8 text in lines of at most `width` columns (at least 1): broken at line ends of the text, then at
/// blanks, beside ideographs, kana and other wide characters but Hangul, and inside a word only where the
/// word alone is wider. Where it can be helped no line begins with closing punctuation, a small kana or a
/// mark of prolonging, none ends with opening punctuation, and a marker (`^1`) stays whole. A wide character
/// alone may exceed a width of 1. Never empty. Takes time in proportion to the text.
[[nodiscard]] std::vector<std::string> wrapText(std::string_view text, std::size_t width);

/// UTF-8 text that may be shown: control characters (line ends and tabs among them), marks that turn the
/// direction of writing and broken bytes replaced by visible ones, so that a text cannot steer the terminal.
[[nodiscard]] std::string printableText(std::string_view text);
/// Whether that is the text itself.
[[nodiscard]] bool isPrintableText(std::string_view text);

}  // namespace vexa
