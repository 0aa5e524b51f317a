// Changes of the selected cells of a table: styles, widths, formats, and what stands in them.
#pragma once

#include <optional>

#include "backend/tables/model/table.h"
#include "frontend/modify/change_notes.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// The parts of a `CellsChange` that are found out once for all tables of a group.
struct PreparedCellsChange {
    const CellsChange* change = nullptr;
    std::optional<tables::DisplayFormat> format;  ///< nothing where none is asked for, or it does not exist
    tables::CellStyle style;                      ///< what is set of the cells' styles
};

/// The style that a change asks for; a font that is not installed is complained about and taken all the same.
/// One that is installed is written as the system writes it.
[[nodiscard]] tables::CellStyle styleAskedFor(const CellsChange& change, Complaints& complaints);
[[nodiscard]] tables::CellStyle styleAskedFor(const TextChange& change, Complaints& complaints);

/// The changed table. Data are copied only where values or labels change.
[[nodiscard]] tables::Table changeCells(const tables::Table& table, const PreparedCellsChange& prepared,
                                        ItemPlan& plan);

}  // namespace vexa::frontend
