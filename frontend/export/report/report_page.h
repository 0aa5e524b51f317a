// REPORT: a page to pass on, with an outline at its side.
#pragma once

#include <string>

#include "frontend/export/exporter.h"

namespace vexa::frontend {

/// Writes the page that `task.request.report` asks for, as HTML or packed with its pictures into one MIME
/// file. What stops it is told to the report.
void writeReport(const ExportTask& task, std::string& text);

}  // namespace vexa::frontend
