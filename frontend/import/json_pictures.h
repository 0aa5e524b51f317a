// Charts and trees of the JSON form.
#pragma once

#include <string>

#include "frontend/document/item.h"
#include "frontend/import/json_object.h"

namespace vexa::frontend {

/// Reads the keys but for those that every item has. `folder`: what a picture's file name starts from, with a
/// separator at the end, or empty.
bool readChart(JsonObject& object, const std::string& folder, ItemContent& content);
bool readTree(JsonObject& object, const std::string& folder, ItemContent& content);

}  // namespace vexa::frontend
