// Prints the cells of a pivot table in the JSON form. For the import's own files.
#pragma once

#include <vector>

#include "backend/tables/model/table.h"
#include "frontend/import/json_text.h"

namespace vexa::frontend {

/// All categories of a dimension in the order shown, hidden ones too.
[[nodiscard]] std::vector<tables::CategoryId> printedOrder(const tables::TableDimension& dimension,
                                                           const tables::DimensionView& view);

/// The key `cells`, one row of the table a line; the key `sparse`, one cell a line, for a table that leaves
/// empty lines out or has far more places than cells. Nothing for a table that has no cells and leaves no
/// lines out.
void writeCells(JsonText& json, const tables::Table& table);

}  // namespace vexa::frontend
