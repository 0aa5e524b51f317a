#include <algorithm>
#include <string>
#include <utility>

#include "frontend/store/cell_text.h"
#include "frontend/store/objection.h"
#include "frontend/store/style_xml.h"
#include "frontend/store/table_xml.h"

namespace vexa::frontend {
namespace {

using tables::CellExtras;
using tables::CellStyle;
using tables::DimensionId;
using tables::DimensionView;
using tables::DisplayFormat;
using tables::FlatCell;
using tables::FlatTable;
using tables::maximalFlatCells;
using tables::noGroup;
using tables::Place;
using tables::placeCountOf;
using tables::Table;
using tables::TableCategory;
using tables::TableData;
using tables::TableDataBuilder;
using tables::TableDimension;
using tables::TableGroup;
using tables::TableStyle;
using tables::TableView;

/// Turns numbers from 1 into indexes below `count`.
bool fromNumbers(std::vector<std::uint32_t>& numbers, std::size_t count) {
    for (std::uint32_t& number : numbers) {
        if (number == 0 || number > count) return false;
        --number;
    }
    return true;
}

bool isPermutation(const std::vector<std::uint32_t>& numbers, std::size_t count) {
    std::vector<bool> found(count, false);
    for (const std::uint32_t number : numbers) {
        if (number >= count || found[number]) return false;
        found[number] = true;
    }
    return numbers.size() == count;
}

class TableReader {
  public:
    explicit TableReader(ReadingContext& context) : context_(context) {}

    bool read(const pugi::xml_node& root, ElementReader& element, Table& table) {
        std::size_t look = 0;
        DisplayFormat format;
        if (!readRoot(root, element, look, format) || !readParts(root) || !checkView(root)) return false;
        TableStyle style;
        if (look > context_.looks.size()) return false;
        if (look != 0) style.setLook(context_.looks[look - 1]);
        style.setFormat(format);
        std::shared_ptr<const TableData> data;
        if (!readData(data) || !readTableStyle(behind_, *data, style, context_)) return false;
        table.data = std::move(data);
        table.view = std::make_shared<const TableView>(std::move(view_));
        table.style = shared(std::move(style));
        return true;
    }

  private:
    bool readRoot(const pugi::xml_node& root, ElementReader& element, std::size_t& look,
                  DisplayFormat& format) {
        element.text("title", view_.title).text("caption", view_.caption).text("corner", view_.corner);
        element.flag("titleHidden", view_.titleHidden).flag("emptyLinesLeftOut", view_.emptyLinesLeftOut);
        element.list("rows", view_.rows).list("columns", view_.columns).list("layers", view_.layers);
        element.word("printLayers", layerPrintingWords, view_.layerPrinting);
        element.number("minColumnWidth", view_.minColumnWidth).number("maxColumnWidth", view_.maxColumnWidth);
        element.whole("look", look).format("format", format);
        element.require(look != 0 || !root.attribute("look"), "look", "a whole number from 1"_text);
        return element.isRead();
    }

    /// Everything up to the cells, in the order in which it is written.
    bool readParts(const pugi::xml_node& root) {
        pugi::xml_node node = root.first_child();
        for (; isNamed(node, "dimension"); node = node.next_sibling()) {
            if (!readDimension(node)) return false;
        }
        for (; isNamed(node, "footnote"); node = node.next_sibling()) {
            if (!ElementReader(node).content(footnotes_.emplace_back()).isRead()) return false;
        }
        for (; isNamed(node, "text"); node = node.next_sibling()) {
            if (!ElementReader(node).content(references_.texts.emplace_back()).isRead()) return false;
        }
        for (; isNamed(node, "extras"); node = node.next_sibling()) {
            if (!readExtras(node)) return false;
        }
        if (isNamed(node, "cells")) {
            cells_ = node;
            node = node.next_sibling();
        }
        behind_ = node;
        return std::all_of(dimensions_.begin(), dimensions_.end(),
                           [this](TableDimension& dimension) { return checkFootnotes(dimension); });
    }

    bool readDimension(const pugi::xml_node& node) {
        TableDimension& dimension = dimensions_.emplace_back();
        DimensionView& view = view_.dimensions.emplace_back();
        std::string hidden;
        std::uint32_t shown = 1;
        ElementReader element(node);
        element.text("label", dimension.label).flag("labelHidden", view.labelHidden).whole("shown", shown);
        element.list("order", view.order).text("hidden", hidden);
        if (!element.isRead()) return false;
        for (const pugi::xml_node child : node.children()) {
            if (!readLabel(child, dimension)) return false;
        }
        const std::size_t count = dimension.categories.size();
        element.require(shown == 1 || (shown != 0 && shown <= count), "shown",
                        "1 - " + std::to_string(count));
        element.require(hidden.size() <= count && hidden.find_first_not_of("01") == std::string::npos,
                        "hidden", "0 | 1");
        element.require(view.order.empty() || isPermutation(view.order, count), "order",
                        "every category once, from 0"_text);
        if (!element.isRead()) return false;
        view.shown = shown - 1;
        for (const char each : hidden) view.hidden.push_back(each == '1');
        return true;
    }

    static bool readLabel(const pugi::xml_node& node, TableDimension& dimension) {
        const std::size_t groups = dimension.groups.size();
        ElementReader element(node);
        if (isNamed(node, "group")) {
            // A group stands after the one that encloses it, so that groups never enclose each other.
            TableGroup& group = dimension.groups.emplace_back();
            element.text("label", group.label).whole("parent", group.parent);
            element.require(group.parent == noGroup || group.parent < groups);
            element.require(dimension.categories.empty());
        } else {
            TableCategory& category = dimension.categories.emplace_back();
            element.text("label", category.label).whole("group", category.group);
            element.word("role", roleWords, category.role).format("format", category.format);
            element.list("footnotes", category.footnotes);
            element.require(isNamed(node, "category") &&
                            (category.group == noGroup || category.group < groups));
        }
        return element.isRead() && !node.first_child();
    }

    bool checkFootnotes(TableDimension& dimension) const {
        return std::all_of(
            dimension.categories.begin(), dimension.categories.end(),
            [this](TableCategory& category) { return fromNumbers(category.footnotes, footnotes_.size()); });
    }

    bool readExtras(const pugi::xml_node& node) {
        CellExtras& extras = references_.extras.emplace_back();
        ElementReader element(node);
        element.text("shown", extras.shown).list("footnotes", extras.footnotes);
        return element.isRead() && !node.first_child() && fromNumbers(extras.footnotes, footnotes_.size());
    }

    [[nodiscard]] bool checkView(const pugi::xml_node& root) const {
        std::vector<DimensionId> all = view_.rows;
        all.insert(all.end(), view_.columns.begin(), view_.columns.end());
        all.insert(all.end(), view_.layers.begin(), view_.layers.end());
        const bool fits = isPermutation(all, dimensions_.size());
        if (!fits) {
            object(root.name(), "rows", root.attribute("rows").value(),
                   "every dimension once in rows, columns and layers, from 0"_text);
        }
        return fits;
    }

    bool readData(std::shared_ptr<const TableData>& data) {
        const std::optional<Place> places = placeCountOf(dimensions_);
        std::string formats;
        std::string_view tokens;
        if (!places) return false;
        if (cells_) {
            ElementReader element(cells_);
            element.text("formats", formats).plainContent(tokens);
            if (!element.isRead() || !readFormats(formats, references_.formats)) return false;
        }
        if (!context_.keep(memoryOfCells(*places, countCells(tokens)))) return false;
        TableDataBuilder builder(std::move(dimensions_), std::move(footnotes_));
        if (!readCells(tokens, references_, builder, context_)) return false;
        data = builder.finish();
        return true;
    }

    /// Most tables have no style of their own, and share this one.
    static std::shared_ptr<const TableStyle> shared(TableStyle style) {
        static const auto none = std::make_shared<const TableStyle>();
        return style == *none ? none : std::make_shared<const TableStyle>(std::move(style));
    }

    ReadingContext& context_;
    TableView view_;
    std::vector<TableDimension> dimensions_;
    std::vector<std::string> footnotes_;
    CellReferences references_;
    pugi::xml_node cells_;
    pugi::xml_node behind_;
};

bool readGridRoot(ElementReader& element, FlatTable& grid) {
    element.text("title", grid.title).text("caption", grid.caption).whole("columns", grid.columns);
    element.whole("headerRows", grid.headerRows).whole("headerColumns", grid.headerColumns);
    return element.isRead() && grid.columns <= maximalFlatCells;
}

bool isWholeGrid(const FlatTable& grid) {
    const bool whole = grid.columns == 0 ? grid.cells.empty() : grid.cells.size() % grid.columns == 0;
    return whole && grid.headerColumns <= grid.columns && grid.headerRows <= grid.rows();
}

}  // namespace

bool readTable(const pugi::xml_node& root, ElementReader& element, Table& table, ReadingContext& context) {
    return TableReader(context).read(root, element, table);
}

bool readGrid(const pugi::xml_node& root, ElementReader& element, FlatTable& grid, ReadingContext& context) {
    if (!readGridRoot(element, grid)) return false;
    pugi::xml_node node = root.first_child();
    for (; isNamed(node, "style"); node = node.next_sibling()) {
        ElementReader style(node);
        readStyle(style, grid.styles.emplace_back());
        if (!style.isRead() || node.first_child()) return false;
    }
    std::size_t count = 0;
    for (pugi::xml_node cell = node; cell; cell = cell.next_sibling()) ++count;
    if (count > maximalFlatCells ||
        !context.keep(count * sizeof(FlatCell) + grid.styles.size() * sizeof(CellStyle))) {
        return false;
    }
    grid.cells.resize(count);
    for (FlatCell& cell : grid.cells) {
        ElementReader reader(node);
        reader.whole("s", cell.style).content(cell.text).require(cell.style < grid.styles.size());
        if (!isNamed(node, "c") || !reader.isRead()) return false;
        node = node.next_sibling();
    }
    return isWholeGrid(grid);
}

}  // namespace vexa::frontend
