#include "frontend/export/xls/sheet_cells.h"

#include <algorithm>
#include <bitset>
#include <cmath>

#include "frontend/export/xls/formula_values.h"

namespace vexa::frontend::biff {

namespace {

constexpr double highestRow = 409.5;
constexpr std::size_t rowsOfBlock = 32;
/// Of a row's record: what stands where in its content, and what it says.
constexpr std::size_t rowBytes = 16;
constexpr std::size_t heightAt = 6;
constexpr std::size_t flagsAt = 12;
constexpr std::uint32_t rowIsHidden = 0x20;
constexpr std::uint32_t hasOwnHeight = 0x40;
constexpr std::uint32_t always = 0x100;

bool before(const CellView& left, const CellView& right) {
    return left.row != right.row ? left.row < right.row : left.first < right.first;
}

}  // namespace

void SheetExtent::include(std::uint32_t rowsUsed, std::uint32_t columnsUsed) {
    rows = std::max(rows, rowsUsed);
    columns = std::max(columns, columnsUsed);
}

bool SheetCells::read(const RecordView& record) {
    if (record.id == id::row) {
        if (record.content().size() < rowBytes) return false;
        rows_[twoAt(record.content(), 0)].raw = record.raw;
        return true;
    }
    if (goesWithFormula(record.id)) {
        if (cells_.empty() || cells_.back().id() != id::formula) return false;
        shared_.read(record);
        CellView& host = cells_.back();
        host.raw = {host.raw.data(), host.raw.size() + record.raw.size()};
        return true;
    }
    const auto cells = cellsOf(record);
    if (!cells) return false;
    isSorted_ = isSorted_ && (cells_.empty() || before(cells_.back(), *cells));
    cells_.push_back(*cells);
    return true;
}

void SheetCells::finishReading() {
    if (!isSorted_) std::stable_sort(cells_.begin(), cells_.end(), before);
}

SheetExtent SheetCells::used() const {
    SheetExtent extent;
    for (const CellView& cell : cells_) {
        if (!cell.isBlank()) extent.include(cell.row + 1, cell.last + 1U);
    }
    return extent;
}

SheetExtent SheetCells::extent() const {
    SheetExtent extent;
    for (const CellView& cell : cells_) extent.include(cell.row + 1, cell.last + 1U);
    if (!rows_.empty()) extent.include(rows_.rbegin()->first + 1, 0);
    return extent;
}

void SheetCells::place(const PlacedContent& placed) {
    encode(placed);
    cutOut();
    dissolveCut(placed.strings);
    shared_.settle(cells_, pieces_);
    const auto middle = static_cast<std::ptrdiff_t>(cells_.size());
    cells_.insert(cells_.end(), own_.begin(), own_.end());
    std::inplace_merge(cells_.begin(), cells_.begin() + middle, cells_.end(), before);
}

void SheetCells::encode(const PlacedContent& placed) {
    std::vector<std::size_t> places;
    places.reserve(placed.content.cells.size());
    Records records(ownBytes_);
    const std::vector<SheetCell>& cells = placed.content.cells;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const SheetCell& cell = cells[i];
        CellView view{placed.row + cell.row, static_cast<std::uint16_t>(placed.column + cell.column), 0, {}};
        const std::size_t begin = ownBytes_.size();
        if (cell.value == SheetValue::blank) {
            // Neighbours of one style are one record.
            while (i + 1 < cells.size() && cells[i + 1].value == SheetValue::blank &&
                   cells[i + 1].row == cell.row && cells[i + 1].column == cells[i].column + 1 &&
                   cells[i + 1].style == cell.style) {
                ++i;
            }
            view.last = static_cast<std::uint16_t>(placed.column + cells[i].column);
            appendBlanks(records, view.row, view.first, view.last, placed.formats[cell.style].format);
        } else {
            view.last = view.first;
            encodeCell(placed, cell, records);
        }
        places.push_back(begin);
        own_.push_back(view);
    }
    for (std::size_t i = 0; i < own_.size(); ++i) {
        const std::size_t end = i + 1 < places.size() ? places[i + 1] : ownBytes_.size();
        own_[i].raw = std::string_view(ownBytes_).substr(places[i], end - places[i]);
    }
}

void SheetCells::encodeCell(const PlacedContent& placed, const SheetCell& cell, Records& records) {
    const CellFormat& format = placed.formats[cell.style];
    const std::uint32_t row = placed.row + cell.row;
    const std::uint32_t column = placed.column + cell.column;
    if (cell.value == SheetValue::number) {
        appendNumber(records, row, column, format.format, cell.number);
    } else {
        const std::uint32_t text =
            placed.strings.add(placed.content.text(cell), cell.raised, format.raisedFont);
        appendText(records, row, column, format.format, text);
    }
}

std::uint64_t SheetCells::placedCells(const CellRange& range) const {
    std::uint64_t count = 0;
    const CellView from{range.firstRow, 0, 0, {}};
    for (auto cell = std::lower_bound(own_.begin(), own_.end(), from, before);
         cell != own_.end() && cell->row <= range.lastRow; ++cell) {
        const std::uint32_t first = std::max<std::uint32_t>(cell->first, range.firstColumn);
        const std::uint32_t last = std::min<std::uint32_t>(cell->last, range.lastColumn);
        if (first <= last) count += last - first + 1;
    }
    return count;
}

/// A formula of several cells that loses one of them goes: the others keep their values.
void SheetCells::dissolveCut(BookStrings& strings) {
    for (const CellRange& range : shared_.whole()) {
        const std::uint64_t overwritten = placedCells(range);
        if (overwritten == 0 || overwritten == range.cells()) continue;
        for (CellView& cell : cells_) {
            if (!range.holds(cell.row, cell.first) || !SharedFormulas::belongsTo(cell, range)) continue;
            std::string& piece = pieces_.emplace_back();
            Records records(piece);
            appendValueOf(records, cell, strings);
            cell.raw = piece;
        }
        cutsFormulas_ = true;
    }
}

/// Takes away what stands where cells are placed.
void SheetCells::cutOut() {
    std::vector<CellView> kept;
    kept.reserve(cells_.size());
    auto cell = cells_.cbegin();
    for (auto own = own_.cbegin(); own != own_.cend() && cell != cells_.cend();) {
        auto ownEnd = own;
        while (ownEnd != own_.cend() && ownEnd->row == own->row) ++ownEnd;
        for (; cell != cells_.cend() && cell->row < own->row; ++cell) kept.push_back(*cell);
        cutRow(cell, own, ownEnd, kept);
        own = ownEnd;
    }
    kept.insert(kept.end(), cell, cells_.cend());
    cells_ = std::move(kept);
}

void SheetCells::cutRow(std::vector<CellView>::const_iterator& cell,
                        std::vector<CellView>::const_iterator ownBegin,
                        std::vector<CellView>::const_iterator ownEnd, std::vector<CellView>& kept) {
    std::bitset<columnCount> taken;
    for (auto own = ownBegin; own != ownEnd; ++own) {
        for (std::size_t column = own->first; column <= own->last; ++column) taken.set(column);
    }
    for (; cell != cells_.cend() && cell->row == ownBegin->row; ++cell) {
        std::size_t lost = 0;
        for (std::size_t column = cell->first; column <= cell->last; ++column) lost += taken[column];
        if (lost == 0) {
            kept.push_back(*cell);
            continue;
        }
        overwrote_ = overwrote_ || !cell->isBlank();
        if (cell->id() == id::formula) shared_.drop(*cell);
        for (std::uint16_t column = cell->first; column <= cell->last; ++column) {
            if (taken[column]) continue;
            std::string& piece = pieces_.emplace_back();
            Records records(piece);
            appendCellOf(records, *cell, column);
            kept.push_back({cell->row, column, column, piece});
        }
    }
}

void SheetCells::setHeight(std::uint32_t number, double points, bool keeps) {
    Row& row = rows_[number];
    const std::uint32_t flags = row.raw.empty() ? 0 : fourAt(row.raw, headerBytes + flagsAt);
    if ((flags & rowIsHidden) != 0) return;
    if (keeps && !row.raw.empty() && twoAt(row.raw, headerBytes + heightAt) >= points * twipsOfPoint) return;
    row.height = std::min(points, highestRow);
}

double SheetCells::height(std::uint32_t number, double usual) const {
    const auto found = rows_.find(number);
    if (found == rows_.end()) return usual;
    const Row& row = found->second;
    if (row.height > 0) return row.height;
    if (row.raw.empty()) return usual;
    if ((fourAt(row.raw, headerBytes + flagsAt) & rowIsHidden) != 0) return 0;
    return (twoAt(row.raw, headerBytes + heightAt) & 0x7FFFU) / twipsOfPoint;
}

void SheetCells::appendRow(std::string& out, std::uint32_t number, double usualHeight, std::size_t begin,
                           std::size_t end) const {
    const auto found = rows_.find(number);
    const Row row = found == rows_.end() ? Row() : found->second;
    const std::uint32_t first = begin < end ? cells_[begin].first : 0;
    const std::uint32_t behind = begin < end ? cells_[end - 1].last + 1U : 0;
    const std::size_t at = out.size() + headerBytes;
    if (row.raw.empty()) {
        Records records(out);
        records.begin(id::row).two(number).two(first).two(behind);
        records.two(static_cast<std::uint32_t>(std::lround(usualHeight * twipsOfPoint)));
        records.four(0).two(always).two(plainFormat).end();
    } else {
        out += row.raw;
        setNumber(out, at + 2, first, 2);
        setNumber(out, at + 4, behind, 2);
    }
    if (row.height > 0) {
        setNumber(out, at + heightAt, static_cast<std::uint32_t>(std::lround(row.height * twipsOfPoint)), 2);
        setNumber(out, at + flagsAt, twoAt(out, at + flagsAt) | hasOwnHeight, 2);
    }
}

void SheetCells::append(std::string& out, double usualHeight, std::vector<std::uint32_t>& blocks) {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        if (i == 0 || cells_[i].row != cells_[i - 1].row) rows_[cells_[i].row];
    }
    std::size_t next = 0;
    for (auto begin = rows_.begin(); begin != rows_.end();) {
        const std::size_t blockAt = out.size();
        const std::size_t firstCell = next;
        std::vector<std::size_t> ends;  // of the cells of each row
        auto end = begin;
        for (; end != rows_.end() && ends.size() < rowsOfBlock; ++end) {
            const std::size_t rowBegin = next;
            while (next < cells_.size() && cells_[next].row == end->first) ++next;
            appendRow(out, end->first, usualHeight, rowBegin, next);
            ends.push_back(next);
        }
        std::vector<std::size_t> offsets;
        // The first row's cells are counted from the record of the second row.
        std::size_t from = blockAt + headerBytes + rowBytes;
        std::size_t cell = firstCell;
        for (const std::size_t rowEnd : ends) {
            if (cell < rowEnd) {
                offsets.push_back(out.size() - from);
                from = out.size();
            }
            for (; cell < rowEnd; ++cell) out += cells_[cell].raw;
        }
        blocks.push_back(static_cast<std::uint32_t>(out.size()));
        Records records(out);
        records.begin(id::dbCell).four(static_cast<std::uint32_t>(out.size() - headerBytes - blockAt));
        for (const std::size_t offset : offsets) {
            records.two(static_cast<std::uint32_t>(std::min<std::size_t>(offset, 0xFFFF)));
        }
        records.end();
        begin = end;
    }
}

}  // namespace vexa::frontend::biff
