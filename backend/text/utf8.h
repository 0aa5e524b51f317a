// UTF-8, byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vexa {

/// What stands for a byte that belongs to no character.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

/// One character read from UTF-8.
struct Utf8Character {
    char32_t code = 0;         ///< U+FFFD when `valid` is false
    std::uint32_t length = 0;  ///< in bytes; 1 for a byte that belongs to no character
    bool valid = true;
};

/// The character at the beginning of `text`, which must not be empty. Overlong forms, surrogates and values
/// above U+10FFFF are no characters.
[[nodiscard]] Utf8Character decodeUtf8(std::string_view text);
/// Appends a character. A value that is no character is written as U+FFFD.
void appendUtf8(std::string& text, char32_t code);
/// Bytes at the beginning of `text` that are all below 128.
[[nodiscard]] std::size_t asciiPrefix(std::string_view text);
/// `text` with every byte that belongs to no character replaced by U+FFFD.
[[nodiscard]] std::string validUtf8(std::string_view text);

}  // namespace vexa
