// The order of a table's rows by the values of one column.
#pragma once

#include "backend/tables/model/table.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

enum class SortOutcome {
    sorted,
    same,  ///< the rows stand in that order already, or there are none
    noSuchColumn
};

/// Puts the categories of the last row dimension into the order of their values in the column that `sort`
/// names, as the table is shown now: in the layer shown, beside the first combination of the other row
/// dimensions. Each moves within its innermost group; numbers stand before texts and both before empty cells;
/// totals stand last. Nothing is changed where it is not `sorted`.
[[nodiscard]] SortOutcome sortRows(const tables::Table& table, tables::TableView& view,
                                   const SortChange& sort);

}  // namespace vexa::frontend
