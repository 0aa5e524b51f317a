// Which cells and labels of a table a change of cells reaches.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "backend/tables/layout/axis_lines.h"
#include "backend/tables/model/table.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// A label of a category, or of a group where `isGroup`.
struct SelectedLabel {
    tables::DimensionId dimension = 0;
    std::uint32_t id = 0;
    bool isGroup = false;

    bool operator==(const SelectedLabel&) const = default;
    bool operator<(const SelectedLabel& other) const {
        return std::tie(dimension, id, isGroup) < std::tie(other.dimension, other.id, other.isGroup);
    }
};

/// The lines of a table as it is shown, which several selections share.
struct TableLines {
    explicit TableLines(const tables::Table& table);

    tables::AxisLines rows;
    tables::AxisLines columns;
    std::vector<tables::Place> layers;
};

struct SelectedCells {
    std::vector<tables::Place> data;    ///< in the order shown, layer by layer; empty cells too
    std::vector<SelectedLabel> labels;  ///< each once, in their order
    /// Where the columns of cells are asked for: the innermost column categories of those that have a
    /// selected cell, each once, in their order.
    std::vector<SelectedLabel> columns;
    /// Likewise: some column has a selected cell, also where no dimension stands on that axis.
    bool hasColumns = false;
    bool title = false;
    bool caption = false;
    bool footnotes = false;

    [[nodiscard]] bool isEmpty() const {
        return data.empty() && labels.empty() && !title && !caption && !footnotes;
    }
};

/// The most cells that can be selected in one table; in a larger one nothing is.
inline constexpr std::uint64_t maximalSelectedCells = 50'000'000;

/// `lines` are those of the table. Columns are found out where the change is one of their widths. False when
/// the table is too large.
[[nodiscard]] bool selectCells(const tables::Table& table, const TableLines& lines, const CellsChange& change,
                               SelectedCells& cells);

}  // namespace vexa::frontend
