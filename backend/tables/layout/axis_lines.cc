#include "backend/tables/layout/axis_lines.h"

#include <algorithm>
#include <utility>

namespace vexa::tables {

namespace {

/// The most categories that the lines of an axis hold together.
constexpr std::size_t maximalLineIds = 16'000'000;

/// For each category of a dimension its number among those that are shown, or `isHidden`.
using Ranks = std::vector<std::uint32_t>;
constexpr std::uint32_t isHidden = UINT32_MAX;

Ranks ranksOf(std::size_t categories, const std::vector<CategoryId>& shown) {
    Ranks ranks(categories, isHidden);
    for (std::size_t i = 0; i < shown.size(); ++i) ranks[shown[i]] = static_cast<std::uint32_t>(i);
    return ranks;
}

/// What can be shown of a whole table.
struct ShownTable {
    explicit ShownTable(const Table& table) {
        const std::vector<TableDimension>& dimensions = table.data->dimensions();
        for (std::size_t i = 0; i < dimensions.size(); ++i) {
            shown.push_back(shownCategories(dimensions[i], table.view->dimensions[i]));
            ranks.push_back(ranksOf(dimensions[i].categories.size(), shown.back()));
        }
    }

    std::vector<std::vector<CategoryId>> shown;
    std::vector<Ranks> ranks;
};

/// The numbers of the lines that have a value, ascending; lines are numbered as if all were there.
std::vector<Place> filledLines(const Table& table, const std::vector<DimensionId>& axis) {
    const ShownTable all(table);
    std::vector<Place> lines;
    lines.reserve(table.data->filledCount());
    std::vector<CategoryId> ids;
    table.data->forEachCell([&](Place place, const TableCell&) {
        table.data->coordinates(place, ids);
        for (std::size_t i = 0; i < ids.size(); ++i) {
            if (all.ranks[i][ids[i]] == isHidden) return;
        }
        Place line = 0;
        for (const DimensionId id : axis) line = line * all.shown[id].size() + all.ranks[id][ids[id]];
        if (lines.empty() || lines.back() != line) lines.push_back(line);
    });
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

/// The category that a layer dimension shows now.
CategoryId chosenCategory(const TableDimension& dimension, const DimensionView& view) {
    const bool holds = view.shown < dimension.categories.size() && !view.isHidden(view.shown);
    if (holds) return view.shown;
    const std::vector<CategoryId> shown = shownCategories(dimension, view);
    return shown.empty() ? 0 : shown.front();
}

}  // namespace

AxisLines axisLines(const Table& table, Axis axis) {
    const TableData& data = *table.data;
    AxisLines lines;
    lines.dimensions_ = table.view->axis(axis);
    const std::size_t depth = lines.dimensions_.size();
    std::vector<std::vector<CategoryId>> shown;
    Place count = 1;  // no overflow: no more than the places of the table
    for (const DimensionId id : lines.dimensions_) {
        shown.push_back(shownCategories(data.dimensions()[id], table.view->dimensions[id]));
        count *= shown.back().size();
    }
    const bool onlyFilled =
        table.view->emptyLinesLeftOut && (depth > 1 || (depth == 1 && axis == Axis::layer));
    std::vector<Place> filled;
    if (onlyFilled && count > 0) {
        filled = filledLines(table, lines.dimensions_);
        count = filled.size();
    }
    count = std::min<Place>({count, maximalLines, maximalLineIds / std::max<std::size_t>(depth, 1)});
    lines.ids_.resize(static_cast<std::size_t>(count) * depth);
    lines.offsets_.resize(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < lines.offsets_.size(); ++i) {
        Place rest = onlyFilled ? filled[i] : i;
        for (std::size_t k = depth; k-- > 0;) {
            const CategoryId category = shown[k][static_cast<std::size_t>(rest % shown[k].size())];
            rest /= shown[k].size();
            lines.ids_[i * depth + k] = category;
            lines.offsets_[i] += category * data.stride(lines.dimensions_[k]);
        }
    }
    return lines;
}

std::vector<Place> layersOf(const Table& table, LayerChoice choice) {
    if (choice == LayerChoice::all) {
        const AxisLines lines = axisLines(table, Axis::layer);
        if (!lines.isEmpty()) return lines.offsets();
    }
    Place chosen = 0;
    for (const DimensionId id : table.view->layers) {
        chosen +=
            chosenCategory(table.data->dimensions()[id], table.view->dimensions[id]) * table.data->stride(id);
    }
    return {chosen};
}

}  // namespace vexa::tables
