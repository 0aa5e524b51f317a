// TEXT: items one below the other, tables as grids of characters.
#pragma once

#include <string>

#include "frontend/export/exporter.h"

namespace vexa::frontend {

/// Writes what `task.request.text` asks for into `text`, in UTF-8 with line feeds.
void writeTextPage(const ExportTask& task, std::string& text);

/// `text` (UTF-8) in the encoding asked for, with its mark. Characters that the back end's character set
/// lacks become `?`, and the report is told once.
[[nodiscard]] std::string encodedText(const std::string& text, TextEncoding encoding, ExportReport& report);

}  // namespace vexa::frontend
