// HTML: one valid page that can be read without style and script.
#pragma once

#include <string>

#include "frontend/export/exporter.h"
#include "frontend/export/html/page_body.h"
#include "frontend/package/package_result.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

/// Writes the page that `task.request.html` asks for. What stops it is told to the report; the result is that
/// of writing.
PackageResult writeHtmlPage(const ExportTask& task, const ByteSink& out);

/// The beginning of a page up to behind its `<title>`; what is UTF-8 text is escaped here.
[[nodiscard]] std::string pageBeginning(const std::string& language, const std::string& title);

/// Writes `beginning`, what the items are, and `end`. Nothing is left of the items.
PackageResult writePieces(const ByteSink& out, std::string_view beginning, PackedText& items,
                          std::string_view end);

}  // namespace vexa::frontend
