// A whole pivot table: data, view and style, each shared and immutable. Editing makes a new view or style
// (or, where values or labels change, new data) and exchanges the pointer, so that keeping the table as it
// was costs nothing.
#pragma once

#include <memory>

#include "backend/tables/model/table_data.h"
#include "backend/tables/model/table_style.h"
#include "backend/tables/model/table_view.h"

namespace vexa::tables {

/// The pointers are never null.
struct Table {
    std::shared_ptr<const TableData> data;
    std::shared_ptr<const TableView> view;
    std::shared_ptr<const TableStyle> style;

    /// By value.
    [[nodiscard]] bool operator==(const Table& other) const;
};

/// A table of these data with `rows`, `columns` and `layers` as given in `view`, whose list of dimension
/// views is made as long as the data's dimensions.
[[nodiscard]] Table makeTable(std::shared_ptr<const TableData> data, TableView view, TableStyle style = {});

}  // namespace vexa::tables
