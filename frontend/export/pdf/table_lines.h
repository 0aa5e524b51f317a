// The grounds and the lines of a part of a table, each line once and as long as it goes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/pdf/page_canvas.h"

namespace vexa::frontend::pdf {

/// A cell as it is seen in the part: rows and columns are counted from the part's first ones.
struct SeenCell {
    std::size_t cell = 0;  ///< index into the grid's cells
    std::uint32_t firstRow = 0;
    std::uint32_t endRow = 0;
    std::uint32_t firstColumn = 0;
    std::uint32_t endColumn = 0;
    bool beginsAbove = false;  ///< further rows of it stand on an earlier page
    bool endsBelow = false;
};

/// Draws them. `columns` and `rows` are where the part's columns and rows begin, with one more for the end.
void drawLines(PageCanvas& canvas, const tables::TableGrid& grid, const std::vector<SeenCell>& cells,
               const std::vector<double>& columns, const std::vector<double>& rows);

}  // namespace vexa::frontend::pdf
