// Tables of format 1. Nothing that a table refers to by number may be missing, so every number is checked
// here and nowhere later.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/pivot/pivot_table.h"
#include "backend/pivot/shown_table.h"
#include "frontend/store/format1/format1_reader.h"

namespace vexa::frontend::format1 {
namespace {

/// Attributes that both sorts of tables have.
template <typename Table>
void readFrame(ElementReader& element, Table& table) {
    std::string subtype;  // the item has it too
    element.text("title", table.title).text("caption", table.caption).text("subtype", subtype);
}

/// Whole points; attributes that are there must be numbers.
void readWidth(const pugi::xml_node& root, ElementReader& element, const char* name,
               std::optional<int>& width) {
    if (root.attribute(name)) element.whole(name, width.emplace());
}

bool readPosition(const pugi::xml_node& node, ElementReader& element, std::array<int, 4>& position) {
    std::string ignored;
    element.text("position", ignored);
    const char* text = node.attribute("position").value();
    const char* const end = text + std::strlen(text);
    for (std::size_t i = 0; i < position.size(); ++i) {
        if (i > 0 && (text == end || *text++ != ' ')) return false;
        const auto result = std::from_chars(text, end, position[i]);
        if (result.ec != std::errc()) return false;
        text = result.ptr;
    }
    return text == end && position[0] >= 0 && position[0] <= 2;
}

bool readLabel(const pugi::xml_node& node, PivotDimension& dimension) {
    ElementReader element(node);
    const int groups = static_cast<int>(dimension.groups.size());
    // A group stands after the one that encloses it, so that groups never enclose each other.
    if (isNamed(node, "group")) {
        PivotGroup& group = dimension.groups.emplace_back();
        element.text("label", group.label).whole("parent", group.parent);
        element.require(group.parent >= -1 && group.parent < groups);
    } else {
        PivotCategory& category = dimension.categories.emplace_back();
        element.text("label", category.label).whole("group", category.group);
        element.require(isNamed(node, "category") && category.group >= -1 && category.group < groups);
    }
    return element.isRead() && !node.first_child();
}

bool readDimension(const pugi::xml_node& node, PivotDimension& dimension) {
    ElementReader element(node);
    element.text("label", dimension.label).whole("kind", dimension.kind);
    if (!readPosition(node, element, dimension.position) || !element.isRead()) return false;
    for (const pugi::xml_node child : node.children()) {
        if (!readLabel(child, dimension)) return false;
    }
    return true;
}

bool readExtras(const pugi::xml_node& node, PivotCellExtras& extras) {
    ElementReader element(node);
    element.flag("bold", extras.bold).text("color", extras.color).text("background", extras.background);
    for (const pugi::xml_node child : node.children()) {
        ElementReader note(child);
        if (!isNamed(child, "note") || !note.content(extras.notes.emplace_back()).isRead()) return false;
    }
    return element.isRead();
}

/// What a cell takes that refers to these extras.
std::uint64_t memoryOf(const PivotCellExtras& extras) {
    return sizeof(tables::CellExtras) + extras.notes.size() * sizeof(tables::FootnoteId);
}

bool readCell(const pugi::xml_node& node, std::uint64_t places, PivotTable& table, MemoryBudget& budget) {
    const std::uint64_t expected = table.cells.empty() ? 0 : table.cells.back().place + 1;
    PivotCell& cell = table.cells.emplace_back();
    cell.place = expected;
    ElementReader element(node);
    element.whole("p", cell.place).whole("x", cell.extras).content(cell.text);
    if (node.attribute("n")) {
        // Not only finite ones.
        const char* const text = node.attribute("n").value();
        const char* const end = text + std::strlen(text);
        const auto read = std::from_chars(text, end, cell.number.emplace());
        std::string same;
        element.text("n", same).require(read.ec == std::errc() && read.ptr == end);
    }
    const bool known = cell.place < places && cell.extras <= table.extras.size();
    return known && element.isRead() && (cell.extras == 0 || budget.keep(memoryOf(table.extrasOf(cell))));
}

bool hasDistinctPlaces(const std::vector<PivotCell>& cells) {
    std::vector<std::uint64_t> places;
    places.reserve(cells.size());
    for (const PivotCell& cell : cells) places.push_back(cell.place);
    std::sort(places.begin(), places.end());
    return std::adjacent_find(places.begin(), places.end()) == places.end();
}

std::uint64_t countPlaces(const PivotTable& table) {
    std::vector<tables::TableDimension> dimensions(table.dimensions.size());
    for (std::size_t i = 0; i < dimensions.size(); ++i) {
        dimensions[i].categories.resize(table.dimensions[i].categories.size());
    }
    return tables::placeCountOf(dimensions).value_or(0);
}

std::uint64_t countChildren(const pugi::xml_node& node) {
    std::uint64_t count = 0;
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) ++count;
    return count;
}

}  // namespace

bool readTable(const pugi::xml_node& root, MemoryBudget& budget, tables::Table& table) {
    PivotTable built;
    ElementReader element(root);
    readFrame(element, built);
    element.flag("titleHidden", built.titleHidden).flag("flag", built.flag);
    readWidth(root, element, "minDataColumnWidth", built.minDataColumnWidth);
    readWidth(root, element, "maxDataColumnWidth", built.maxDataColumnWidth);
    if (!element.isRead()) return false;
    pugi::xml_node node = root.first_child();
    for (; isNamed(node, "dimension"); node = node.next_sibling()) {
        if (!readDimension(node, built.dimensions.emplace_back())) return false;
    }
    for (; isNamed(node, "extras"); node = node.next_sibling()) {
        if (!readExtras(node, built.extras.emplace_back())) return false;
    }
    const std::uint64_t places = countPlaces(built);
    // A cell's text, when it is not what its number gives, is kept beside it.
    constexpr std::uint64_t ofCell = sizeof(PivotCell) + sizeof(tables::CellExtras);
    const std::uint64_t cells = countChildren(root);
    if (!budget.keep(memoryOfCells(places, cells) + cells * ofCell)) return false;
    for (; node; node = node.next_sibling()) {
        if (!isNamed(node, "c") || !readCell(node, places, built, budget)) return false;
    }
    if (!hasDistinctPlaces(built.cells)) return false;
    table = shownTable(built);
    return true;
}

bool readFlatTable(const pugi::xml_node& root, MemoryBudget& budget, tables::FlatTable& grid) {
    ElementReader element(root);
    bool titleHidden = false;
    std::optional<int> width;
    readFrame(element, grid);
    element.flag("titleHidden", titleHidden);
    readWidth(root, element, "minDataColumnWidth", width);
    readWidth(root, element, "maxDataColumnWidth", width);
    element.whole("columns", grid.columns).whole("headerRows", grid.headerRows);
    element.whole("headerColumns", grid.headerColumns);
    if (!element.isRead()) return false;
    if (titleHidden) grid.title.clear();
    pugi::xml_node node = root.first_child();
    for (; isNamed(node, "extras"); node = node.next_sibling()) {
        PivotCellExtras extras;
        if (!readExtras(node, extras)) return false;
        tables::CellStyle& style = grid.styles.emplace_back();
        if (extras.bold) style.bold = true;
        style.color = colorOf(extras.color);
        style.background = colorOf(extras.background);
    }
    const std::uint64_t cells = countChildren(root);
    if (cells > tables::maximalFlatCells + grid.styles.size() ||
        !budget.keep(cells * sizeof(tables::FlatCell))) {
        return false;
    }
    for (; node; node = node.next_sibling()) {
        tables::FlatCell& cell = grid.cells.emplace_back();
        ElementReader reader(node);
        reader.whole("x", cell.style).content(cell.text).require(cell.style < grid.styles.size());
        if (!isNamed(node, "c") || !reader.isRead()) return false;
    }
    const bool whole = grid.columns == 0 ? grid.cells.empty() : grid.cells.size() % grid.columns == 0;
    return whole && grid.headerColumns <= grid.columns && grid.headerRows <= grid.rows();
}

}  // namespace vexa::frontend::format1
