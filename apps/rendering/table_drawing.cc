#include "apps/rendering/table_drawing.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "apps/rendering/safe_text.h"
#include "backend/text/text_width.h"

namespace vexa::rendering {

namespace {

using tables::CellKind;
using tables::GridCell;
using tables::GridRole;
using tables::HorizontalAlign;
using tables::TableGrid;

std::optional<std::size_t> columnsOf(std::optional<double> points) {
    if (!points) return std::nullopt;
    constexpr double mostPoints = 1e6;
    return static_cast<std::size_t>(std::clamp(*points, 0.0, mostPoints)) / pointsPerColumn;
}

Align alignOf(HorizontalAlign horizontal, bool alignsRight) {
    switch (horizontal) {
        case HorizontalAlign::mixed:
            return alignsRight ? Align::right : Align::left;
        case HorizontalAlign::left:
            return Align::left;
        case HorizontalAlign::center:
            return Align::centre;
        case HorizontalAlign::right:
            break;
    }
    return Align::right;
}

/// The span of a cell without its text.
DrawnSpan spanOf(const TableGrid& grid, const GridCell& cell, bool isHeader) {
    DrawnSpan span;
    span.first = cell.column;
    span.count = cell.columnSpan;
    span.style = textStyle(grid.style(cell).own, isHeader);
    return span;
}

}  // namespace

void CellTexts::forget() {
    keptCount_ = 0;
    shared_.clear();
}

bool CellTexts::isShownAsItIs(const GridCell& cell) {
    constexpr std::uint32_t longText = 1024;
    if (cell.textLength <= longText) return isPrintableText(grid_.text(cell));
    const auto [found, isNew] = longTexts_.try_emplace(cell.textBegin);
    if (isNew) found->second = isPrintableText(grid_.text(cell));
    return found->second;
}

std::string CellTexts::made(const GridCell& cell, std::size_t marksWidth) const {
    const std::string marks = grid_.markText(cell);
    std::string text = safeText(grid_.text(cell)) + marks;
    text.append(marksWidth - std::min(marksWidth, marks.size()), ' ');
    return text;
}

std::string_view CellTexts::keep(std::string text) {
    if (keptCount_ == kept_.size()) kept_.emplace_back();
    kept_[keptCount_] = std::move(text);
    return kept_[keptCount_++];
}

void CellTexts::set(const GridCell& cell, std::size_t marksWidth, DrawnSpan& span) {
    if (cell.marks == 0 && marksWidth == 0 && isShownAsItIs(cell)) {
        span.text = grid_.text(cell);
        span.textStays = true;
        return;
    }
    constexpr std::uint32_t sharedText = 32;  // the grid has longer ones once
    if (cell.marks == 0 && cell.textLength <= sharedText) {
        span.text = keep(made(cell, marksWidth));
        return;
    }
    const auto [found, isNew] =
        shared_.try_emplace({cell.textBegin, cell.textLength, cell.marks, marksWidth});
    if (isNew) found->second = keep(made(cell, marksWidth));
    span.text = found->second;
}

TableDrawing::TableDrawing(const TableGrid& grid, std::size_t terminal)
    : grid_(grid), headerTexts_(grid), rowTexts_(grid) {
    findContents();
    findOutermost();
    drawing_.labelColumns = grid_.labelColumns;
    drawing_.widths.resize(grid_.columns);
    drawing_.body = this;
    drawing_.cut = {grid_.labelColumns, grid_.columns};
    drawHeader();
    fitColumns(drawing_, limitsFor(terminal));
}

WidthLimits TableDrawing::limitsFor(std::size_t terminal) const {
    WidthLimits limits;
    limits.leastData = columnsOf(grid_.minColumnWidth);
    limits.mostData = columnsOf(grid_.maxColumnWidth);
    limits.mostLabel = columnsOf(grid_.maxLabelWidth);
    limits.terminal = terminal;
    for (const std::optional<double>& width : grid_.widths) limits.wanted.push_back(columnsOf(width));
    return limits;
}

void TableDrawing::findContents() {
    contents_.resize(grid_.columns);
    for (const GridCell& cell : grid_.cells) {
        if (cell.role != GridRole::data || cell.kind == CellKind::empty) continue;
        ColumnContent& content = contents_[cell.column];
        (cell.alignsRight ? content.numbers : content.texts) = true;
        if (cell.alignsRight && cell.marks != 0) {
            content.widestMark = std::max(content.widestMark, grid_.markText(cell).size());
        }
    }
}

/// Sets the cells that cover the first `columns` columns of a row, from those of the row above.
void TableDrawing::cover(std::uint32_t row, std::uint32_t columns) {
    for (const GridCell& cell : grid_.row(row)) {
        if (cell.column >= columns) break;
        std::fill_n(covering_.begin() + cell.column, cell.columnSpan, &cell);
    }
}

void TableDrawing::drawHeader() {
    covering_.resize(grid_.columns);
    drawing_.header.resize(grid_.headerRows);
    for (std::uint32_t row = 0; row < grid_.headerRows; ++row) {
        cover(row, grid_.columns);
        for (std::uint32_t column = 0; column < grid_.columns; column += covering_[column]->columnSpan) {
            drawing_.header[row].spans.push_back(headerSpan(*covering_[column], row));
        }
    }
    covering_.resize(grid_.labelColumns);
}

void TableDrawing::make(std::size_t index, const Cut& cut, DrawnRow& row) {
    const std::uint32_t number = grid_.headerRows + static_cast<std::uint32_t>(index);
    row.spans.clear();
    row.ruleAbove = index > 0 && beginsOutermost(number);
    rowTexts_.forget();
    cover(number, grid_.labelColumns);
    for (std::uint32_t column = 0; column < grid_.labelColumns; column += covering_[column]->columnSpan) {
        row.spans.push_back(labelSpan(*covering_[column], number));
    }
    // Of data each place has its own cell.
    const std::span<const GridCell> cells = grid_.row(number);
    auto cell = std::partition_point(cells.begin(), cells.end(),
                                     [&](const GridCell& each) { return each.column < cut.begin; });
    for (; cell != cells.end() && cell->column < cut.end; ++cell) {
        row.spans.push_back(cut.partOf(dataSpan(*cell), grid_.labelColumns));
    }
}

DrawnSpan TableDrawing::labelSpan(const GridCell& cell, std::uint32_t row) {
    DrawnSpan span = spanOf(grid_, cell, false);
    span.goesOn = row > cell.row || (grid_.isFlat && cell.textLength == 0 && row > grid_.headerRows);
    if (row == cell.row) rowTexts_.set(cell, 0, span);
    // Between a group and its categories no line is drawn.
    const GridCell* const before = cell.column > 0 ? covering_[cell.column - 1] : nullptr;
    span.openLeft = before != nullptr && !grid_.isFlat && before->dimension == cell.dimension;
    return span;
}

DrawnSpan TableDrawing::headerSpan(const GridCell& cell, std::uint32_t row) {
    DrawnSpan span = spanOf(grid_, cell, true);
    const bool isLast = row + 1 == cell.row + cell.rowSpan;
    const bool isLowest = row + 1 == grid_.headerRows;
    if (cell.role == GridRole::corner) {
        if (row == cell.row) headerTexts_.set(cell, 0, span);
        // Where the corner says nothing, the labels below it stand in it.
        span.openBelow = !isLast || (cell.textLength == 0 && !isLowest && !grid_.isFlat);
        return span;
    }
    const ColumnContent& content = contents_[cell.column];
    span.align = Align::centre;
    if (isLowest && cell.columnSpan == 1) {
        span.align = content.numbers && !content.texts ? Align::right : Align::left;
    }
    span.openBelow = !isLast;
    if (isLast) headerTexts_.set(cell, 0, span);
    return span;
}

DrawnSpan TableDrawing::dataSpan(const GridCell& cell) {
    DrawnSpan span = spanOf(grid_, cell, false);
    rowTexts_.set(cell, cell.alignsRight ? contents_[cell.column].widestMark : 0, span);
    span.align = alignOf(grid_.style(cell).look.horizontal, cell.alignsRight);
    return span;
}

void TableDrawing::findOutermost() {
    if (grid_.rows == grid_.headerRows || grid_.isFlat) return;
    const std::span<const GridCell> first = grid_.row(grid_.headerRows);
    for (const GridCell& cell : first) {
        if (cell.role == GridRole::rowLabel && cell.dimension != first.front().dimension) {
            outermost_ = first.front().dimension;
        }
    }
}

bool TableDrawing::beginsOutermost(std::uint32_t row) const {
    if (outermost_ == tables::noDimension) return false;
    for (const GridCell& cell : grid_.row(row)) {
        if (cell.column >= grid_.labelColumns) break;
        if (cell.dimension == outermost_ && cell.category != tables::noGroup) return true;
    }
    return false;
}

}  // namespace vexa::rendering
