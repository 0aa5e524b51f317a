// Tables as values with separators between them.
#pragma once

#include <string>

#include "frontend/import/import_context.h"

namespace vexa::frontend {

/// The table in `text` (UTF-8). `isTabbed`: a tabulator separates, where the options do not say something
/// else. False, with line and column, when it is no rectangle, or has no data beside its labels.
bool readSeparated(std::string_view text, bool isTabbed, const ImportOptions& options,
                   const ImportContext& context, Item& item, ImportProblem& problem);

}  // namespace vexa::frontend
