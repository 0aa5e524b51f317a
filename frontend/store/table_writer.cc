// Tables as XML. There may be very many cells, so their element and attribute names are single letters, and a
// cell that follows the one before does not name its place.

#include <array>
#include <charconv>
#include <string>

#include "frontend/package/xml_writer.h"
#include "frontend/store/item_xml.h"

namespace vexa::frontend {
namespace {

template <typename Table>
void writeFrame(const Table& table, XmlWriter& xml) {
    xml.optional("title", table.title).optional("caption", table.caption).optional("subtype", table.subtype);
    xml.flag("titleHidden", table.titleHidden);
    if (table.minDataColumnWidth) {
        xml.attribute("minDataColumnWidth", *table.minDataColumnWidth);
    }
    if (table.maxDataColumnWidth) {
        xml.attribute("maxDataColumnWidth", *table.maxDataColumnWidth);
    }
}

void writeExtras(const std::vector<PivotCellExtras>& all, XmlWriter& xml) {
    for (const PivotCellExtras& extras : all) {
        xml.begin("extras").flag("bold", extras.bold);
        xml.optional("color", extras.color).optional("background", extras.background);
        for (const std::string& note : extras.notes) {
            xml.begin("note").text(note).end();
        }
        xml.end();
    }
}

void writePosition(const std::array<int, 4>& position, XmlWriter& xml) {
    std::string text;
    for (const int number : position) {
        text += (text.empty() ? "" : " ") + std::to_string(number);
    }
    xml.attribute("position", text);
}

void writeLabel(std::string_view element, const std::string& label, int group, std::string_view groupName,
                XmlWriter& xml) {
    xml.begin(element).optional("label", label);
    if (group >= 0) {
        xml.attribute(groupName, group);
    }
    xml.end();
}

void writeDimension(const PivotDimension& dimension, XmlWriter& xml) {
    xml.begin("dimension").optional("label", dimension.label).attribute("kind", dimension.kind);
    writePosition(dimension.position, xml);
    for (const PivotGroup& group : dimension.groups) {
        writeLabel("group", group.label, group.parent, "parent", xml);
    }
    for (const PivotCategory& category : dimension.categories) {
        writeLabel("category", category.label, category.group, "group", xml);
    }
    xml.end();
}

void writeNumber(double number, XmlWriter& xml) {
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    xml.attribute("n", std::string_view(digits.data(), static_cast<std::size_t>(result.ptr - digits.data())));
}

void writeCell(const PivotCell& cell, std::uint64_t expected, XmlWriter& xml) {
    xml.begin("c");
    if (cell.place != expected) {
        xml.attribute("p", std::to_string(cell.place));
    }
    if (cell.number) {
        writeNumber(*cell.number, xml);
    }
    if (cell.extras != 0) {
        xml.attribute("x", std::int64_t{cell.extras});
    }
    xml.text(cell.text).end();
}

}  // namespace

void writeTable(const PivotTable& table, XmlWriter& xml) {
    xml.begin("table");
    writeFrame(table, xml);
    xml.flag("flag", table.flag);
    for (const PivotDimension& dimension : table.dimensions) {
        writeDimension(dimension, xml);
    }
    writeExtras(table.extras, xml);
    std::uint64_t expected = 0;
    for (const PivotCell& cell : table.cells) {
        writeCell(cell, expected, xml);
        expected = cell.place + 1;
    }
    xml.end();
}

void writeFlatTable(const FlatTable& table, XmlWriter& xml) {
    xml.begin("flatTable");
    writeFrame(table, xml);
    xml.attribute("columns", static_cast<std::int64_t>(table.columns));
    xml.attribute("headerRows", static_cast<std::int64_t>(table.headerRows));
    xml.attribute("headerColumns", static_cast<std::int64_t>(table.headerColumns));
    writeExtras(table.extras, xml);
    for (const FlatCell& cell : table.cells) {
        xml.begin("c");
        if (cell.extras != 0) {
            xml.attribute("x", std::int64_t{cell.extras});
        }
        xml.text(cell.text).end();
    }
    xml.end();
}

}  // namespace vexa::frontend
