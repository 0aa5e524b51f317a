// A table as a command asked for it, made into one that is shown, kept and changed.
#pragma once

#include <optional>
#include <string_view>

#include "backend/pivot/pivot_table.h"
#include "backend/tables/model/table.h"

namespace vexa {

/// Dimensions stand on their axis by their index, those of one index in the order in which they were added;
/// notes become footnotes; bold, colours and backgrounds the styles of cells. Counts are numbers of the
/// format F8.0. A table of more places than a table may have becomes an empty one with the same title.
[[nodiscard]] tables::Table shownTable(const PivotTable& built);

/// The colour that a command gave: one of the names that OUTPUT COMMENT takes, in capitals with or without
/// underlines or as it spells them, or # and six hexadecimal digits. Nothing for everything else.
[[nodiscard]] std::optional<tables::Color> colorOf(std::string_view given);

}  // namespace vexa
