#include "frontend/export/workbook/sheet_footprint.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace vexa::frontend {
namespace {

/// First and last column of each row that has something.
std::map<std::uint32_t, std::pair<std::uint32_t, std::uint32_t>> extentsOf(const SheetContent& content) {
    std::map<std::uint32_t, std::pair<std::uint32_t, std::uint32_t>> rows;
    const auto add = [&rows](std::uint32_t row, std::uint32_t first, std::uint32_t last) {
        // Cells come by row, so that the place is at the end for all but pictures.
        const auto found = rows.try_emplace(rows.end(), row, first, last);
        found->second.first = std::min(found->second.first, first);
        found->second.second = std::max(found->second.second, last);
    };
    const auto& cells = content.cells;
    for (std::size_t begin = 0, end = 0; begin < cells.size(); begin = end) {
        while (end < cells.size() && cells[end].row == cells[begin].row) ++end;
        add(cells[begin].row, cells[begin].column, cells[end - 1].column);
    }
    return rows;
}

}  // namespace

SheetFootprint::SheetFootprint(const SheetContent& content, SheetSpot at)
    : content_(content), at_(at), box_{at.row, at.column, 1, 1} {
    bool isFirst = true;
    for (const auto& [row, columns] : extentsOf(content)) {
        const SheetRange block{at.row + row, at.column + columns.first, 1,
                               columns.second - columns.first + 1};
        SheetRange* const last = blocks_.empty() ? nullptr : &blocks_.back();
        if (last != nullptr && last->row + last->rows == block.row && last->column == block.column &&
            last->columns == block.columns) {
            ++last->rows;
        } else {
            blocks_.push_back(block);
        }
        const std::uint32_t begin = isFirst ? block.column : std::min(box_.column, block.column);
        const std::uint32_t end = isFirst
                                      ? block.column + block.columns
                                      : std::max(box_.column + box_.columns, block.column + block.columns);
        const std::uint32_t top = isFirst ? block.row : box_.row;
        box_ = {top, begin, block.row + 1 - top, end - begin};
        isFirst = false;
    }
}

/// The first block that does not end above `row`.
std::vector<SheetRange>::const_iterator SheetFootprint::firstBlock(std::uint32_t row) const {
    return std::partition_point(blocks_.begin(), blocks_.end(),
                                [row](const SheetRange& block) { return block.row + block.rows <= row; });
}

bool SheetFootprint::touches(const SheetRange& range) const {
    for (auto block = firstBlock(range.row); block != blocks_.end() && block->row < range.row + range.rows;
         ++block) {
        if (overlap(*block, range)) {
            return true;
        }
    }
    return false;
}

bool SheetFootprint::covers(const SheetRange& range) const { return without(range).empty(); }

bool SheetFootprint::hasCell(SheetSpot spot) const {
    if (spot.row < at_.row || spot.column < at_.column) {
        return false;
    }
    const SheetSpot own{spot.row - at_.row, spot.column - at_.column};
    const auto& cells = content_.cells;
    const auto found =
        std::lower_bound(cells.begin(), cells.end(), own, [](const SheetCell& cell, const SheetSpot& wanted) {
            return SheetSpot{cell.row, cell.column} < wanted;
        });
    return found != cells.end() && found->row == own.row && found->column == own.column;
}

std::vector<SheetRange> SheetFootprint::without(const SheetRange& range) const {
    std::vector<SheetRange> left;
    std::uint32_t row = range.row;
    const std::uint32_t end = range.row + range.rows;
    const std::uint32_t columnEnd = range.column + range.columns;
    for (auto block = firstBlock(range.row); block != blocks_.end() && block->row < end; ++block) {
        if (!overlap(*block, range)) {
            continue;
        }
        const std::uint32_t top = std::max(block->row, row);
        const std::uint32_t bottom = std::min(block->row + block->rows, end);
        if (top > row) {
            left.push_back({row, range.column, top - row, range.columns});
        }
        if (block->column > range.column) {
            left.push_back({top, range.column, bottom - top, block->column - range.column});
        }
        if (const std::uint32_t right = block->column + block->columns; right < columnEnd) {
            left.push_back({top, right, bottom - top, columnEnd - right});
        }
        row = bottom;
    }
    if (row < end) {
        left.push_back({row, range.column, end - row, range.columns});
    }
    return left;
}

}  // namespace vexa::frontend
