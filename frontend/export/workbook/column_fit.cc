#include "frontend/export/workbook/column_fit.h"

#include <algorithm>

namespace vexa::frontend {

namespace {

using tables::GridCell;
using tables::GridRole;
using tables::TableGrid;

/// Points that a text may take in one line where the table says nothing of it.
constexpr double mostOfRowLabel = 220;
constexpr double mostOfColumnLabel = 100;
constexpr double mostOfText = 220;
/// Below, columns are hard to hit.
constexpr double leastWidth = 24;

}  // namespace

ColumnFit::ColumnFit(const TableGrid& grid) : grid_(grid), needs_(grid.columns) {}

void ColumnFit::addNumber(const GridCell& cell, double width) {
    Need& need = needs_[cell.column];
    need.number = std::max(need.number, width);
}

double ColumnFit::mostForText(const GridCell& cell) const {
    const bool isLabelColumn = cell.column < grid_.labelColumns;
    if (isLabelColumn) return grid_.maxLabelWidth.value_or(mostOfRowLabel);
    if (grid_.maxColumnWidth) return *grid_.maxColumnWidth;
    return cell.role == GridRole::columnLabel ? mostOfColumnLabel : mostOfText;
}

void ColumnFit::addText(const GridCell& cell, const TextExtent& extent) {
    const double most = mostForText(cell);
    if (cell.columnSpan > 1) {
        spans_.push_back({cell.column, cell.columnSpan, std::min(cellWidth(extent.word), most)});
        return;
    }
    Need& need = needs_[cell.column];
    need.word = std::max(need.word, std::min(cellWidth(extent.word), most));
    need.text = std::max(need.text, std::min(cellWidth(extent.width), most));
}

double ColumnFit::widthOf(std::uint32_t column) const {
    const Need& need = needs_[column];
    const double number = need.number > 0 ? cellWidth(need.number) : 0;
    if (grid_.widths[column]) return std::max({*grid_.widths[column], number, 1.0});
    double width = std::max(need.word, need.text);
    if (column >= grid_.labelColumns) {
        width = std::max(width, grid_.minColumnWidth.value_or(0));
        width = std::min(width, grid_.maxColumnWidth.value_or(width));
    }
    return std::max({width, number, leastWidth});
}

std::vector<double> ColumnFit::widths() const {
    std::vector<double> widths(grid_.columns);
    for (std::uint32_t i = 0; i < grid_.columns; ++i) widths[i] = widthOf(i);
    for (const Span& span : spans_) {
        double have = 0;
        for (std::uint32_t i = 0; i < span.columns; ++i) have += widths[span.column + i];
        if (have >= span.word) continue;
        const double more = (span.word - have) / span.columns;
        for (std::uint32_t i = 0; i < span.columns; ++i) widths[span.column + i] += more;
    }
    return widths;
}

}  // namespace vexa::frontend
