// What the system knows of single characters.
#pragma once

namespace vexa {

/// The character that stands for `code` in comparisons without regard to case: one for one, in no language's
/// own way.
[[nodiscard]] char32_t foldedLetter(char32_t code);
/// The capital of `code` where that is one character, else `code` itself.
[[nodiscard]] char32_t capitalLetter(char32_t code);

/// Columns that the character takes in a terminal: 0, 1 or 2. Control characters take 1.
[[nodiscard]] int letterWidth(char32_t code);

}  // namespace vexa
