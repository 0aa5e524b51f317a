#include "frontend/export/pdf/table_measures.h"

#include <algorithm>
#include <numeric>

namespace vexa::frontend::pdf {

namespace {

using tables::AreaLook;
using tables::CellKind;
using tables::GridCell;
using tables::GridRole;
using tables::HorizontalAlign;
using tables::ShownStyle;
using tables::ShownStyleId;
using tables::TableGrid;

constexpr double emptyColumn = 12;
/// A column label beyond this rather takes two lines than a wide column.
constexpr double wideLabel = 140;
/// So does one beyond this where the table has to be split: fewer parts are easier to read.
constexpr double wideLabelOfPart = 72;
/// Columns of a table that is split take no more than this where their texts can be broken.
constexpr double wideColumn = 140;
constexpr double markGap = 0.6;

double total(const std::vector<double>& widths) { return std::accumulate(widths.begin(), widths.end(), 0.0); }

/// Between `least` and `wished`, so that they take `room` together: the widest ones give way first, and
/// columns that are narrow anyhow keep what they wish.
void narrow(std::vector<double>& widths, const std::vector<double>& wished, const std::vector<double>& least,
            std::size_t begin, std::size_t end, double room) {
    double low = 0;
    double high = room;
    const auto fill = [&](double most) {
        double all = 0;
        for (std::size_t i = begin; i < end; ++i) {
            widths[i] = std::max(least[i], std::min(wished[i], most));
            all += widths[i];
        }
        return all;
    };
    if (const double needed = fill(0); needed > room && needed > 0) {
        for (std::size_t i = begin; i < end; ++i) widths[i] *= room / needed;  // words are broken then
        return;
    }
    if (fill(high) <= room) return;
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2;
        (fill(middle) <= room ? low : high) = middle;
    }
    fill(low);
}

}  // namespace

std::string marksText(const std::vector<std::string>& marks) {
    std::string text;
    for (const std::string& each : marks) text += (text.empty() ? "" : ",") + each;
    return text;
}

TableMeasures::TableMeasures(const TableGrid& grid, TextShaper& shaper, double pageWidth)
    : grid_(grid), shaper_(shaper) {
    setStyles();
    measureCells();
    setWidths(pageWidth);
    setHeights();
}

void TableMeasures::setStyles() {
    for (const ShownStyle& style : grid_.styles) {
        TextStyle text{style.look.font, style.look.size, style.look.bold, style.look.italic};
        styles_.push_back(shaper_.styleOf(text));
        text.size *= markScale;
        markStyles_.push_back(shaper_.styleOf(text));
    }
}

double TableMeasures::markWidth(const GridCell& cell) {
    if (cell.marks == 0) return 0;
    return shaper_.lines(markStyles_[cell.style], marksText(grid_.marks[cell.marks - 1])).width + markGap;
}

double TableMeasures::markRoom(const GridCell& cell) {
    const double width = markWidth(cell);
    const AreaLook& look = grid_.style(cell).look;
    const bool isRight =
        look.horizontal == HorizontalAlign::right || look.horizontal == HorizontalAlign::mixed;
    return cell.alignsRight && isRight ? std::max(0.0, width - look.marginRight) : width;
}

void TableMeasures::measureCells() {
    natural_.reserve(grid_.cells.size());
    for (const GridCell& cell : grid_.cells) {
        const AreaLook& look = grid_.style(cell).look;
        const double marks = markRoom(cell);
        const ShapedText& text = shaper_.lines(styles_[cell.style], grid_.text(cell));
        natural_.push_back({static_cast<float>(text.width + marks + look.marginLeft + look.marginRight),
                            static_cast<float>(text.height + look.marginTop + look.marginBottom)});
    }
}

double TableMeasures::leastWidth(const GridCell& cell) {
    const AreaLook& look = grid_.style(cell).look;
    const double margins = look.marginLeft + look.marginRight;
    return shaper_.longestPiece(styles_[cell.style], grid_.text(cell)) + markRoom(cell) + margins;
}

std::vector<double> TableMeasures::wishedWidths(double mostLabel) const {
    std::vector<double> widths(grid_.columns, emptyColumn);
    std::vector<double> numbers(grid_.columns, 0);
    for (std::size_t i = 0; i < grid_.cells.size(); ++i) {
        const GridCell& cell = grid_.cells[i];
        if (cell.columnSpan != 1) continue;
        double width = natural_[i].width;
        if (cell.role == GridRole::columnLabel) width = std::min(width, mostLabel);
        widths[cell.column] = std::max(widths[cell.column], width);
        if (cell.kind == CellKind::number) numbers[cell.column] = std::max(numbers[cell.column], width);
    }
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (isLabelColumn(i)) {
            if (grid_.maxLabelWidth) widths[i] = std::min(widths[i], *grid_.maxLabelWidth);
        } else {
            if (grid_.maxColumnWidth) widths[i] = std::min(widths[i], *grid_.maxColumnWidth);
            if (grid_.minColumnWidth) widths[i] = std::max(widths[i], *grid_.minColumnWidth);
        }
        if (grid_.widths[i]) widths[i] = *grid_.widths[i];
        widths[i] = std::max(widths[i], numbers[i]);  // numbers are never broken
    }
    return widths;
}

std::vector<double> TableMeasures::leastWidths() {
    std::vector<double> widths(grid_.columns, emptyColumn);
    for (std::size_t i = 0; i < grid_.cells.size(); ++i) {
        const GridCell& cell = grid_.cells[i];
        if (cell.columnSpan != 1 || natural_[i].width <= widths[cell.column]) continue;
        const double width = cell.kind == CellKind::number ? natural_[i].width : leastWidth(cell);
        widths[cell.column] = std::max(widths[cell.column], width);
    }
    return widths;
}

/// A label over several columns shall not have to be broken within a word.
void TableMeasures::widenForSpans(std::vector<double>& widths) {
    for (std::size_t i = 0; i < grid_.cells.size(); ++i) {
        const GridCell& cell = grid_.cells[i];
        if (cell.columnSpan == 1) continue;
        double& first = widths[cell.column];
        const double have = std::accumulate(&first, &first + cell.columnSpan, 0.0);
        if (natural_[i].width <= have) continue;
        const double more = (leastWidth(cell) - have) / cell.columnSpan;
        for (std::uint32_t c = 0; more > 0 && c < cell.columnSpan; ++c) widths[cell.column + c] += more;
    }
}

void TableMeasures::setWidths(double pageWidth) {
    std::vector<double> wished = wishedWidths(wideLabel);
    widenForSpans(wished);
    const double labels = std::accumulate(wished.begin(), wished.begin() + grid_.labelColumns, 0.0);
    hasLongLabels_ = labels > pageWidth / 2;
    widths_ = wished;
    if (total(wished) > pageWidth) {
        fitWidths(wished, pageWidth);
    } else {
        ranges_.push_back({grid_.labelColumns, grid_.columns});
    }
}

void TableMeasures::fitWidths(const std::vector<double>& wished, double pageWidth) {
    std::vector<double> least = leastWidths();
    widenForSpans(least);
    for (std::size_t i = 0; i < least.size(); ++i) least[i] = std::min(least[i], wished[i]);
    if (total(least) <= pageWidth) {
        narrow(widths_, wished, least, 0, widths_.size(), pageWidth);
        ranges_.push_back({grid_.labelColumns, grid_.columns});
        return;
    }
    const std::size_t labels = grid_.labelColumns;
    const bool isAllLabels = labels == grid_.columns;
    const double wishedLabels = std::accumulate(wished.begin(), wished.begin() + grid_.labelColumns, 0.0);
    if (wishedLabels > pageWidth / 2) {
        narrow(widths_, wished, least, 0, labels, isAllLabels ? pageWidth : pageWidth / 2);
    }
    const double room = pageWidth - labelWidth();
    const std::vector<double> narrower = wishedWidths(wideLabelOfPart);
    for (std::size_t i = labels; i < widths_.size(); ++i) {
        const bool isSet = grid_.widths[i].has_value();
        widths_[i] =
            std::min(isSet ? wished[i] : std::max(least[i], std::min(narrower[i], wideColumn)), room);
    }
    split(pageWidth);
}

void TableMeasures::split(double pageWidth) {
    const double room = pageWidth - labelWidth() + 0.01;
    const std::vector<bool> begins = groupBegins();
    ColumnRange range{grid_.labelColumns, grid_.labelColumns};
    double used = 0;
    for (std::uint32_t column = grid_.labelColumns; column < grid_.columns; ++column) {
        if (used + widths_[column] > room && range.end > range.begin) {
            std::uint32_t end = column;
            while (end > range.begin && !begins[end]) --end;
            range.end = end > range.begin ? end : column;
            ranges_.push_back(range);
            range.begin = range.end;
            used = sum(range.begin, column);
        }
        used += widths_[column];
        range.end = column + 1;
    }
    ranges_.push_back(range);
}

/// By column: whether a label of the outermost level that has several begins there. Columns under one label
/// stay together where a page has room for them.
std::vector<bool> TableMeasures::groupBegins() const {
    std::vector<bool> begins(grid_.columns + std::size_t{1});
    for (std::uint32_t row = 0; row < grid_.headerRows; ++row) {
        std::size_t labels = 0;
        bool anyWide = false;
        for (const GridCell& cell : grid_.row(row)) {
            if (cell.role != GridRole::columnLabel) continue;
            begins[cell.column] = true;
            anyWide = anyWide || cell.columnSpan > 1;
            ++labels;
        }
        if (labels > 1 && anyWide) return begins;
        begins.assign(begins.size(), false);
    }
    return begins;
}

double TableMeasures::sum(std::size_t begin, std::size_t end) const {
    return std::accumulate(widths_.begin() + static_cast<std::ptrdiff_t>(begin),
                           widths_.begin() + static_cast<std::ptrdiff_t>(end), 0.0);
}

/// Of a label over columns that do not all stand beside each other, the narrowest part counts.
double TableMeasures::heightOf(const GridCell& cell, const Natural& natural) {
    double width = sum(cell.column, cell.column + cell.columnSpan);
    if (cell.columnSpan > 1 && !isLabelColumn(cell.column)) {
        for (const ColumnRange& range : ranges_) {
            const std::uint32_t begin = std::max(range.begin, cell.column);
            const std::uint32_t end = std::min(range.end, cell.column + cell.columnSpan);
            if (begin < end) width = std::min(width, sum(begin, end));
        }
    }
    if (natural.width <= width + 0.02) return natural.height;
    const AreaLook& look = grid_.style(cell).look;
    const double inner = width - look.marginLeft - look.marginRight - markRoom(cell);
    return shaper_.wrapped(styles_[cell.style], grid_.text(cell), inner).height + look.marginTop +
           look.marginBottom;
}

void TableMeasures::setHeights() {
    heights_.assign(grid_.rows, 0);
    std::vector<std::size_t> spanning;
    for (std::size_t i = 0; i < grid_.cells.size(); ++i) {
        const GridCell& cell = grid_.cells[i];
        if (cell.rowSpan > 1) {
            spanning.push_back(i);
        } else {
            heights_[cell.row] = std::max(heights_[cell.row], heightOf(cell, natural_[i]));
        }
    }
    for (const std::size_t i : spanning) {
        const GridCell& cell = grid_.cells[i];
        double* const first = heights_.data() + cell.row;
        const double have = std::accumulate(first, first + cell.rowSpan, 0.0);
        first[cell.rowSpan - 1] += std::max(0.0, heightOf(cell, natural_[i]) - have);
    }
    natural_ = {};
}

}  // namespace vexa::frontend::pdf
