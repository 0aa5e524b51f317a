// The labels along an axis, taken apart into levels: for each dimension its shown groups, outermost first,
// and then the category itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "backend/tables/layout/axis_lines.h"
#include "backend/tables/model/table.h"

namespace vexa::tables {

/// No dimension shows more groups over a category; inner ones beyond are not shown.
inline constexpr std::size_t mostShownGroups = 63;

/// The labels of one dimension. The table must outlive it.
class DimensionLabels {
  public:
    DimensionLabels(const Table& table, DimensionId id);

    [[nodiscard]] DimensionId id() const { return id_; }
    /// Whether the dimension's own label is shown.
    [[nodiscard]] bool isLabelled() const { return labelled_; }
    /// Levels that the dimension needs for the categories that are shown: 1 without groups.
    [[nodiscard]] std::uint32_t depth() const { return depth_; }
    /// The shown groups of a category, outermost first; fewer than `depth`.
    [[nodiscard]] std::span<const GroupId> groups(CategoryId category) const;
    /// How many levels two categories share, from the outermost on: all for the same one.
    [[nodiscard]] std::uint32_t commonLevels(CategoryId one, CategoryId other) const;
    /// Gives the dimension levels that it does not need.
    void deepen(std::uint32_t levels) { depth_ += levels; }

  private:
    const TableDimension* dimension_;
    DimensionId id_;
    bool labelled_;
    std::uint32_t depth_ = 1;
    std::vector<GroupId> paths_;         // of all groups, one behind the other
    std::vector<std::uint32_t> begins_;  // by group, and one more for the end
};

/// The labels of the dimensions of one axis.
class AxisLabels {
  public:
    /// `headings`: a dimension's own label takes a level before those of its categories.
    AxisLabels(const Table& table, Axis axis, bool headings);

    [[nodiscard]] std::vector<DimensionLabels>& dimensions() { return dimensions_; }
    [[nodiscard]] const std::vector<DimensionLabels>& dimensions() const { return dimensions_; }
    [[nodiscard]] bool hasHeading(const DimensionLabels& labels) const {
        return headings_ && labels.isLabelled();
    }
    /// Levels of all dimensions together.
    [[nodiscard]] std::uint32_t levels() const;
    /// Whether any dimension's own label is shown.
    [[nodiscard]] bool isLabelled() const;
    /// The outermost level on which a line differs from the one before it; 0 for the first one.
    [[nodiscard]] std::uint32_t firstNewLevel(const AxisLines& lines, std::size_t index) const;

  private:
    std::vector<DimensionLabels> dimensions_;
    bool headings_;
};

}  // namespace vexa::tables
