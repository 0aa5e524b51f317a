// TEXT: items one below the other, tables as grids of characters.
#pragma once

#include "frontend/export/exporter.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// Writes what `task.request.text` asks for, with line feeds. What stops it is told to the report; the result
/// is that of writing.
PackageResult writeTextPage(const ExportTask& task, const ByteSink& out);

}  // namespace vexa::frontend
