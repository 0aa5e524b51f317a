// The grid of a table as a drawing for the terminal.
#pragma once

#include "apps/rendering/drawing.h"
#include "backend/tables/layout/table_grid.h"

namespace vexa::rendering {

/// Points of a table's column widths that count as one column of the terminal.
constexpr int pointsPerColumn = 6;

/// Column labels stand above their columns, in the lowest of their rows, and row labels in the first of
/// theirs. Numbers stand at the right, and with and without notes below each other; over them the label does,
/// too. A line is drawn where the outermost of several row dimensions begins anew. The widths are set;
/// `terminal` is that of the terminal, 0 for no limit.
[[nodiscard]] Drawing drawingOf(const tables::TableGrid& grid, std::size_t terminal);

}  // namespace vexa::rendering
