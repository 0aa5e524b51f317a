// Puts what an export holds onto a sheet of a workbook.
#pragma once

#include "frontend/export/export_report.h"
#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xlsx/workbook_file.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

/// Adds, replaces or changes the sheet that the options name, at the place that they name. False, with the
/// reason in the report, where that is not possible; the workbook is of no use then.
bool insertSheet(WorkbookFile& workbook, SheetContent content, const WorkbookExport& options,
                 ExportReport& report);

}  // namespace vexa::frontend
