#include "frontend/modify/row_sort.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "backend/tables/layout/axis_lines.h"
#include "frontend/document/compared_text.h"

namespace vexa::frontend {

namespace {

using namespace tables;

/// What a row is sorted by.
struct SortKey {
    CategoryId category = 0;
    bool isTotal = false;
    tables::CellKind kind = tables::CellKind::empty;
    double number = 0;
    std::string text;
};

/// Numbers, then texts, then what is empty.
int rankOf(tables::CellKind kind) {
    switch (kind) {
        case tables::CellKind::number:
            return 0;
        case tables::CellKind::text:
            return 1;
        case tables::CellKind::empty:
            break;
    }
    return 2;
}

/// What is no number stands behind all that are.
bool isLessNumber(double left, double right) {
    if (std::isnan(left) || std::isnan(right)) return !std::isnan(left) && std::isnan(right);
    return left < right;
}

bool isLessValue(const SortKey& left, const SortKey& right) {
    return left.kind == tables::CellKind::number ? isLessNumber(left.number, right.number)
                                                 : left.text < right.text;
}

class KeyOrder {
  public:
    explicit KeyOrder(bool ascending) : ascending_(ascending) {}

    bool operator()(const SortKey& left, const SortKey& right) const {
        if (left.isTotal != right.isTotal) return right.isTotal;
        if (left.isTotal) return false;
        if (rankOf(left.kind) != rankOf(right.kind)) return rankOf(left.kind) < rankOf(right.kind);
        if (left.kind == tables::CellKind::empty) return false;
        return ascending_ ? isLessValue(left, right) : isLessValue(right, left);
    }

  private:
    bool ascending_;
};

/// The line of the column axis that `sort` names.
std::optional<std::size_t> findColumn(const TableData& data, const AxisLines& columns,
                                      const SortChange& sort) {
    if (sort.label.empty()) {
        const auto index = static_cast<std::size_t>(sort.position) - 1;
        return sort.position >= 1 && index < columns.size() ? std::optional(index) : std::nullopt;
    }
    if (columns.dimensions().empty()) return std::nullopt;
    const std::string wanted = comparedText(sort.label);
    const TableDimension& innermost = data.dimensions()[columns.dimensions().back()];
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (comparedText(innermost.categories[columns.line(i).back()].label) == wanted) return i;
    }
    return std::nullopt;
}

/// What the other row dimensions add to a place: their first shown categories. Nothing where one shows none.
std::optional<Place> firstOfOthers(const TableData& data, const TableView& view) {
    Place offset = 0;
    for (std::size_t i = 0; i + 1 < view.rows.size(); ++i) {
        const DimensionId id = view.rows[i];
        const std::vector<CategoryId> shown = shownCategories(data.dimensions()[id], view.dimensions[id]);
        if (shown.empty()) return std::nullopt;
        offset += shown.front() * data.stride(id);
    }
    return offset;
}

SortKey keyOf(const TableData& data, DimensionId dimension, CategoryId category, Place base) {
    SortKey key;
    key.category = category;
    key.isTotal = data.dimensions()[dimension].categories[category].role == StatisticRole::total;
    const TableCell* const cell = data.find(base + category * data.stride(dimension));
    if (cell == nullptr) return key;
    key.kind = cell->kind;
    key.number = cell->number;
    if (cell->kind == tables::CellKind::text) key.text = comparedText(data.text(*cell));
    return key;
}

/// The order of a dimension's categories with each group's members sorted among the places that the group
/// has.
std::vector<CategoryId> sortedOrder(const TableData& data, DimensionId dimension, const DimensionView& view,
                                    Place base, bool ascending) {
    const std::vector<TableCategory>& categories = data.dimensions()[dimension].categories;
    std::vector<CategoryId> order = view.order;
    if (order.empty()) {
        order.resize(categories.size());
        std::iota(order.begin(), order.end(), CategoryId{0});
    }
    std::unordered_map<GroupId, std::vector<std::size_t>> placesOfGroups;
    for (std::size_t i = 0; i < order.size(); ++i) placesOfGroups[categories[order[i]].group].push_back(i);
    std::vector<CategoryId> sorted(order.size());
    for (const auto& [group, places] : placesOfGroups) {
        std::vector<SortKey> keys;
        keys.reserve(places.size());
        for (const std::size_t place : places) keys.push_back(keyOf(data, dimension, order[place], base));
        std::stable_sort(keys.begin(), keys.end(), KeyOrder(ascending));
        for (std::size_t i = 0; i < places.size(); ++i) sorted[places[i]] = keys[i].category;
    }
    return sorted;
}

}  // namespace

bool sortRows(const Table& table, TableView& view, const SortChange& sort) {
    if (view.rows.empty()) return false;
    const TableData& data = *table.data;
    const Table arranged{table.data, std::make_shared<const TableView>(view), table.style};
    const AxisLines columns = axisLines(arranged, Axis::column);
    const std::optional<std::size_t> column = findColumn(data, columns, sort);
    const std::optional<Place> others = firstOfOthers(data, view);
    if (!column || !others) return false;
    const Place base = *others + columns.offset(*column) + layersOf(arranged, LayerChoice::shown).front();
    DimensionView& rows = view.dimensions[view.rows.back()];
    std::vector<CategoryId> order = sortedOrder(data, view.rows.back(), rows, base, sort.ascending);
    if (order == rows.order || (rows.order.empty() && std::is_sorted(order.begin(), order.end())))
        return false;
    rows.order = std::move(order);
    return true;
}

}  // namespace vexa::frontend
