// What the bytes of a text file tell of its encoding.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "backend/text/character_set.h"

namespace vexa {

/// A text whose characters are two or four bytes each.
struct WideEncoding {
    std::string_view name;    ///< "UTF-16LE", "UTF-32BE", ...
    std::size_t offset = 0;   ///< of its byte order mark, or else of its first zero byte
    std::string_view mark{};  ///< the byte order mark in hexadecimal digits; empty where it has none
};

/// The encoding of a text in UTF-16 or UTF-32, with a byte order mark or without; nothing for any other.
[[nodiscard]] std::optional<WideEncoding> findWideEncoding(std::string_view bytes);

/// The offset of the first byte that belongs to no character of `set`; npos where all do.
[[nodiscard]] std::size_t firstUnreadable(std::string_view bytes, const CharacterSet& set);

/// True when by far the most characters beyond ASCII are readable in `set`, so that one that is not was
/// damaged.
[[nodiscard]] bool isMostlyReadable(std::string_view bytes, const CharacterSet& set);

/// True for valid UTF-8 that could hardly be a text in `set`: with a byte order mark, or with enough
/// characters of several bytes.
[[nodiscard]] bool isSurelyUtf8(std::string_view bytes, const CharacterSet& set);

/// The name of the character set that `bytes`, which are not UTF-8, probably have. `language` ("ja", "zh-TW";
/// may be empty) is that of whoever wrote them; its sets are tried first.
[[nodiscard]] std::string likelyCharacterSet(std::string_view bytes, std::string_view language);

/// The byte in two capital hexadecimal digits.
[[nodiscard]] std::string hexadecimalByte(char byte);

}  // namespace vexa
