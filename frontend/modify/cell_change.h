// Changes of the selected cells of a table: styles, widths, formats, and what stands in them.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "backend/tables/model/table.h"
#include "frontend/modify/cell_selection.h"
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

/// Changes the cells of one table, several times in their order. Data are copied only where values or labels
/// change, the style once for all changes.
class CellsEditor {
  public:
    explicit CellsEditor(const tables::Table& table) : before_(table.style), table_(table) {}

    void change(const PreparedCellsChange& prepared, ItemPlan& plan);
    /// The changed table; what was not changed is shared with the old one.
    [[nodiscard]] tables::Table take() const;

  private:
    [[nodiscard]] const TableLines& lines();
    [[nodiscard]] tables::TableStyle& style();
    [[nodiscard]] bool replace(const CellReplacement& replacement, const SelectedCells& cells);
    [[nodiscard]] bool replaceValues(const CellReplacement& replacement, const SelectedCells& cells);
    [[nodiscard]] bool changeView(const CellsChange& change, const SelectedCells& cells);
    [[nodiscard]] bool changeStyles(const PreparedCellsChange& prepared, const SelectedCells& cells);
    [[nodiscard]] bool changeWidths(const CellsChange& change, const SelectedCells& cells);
    [[nodiscard]] bool changeFormats(tables::DisplayFormat format, const SelectedCells& cells);
    [[nodiscard]] bool takeData(std::shared_ptr<const tables::TableData> data);

    std::shared_ptr<const tables::TableStyle> before_;
    tables::Table table_;
    std::shared_ptr<tables::TableStyle> style_;  // a copy for changing, once there is one
    bool hasOtherStyle_ = false;
    std::optional<TableLines> lines_;
};

}  // namespace vexa::frontend
