// How wide the columns of a table want to be in print, by what stands in them.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/font_widths.h"

namespace vexa::frontend {

/// Points.
struct ColumnNeed {
    double natural = 0;  ///< no line is broken but the long ones of column labels
    double least = 0;    ///< lines are broken at blanks; numbers are not
};

/// What a cell's text takes, its marks of footnotes beside it; points, without the cell's margins.
struct CellExtent {
    float width = 0;
    float word = 0;
    std::uint32_t lines = 1;
};

struct ColumnNeeds {
    std::vector<ColumnNeed> columns;  ///< of the grid
    double labels = 0;                ///< all label columns, with no line broken
    std::vector<CellExtent> extents;  ///< of the grid's cells
    std::vector<FontWidths> fonts;    ///< of the grid's styles
};

/// What a table says of its columns' widths counts before what stands in them.
[[nodiscard]] ColumnNeeds measureColumns(const tables::TableGrid& grid);

/// How far the marks behind a number reach into the margin on its right, in points: with as much less of a
/// margin numbers stand below each other, with marks and without. 0 for any other cell.
[[nodiscard]] double hangingMarks(const tables::TableGrid& grid, const tables::GridCell& cell);

/// Points that stand beside the text of a cell.
[[nodiscard]] double cellMargins(const tables::ShownStyle& style);

}  // namespace vexa::frontend
