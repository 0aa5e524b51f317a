// PDF: tagged pages, with text that can be taken out of them as it is read.
#pragma once

#include "frontend/export/exporter.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// Whether this build writes PDF; where it does not, `writePdf` is not to be called.
[[nodiscard]] bool canWritePdf();

/// Writes what `task.request.pdf` asks for, piece by piece. What stops it but the file is told to the report;
/// what is wrong with the file is the result.
[[nodiscard]] PackageResult writePdf(const ExportTask& task, const ByteSink& sink);

}  // namespace vexa::frontend
