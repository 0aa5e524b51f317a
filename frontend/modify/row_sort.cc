#include "frontend/modify/row_sort.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "backend/tables/layout/axis_lines.h"
#include "frontend/document/compared_text.h"

namespace vexa::frontend {

namespace {

using tables::Axis;
using tables::AxisLines;
using tables::axisLines;
using tables::CategoryId;
using tables::DimensionId;
using tables::DimensionView;
using tables::GroupId;
using tables::LayerChoice;
using tables::layersOf;
using tables::Place;
using tables::StatisticRole;
using tables::Table;
using tables::TableCategory;
using tables::TableCell;
using tables::TableData;
using tables::TableDimension;
using tables::TableView;

/// What a row is sorted by.
struct SortKey {
    CategoryId category = 0;
    bool isTotal = false;
    tables::CellKind kind = tables::CellKind::empty;
    double number = 0;
    std::string_view text;  ///< as it is compared
};

/// Texts as they are compared, by their number in the table: very many cells may have the same long one.
using ComparedTexts = std::unordered_map<std::uint32_t, std::string>;

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

/// Equal texts are the same one mostly, and then need no comparison.
bool isLessText(std::string_view left, std::string_view right) {
    return left.data() != right.data() && left < right;
}

bool isLessValue(const SortKey& left, const SortKey& right) {
    return left.kind == tables::CellKind::number ? isLessNumber(left.number, right.number)
                                                 : isLessText(left.text, right.text);
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

/// What the other row dimensions add to a place: their first combination that is shown. Nothing where there
/// is none.
std::optional<Place> firstOfOthers(const Table& table) {
    if (table.view->rows.size() == 1) return 0;
    const AxisLines rows = axisLines(table, Axis::row);
    if (rows.isEmpty()) return std::nullopt;
    const std::vector<DimensionId>& dimensions = rows.dimensions();
    Place offset = 0;
    for (std::size_t i = 0; i + 1 < dimensions.size(); ++i)
        offset += rows.line(0)[i] * table.data->stride(dimensions[i]);
    return offset;
}

SortKey keyOf(const TableData& data, DimensionId dimension, CategoryId category, Place base,
              ComparedTexts& texts) {
    SortKey key;
    key.category = category;
    key.isTotal = data.dimensions()[dimension].categories[category].role == StatisticRole::total;
    const TableCell* const cell = data.find(base + category * data.stride(dimension));
    if (data.isEmpty(cell)) return key;
    key.kind = cell->kind;
    key.number = cell->number;
    if (cell->kind == tables::CellKind::text) {
        const auto [found, isNew] = texts.try_emplace(cell->text);
        if (isNew) found->second = comparedText(data.text(*cell));
        key.text = found->second;
    }
    return key;
}

std::vector<CategoryId> identity(std::size_t count) {
    std::vector<CategoryId> order(count);
    std::iota(order.begin(), order.end(), CategoryId{0});
    return order;
}

/// The order of a dimension's categories with each group's members sorted among the places that the group
/// has.
std::vector<CategoryId> sortedOrder(const TableData& data, DimensionId dimension,
                                    const std::vector<CategoryId>& order, Place base, bool ascending) {
    const std::vector<TableCategory>& categories = data.dimensions()[dimension].categories;
    std::map<GroupId, std::vector<std::size_t>> placesOfGroups;
    for (std::size_t i = 0; i < order.size(); ++i) placesOfGroups[categories[order[i]].group].push_back(i);
    std::vector<CategoryId> sorted(order.size());
    ComparedTexts texts;
    for (const auto& [group, places] : placesOfGroups) {
        std::vector<SortKey> keys;
        keys.reserve(places.size());
        for (const std::size_t place : places) {
            keys.push_back(keyOf(data, dimension, order[place], base, texts));
        }
        std::stable_sort(keys.begin(), keys.end(), KeyOrder(ascending));
        for (std::size_t i = 0; i < places.size(); ++i) sorted[places[i]] = keys[i].category;
    }
    return sorted;
}

}  // namespace

SortOutcome sortRows(const Table& table, TableView& view, const SortChange& sort) {
    const TableData& data = *table.data;
    const Table arranged{table.data, std::make_shared<const TableView>(view), table.style};
    const AxisLines columns = axisLines(arranged, Axis::column);
    const std::optional<std::size_t> column = findColumn(data, columns, sort);
    if (!column) return SortOutcome::noSuchColumn;
    if (view.rows.empty()) return SortOutcome::same;
    const std::optional<Place> others = firstOfOthers(arranged);
    if (!others) return SortOutcome::same;
    const DimensionId dimension = view.rows.back();
    const Place base = *others + columns.offset(*column) + layersOf(arranged, LayerChoice::shown).front();
    DimensionView& rows = view.dimensions[dimension];
    const std::vector<CategoryId> unsorted = identity(data.dimensions()[dimension].categories.size());
    const std::vector<CategoryId>& before = rows.order.empty() ? unsorted : rows.order;
    std::vector<CategoryId> order = sortedOrder(data, dimension, before, base, sort.ascending);
    if (order == before) return SortOutcome::same;
    // The order of the data is written as no order, so that equal views are equal values.
    rows.order = order == unsorted ? std::vector<CategoryId>{} : std::move(order);
    return SortOutcome::sorted;
}

}  // namespace vexa::frontend
