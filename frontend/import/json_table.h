// A pivot table of the JSON form.
#pragma once

#include "frontend/document/item.h"
#include "frontend/import/import_context.h"
#include "frontend/import/json_cells.h"

namespace vexa::frontend {

/// Reads the keys of a table but for those that every item has. `cells` are those of the table, which it
/// loses. Nothing is made when something was refused.
bool readTable(JsonObject& object, JsonCells& cells, const ImportContext& context, ItemContent& content);

}  // namespace vexa::frontend
