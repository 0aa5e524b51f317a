// Which cells and labels of a table a change of cells reaches.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "backend/tables/model/table.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// A label of a category, or of a group where `isGroup`.
struct SelectedLabel {
    tables::DimensionId dimension = 0;
    std::uint32_t id = 0;
    bool isGroup = false;

    auto operator<=>(const SelectedLabel&) const = default;
};

struct SelectedCells {
    std::vector<tables::Place> data;    ///< in the order shown, layer by layer; empty cells too
    std::vector<SelectedLabel> labels;  ///< each once
    /// Innermost column categories of the columns that have a selected cell, each once.
    std::vector<SelectedLabel> columns;
    bool hasColumns =
        false;  ///< some cell of a column is selected, also where no dimension stands on that axis
    bool title = false;
    bool caption = false;
    bool footnotes = false;

    [[nodiscard]] bool isEmpty() const {
        return data.empty() && labels.empty() && !title && !caption && !footnotes;
    }
};

/// The most cells that can be selected in one table; in a larger one nothing is.
inline constexpr std::uint64_t maximalSelectedCells = 50'000'000;

/// False when the table is too large.
[[nodiscard]] bool selectCells(const tables::Table& table, const CellsChange& change, SelectedCells& cells);

}  // namespace vexa::frontend
