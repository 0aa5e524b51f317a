// Tables from XML. Nothing that a table refers to by number may be missing, so every number is checked here
// and nowhere later.

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "frontend/package/xml_reader.h"
#include "frontend/store/item_xml.h"

namespace vexa::frontend {
namespace {

bool isNamed(const pugi::xml_node& node, const char* name) { return std::strcmp(node.name(), name) == 0; }

template <typename Table>
bool readFrame(const pugi::xml_node& node, Table& table) {
    return readText(node, "title", table.title) && readText(node, "caption", table.caption) &&
           readText(node, "subtype", table.subtype) && readFlag(node, "titleHidden", table.titleHidden) &&
           readInteger(node, "minDataColumnWidth", table.minDataColumnWidth) &&
           readInteger(node, "maxDataColumnWidth", table.maxDataColumnWidth);
}

bool readPosition(const pugi::xml_node& node, std::array<int, 4>& position) {
    const char* text = node.attribute("position").value();
    const char* end = text + std::strlen(text);
    for (std::size_t i = 0; i < position.size(); ++i) {
        if (i > 0 && (text == end || *text++ != ' ')) {
            return false;
        }
        const auto result = std::from_chars(text, end, position[i]);
        if (result.ec != std::errc()) {
            return false;
        }
        text = result.ptr;
    }
    return text == end;
}

// A group stands after the one that encloses it, so that groups never enclose each other.
bool readGroup(const pugi::xml_node& node, std::vector<PivotGroup>& groups) {
    PivotGroup group;
    if (!readText(node, "label", group.label) || !readInteger(node, "parent", group.parent)) {
        return false;
    }
    const bool known = group.parent >= -1 && group.parent < static_cast<int>(groups.size());
    groups.push_back(std::move(group));
    return known;
}

bool readCategory(const pugi::xml_node& node, PivotDimension& dimension) {
    PivotCategory& category = dimension.categories.emplace_back();
    return readText(node, "label", category.label) && readInteger(node, "group", category.group) &&
           category.group >= -1 && category.group < static_cast<int>(dimension.groups.size());
}

bool readDimension(const pugi::xml_node& node, PivotDimension& dimension) {
    if (!readText(node, "label", dimension.label) || !readInteger(node, "kind", dimension.kind) ||
        !readPosition(node, dimension.position)) {
        return false;
    }
    for (const pugi::xml_node child : node.children()) {
        const bool read = isNamed(child, "group")      ? readGroup(child, dimension.groups)
                          : isNamed(child, "category") ? readCategory(child, dimension)
                                                       : false;
        if (!read) {
            return false;
        }
    }
    return true;
}

bool readExtras(const pugi::xml_node& node, PivotCellExtras& extras) {
    if (!readFlag(node, "bold", extras.bold) || !readText(node, "color", extras.color) ||
        !readText(node, "background", extras.background)) {
        return false;
    }
    for (const pugi::xml_node child : node.children()) {
        if (!isNamed(child, "note") || !readContent(child, extras.notes.emplace_back())) {
            return false;
        }
    }
    return true;
}

bool readExtrasNumber(const pugi::xml_node& node, std::size_t count, std::uint32_t& extras) {
    std::uint64_t number = 0;
    const bool read = readInteger(node, "x", number) && number <= count;
    extras = static_cast<std::uint32_t>(number);
    return read;
}

// How many places the dimensions have; more than there can be numbers for counts as none.
std::uint64_t countPlaces(const std::vector<PivotDimension>& dimensions) {
    std::uint64_t count = 1;
    for (const PivotDimension& dimension : dimensions) {
        const std::uint64_t categories = dimension.categories.size();
        if (categories != 0 && count > std::numeric_limits<std::uint64_t>::max() / categories) {
            return 0;
        }
        count *= categories;
    }
    return count;
}

bool readCell(const pugi::xml_node& node, std::uint64_t places, PivotTable& table) {
    const std::uint64_t expected = table.cells.empty() ? 0 : table.cells.back().place + 1;
    PivotCell& cell = table.cells.emplace_back();
    cell.place = expected;
    return readInteger(node, "p", cell.place) && cell.place < places && readNumber(node, "n", cell.number) &&
           readExtrasNumber(node, table.extras.size(), cell.extras) && readContent(node, cell.text);
}

bool hasDistinctPlaces(const std::vector<PivotCell>& cells) {
    const auto notBefore = [](const PivotCell& left, const PivotCell& right) {
        return left.place >= right.place;
    };
    if (std::adjacent_find(cells.begin(), cells.end(), notBefore) == cells.end()) {
        return true;
    }
    std::vector<std::uint64_t> places;
    places.reserve(cells.size());
    for (const PivotCell& cell : cells) {
        places.push_back(cell.place);
    }
    std::sort(places.begin(), places.end());
    return std::adjacent_find(places.begin(), places.end()) == places.end();
}

// Children stand in the order in which they are written: dimensions, extras, cells.
bool readTableChild(const pugi::xml_node& node, std::uint64_t places, PivotTable& table) {
    if (isNamed(node, "c")) {
        return readCell(node, places, table);
    }
    if (isNamed(node, "extras")) {
        return table.cells.empty() && readExtras(node, table.extras.emplace_back());
    }
    return isNamed(node, "dimension") && table.cells.empty() &&
           readDimension(node, table.dimensions.emplace_back());
}

bool readGridSize(const pugi::xml_node& node, const char* attribute, std::size_t& size) {
    std::uint64_t number = 0;
    const bool read = readInteger(node, attribute, number) && number <= maximalFlatCells;
    size = static_cast<std::size_t>(number);
    return read;
}

bool readFlatChild(const pugi::xml_node& node, FlatTable& table) {
    if (isNamed(node, "extras")) {
        return table.cells.empty() && readExtras(node, table.extras.emplace_back());
    }
    FlatCell& cell = table.cells.emplace_back();
    return isNamed(node, "c") && readExtrasNumber(node, table.extras.size(), cell.extras) &&
           readContent(node, cell.text);
}

bool isWholeGrid(const FlatTable& table) {
    const bool whole = table.columns == 0 ? table.cells.empty() : table.cells.size() % table.columns == 0;
    return whole && table.cells.size() <= maximalFlatCells && table.headerColumns <= table.columns &&
           table.headerRows <= table.rows();
}

}  // namespace

bool readTable(const XmlReader& xml, PivotTable& table) {
    const pugi::xml_node root = xml.root();
    if (!readFrame(root, table) || !readFlag(root, "flag", table.flag)) {
        return false;
    }
    std::uint64_t places = 0;
    for (const pugi::xml_node child : root.children()) {
        if (table.cells.empty() && isNamed(child, "c")) {
            places = countPlaces(table.dimensions);
        }
        if (!readTableChild(child, places, table)) {
            return false;
        }
    }
    return hasDistinctPlaces(table.cells);
}

bool readFlatTable(const XmlReader& xml, FlatTable& table) {
    const pugi::xml_node root = xml.root();
    if (!readFrame(root, table) || !readGridSize(root, "columns", table.columns) ||
        !readGridSize(root, "headerRows", table.headerRows) ||
        !readGridSize(root, "headerColumns", table.headerColumns)) {
        return false;
    }
    for (const pugi::xml_node child : root.children()) {
        if (!readFlatChild(child, table)) {
            return false;
        }
    }
    return isWholeGrid(table);
}

}  // namespace vexa::frontend
