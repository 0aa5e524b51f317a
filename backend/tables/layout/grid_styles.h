// The last step of a layout: which style each cell of a grid has.
#pragma once

#include "backend/tables/layout/cell_styles.h"
#include "backend/tables/layout/prepared_table.h"
#include "backend/tables/layout/table_grid.h"

namespace vexa::tables {

/// Sets the styles of all cells of a grid, which is complete but for them. `styles` adds to the styles of
/// `grid`.
void setCellStyles(const PreparedTable& prepared, CellStyles& styles, TableGrid& grid);

}  // namespace vexa::tables
