// Where a line of text may end, seen from the two characters that stand there.
#pragma once

#include <cstddef>

namespace vexa {

/// What a character does to the places before and behind it.
struct BreakTraits {
    bool loose = false;       ///< lines end beside it without a blank, as beside ideographs and syllables
    bool bindsLeft = false;   ///< stands on the line of what is before it, as closing punctuation
    bool bindsRight = false;  ///< stands on the line of what is behind it, as opening punctuation
};

/// The traits of a character that takes `columns` in a terminal. Blanks have none: they are dropped where a
/// line ends. Hangul is not loose: Korean puts blanks between its words.
[[nodiscard]] BreakTraits breakTraitsOf(char32_t code, std::size_t columns);

/// Whether a line may end between two neighbours.
[[nodiscard]] constexpr bool mayBreakBetween(const BreakTraits& before, const BreakTraits& behind) {
    return (before.loose || behind.loose) && !before.bindsRight && !behind.bindsLeft;
}

}  // namespace vexa
