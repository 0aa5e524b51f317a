// HTML: one valid page that can be read without style and script.
#pragma once

#include <string>

#include "frontend/export/exporter.h"

namespace vexa::frontend {

/// Writes the page that `task.request.html` asks for into `html`. What stops it is told to the report.
void writeHtmlPage(const ExportTask& task, std::string& html);

/// The beginning of a page up to behind its `<title>`; what is UTF-8 text is escaped here.
[[nodiscard]] std::string pageBeginning(const std::string& language, const std::string& title);

}  // namespace vexa::frontend
