#include "tests/unit/tables/table_sketch.h"

#include <charconv>
#include <map>
#include <string_view>
#include <utility>

namespace vexa::tables {

namespace {

GroupId groupOf(TableDimension& dimension, std::string_view path,
                std::map<std::string, GroupId, std::less<>>& known) {
    if (const auto found = known.find(path); found != known.end()) return found->second;
    const std::size_t cut = path.rfind('/');
    TableGroup group;
    if (cut != std::string_view::npos) group.parent = groupOf(dimension, path.substr(0, cut), known);
    group.label = path.substr(cut == std::string_view::npos ? 0 : cut + 1);
    if (group.label == "-") group.label.clear();
    dimension.groups.push_back(std::move(group));
    const auto id = static_cast<GroupId>(dimension.groups.size() - 1);
    known.emplace(path, id);
    return id;
}

std::vector<TableDimension> dimensionsOf(const std::vector<DimensionSketch>& sketches) {
    std::vector<TableDimension> dimensions;
    for (const DimensionSketch& each : sketches) dimensions.push_back(dimensionOf(each));
    return dimensions;
}

}  // namespace

TableDimension dimensionOf(const DimensionSketch& sketch) {
    TableDimension dimension;
    dimension.label = sketch.label;
    std::map<std::string, GroupId, std::less<>> known;
    for (const std::string& each : sketch.categories) {
        TableCategory category;
        const std::size_t cut = each.rfind('/');
        category.label = each.substr(cut == std::string::npos ? 0 : cut + 1);
        if (cut != std::string::npos) category.group = groupOf(dimension, each.substr(0, cut), known);
        dimension.categories.push_back(std::move(category));
    }
    return dimension;
}

TableSketch::TableSketch(const std::vector<DimensionSketch>& dimensions,
                         const std::vector<std::string>& cells, std::vector<std::string> footnotes)
    : data(dimensionsOf(dimensions), std::move(footnotes)) {
    for (std::size_t i = 0; i < dimensions.size(); ++i) {
        const Axis axis = dimensions[i].axis;
        (axis == Axis::row      ? view.rows
         : axis == Axis::column ? view.columns
                                : view.layers)
            .push_back(static_cast<DimensionId>(i));
    }
    view.dimensions.resize(dimensions.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        double number = 0;
        const char* const end = cells[i].data() + cells[i].size();
        if (cells[i].empty()) continue;
        if (std::from_chars(cells[i].data(), end, number).ptr == end) {
            data.setNumber(i, number);
        } else {
            data.setText(i, cells[i]);
        }
    }
}

Table TableSketch::table() { return makeTable(data.finish(), view, style); }

std::string picture(const TableGrid& grid) {
    std::vector<std::string> places(std::size_t{grid.rows} * grid.columns);
    for (const GridCell& cell : grid.cells) {
        for (std::uint32_t row = cell.row; row < cell.row + cell.rowSpan; ++row) {
            for (std::uint32_t column = cell.column; column < cell.column + cell.columnSpan; ++column) {
                if (row >= grid.rows || column >= grid.columns) return "a cell stands outside";
                std::string& place = places[std::size_t{row} * grid.columns + column];
                place += row > cell.row ? "^" : column > cell.column ? "<" : "";
                if (row > cell.row || column > cell.column) continue;
                place += std::string_view("ckrd")[static_cast<std::size_t>(cell.role)];
                place.append(grid.text(cell)).append(grid.markText(cell));
            }
        }
    }
    std::string text = "\n";
    for (std::size_t i = 0; i < places.size(); ++i) {
        text += places[i].empty() ? "!" : places[i];
        text += (i + 1) % grid.columns == 0 ? "\n" : "|";
    }
    return text;
}

}  // namespace vexa::tables
