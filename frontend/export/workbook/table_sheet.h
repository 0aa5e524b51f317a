// A grid of a table on a worksheet: title, layer, labels, numbers, caption and footnotes.
#pragma once

#include <cstdint>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/workbook/sheet_draft.h"

namespace vexa::frontend {

/// Adds the grid from `row` on, in the first columns. Returns the row below it. What a workbook cannot show
/// is reported.
[[nodiscard]] std::uint32_t addTable(SheetDraft& draft, ExportReport& report, const ExportedItem& item,
                                     const tables::TableGrid& grid, std::uint32_t row);

}  // namespace vexa::frontend
