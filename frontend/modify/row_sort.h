// The order of a table's rows by the values of one column.
#pragma once

#include "backend/tables/model/table.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// Puts the categories of the last row dimension into the order of their values in the column that `sort`
/// names, as the table is shown now: in the layer shown, beside the first categories of the other row
/// dimensions. Each moves within its innermost group; numbers stand before texts and both before empty cells;
/// totals stand last. False, and nothing is changed, where there is no such column or the order is that
/// already.
[[nodiscard]] bool sortRows(const tables::Table& table, tables::TableView& view, const SortChange& sort);

}  // namespace vexa::frontend
