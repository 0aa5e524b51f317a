// Headings, paragraphs, tables and pictures of a Markdown text.
#pragma once

#include <string>
#include <vector>

#include "frontend/import/import_context.h"

namespace vexa::frontend {

/// Adds the items of `text` (UTF-8, with plain line ends). Headings become headings, tables become tables
/// with one header row and one column of labels, a picture that stands alone becomes a chart, and paragraphs,
/// lists, quotations and code become texts. `file`: as the user named it; pictures stand beside it. False
/// when a picture cannot be read or a table is no rectangle.
bool readMarkdown(std::string_view text, const std::string& file, const ImportOptions& options,
                  const ImportContext& context, std::vector<Item>& items, ImportProblem& problem);

/// The text of a line without the marks of emphasis, code and links.
[[nodiscard]] std::string withoutMarks(std::string_view text);

}  // namespace vexa::frontend
