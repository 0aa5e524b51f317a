#include "backend/tables/layout/axis_labels.h"

#include <algorithm>

namespace vexa::tables {

DimensionLabels::DimensionLabels(const Table& table, DimensionId id)
    : dimension_(&table.data->dimensions()[id]), id_(id) {
    const DimensionView& view = table.view->dimensions[id];
    labelled_ = !view.labelHidden && !dimension_->label.empty();
    begins_.reserve(dimension_->groups.size() + 1);
    begins_.push_back(0);
    for (std::size_t i = 0; i < dimension_->groups.size(); ++i) {
        const TableGroup& group = dimension_->groups[i];
        // A group stands behind the one that it is in, whose path is known by now.
        if (group.parent < i) {
            const std::size_t begin = begins_[group.parent];
            const std::size_t end = begins_[group.parent + 1];
            for (std::size_t at = begin; at < end; ++at) paths_.push_back(GroupId{paths_[at]});
        }
        if (!group.label.empty() && paths_.size() - begins_.back() < mostShownGroups) {
            paths_.push_back(static_cast<GroupId>(i));
        }
        begins_.push_back(static_cast<std::uint32_t>(paths_.size()));
    }
    if (dimension_->groups.empty()) return;
    for (CategoryId i = 0; i < dimension_->categories.size(); ++i) {
        if (!view.isHidden(i)) depth_ = std::max(depth_, static_cast<std::uint32_t>(groups(i).size()) + 1);
    }
}

std::span<const GroupId> DimensionLabels::groups(CategoryId category) const {
    const GroupId group = dimension_->categories[category].group;
    if (group >= dimension_->groups.size()) return {};
    return std::span(paths_).subspan(begins_[group], begins_[group + 1] - begins_[group]);
}

std::uint32_t DimensionLabels::commonLevels(CategoryId one, CategoryId other) const {
    if (one == other) return depth_;
    const std::span<const GroupId> left = groups(one);
    const std::span<const GroupId> right = groups(other);
    const auto differing = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    return static_cast<std::uint32_t>(differing.first - left.begin());
}

AxisLabels::AxisLabels(const Table& table, Axis axis, bool headings) : headings_(headings) {
    for (const DimensionId id : table.view->axis(axis)) dimensions_.emplace_back(table, id);
}

std::uint32_t AxisLabels::levels() const {
    std::uint32_t levels = 0;
    for (const DimensionLabels& each : dimensions_) levels += each.depth() + (hasHeading(each) ? 1 : 0);
    return levels;
}

bool AxisLabels::isLabelled() const {
    return std::any_of(dimensions_.begin(), dimensions_.end(),
                       [](const DimensionLabels& each) { return each.isLabelled(); });
}

std::uint32_t AxisLabels::firstNewLevel(const AxisLines& lines, std::size_t index) const {
    if (index == 0) return 0;
    const std::span<const CategoryId> before = lines.line(index - 1);
    const std::span<const CategoryId> here = lines.line(index);
    std::uint32_t level = 0;
    for (std::size_t i = 0; i < dimensions_.size(); ++i) {
        const DimensionLabels& labels = dimensions_[i];
        // The dimension's own label stands over all categories of one run.
        if (hasHeading(labels)) ++level;
        if (before[i] != here[i]) return level + labels.commonLevels(before[i], here[i]);
        level += labels.depth();
    }
    return level;
}

}  // namespace vexa::tables
