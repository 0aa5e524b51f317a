// The labels along an axis, taken apart into levels: groups, outermost first, and then the category itself.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "backend/pivot/pivot_table.h"
#include "backend/pivot/rendering/grid.h"
#include "backend/pivot/rendering/sheet.h"

namespace vexa::rendering {

/// One label of a category's way through its groups. `id` is the same where the group or category is the
/// same.
struct LabelPart {
    std::string text;
    std::size_t id = 0;
};

/// The labels of one dimension.
class DimensionLabels {
  public:
    explicit DimensionLabels(const PivotDimension& dimension);

    /// The dimension's own label.
    [[nodiscard]] const std::string& heading() const { return heading_; }
    /// Levels that the dimension needs: 1 without groups.
    [[nodiscard]] std::size_t depth() const { return depth_; }
    /// The shown groups of a category and, last, its own label; at most `depth` of them.
    [[nodiscard]] const std::vector<LabelPart>& parts(std::size_t category) const { return parts_[category]; }

  private:
    std::string heading_;
    std::size_t depth_ = 1;
    std::vector<std::vector<LabelPart>> parts_;
};

/// The labels of the dimensions of one axis, outermost first.
using AxisLabels = std::vector<DimensionLabels>;

[[nodiscard]] AxisLabels labelsOn(const std::vector<std::size_t>& axis, const PivotTable& table);

/// Columns that row labels take.
[[nodiscard]] std::size_t labelColumnsOf(const AxisLabels& rows);

/// The rows above the body: for each column dimension its heading and its levels, and in the last of them the
/// headings of the row dimensions. None where there is nothing to write in them.
[[nodiscard]] std::vector<GridRow> headerRows(const AxisLabels& rows, const AxisLabels& columns,
                                              const Sheet& sheet);

/// The rows of the body with their labels alone, one a row of the sheet; a label that repeats the one above
/// is blank.
[[nodiscard]] std::vector<GridRow> labelledRows(const AxisLabels& rows, const Sheet& sheet);

}  // namespace vexa::rendering
