// The lines of an axis: which categories each row, column or layer stands for, in the order shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "backend/tables/model/table.h"

namespace vexa::tables {

/// The lines of one axis. A line has one category for each dimension of the axis, outermost first; an axis
/// without dimensions has one line with none.
class AxisLines {
  public:
    [[nodiscard]] const std::vector<DimensionId>& dimensions() const { return dimensions_; }
    [[nodiscard]] std::size_t size() const { return offsets_.size(); }
    [[nodiscard]] bool isEmpty() const { return offsets_.empty(); }
    [[nodiscard]] std::span<const CategoryId> line(std::size_t index) const {
        return {ids_.data() + index * dimensions_.size(), dimensions_.size()};
    }
    /// What the line's categories add to the place of a cell.
    [[nodiscard]] Place offset(std::size_t index) const { return offsets_[index]; }
    [[nodiscard]] const std::vector<Place>& offsets() const { return offsets_; }

  private:
    friend AxisLines axisLines(const Table&, Axis);
    std::vector<DimensionId> dimensions_;
    std::vector<CategoryId> ids_;
    std::vector<Place> offsets_;
};

/// The lines of an axis as the view shows them: hidden categories left out, and lines without a value where
/// the view says so; a value counts where every category that it belongs to is shown. For layers, every layer
/// that can be shown. None where a dimension of the axis has no shown category. At most `maximalLines`, and
/// of many dimensions less; further ones are left out.
[[nodiscard]] AxisLines axisLines(const Table& table, Axis axis);
inline constexpr std::size_t maximalLines = 4'000'000;

/// Which layers are laid out.
enum class LayerChoice : std::uint8_t { shown, all };

/// The layers of a table, as places' offsets: the one that is shown now, or all in their order; one (0) for a
/// table without layers. Never empty: where no layer can be shown it is the one that is chosen.
[[nodiscard]] std::vector<Place> layersOf(const Table& table, LayerChoice choice);

}  // namespace vexa::tables
