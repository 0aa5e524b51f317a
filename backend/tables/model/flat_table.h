// A table as the grid of texts that it shows, without dimensions: it can be shown and exported, not pivoted.
// UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "backend/tables/model/table_style.h"

namespace vexa::tables {

/// The most places that a flat table may have.
inline constexpr std::size_t maximalFlatCells = 1'000'000;

struct FlatCell {
    std::string text;
    StyleId style = 0;  ///< index into `FlatTable::styles`

    bool operator==(const FlatCell&) const = default;
};

/// The grid row by row. The first `headerRows` rows and the first `headerColumns` columns hold labels; a
/// label that spans several places stands in the first of them, and the others are empty. Of a table with
/// several layers all stand one below the other, each after a row that holds the layer's labels in its first
/// place.
struct FlatTable {
    std::string title;
    std::string caption;
    std::size_t columns = 0;
    std::size_t headerRows = 0;
    std::size_t headerColumns = 0;
    std::vector<FlatCell> cells;       ///< whole rows only
    std::vector<CellStyle> styles{1};  ///< the first one sets nothing

    [[nodiscard]] std::size_t rows() const { return columns == 0 ? 0 : cells.size() / columns; }

    bool operator==(const FlatTable&) const = default;
};

}  // namespace vexa::tables
