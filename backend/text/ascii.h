// Single characters and blanks of ASCII, whatever character set or locale is in use.
#pragma once

#include <cstddef>
#include <string_view>

namespace vexa {

[[nodiscard]] constexpr bool isAsciiDigit(char character) { return character >= '0' && character <= '9'; }

[[nodiscard]] constexpr bool isAsciiLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

/// The small letter of a capital one; every other character stays.
[[nodiscard]] constexpr char asciiLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Without the blanks and tabulators around it.
[[nodiscard]] constexpr std::string_view withoutBlanksAround(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace vexa
