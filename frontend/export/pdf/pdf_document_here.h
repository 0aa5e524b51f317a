// What writes PDF, inside the library that draws; everybody else calls `writePdf`.
#pragma once

#include "frontend/export/exporter.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// See `writePdf`.
[[nodiscard]] PackageResult writePdfHere(const ExportTask& task, const ByteSink& sink);

}  // namespace vexa::frontend

/// The exported name.
extern "C" void vexaWritePdf(const vexa::frontend::ExportTask& task, const vexa::frontend::ByteSink& sink,
                             vexa::frontend::PackageResult& result);
