// A grid of a table on a worksheet: title, layer, labels, numbers, caption and footnotes.
#pragma once

#include <cstdint>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/workbook/sheet_draft.h"
#include "frontend/export/workbook/sheet_fitting.h"
#include "frontend/export/workbook/sheet_styles.h"

namespace vexa::frontend {

/// What all tables of a sheet share.
struct TableSurroundings {
    SheetDraft& draft;
    SheetFitting& fitting;
    SheetCodes& codes;
    SheetStyles& styles;
    ExportReport& report;
};

/// Adds the grid from `row` on, in the first columns. Returns the row below it. What a workbook cannot show
/// is reported.
[[nodiscard]] std::uint32_t addTable(const TableSurroundings& sheet, const ExportedItem& item,
                                     const tables::TableGrid& grid, std::uint32_t row);

}  // namespace vexa::frontend
