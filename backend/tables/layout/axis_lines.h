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
    [[nodiscard]] std::size_t size() const { return count_; }
    [[nodiscard]] std::span<const CategoryId> line(std::size_t index) const {
        return {ids_.data() + index * dimensions_.size(), dimensions_.size()};
    }
    /// What the line's categories add to the place of a cell.
    [[nodiscard]] Place offset(std::size_t index) const { return offsets_[index]; }

  private:
    friend AxisLines axisLines(const Table&, Axis);
    std::vector<DimensionId> dimensions_;
    std::vector<CategoryId> ids_;
    std::vector<Place> offsets_;
    std::size_t count_ = 0;
};

/// The lines of an axis as the view shows them: hidden categories left out, and lines without a value where
/// the view says so. For layers, every layer that can be shown. At most `maximalLines`; further ones are left
/// out.
[[nodiscard]] AxisLines axisLines(const Table& table, Axis axis);
inline constexpr std::size_t maximalLines = 4'000'000;

/// Which layers are laid out.
enum class LayerChoice : std::uint8_t { shown, all };

/// The layers of a table, as places' offsets: the one that is shown now, or all in their order; one (0) for a
/// table without layers.
[[nodiscard]] std::vector<Place> layersOf(const Table& table, LayerChoice choice);

}  // namespace vexa::tables
