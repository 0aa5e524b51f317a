// REPORT: a page to pass on, with an outline at its side.
#pragma once

#include "frontend/export/exporter.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// Writes the page that `task.request.report` asks for, as HTML or packed with its pictures into one MIME
/// file. What stops it is told to the report; the result is that of writing.
PackageResult writeReport(const ExportTask& task, const ByteSink& out);

}  // namespace vexa::frontend
