// Tables in a few words, and grids as small pictures, for the tests of what is laid out.
#pragma once

#include <string>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "backend/tables/model/table.h"

namespace vexa::tables {

/// A dimension: its categories as "label", or "group/label" with as many groups as there are; the group "-"
/// is not shown.
struct DimensionSketch {
    Axis axis = Axis::row;
    std::string label;
    std::vector<std::string> categories;
};

/// A table under construction. `cells` in the order of places: empty, a number, or a text.
struct TableSketch {
    TableSketch(const std::vector<DimensionSketch>& dimensions, const std::vector<std::string>& cells,
                std::vector<std::string> footnotes = {});

    [[nodiscard]] Table table();

    TableDataBuilder data;
    TableView view;
    TableStyle style;
};

[[nodiscard]] TableDimension dimensionOf(const DimensionSketch& sketch);

/// The grid row by row: at a cell's first place a letter for its role (c k r d: corner, column label, row
/// label, data), its text and marks; '<' where it goes on to the right, '^' where it goes on downwards. "!"
/// in a place that no cell or more than one holds.
[[nodiscard]] std::string picture(const TableGrid& grid);

}  // namespace vexa::tables
