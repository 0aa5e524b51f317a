// From a plan of an export to the content of a worksheet: one item below the other, a blank row between.
#pragma once

#include "frontend/export/exporter.h"
#include "frontend/export/workbook/sheet_content.h"

namespace vexa::frontend {

/// The items of the plan as the content of a sheet with these limits. Fails the report with error 11 where a
/// table has more columns than a sheet, and with 12 where a text does not fit a cell, and returns what there
/// is by then. Notes what a workbook cannot show.
[[nodiscard]] SheetContent buildSheet(const ExportTask& task, const SheetLimits& limits,
                                      bool notesAndCaptions);

}  // namespace vexa::frontend
