// A table laid out in rows and columns: one sheet a layer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "backend/pivot/pivot_table.h"

namespace vexa::rendering {

/// Which dimensions stand on which axis, outermost first.
struct TableAxes {
    std::vector<std::size_t> rows;
    std::vector<std::size_t> columns;
    std::vector<std::size_t> layers;
};

/// One category index for each dimension of an axis.
using AxisPlace = std::vector<std::size_t>;

/// What is shown of one layer. The cells belong to the table.
struct Sheet {
    AxisPlace layer;
    std::vector<AxisPlace> rows;
    std::vector<AxisPlace> columns;
    std::vector<const PivotCell*> cells;  ///< rows times columns, row by row; null where the table has none

    [[nodiscard]] const PivotCell* cell(std::size_t row, std::size_t column) const {
        return cells[row * columns.size() + column];
    }
};

[[nodiscard]] TableAxes axesOf(const PivotTable& table);

/// The layers that have cells, in the order of their categories; one sheet for a table without cells.
[[nodiscard]] std::vector<Sheet> sheetsOf(const PivotTable& table, const TableAxes& axes);

}  // namespace vexa::rendering
