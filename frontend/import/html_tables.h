// The tables of an HTML page.
#pragma once

#include <string>
#include <vector>

#include "frontend/import/import_context.h"

namespace vexa::frontend {

/// False where the program was built without a reader of HTML.
[[nodiscard]] bool readsHtml();

/// Adds an item for every table of a page, however broken, in the order in which they begin. `encoding`: what
/// the page's bytes are, where neither they nor the page says it; empty for UTF-8, or windows-1252 where that
/// does not fit. False when there is no table with data.
bool readHtmlTables(const std::string& bytes, const ImportOptions& options, const ImportContext& context,
                    std::vector<Item>& items, ImportProblem& problem);

}  // namespace vexa::frontend
