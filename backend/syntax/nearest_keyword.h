// Finds the keyword that a misspelt word was meant to be, and lists keywords in messages.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vexa {

/// The candidate that is fewest edits (insert, delete, change, swap of neighbours) away from `word`, without
/// regard to case; empty when none is near enough: at most a third of the word's length, and 1 for short
/// words.
[[nodiscard]] std::string_view nearestKeyword(std::string_view word,
                                              std::span<const std::string_view> candidates);

/// "A", "A or B", "A, B or C".
[[nodiscard]] std::string listKeywords(std::span<const std::string_view> keywords);

}  // namespace vexa
