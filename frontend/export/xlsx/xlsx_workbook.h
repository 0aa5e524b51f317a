// Exports to XLSX and XLSM: new workbooks, and sheets in workbooks that are there.
#pragma once

#include "frontend/export/exporter.h"
#include "frontend/export/xlsx/workbook_file.h"

namespace vexa::frontend {

/// Begins the file of the workbook in the task's files, as the main one. A workbook that is there is read
/// first; what cannot be changed with certainty fails the report with a reason, and stays as it is.
void writeXlsx(const ExportTask& task, const WorkbookExport& options, WorkbookKind kind);

}  // namespace vexa::frontend
