// XLS: binary workbooks (BIFF8), new ones and sheets of those that are there.
#pragma once

#include "frontend/export/exporter.h"

namespace vexa::frontend {

/// Writes the workbook that `task.request.xls` asks for, the whole file. Fails the report where that cannot
/// be; the file that is there is only read.
void writeXls(const ExportTask& task);

}  // namespace vexa::frontend
