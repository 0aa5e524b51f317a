#include "frontend/export/workbook/sheet_fitting.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "frontend/export/font_widths.h"
#include "frontend/export/workbook/column_fit.h"

namespace vexa::frontend {

namespace {

/// Points. A row may have 409; what is wrapped in a range of rows gets less of each.
constexpr double highestRow = 400;
constexpr double usualColumnWidth = 48;
/// Programs take 255 digits of their usual font.
constexpr double widestColumn = 1'340;
constexpr double lineSpacing = 1.2;
/// Of ideographs, kana and Hangul.
constexpr double wideLineSpacing = 1.4;
constexpr double rowPadding = 3;

bool hasWideLetters(std::string_view text) {
    // The first bytes of U+3000 to U+DFFF.
    return std::any_of(text.begin(), text.end(), [](char each) {
        const auto byte = static_cast<unsigned char>(each);
        return byte >= 0xE3 && byte <= 0xED;
    });
}

double heightOfLines(std::size_t lines, double fontSize, double spacing) {
    return static_cast<double>(lines) * fontSize * spacing + rowPadding;
}

double heightAt(const SheetContent& content, std::uint32_t row) {
    const auto found = content.heights.find(row);
    return found == content.heights.end() ? usualRowHeight : found->second;
}

void raise(SheetContent& content, std::uint32_t row, double height) {
    height = std::min(std::ceil(height * 4) / 4, highestRow);
    if (height <= usualRowHeight) return;
    double& known = content.heights.try_emplace(row, 0).first->second;
    known = std::max(known, height);
}

}  // namespace

std::uint32_t rowsOfLines(std::size_t lines, double fontSize) {
    return static_cast<std::uint32_t>(
        std::ceil(heightOfLines(lines, fontSize, wideLineSpacing) / highestRow));
}

void SheetFitting::widen(std::uint32_t column, double points) {
    if (column >= widths_.size()) widths_.resize(column + std::size_t{1});
    widths_[column] = std::max(widths_[column], std::min(points, widestColumn));
}

void SheetFitting::addUpWidths(const SheetContent& content, const SheetLimits& limits) {
    constexpr auto forLines = static_cast<std::uint32_t>(lineRoom / usualColumnWidth) + 1;
    const std::uint32_t count = std::min(content.columns + forLines, limits.columns);
    double end = 0;
    for (std::uint32_t column = 0; column < count; ++column) {
        const bool isSet = column < widths_.size() && widths_[column] > 0;
        end += isSet ? widths_[column] : usualColumnWidth;
        ends_.push_back(end);
    }
}

double SheetFitting::widthFrom(std::uint32_t column, std::uint32_t columns) const {
    const std::size_t last = std::min<std::size_t>(column + columns, ends_.size());
    return last == 0 ? 0 : ends_[last - 1] - (column == 0 ? 0 : ends_[column - 1]);
}

void SheetFitting::spread(FittedText& text, const SheetContent& content) {
    const SheetCell& cell = content.cells[text.cell];
    const double wanted = std::min(text.width, std::max(lineRoom, widthFrom(cell.column, text.columns)));
    while (widthFrom(cell.column, text.columns) < wanted && cell.column + text.columns < ends_.size()) {
        ++text.columns;
    }
    if (text.columns > 1 || text.rows > 1) spreads_.push_back({text.cell, text.rows, text.columns});
}

double SheetFitting::heightOf(const FittedText& text, const SheetContent& content) const {
    const SheetCell& cell = content.cells[text.cell];
    const SheetStyle& style = content.styles[cell.style];
    const double room = textRoom(widthFrom(cell.column, text.columns));
    const FontWidths font(style.font, style.size, style.bold);
    const std::string_view shown = content.text(cell);
    return heightOfLines(style.wraps ? font.linesIn(shown, room) : 1, style.size,
                         hasWideLetters(shown) ? wideLineSpacing : lineSpacing);
}

void SheetFitting::fitOneRow(SheetContent& content, const FittedText& text) const {
    raise(content, content.cells[text.cell].row, heightOf(text, content));
}

/// What the rows of a range lack is added to its last one, or to each of a text by itself.
void SheetFitting::fitRows(SheetContent& content, const FittedText& text) const {
    const std::uint32_t first = content.cells[text.cell].row;
    const double wanted = heightOf(text, content);
    if (text.spreads) {
        for (std::uint32_t i = 0; i < text.rows; ++i) raise(content, first + i, wanted / text.rows);
        return;
    }
    double have = 0;
    for (std::uint32_t i = 0; i < text.rows && have < wanted; ++i) have += heightAt(content, first + i);
    const std::uint32_t last = first + text.rows - 1;
    if (have < wanted) raise(content, last, heightAt(content, last) + wanted - have);
}

void SheetFitting::finish(SheetContent& content, const SheetLimits& limits) {
    for (std::uint32_t column = 0; column < widths_.size(); ++column) {
        if (widths_[column] > 0) content.widths[column] = widths_[column];
    }
    addUpWidths(content, limits);
    for (FittedText& text : texts_) {
        if (text.spreads) spread(text, content);
    }
    // Not every program finds out by itself how high a row has to be, and none where cells are merged.
    for (const FittedText& text : texts_) {
        if (text.rows == 1) fitOneRow(content, text);
    }
    for (const FittedText& text : texts_) {
        if (text.rows > 1) fitRows(content, text);
    }
    insertRanges(content);
    insertCells(content);
}

void SheetFitting::insertRanges(SheetContent& content) const {
    const auto middle = static_cast<std::ptrdiff_t>(content.merged.size());
    for (const Spread& each : spreads_) {
        const SheetCell& cell = content.cells[each.cell];
        content.merged.push_back({cell.row, cell.column, each.rows, each.columns});
        content.columns = std::max(content.columns, cell.column + each.columns);
    }
    std::inplace_merge(content.merged.begin(), content.merged.begin() + middle, content.merged.end(),
                       [](const SheetRange& left, const SheetRange& right) {
                           return left.row != right.row ? left.row < right.row : left.column < right.column;
                       });
}

/// From the last cell on, so that each is moved once.
void SheetFitting::insertCells(SheetContent& content) const {
    std::size_t more = 0;
    for (const Spread& each : spreads_) more += std::size_t{each.rows} * each.columns - 1;
    if (more == 0) return;
    std::size_t from = content.cells.size();
    std::size_t to = from + more;
    content.cells.resize(to);
    for (std::size_t place = spreads_.size(); place-- > 0;) {
        const Spread& each = spreads_[place];
        while (from > each.cell + std::size_t{1}) content.cells[--to] = content.cells[--from];
        const SheetCell first = content.cells[--from];
        for (std::size_t i = std::size_t{each.rows} * each.columns; i-- > 1;) {
            SheetCell blank;
            blank.row = first.row + static_cast<std::uint32_t>(i / each.columns);
            blank.column = static_cast<std::uint16_t>(first.column + i % each.columns);
            blank.style = first.style;
            content.cells[--to] = blank;
        }
        content.cells[--to] = first;
    }
}

}  // namespace vexa::frontend
