// Changes of a whole table: title, caption, transposition, order of rows, format, look, layers.
#pragma once

#include <memory>
#include <optional>

#include "backend/tables/model/table.h"
#include "frontend/modify/change_notes.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// The parts of a `TableChange` that are found out once for all tables of a group.
struct PreparedTableChange {
    const TableChange* change = nullptr;
    std::optional<tables::DisplayFormat> format;    ///< nothing where none is asked for, or it does not exist
    std::shared_ptr<const tables::TableLook> look;  ///< null where none is asked for
};

/// The changed table, in the order title, caption, transposition, sort, format, look, layers. Data are copied
/// only where a format takes the place of texts that numbers have of their own.
[[nodiscard]] tables::Table changeTable(const tables::Table& table, const PreparedTableChange& prepared,
                                        ItemPlan& plan);

}  // namespace vexa::frontend
