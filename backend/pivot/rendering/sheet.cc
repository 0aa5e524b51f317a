#include "backend/pivot/rendering/sheet.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace vexa::rendering {

namespace {

using Keys = std::vector<std::uint64_t>;  // places on one axis, each as one number

struct LocatedCell {
    std::uint64_t layer = 0;
    std::uint64_t row = 0;
    std::uint64_t column = 0;
    const PivotCell* cell = nullptr;
};

std::uint64_t keyOn(const std::vector<std::size_t>& axis, const PivotTable& table,
                    const std::vector<std::size_t>& indexes) {
    std::uint64_t key = 0;
    for (const std::size_t dimension : axis) {
        key = key * table.dimensions[dimension].categories.size() + indexes[dimension];
    }
    return key;
}

AxisPlace placeOn(const std::vector<std::size_t>& axis, const PivotTable& table, std::uint64_t key) {
    AxisPlace place(axis.size());
    for (std::size_t i = axis.size(); i-- > 0;) {
        const std::uint64_t count = table.dimensions[axis[i]].categories.size();
        place[i] = static_cast<std::size_t>(key % count);
        key /= count;
    }
    return place;
}

std::vector<AxisPlace> placesOn(const std::vector<std::size_t>& axis, const PivotTable& table,
                                const Keys& keys) {
    std::vector<AxisPlace> places;
    places.reserve(keys.size());
    for (const std::uint64_t key : keys) places.push_back(placeOn(axis, table, key));
    return places;
}

std::vector<LocatedCell> locatedCells(const PivotTable& table, const TableAxes& axes) {
    std::vector<LocatedCell> cells;
    cells.reserve(table.cells.size());
    for (const PivotCell& cell : table.cells) {
        const std::vector<std::size_t> indexes = table.coordinates(cell.place);
        cells.push_back({keyOn(axes.layers, table, indexes), keyOn(axes.rows, table, indexes),
                         keyOn(axes.columns, table, indexes), &cell});
    }
    std::sort(cells.begin(), cells.end(), [](const LocatedCell& left, const LocatedCell& right) {
        return std::tie(left.layer, left.row, left.column) < std::tie(right.layer, right.row, right.column);
    });
    return cells;
}

/// The keys to show on an axis: all of a lone dimension where that is asked for, else those in `used`.
Keys shownKeys(const std::vector<std::size_t>& axis, const PivotTable& table, bool all, Keys used) {
    if (axis.empty()) return {0};
    if (all && axis.size() == 1) {
        Keys keys(table.dimensions[axis[0]].categories.size());
        std::iota(keys.begin(), keys.end(), std::uint64_t{0});
        return keys;
    }
    std::sort(used.begin(), used.end());
    used.erase(std::unique(used.begin(), used.end()), used.end());
    return used;
}

using Located = std::vector<LocatedCell>::const_iterator;

std::size_t indexOf(const Keys& keys, std::uint64_t key) {
    return static_cast<std::size_t>(std::lower_bound(keys.begin(), keys.end(), key) - keys.begin());
}

Sheet sheetOf(const PivotTable& table, const TableAxes& axes, Located begin, Located end) {
    Keys usedRows;
    Keys usedColumns;
    for (auto each = begin; each != end; ++each) {
        usedRows.push_back(each->row);
        usedColumns.push_back(each->column);
    }
    const bool all = axes.layers.empty() || begin == end;
    const Keys rows = shownKeys(axes.rows, table, all, std::move(usedRows));
    const Keys columns = shownKeys(axes.columns, table, all, std::move(usedColumns));
    Sheet sheet;
    if (begin != end) sheet.layer = placeOn(axes.layers, table, begin->layer);
    sheet.rows = placesOn(axes.rows, table, rows);
    sheet.columns = placesOn(axes.columns, table, columns);
    sheet.cells.resize(rows.size() * columns.size());
    for (auto each = begin; each != end; ++each) {
        sheet.cells[indexOf(rows, each->row) * columns.size() + indexOf(columns, each->column)] = each->cell;
    }
    return sheet;
}

}  // namespace

TableAxes axesOf(const PivotTable& table) {
    TableAxes axes;
    for (std::size_t i = 0; i < table.dimensions.size(); ++i) {
        switch (table.dimensions[i].axis()) {
            case PivotAxis::row:
                axes.rows.push_back(i);
                break;
            case PivotAxis::column:
                axes.columns.push_back(i);
                break;
            case PivotAxis::layer:
                axes.layers.push_back(i);
                break;
        }
    }
    return axes;
}

std::vector<Sheet> sheetsOf(const PivotTable& table, const TableAxes& axes) {
    const std::vector<LocatedCell> cells = locatedCells(table, axes);
    std::vector<Sheet> sheets;
    if (cells.empty()) sheets.push_back(sheetOf(table, axes, cells.begin(), cells.end()));
    for (auto begin = cells.begin(); begin != cells.end();) {
        const auto end = std::find_if(
            begin, cells.end(), [begin](const LocatedCell& each) { return each.layer != begin->layer; });
        sheets.push_back(sheetOf(table, axes, begin, end));
        begin = end;
    }
    return sheets;
}

}  // namespace vexa::rendering
