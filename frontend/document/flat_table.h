// A table as the grid of texts that it shows, without its dimensions: it can be shown and exported, not
// pivoted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "backend/pivot/pivot_table.h"

namespace vexa::frontend {
// Set apart from the types of the same names in item.h until everything uses those.
inline namespace former {

/// One place of the grid.
struct FlatCell {
    std::string text;
    std::uint32_t extras = 0;  ///< 0 for none, else 1 + index into `FlatTable::extras`

    bool operator==(const FlatCell&) const = default;
};

/// The grid, row by row. The first `headerRows` rows and the first `headerColumns` columns hold labels; a
/// label that spans several places stands in the first of them. Of a table with layers every layer is there,
/// one below the other, each after a row that holds the layer's labels in its first place and counts as no
/// header row.
struct FlatTable {
    std::string title;
    std::string caption;
    std::string subtype;
    bool titleHidden = false;
    std::optional<int> minDataColumnWidth;  ///< points
    std::optional<int> maxDataColumnWidth;  ///< points
    std::size_t columns = 0;
    std::size_t headerRows = 0;
    std::size_t headerColumns = 0;
    std::vector<FlatCell> cells;  ///< whole rows only
    std::vector<PivotCellExtras> extras;

    [[nodiscard]] std::size_t rows() const { return columns == 0 ? 0 : cells.size() / columns; }

    bool operator==(const FlatTable&) const = default;
};

/// The most places that a grid may have.
constexpr std::uint64_t maximalFlatCells = 1'000'000;

/// The grid that `table` shows, or nothing when it would have more than `maximalFlatCells` places.
[[nodiscard]] std::optional<FlatTable> flatten(const PivotTable& table);

}  // namespace former
}  // namespace vexa::frontend
