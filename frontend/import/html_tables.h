// The tables of an HTML page.
#pragma once

#include <string>
#include <vector>

#include "frontend/import/import_context.h"

namespace vexa::frontend {

/// Adds an item for every table of a page, however broken, in the order in which they begin. The page's bytes
/// are in `options.encoding`; where that is empty, in what they begin with or the page says of itself, else
/// in UTF-8, or windows-1252 where that does not fit. False when the given encoding is not known or does not
/// fit, and when there is no table with any cell. A table that holds labels alone becomes a grid.
bool readHtmlTables(const std::string& bytes, const ImportOptions& options, const ImportContext& context,
                    std::vector<Item>& items, ImportProblem& problem);

}  // namespace vexa::frontend
