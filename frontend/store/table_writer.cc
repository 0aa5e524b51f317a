#include <algorithm>
#include <string>

#include "frontend/store/cell_text.h"
#include "frontend/store/style_xml.h"
#include "frontend/store/table_xml.h"

namespace vexa::frontend {
namespace {

using tables::CellExtras;
using tables::CellStyle;
using tables::DimensionView;
using tables::DisplayFormat;
using tables::FlatCell;
using tables::FlatTable;
using tables::FormatKind;
using tables::formatText;
using tables::noGroup;
using tables::StatisticRole;
using tables::Table;
using tables::TableCategory;
using tables::TableData;
using tables::TableDimension;
using tables::TableGroup;
using tables::TableView;

void writeList(std::string_view name, const std::vector<std::uint32_t>& numbers, XmlWriter& xml) {
    if (!numbers.empty()) xml.attribute(name, listText(numbers));
}

void writeFormat(std::string_view name, DisplayFormat format, XmlWriter& xml) {
    if (format.kind != FormatKind::none) xml.attribute(name, formatText(format));
}

void writeView(const TableView& view, XmlWriter& xml) {
    xml.optional("title", view.title).optional("caption", view.caption).optional("corner", view.corner);
    xml.flag("titleHidden", view.titleHidden);
    writeList("rows", view.rows, xml);
    writeList("columns", view.columns, xml);
    writeList("layers", view.layers, xml);
    xml.flag("emptyLinesLeftOut", view.emptyLinesLeftOut);
    if (view.layerPrinting) {
        xml.attribute("printLayers", layerPrintingWords[static_cast<std::size_t>(*view.layerPrinting)]);
    }
    writeNumber("minColumnWidth", view.minColumnWidth, xml);
    writeNumber("maxColumnWidth", view.maxColumnWidth, xml);
}

void writeCategory(const TableCategory& category, XmlWriter& xml) {
    xml.begin("category").optional("label", category.label);
    if (category.group != noGroup) xml.attribute("group", std::size_t{category.group});
    if (category.role != StatisticRole::none) {
        xml.attribute("role", roleWords[static_cast<std::size_t>(category.role)]);
    }
    writeFormat("format", category.format, xml);
    writeList("footnotes", fromOne(category.footnotes), xml);
    xml.end();
}

void writeDimension(const TableDimension& dimension, const DimensionView& view, XmlWriter& xml) {
    xml.begin("dimension").optional("label", dimension.label).flag("labelHidden", view.labelHidden);
    if (view.shown != 0) xml.attribute("shown", std::size_t{view.shown} + 1);
    writeList("order", view.order, xml);
    if (!view.hidden.empty()) {
        std::string hidden(view.hidden.size(), '0');
        for (std::size_t i = 0; i < hidden.size(); ++i) hidden[i] = view.hidden[i] ? '1' : '0';
        xml.attribute("hidden", hidden);
    }
    for (const TableGroup& group : dimension.groups) {
        xml.begin("group").optional("label", group.label);
        if (group.parent != noGroup) xml.attribute("parent", std::size_t{group.parent});
        xml.end();
    }
    for (const TableCategory& category : dimension.categories) writeCategory(category, xml);
    xml.end();
}

void writeReferences(const CellReferences& references, XmlWriter& xml) {
    for (const std::string& text : references.texts) xml.element("text", text);
    for (const CellExtras& extras : references.extras) {
        xml.begin("extras");
        if (extras.shown) xml.attribute("shown", *extras.shown);
        writeList("footnotes", fromOne(extras.footnotes), xml);
        xml.end();
    }
}

}  // namespace

std::string listText(const std::vector<std::uint32_t>& numbers) {
    std::string text;
    for (const std::uint32_t number : numbers) {
        if (!text.empty()) text += ' ';
        text += std::to_string(number);
    }
    return text;
}

std::vector<std::uint32_t> fromOne(std::vector<std::uint32_t> numbers) {
    for (std::uint32_t& number : numbers) ++number;
    return numbers;
}

std::string formatsText(const std::vector<DisplayFormat>& formats) {
    std::string text;
    for (const DisplayFormat format : formats) {
        if (!text.empty()) text += ' ';
        text += formatText(format);
    }
    return text;
}

void writeTable(const Table& table, XmlWriter& xml, WritingContext& context) {
    const TableData& data = *table.data;
    xml.begin("table");
    writeView(*table.view, xml);
    if (const std::size_t look = context.looks.numberOf(table.style->look()); look != 0) {
        xml.attribute("look", look);
    }
    writeFormat("format", table.style->format(), xml);
    for (std::size_t i = 0; i < data.dimensions().size(); ++i) {
        writeDimension(data.dimensions()[i], table.view->dimensions[i], xml);
    }
    for (const std::string& footnote : data.footnotes()) xml.element("footnote", footnote);
    CellReferences references;
    const std::string cells = writeCells(data, references, context);
    writeReferences(references, xml);
    if (!cells.empty()) {
        xml.begin("cells").optional("formats", formatsText(references.formats)).raw(cells).end();
    }
    context.memory += memoryOfCells(data.placeCount(), countCells(cells));
    writeTableStyle(table, xml, context);
    xml.end();
}

void writeGrid(const FlatTable& grid, XmlWriter& xml, WritingContext& context) {
    xml.begin("grid").optional("title", grid.title).optional("caption", grid.caption);
    xml.attribute("columns", grid.columns).attribute("headerRows", grid.headerRows);
    xml.attribute("headerColumns", grid.headerColumns);
    for (std::size_t i = 1; i < grid.styles.size(); ++i) {
        xml.begin("style");
        writeStyle(grid.styles[i], xml);
        xml.end();
    }
    constexpr std::size_t bytesOfTags = 10;
    std::size_t bytes = grid.cells.size() * bytesOfTags;
    for (const FlatCell& cell : grid.cells) bytes += cell.text.size();
    xml.reserve(bytes);
    for (const FlatCell& cell : grid.cells) {
        xml.begin("c");
        if (cell.style != 0) xml.attribute("s", std::size_t{cell.style});
        xml.text(cell.text).end();
    }
    context.memory += grid.cells.size() * sizeof(FlatCell) + grid.styles.size() * sizeof(CellStyle);
    xml.end();
}

}  // namespace vexa::frontend
