// Reads results in their JSON form (docs/formats/results-json.md).
#pragma once

#include <string>
#include <string_view>

#include "frontend/import/import_context.h"

namespace vexa::frontend {

/// Adds the items of `text` to the end of `imported.outline`, and gives it the name if it has none. `file`:
/// as the user named it, for complaints and for pictures that stand beside it. False when anything does not
/// fit; `imported` is then good for nothing more.
///
/// The text is read once, from its beginning to its end; of what it says, only the item that is being read is
/// kept in a second form.
bool readResults(std::string_view text, const std::string& file, const ImportContext& context,
                 Imported& imported, ImportProblem& problem);

}  // namespace vexa::frontend
