// The dimensions of a table of the JSON form.
#pragma once

#include <vector>

#include "backend/tables/model/table_style.h"
#include "backend/tables/model/table_view.h"
#include "frontend/import/import_context.h"
#include "frontend/import/json_object.h"

namespace vexa::frontend {

/// A dimension, how it is shown, and what is set of the labels of its categories and groups.
struct JsonDimension {
    struct Label {
        std::uint32_t id = 0;  ///< of the category or group
        tables::CellStyle style;
        std::optional<double> width;
    };
    tables::TableDimension dimension;
    tables::DimensionView view;
    std::vector<Label> categories;  ///< only those of which something is set
    std::vector<Label> groups;
};

/// Reads the list of dimensions at `key`; only those of layers have a category that is shown.
bool readDimensions(JsonObject& object, std::string_view key, bool areLayers, std::size_t footnoteCount,
                    const ImportContext& context, std::vector<JsonDimension>& dimensions);

}  // namespace vexa::frontend
