// Small tables on slides: a slide is read from far away, so a table with room to spare becomes larger.
#pragma once

#include <optional>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/office/table_parts.h"
#include "frontend/export/slides/slide_design.h"

namespace vexa::frontend {

/// Letters of cells become no larger than those of a slide's text.
inline constexpr double mostCellSize = slideTextSize;

/// How many times larger the grid's only part may become in `room`, of which texts over and under the table
/// take `around`; both in points. Nothing where it shall stay as it is: since there is no room for it to grow
/// visibly, since it does not fit as it is, or since the document itself sets sizes of letters in cells or
/// widths of columns, which are kept.
[[nodiscard]] std::optional<double> enlargementOf(const tables::TableGrid& grid, const TableFit& fit,
                                                  const SlideBox& room, double around);

/// The grid with letters, margins and limits of columns so many times as large. Lines stay, and sizes
/// that the document sets for texts around the cells.
[[nodiscard]] tables::TableGrid enlarged(const tables::TableGrid& grid, double factor);

/// A smaller factor to try where texts took more lines than was foreseen; nothing when it is not worth it.
[[nodiscard]] std::optional<double> nextEnlargement(double factor);

}  // namespace vexa::frontend
