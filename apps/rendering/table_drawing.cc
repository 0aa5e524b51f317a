#include "apps/rendering/table_drawing.h"

#include <algorithm>
#include <string>
#include <utility>

#include "apps/rendering/safe_text.h"

namespace vexa::rendering {

namespace {

using tables::CellKind;
using tables::GridCell;
using tables::GridRole;
using tables::HorizontalAlign;
using tables::TableGrid;

/// What a column of data holds.
struct ColumnContent {
    bool numbers = false;
    bool texts = false;
    std::size_t widestMark = 0;  ///< behind its numbers
};

std::optional<std::size_t> columnsOf(std::optional<double> points) {
    if (!points) return std::nullopt;
    constexpr double mostPoints = 1e6;
    return static_cast<std::size_t>(std::clamp(*points, 0.0, mostPoints)) / pointsPerColumn;
}

std::vector<ColumnContent> contentsOf(const TableGrid& grid) {
    std::vector<ColumnContent> contents(grid.columns);
    for (const GridCell& cell : grid.cells) {
        if (cell.role != GridRole::data || cell.kind == CellKind::empty) continue;
        ColumnContent& content = contents[cell.column];
        (cell.kind == CellKind::number ? content.numbers : content.texts) = true;
        if (cell.kind == CellKind::number && cell.marks != 0) {
            content.widestMark = std::max(content.widestMark, grid.markText(cell).size());
        }
    }
    return contents;
}

class Drawer {
  public:
    explicit Drawer(const TableGrid& grid) : grid_(grid), contents_(contentsOf(grid)) {}

    Drawing draw();

  private:
    [[nodiscard]] DrawnSpan spanOf(const GridCell& cell, std::uint32_t row) const;
    void fillHeader(const GridCell& cell, std::uint32_t row, DrawnSpan& span) const;
    void fillData(const GridCell& cell, DrawnSpan& span) const;
    [[nodiscard]] std::string textOf(const GridCell& cell) const {
        return safeText(grid_.text(cell)) + grid_.markText(cell);
    }
    void findOutermost();
    [[nodiscard]] bool beginsOutermost(std::uint32_t row) const;

    const TableGrid& grid_;
    std::vector<ColumnContent> contents_;
    std::vector<const GridCell*> covering_;                // by column
    tables::DimensionId outermost_ = tables::noDimension;  // of several row dimensions
};

Drawing Drawer::draw() {
    Drawing drawing;
    drawing.labelColumns = grid_.labelColumns;
    drawing.widths.resize(grid_.columns);
    drawing.header.resize(grid_.headerRows);
    drawing.body.resize(grid_.rows - grid_.headerRows);
    covering_.resize(grid_.columns);
    findOutermost();
    for (std::uint32_t row = 0; row < grid_.rows; ++row) {
        for (const GridCell& cell : grid_.row(row)) {
            std::fill_n(covering_.begin() + cell.column, cell.columnSpan, &cell);
        }
        const bool isHeader = row < grid_.headerRows;
        DrawnRow& drawn = isHeader ? drawing.header[row] : drawing.body[row - grid_.headerRows];
        drawn.spans.reserve(isHeader ? 0 : grid_.columns);
        drawn.ruleAbove = row > grid_.headerRows && beginsOutermost(row);
        for (std::uint32_t column = 0; column < grid_.columns;) {
            drawn.spans.push_back(spanOf(*covering_[column], row));
            column += covering_[column]->columnSpan;
        }
    }
    return drawing;
}

DrawnSpan Drawer::spanOf(const GridCell& cell, std::uint32_t row) const {
    DrawnSpan span;
    span.first = cell.column;
    span.count = cell.columnSpan;
    const bool isHeader = row < grid_.headerRows;
    span.style = textStyle(grid_.style(cell).own, isHeader);
    if (isHeader) {
        fillHeader(cell, row, span);
    } else if (cell.role == GridRole::data) {
        fillData(cell, span);
    } else {
        span.goesOn = row > cell.row || (grid_.isFlat && cell.textLength == 0 && row > grid_.headerRows);
        if (row == cell.row) span.text = textOf(cell);
        // Between a group and its categories no line is drawn.
        const GridCell* const before = cell.column > 0 ? covering_[cell.column - 1] : nullptr;
        span.openLeft = before != nullptr && !grid_.isFlat && before->dimension == cell.dimension;
    }
    return span;
}

void Drawer::fillHeader(const GridCell& cell, std::uint32_t row, DrawnSpan& span) const {
    const bool isLast = row + 1 == cell.row + cell.rowSpan;
    const bool isLowest = row + 1 == grid_.headerRows;
    if (cell.role == GridRole::corner) {
        if (row == cell.row) span.text = textOf(cell);
        // Where the corner says nothing, the labels below it stand in it.
        span.openBelow = !isLast || (cell.textLength == 0 && !isLowest && !grid_.isFlat);
        return;
    }
    const ColumnContent& content = contents_[cell.column];
    span.align = Align::centre;
    if (isLowest && cell.columnSpan == 1) {
        span.align = content.numbers && !content.texts ? Align::right : Align::left;
    }
    span.openBelow = !isLast;
    if (isLast) span.text = textOf(cell);
}

void Drawer::fillData(const GridCell& cell, DrawnSpan& span) const {
    const bool isNumber = cell.kind == CellKind::number;
    span.text = safeText(grid_.text(cell));
    const std::string mark = grid_.markText(cell);
    span.text += mark;
    if (isNumber) span.text.append(contents_[cell.column].widestMark - mark.size(), ' ');
    switch (grid_.style(cell).look.horizontal) {
        case HorizontalAlign::mixed:
            span.align = isNumber ? Align::right : Align::left;
            break;
        case HorizontalAlign::left:
            span.align = Align::left;
            break;
        case HorizontalAlign::center:
            span.align = Align::centre;
            break;
        case HorizontalAlign::right:
            span.align = Align::right;
            break;
    }
}

void Drawer::findOutermost() {
    if (grid_.rows == grid_.headerRows || grid_.isFlat) return;
    const std::span<const GridCell> first = grid_.row(grid_.headerRows);
    for (const GridCell& cell : first) {
        if (cell.role == GridRole::rowLabel && cell.dimension != first.front().dimension) {
            outermost_ = first.front().dimension;
        }
    }
}

bool Drawer::beginsOutermost(std::uint32_t row) const {
    if (outermost_ == tables::noDimension) return false;
    const std::span<const GridCell> cells = grid_.row(row);
    return std::any_of(cells.begin(), cells.end(), [&](const GridCell& cell) {
        return cell.role == GridRole::rowLabel && cell.dimension == outermost_ &&
               cell.category != tables::noGroup;
    });
}

}  // namespace

Drawing drawingOf(const TableGrid& grid, std::size_t terminal) {
    Drawing drawing = Drawer(grid).draw();
    WidthLimits limits;
    limits.leastData = columnsOf(grid.minColumnWidth);
    limits.mostData = columnsOf(grid.maxColumnWidth);
    limits.mostLabel = columnsOf(grid.maxLabelWidth);
    limits.terminal = terminal;
    for (const std::optional<double>& width : grid.widths) limits.wanted.push_back(columnsOf(width));
    fitColumns(drawing, limits);
    return drawing;
}

}  // namespace vexa::rendering
