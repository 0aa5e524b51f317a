// A pivot table as a command asked for it, kinds, positions and flags included, with its cells in the order
// in which they were filled. Only the trace tells that much; what is shown of it is a `tables::Table`
// (shown_table.h).
//
// Every text is UTF-8. A table is made by the builder classes of bp_procedure.h and never changes afterwards.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexa {

/// A group of categories: a header that spans them. Groups nest.
struct PivotGroup {
    std::string label;  ///< empty for a group whose header is not shown
    int parent = -1;    ///< index of the enclosing group in the same dimension, -1 for none

    bool operator==(const PivotGroup&) const = default;
};

/// One category of a dimension.
struct PivotCategory {
    std::string label;
    int group = -1;  ///< index of the group that it stands in, -1 for none

    bool operator==(const PivotCategory&) const = default;
};

/// Where a dimension stands. The first number of `position` is the axis.
enum class PivotAxis { row = 0, column = 1, layer = 2 };

/// One dimension of a table.
struct PivotDimension {
    std::string label;
    int kind = 0;                   ///< dimension kind (sort value), passed on unchanged
    std::array<int, 4> position{};  ///< the four arguments of `BpDimension::Position`: axis, index, two flags
    std::vector<PivotGroup> groups;
    std::vector<PivotCategory> categories;

    /// Columns for 1, layers for 2, rows for every other number.
    [[nodiscard]] PivotAxis axis() const;

    bool operator==(const PivotDimension&) const = default;
};

/// What only few cells carry: notes and looks.
struct PivotCellExtras {
    std::vector<std::string> notes;
    bool bold = false;
    std::string color;       ///< as the command gave it; empty when not set
    std::string background;  ///< likewise

    bool operator==(const PivotCellExtras&) const = default;
};

/// One cell. `place` is its position in row-major order over the categories of all dimensions, the last
/// dimension varying fastest; `PivotTable::coordinates` takes it apart.
struct PivotCell {
    std::uint64_t place = 0;
    std::string text;              ///< the value as shown
    std::optional<double> number;  ///< set when the value is a number
    std::uint32_t extras = 0;      ///< 0 for none, else 1 + index into `PivotTable::extras`

    bool operator==(const PivotCell&) const = default;
};

/// A whole table. Cells stand in the order in which they were filled; a place occurs once at most.
struct PivotTable {
    std::string title;
    std::string caption;
    std::string subtype;
    bool flag = false;
    bool titleHidden = false;
    std::optional<int> minDataColumnWidth;  ///< points
    std::optional<int> maxDataColumnWidth;  ///< points
    std::vector<PivotDimension> dimensions;
    std::vector<PivotCell> cells;
    std::vector<PivotCellExtras> extras;

    /// The category index in every dimension of a cell's place. Every dimension must have a category.
    [[nodiscard]] std::vector<std::size_t> coordinates(std::uint64_t place) const;
    /// The reverse of `coordinates`; `indexes` has one entry a dimension, each below its category count.
    [[nodiscard]] std::uint64_t placeOf(const std::vector<std::size_t>& indexes) const;
    /// The extras of a cell, or an empty set of them.
    [[nodiscard]] const PivotCellExtras& extrasOf(const PivotCell& cell) const;

    bool operator==(const PivotTable&) const = default;
};

}  // namespace vexa
