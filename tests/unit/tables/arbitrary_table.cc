#include "tests/unit/tables/arbitrary_table.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <set>
#include <utility>

#include "backend/tables/formats/number_text.h"

namespace vexa::tables {

namespace {

constexpr std::size_t mostFootnotes = 4;

std::vector<FootnoteId> footnotesFrom(Choices& choices) {
    std::vector<FootnoteId> footnotes;
    if (choices.below(4) != 1) return footnotes;
    footnotes.push_back(static_cast<FootnoteId>(choices.below(mostFootnotes)));
    if (choices.yes()) footnotes.push_back(static_cast<FootnoteId>(choices.below(mostFootnotes)));
    return footnotes;
}

DisplayFormat formatFrom(Choices& choices) {
    if (choices.below(3) != 1) return {};
    return {choices.yes() ? FormatKind::plain : FormatKind::comma, 8,
            static_cast<std::uint8_t>(choices.below(3))};
}

TableDimension dimensionFrom(Choices& choices, std::size_t number) {
    TableDimension dimension;
    if (choices.below(3) != 1) dimension.label = "D" + std::to_string(number);
    const std::size_t groups = choices.below(4);
    for (std::size_t i = 0; i < groups; ++i) {
        const std::size_t parent = choices.below(i + 1);
        dimension.groups.push_back({choices.below(4) == 1 ? "" : "g" + std::to_string(i),
                                    parent == i ? noGroup : static_cast<GroupId>(parent)});
    }
    const std::size_t categories = choices.below(16) == 1 ? 0 : 1 + choices.below(5);
    for (std::size_t i = 0; i < categories; ++i) {
        TableCategory category;
        category.label = std::string(choices.below(8) == 1 ? 40 : 1, static_cast<char>('a' + i));
        const std::size_t group = choices.below(groups + 1);
        if (group < groups) category.group = static_cast<GroupId>(group);
        category.format = formatFrom(choices);
        category.footnotes = footnotesFrom(choices);
        dimension.categories.push_back(std::move(category));
    }
    return dimension;
}

DimensionView dimensionViewFrom(Choices& choices, std::size_t categories) {
    DimensionView view;
    view.labelHidden = choices.below(4) == 1;
    if (categories == 0) return view;
    view.shown = static_cast<CategoryId>(choices.below(categories));
    if (choices.yes()) {
        view.order.resize(categories);
        std::iota(view.order.begin(), view.order.end(), CategoryId{0});
        for (std::size_t i = 0; i < categories; ++i)
            std::swap(view.order[i], view.order[choices.below(categories)]);
    }
    if (choices.below(3) == 1) {
        for (std::size_t i = 0; i < categories; ++i) view.hidden.push_back(choices.below(3) == 1);
    }
    return view;
}

void fillCells(Choices& choices, TableDataBuilder& data) {
    const std::size_t density = 1 + choices.below(4);
    for (Place place = 0; place < data.placeCount(); ++place) {
        if (choices.below(density) != 0) continue;
        if (choices.below(4) == 1) {
            data.setText(place, "text");
        } else {
            data.setNumber(place, static_cast<double>(place) + 0.25, formatFrom(choices));
        }
        if (choices.below(8) == 1) data.setShown(place, "shown");
        std::vector<FootnoteId> footnotes = footnotesFrom(choices);
        if (!footnotes.empty()) data.setFootnotes(place, std::move(footnotes));
    }
}

TableStyle styleFrom(Choices& choices, const TableData& data) {
    TableStyle style;
    CellStyle bold;
    bold.bold = true;
    const StyleId id = style.intern(bold);
    if (choices.below(8) == 1) style.setFormat({FormatKind::plain, 8, 1});
    for (std::size_t i = choices.below(4); i > 0 && data.placeCount() > 0; --i) {
        const Place place = choices.below(256) % data.placeCount();
        style.setCell(place, id, data.placeCount());
        style.setCellFormat(place, {FormatKind::plain, 8, 3}, data.placeCount());
        const auto dimension = static_cast<DimensionId>(choices.below(data.dimensions().size() + 1));
        style.setWidth(dimension, 0, 40);
        style.setCategory(dimension, 0, id);
    }
    return style;
}

std::string expectedText(const Table& table, Place place) {
    const TableData& data = *table.data;
    const TableCell* const cell = data.find(place);
    if (cell == nullptr) return {};
    if (data.extras(*cell).shown) return *data.extras(*cell).shown;
    if (cell->kind == CellKind::text) return std::string(data.text(*cell));
    DisplayFormat format = table.style->cellFormat(place);
    if (format.kind == FormatKind::none) format = table.style->format();
    if (format.kind == FormatKind::none) format = data.formatOf(place, *cell, table.view->formatOrder());
    return numberText(cell->number, format);
}

/// The categories that labels name, by row or column of the grid and dimension.
using Named = std::vector<std::vector<CategoryId>>;

class GridJudge {
  public:
    GridJudge(const TableGrid& grid, const Table& table, Place layer)
        : grid_(grid),
          table_(table),
          layer_(layer),
          rows_(grid.rows, std::vector<CategoryId>(table.data->dimensions().size(), noGroup)),
          columns_(grid.columns, std::vector<CategoryId>(table.data->dimensions().size(), noGroup)) {}

    std::string run() {
        judgeFrame();
        judgePlaces();
        for (const GridCell& cell : grid_.cells) judgeCell(cell);
        for (const GridCell& cell : grid_.cells) {
            if (cell.role == GridRole::data) judgeData(cell);
        }
        judgeMarks();
        return wrong_;
    }

  private:
    void require(bool holds, const char* what) {
        if (!holds && wrong_.empty()) wrong_ = what;
    }

    void judgeFrame() {
        require(grid_.widths.size() == grid_.columns, "widths");
        require(grid_.rowBegin.size() == std::size_t{grid_.rows} + 1, "number of rows");
        require(grid_.rowBegin.back() == grid_.cells.size(), "end of rows");
        require(grid_.headerRows <= grid_.rows && grid_.labelColumns <= grid_.columns, "labels");
        require(grid_.title.text == (table_.view->titleHidden ? "" : table_.view->title), "title");
    }

    void judgePlaces() {
        std::vector<int> holders(std::size_t{grid_.rows} * grid_.columns);
        for (std::size_t row = 0; wrong_.empty() && row < grid_.rows; ++row) {
            std::uint32_t next = 0;
            for (const GridCell& cell : grid_.row(row)) {
                require(cell.row == row && cell.column >= next, "order of cells");
                require(cell.rowSpan > 0 && cell.columnSpan > 0, "spans");
                require(
                    cell.row + cell.rowSpan <= grid_.rows && cell.column + cell.columnSpan <= grid_.columns,
                    "cells end inside");
                if (!wrong_.empty()) return;
                next = cell.column + cell.columnSpan;
                for (std::uint32_t i = 0; i < cell.rowSpan * cell.columnSpan; ++i) {
                    ++holders[std::size_t{cell.row + i / cell.columnSpan} * grid_.columns + cell.column +
                              i % cell.columnSpan];
                }
            }
        }
        require(std::all_of(holders.begin(), holders.end(), [](int count) { return count == 1; }),
                "each place belongs to one cell");
    }

    void judgeCell(const GridCell& cell) {
        require(cell.style < grid_.styles.size() && cell.marks <= grid_.marks.size(), "styles and marks");
        require(std::size_t{cell.textBegin} + cell.textLength <= grid_.texts.size() || cell.textLength == 0,
                "texts");
        const bool above = cell.row < grid_.headerRows;
        const bool before = cell.column < grid_.labelColumns;
        const GridRole role = above && before ? GridRole::corner
                              : above         ? GridRole::columnLabel
                              : before        ? GridRole::rowLabel
                                              : GridRole::data;
        require(cell.role == role, "roles");
        if (!wrong_.empty() || cell.category == noGroup) return;
        require(!table_.view->dimensions[cell.dimension].isHidden(cell.category), "nothing hidden is shown");
        require(grid_.text(cell) == table_.data->dimensions()[cell.dimension].categories[cell.category].label,
                "labels");
        const bool isRow = cell.role == GridRole::rowLabel;
        Named& named = isRow ? rows_ : columns_;
        const std::uint32_t begin = isRow ? cell.row : cell.column;
        for (std::uint32_t i = 0; i < (isRow ? cell.rowSpan : cell.columnSpan); ++i) {
            require(named[begin + i][cell.dimension] == noGroup, "one category a dimension");
            named[begin + i][cell.dimension] = cell.category;
        }
    }

    void judgeData(const GridCell& cell) {
        if (!wrong_.empty()) return;
        require(cell.rowSpan == 1 && cell.columnSpan == 1, "data span nothing");
        std::vector<CategoryId> ids;
        table_.data->coordinates(cell.place, ids);
        std::vector<CategoryId> layer;
        table_.data->coordinates(layer_, layer);
        for (const DimensionId id : table_.view->rows) require(rows_[cell.row][id] == ids[id], "row labels");
        for (const DimensionId id : table_.view->columns) {
            require(columns_[cell.column][id] == ids[id], "column labels");
        }
        for (const DimensionId id : table_.view->layers) require(layer[id] == ids[id], "layer");
        require(grid_.text(cell) == expectedText(table_, cell.place), "text of the place");
        const TableCell* const data = table_.data->find(cell.place);
        require(cell.kind == (data == nullptr ? CellKind::empty : data->kind), "kind");
    }

    void judgeMarks() {
        std::set<std::string> listed;
        for (std::size_t i = 0; i < grid_.footnotes.size(); ++i) {
            const std::string& mark = grid_.footnotes[i].mark;
            require(mark.empty() || mark == footnoteLetters(i), "letters in their order");
            if (!mark.empty()) listed.insert(mark);
        }
        std::size_t next = 0;
        if (!table_.view->layers.empty()) next = listed.size();  // the layer's own come first
        for (const GridCell& cell : grid_.cells) {
            for (std::size_t i = 0; cell.marks != 0 && i < grid_.marks[cell.marks - 1].size(); ++i) {
                const std::string& mark = grid_.marks[cell.marks - 1][i];
                require(listed.contains(mark), "every mark has its footnote");
                if (mark == footnoteLetters(next)) ++next;
                require(next == listed.size() || mark.size() > 1 || mark < footnoteLetters(next),
                        "letters in reading order");
            }
        }
        require(next == listed.size(), "every letter is used");
    }

    const TableGrid& grid_;
    const Table& table_;
    Place layer_;
    Named rows_;
    Named columns_;
    std::string wrong_;
};

/// The number of each category in the order shown.
std::vector<CategoryId> ranksOf(const DimensionView& view, std::size_t categories) {
    std::vector<CategoryId> ranks(categories);
    for (std::size_t i = 0; i < categories; ++i) {
        ranks[view.order.empty() ? i : view.order[i]] = static_cast<CategoryId>(i);
    }
    return ranks;
}

}  // namespace

Table arbitraryTable(Choices& choices) {
    std::vector<TableDimension> dimensions;
    TableView view;
    const std::size_t count = choices.below(6);
    for (std::size_t i = 0; i < count; ++i) {
        dimensions.push_back(dimensionFrom(choices, i));
        view.dimensions.push_back(dimensionViewFrom(choices, dimensions.back().categories.size()));
        const std::size_t axis = choices.below(3);
        (axis == 0   ? view.rows
         : axis == 1 ? view.columns
                     : view.layers)
            .push_back(static_cast<DimensionId>(i));
    }
    view.title = "title";
    view.titleHidden = choices.yes();
    view.corner = choices.below(3) == 1 ? "corner" : "";
    view.emptyLinesLeftOut = choices.yes();
    TableDataBuilder data(std::move(dimensions), {"one", "two", "three", "four"});
    fillCells(choices, data);
    std::shared_ptr<const TableData> finished = data.finish();
    TableStyle style = styleFrom(choices, *finished);
    return makeTable(std::move(finished), std::move(view), std::move(style));
}

Table inShownOrder(const Table& table) {
    std::vector<TableDimension> dimensions = table.data->dimensions();
    TableView view = *table.view;
    std::vector<std::vector<CategoryId>> ranks;
    TableStyle style;
    style.setFormat(table.style->format());
    for (std::size_t i = 0; i < dimensions.size(); ++i) {
        const DimensionView& old = table.view->dimensions[i];
        const std::size_t count = dimensions[i].categories.size();
        ranks.push_back(ranksOf(old, count));
        view.dimensions[i].order.clear();
        if (count > 0) view.dimensions[i].shown = ranks[i][old.shown];
        for (std::size_t k = 0; k < count; ++k) {
            dimensions[i].categories[ranks[i][k]] = table.data->dimensions()[i].categories[k];
            if (!old.hidden.empty()) view.dimensions[i].hidden[ranks[i][k]] = old.hidden[k];
        }
    }
    TableDataBuilder data(std::move(dimensions), table.data->footnotes());
    std::vector<CategoryId> ids;
    table.data->forEachCell([&](Place place, const TableCell& cell) {
        table.data->coordinates(place, ids);
        Place moved = 0;
        for (std::size_t i = 0; i < ids.size(); ++i) {
            moved += ranks[i][ids[i]] * table.data->stride(static_cast<DimensionId>(i));
        }
        if (cell.kind == CellKind::text) {
            data.setText(moved, table.data->text(cell));
        } else {
            data.setNumber(moved, cell.number, cell.format);
        }
        const CellExtras& extras = table.data->extras(cell);
        if (extras.shown) data.setShown(moved, extras.shown);
        if (!extras.footnotes.empty()) data.setFootnotes(moved, extras.footnotes);
        style.setCellFormat(moved, table.style->cellFormat(place), table.data->placeCount());
    });
    return makeTable(data.finish(), std::move(view), std::move(style));
}

Table transposed(const Table& table) {
    TableView view = *table.view;
    std::swap(view.rows, view.columns);
    return {table.data, std::make_shared<const TableView>(std::move(view)), table.style};
}

std::string wrongWith(const TableGrid& grid, const Table& table, Place layer) {
    return GridJudge(grid, table, layer).run();
}

}  // namespace vexa::tables
