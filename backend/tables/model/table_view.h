// How a table's data are arranged: which dimension stands on which axis, in which order its categories stand,
// which are hidden, which layer is shown, and the texts around the cells.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "backend/tables/model/table_data.h"

namespace vexa::tables {

enum class Axis : std::uint8_t { row, column, layer };

/// How one dimension is shown.
struct DimensionView {
    std::vector<CategoryId> order;  ///< every category once; empty for the order of the data
    std::vector<bool> hidden;       ///< by category; empty when none is
    bool labelHidden = false;       ///< the dimension's own label
    CategoryId shown = 0;           ///< of a layer dimension: the category that is shown now

    [[nodiscard]] bool isHidden(CategoryId category) const {
        return category < hidden.size() && hidden[category];
    }

    bool operator==(const DimensionView&) const = default;
};

/// Which layers are printed and exported where nothing else is asked for.
enum class LayerPrinting : std::uint8_t { visible, all };

/// Every dimension of the data stands on exactly one axis.
struct TableView {
    std::string title;
    std::string caption;
    std::string corner;
    bool titleHidden = false;
    std::vector<DimensionId> rows;  ///< outermost first, as the other axes
    std::vector<DimensionId> columns;
    std::vector<DimensionId> layers;
    std::vector<DimensionView> dimensions;  ///< one a dimension of the data
    /// Lines of an axis with several dimensions are left out where none of their cells holds anything; layers
    /// too.
    bool emptyLinesLeftOut = false;
    std::optional<LayerPrinting> layerPrinting;  ///< nothing for the default, which is `visible`
    std::optional<double> minColumnWidth;        ///< of data columns, points
    std::optional<double> maxColumnWidth;        ///< likewise

    [[nodiscard]] const std::vector<DimensionId>& axis(Axis which) const;
    /// The order in which the formats of categories count: innermost column dimension first, then rows, then
    /// layers.
    [[nodiscard]] std::vector<DimensionId> formatOrder() const;

    bool operator==(const TableView&) const = default;
};

/// The categories of a dimension that are not hidden, in the order shown.
[[nodiscard]] std::vector<CategoryId> shownCategories(const TableDimension& dimension,
                                                      const DimensionView& view);

}  // namespace vexa::tables
