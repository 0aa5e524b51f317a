// Text documents, by the extension of their file: `.rtf` and `.doc` in the Rich Text Format, `.docx` and any
// other in Office Open XML.
#pragma once

#include "frontend/export/exporter.h"

namespace vexa::frontend {

/// Writes the file that `task.request.doc` names, and makes it the main one of `task.files`. What fails is in
/// the report.
void writeWordDocument(const ExportTask& task);

/// Whether a file of this name is in the Rich Text Format.
[[nodiscard]] bool isRichText(std::string_view file);

}  // namespace vexa::frontend
