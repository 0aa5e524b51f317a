// Texts by themselves on a worksheet: headings, texts, logs, warnings.
#pragma once

#include <cstdint>
#include <string_view>

#include "backend/tables/model/table_look.h"
#include "frontend/export/workbook/sheet_draft.h"
#include "frontend/export/workbook/sheet_fitting.h"

namespace vexa::frontend {

/// What a text is where its item does not say how it looks.
[[nodiscard]] SheetStyle textStyle(ItemType type, const tables::CellStyle& own);

/// Adds a text from `row` on in the first column, each line in a row of its own; a long one is wrapped in
/// several columns. Tabs are blanks up to the next eighth column. Returns the row below it.
[[nodiscard]] std::uint32_t addLines(SheetDraft& draft, SheetFitting& fitting, const ExportedItem& item,
                                     std::string_view text, SheetStyle style, std::uint32_t row);

}  // namespace vexa::frontend
