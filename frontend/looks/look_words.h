// The words of table looks, one table for reading, writing and saying what would fit.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "backend/tables/model/table_look.h"

namespace vexa::frontend {

/// Words for the enumerators of a type, in their order.
template <std::size_t count>
using LookWords = std::array<std::string_view, count>;

inline constexpr LookWords<tables::areaCount> kAreaWords{"title",        "caption", "corner",    "rowLabels",
                                                         "columnLabels", "data",    "footnotes", "layers"};
inline constexpr LookWords<tables::borderCount> kBorderWords{
    "top",           "bottom",    "left",         "right",    "belowHeader", "besideLabels", "headerRows",
    "headerColumns", "labelRows", "labelColumns", "dataRows", "dataColumns", "groupRows",    "groupColumns"};
inline constexpr LookWords<7> kLineWords{"none", "thin", "medium", "thick", "double", "dashed", "dotted"};
inline constexpr LookWords<4> kHorizontalWords{"mixed", "left", "center", "right"};
inline constexpr LookWords<3> kVerticalWords{"top", "center", "bottom"};
inline constexpr LookWords<4> kElementWords{"area", "border", "rowBanding", "widths"};
inline constexpr LookWords<2> kFlagWords{"false", "true"};

/// The index of a word, or nothing.
template <std::size_t count>
[[nodiscard]] std::optional<std::size_t> findWord(const LookWords<count>& words, std::string_view word) {
    for (std::size_t i = 0; i < count; ++i) {
        if (words[i] == word) return i;
    }
    return std::nullopt;
}

/// "a, b, c"
template <std::size_t count>
[[nodiscard]] std::string joinWords(const LookWords<count>& words) {
    std::string joined;
    for (const std::string_view word : words) {
        if (!joined.empty()) joined += ", ";
        joined += word;
    }
    return joined;
}

/// `#rrggbb` and back; reading takes capitals too.
[[nodiscard]] std::string colorText(tables::Color color);
[[nodiscard]] std::optional<tables::Color> parseColor(std::string_view text);

}  // namespace vexa::frontend
