// One item of the JSON form.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frontend/document/item.h"
#include "frontend/import/import_context.h"
#include "frontend/import/json_cells.h"

namespace vexa::frontend {

/// The known word for a type of item that is near to an unknown one; empty where none is.
[[nodiscard]] std::string_view nearestTypeWord(std::string_view word);

/// The keys of one item, its cells apart, and what they are read with.
struct JsonItemSource {
    Json& keys;
    const JsonPath& path;
    JsonCells& cells;
    std::size_t views = 0;  ///< of a model: how many it has
    std::string folder;     ///< what names of picture files start from, with a separator at the end or empty
};

/// Reads an item whose `type` is there and a text. Of headers and models, what stands under them is read
/// elsewhere.
bool readItem(JsonItemSource& source, const ImportContext& context, JsonRefusal& refusal, Item& item);

/// The keys that every item has.
inline constexpr std::string_view kItemKeys[] = {"type",    "label", "command", "subtype",
                                                 "visible", "width", "height",  "pageBreakBefore"};

}  // namespace vexa::frontend
