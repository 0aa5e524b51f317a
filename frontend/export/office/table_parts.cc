#include "frontend/export/office/table_parts.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "frontend/export/office/office_values.h"
#include "frontend/export/office/table_columns.h"

namespace vexa::frontend {

namespace {

using tables::GridCell;
using tables::GridRole;
using tables::TableGrid;

/// Texts that are not numbers give way down to so many times their size, and no further.
constexpr double comfortableEms = 6;
/// Header rows that take more than this of a page do not stand on each one.
constexpr double mostHeader = 0.4;
/// A part ends where a group of columns does when that leaves so much of the page filled.
constexpr double filledEnough = 0.5;

class Fitter {
  public:
    Fitter(const TableGrid& grid, const TableRoom& room, WideTables wide)
        : grid_(grid), room_(room), wide_(wide), needs_(measureColumns(grid)) {
        labels_ = std::min(grid.labelColumns, room_.mostColumns - 1);
        if (grid.labelColumns == grid.columns) labels_ = std::min(grid.columns, room_.mostColumns);
        for (const ColumnNeed& need : needs_.columns) widths_.push_back(need.natural);
    }

    TableFit fit() {
        fit_.columnsCut = labels_ < grid_.labelColumns;
        fit_.longLabels = needs_.labels > room_.width / 2 && labels_ > 0;
        if (wide_ == WideTables::asIs) {
            limit();
        } else {
            squeeze();
        }
        split();
        if (wide_ == WideTables::shrink) shrink();
        for (TablePart& part : fit_.parts) finish(part);
        return std::move(fit_);
    }

  private:
    [[nodiscard]] double sum(std::uint32_t begin, std::uint32_t end) const {
        return std::accumulate(widths_.begin() + begin, widths_.begin() + end, 0.0);
    }

    /// How far a column gives way before anything else is done.
    [[nodiscard]] double comfortable(std::uint32_t column) const {
        const ColumnNeed& need = needs_.columns[column];
        const double size = grid_.cells.empty() ? 9 : grid_.style(grid_.cells.front()).look.size;
        return std::min(need.natural, std::max(need.least, comfortableEms * size));
    }

    /// Columns from `begin` on give way until they fit into `room`, each in proportion to what it can.
    void giveWay(std::uint32_t begin, std::uint32_t end, double room) {
        const double natural = sum(begin, end);
        if (natural <= room) return;
        double can = 0;
        for (std::uint32_t i = begin; i < end; ++i) can += widths_[i] - std::min(widths_[i], comfortable(i));
        if (can <= 0) return;
        const double part = std::min((natural - room) / can, 1.0);
        for (std::uint32_t i = begin; i < end; ++i) {
            widths_[i] -= part * (widths_[i] - std::min(widths_[i], comfortable(i)));
        }
    }

    void squeeze() {
        const double room = room_.width;
        if (fit_.longLabels) {
            giveWay(0, labels_, room / 2);
            // Words that are longer are broken.
            const double labels = sum(0, labels_);
            const bool shares = labels_ < grid_.columns;
            if (shares && labels > room / 2 && wide_ == WideTables::wrap) {
                for (std::uint32_t i = 0; i < labels_; ++i) widths_[i] *= room / 2 / labels;
            }
        }
        giveWay(0, grid_.columns, room);
    }

    /// Beyond what any table may measure, columns are made narrower.
    void limit() {
        const double half = room_.mostWidth / 2;
        const double labels = sum(0, labels_);
        for (std::uint32_t i = 0; i < grid_.columns; ++i) {
            if (i >= labels_) widths_[i] = std::min(widths_[i], half);
            if (i < labels_ && labels > half) widths_[i] *= half / labels;
        }
    }

    void split() {
        if (grid_.rows == 0 || grid_.columns == 0) return;
        const double labels = sum(0, labels_);
        std::uint32_t begin = std::min(grid_.labelColumns, grid_.columns);
        do {
            TablePart& part = fit_.parts.emplace_back();
            part.grid = &grid_;
            part.labelColumns = labels_;
            part.dataBegin = begin;
            part.dataEnd = begin =
                endOfPart(begin, (wide_ == WideTables::wrap ? room_.width : room_.mostWidth) - labels);
        } while (begin < grid_.columns);
    }

    /// The column behind the last one that fits beside the labels; at least one does.
    [[nodiscard]] std::uint32_t endOfPart(std::uint32_t begin, double room) {
        const std::uint32_t last = std::min(grid_.columns, begin + room_.mostColumns - labels_);
        if (wide_ == WideTables::shrink) return last;
        std::uint32_t end = begin;
        double taken = 0;
        while (end < last && (end == begin || taken + widths_[end] <= room + 0.01)) taken += widths_[end++];
        if (end == begin + 1 && taken > room) widths_[begin] = std::max(room, 6.0);
        return end == grid_.columns ? end : endOfGroup(begin, end, room);
    }

    /// Where the part rather ends than within a group of columns: of the outermost level on which one begins
    /// in the part, as long as that leaves enough of the page filled.
    [[nodiscard]] std::uint32_t endOfGroup(std::uint32_t begin, std::uint32_t end, double room) const {
        for (std::uint32_t row = 0; row + 1 < grid_.headerRows; ++row) {
            for (const GridCell& cell : grid_.row(row)) {
                const bool isCut = cell.role == GridRole::columnLabel && cell.column > begin &&
                                   cell.column < end && cell.column + cell.columnSpan > end;
                if (isCut && sum(begin, cell.column) >= room * filledEnough) return cell.column;
            }
        }
        return end;
    }

    void shrink() {
        double widest = 0;
        for (const TablePart& part : fit_.parts) {
            widest = std::max(widest, sum(0, labels_) + sum(part.dataBegin, part.dataEnd));
        }
        const double scale = widest > room_.width ? room_.width / widest : 1;
        for (TablePart& part : fit_.parts) part.scale = scale;
    }

    void finish(TablePart& part) {
        for (std::uint32_t i = 0; i < labels_; ++i) part.widths.push_back(widths_[i] * part.scale);
        for (std::uint32_t i = part.dataBegin; i < part.dataEnd; ++i)
            part.widths.push_back(widths_[i] * part.scale);
        const double total = std::accumulate(part.widths.begin(), part.widths.end(), 0.0);
        if (total > room_.edge + 0.01) fit_.columnsCut = true;
        checkLetters(part);
        measureRows(part);
    }

    /// A font can only be so small, and a column may then be narrower than one of its letters.
    void checkLetters(const TablePart& part) {
        if (part.scale == 1) return;
        for (const GridCell& cell : grid_.cells) {
            const double size = grid_.style(cell).look.size * part.scale;
            if (size < smallestDocumentFont && cell.textLength > 0) fit_.textsCut = true;
        }
    }

    void measureRows(TablePart& part) const {
        std::vector<double> heights(grid_.rows, 0);
        for (std::size_t i = 0; i < grid_.cells.size(); ++i) {
            const GridCell& cell = grid_.cells[i];
            if (cell.rowSpan > 1) continue;
            heights[cell.row] = std::max(heights[cell.row], heightOf(part, cell, needs_.extents[i]));
        }
        double header = 0;
        for (std::uint32_t i = 0; i < grid_.headerRows; ++i) header += heights[i];
        if (header <= room_.height * mostHeader) part.headerRows = std::min(grid_.headerRows, grid_.rows);
        part.height = std::accumulate(heights.begin(), heights.end(), 0.0);
        part.heights = std::move(heights);
        part.roomHeight = room_.height;
    }

    [[nodiscard]] double heightOf(const TablePart& part, const GridCell& cell,
                                  const CellExtent& extent) const {
        const tables::AreaLook& look = grid_.style(cell).look;
        double width = 0;
        for (std::uint32_t i = 0; i < cell.columnSpan; ++i) width += widths_[cell.column + i];
        width -= look.marginLeft + look.marginRight;
        std::size_t lines = extent.lines;
        if (extent.width > width) {
            lines = std::max(lines, needs_.fonts[cell.style].linesIn(grid_.text(cell), width));
        }
        const double text = static_cast<double>(lines) * look.size * heightOfLine;
        return (text + look.marginTop + look.marginBottom) * part.scale;
    }

    const TableGrid& grid_;
    const TableRoom& room_;
    WideTables wide_;
    ColumnNeeds needs_;
    std::uint32_t labels_ = 0;  // label columns that are shown
    std::vector<double> widths_;
    TableFit fit_;
};

}  // namespace

bool TablePart::keepsWithNext(std::uint32_t row) const {
    if (row + 1 == grid->rows) return goesOnBelow;
    const bool isFirst = row <= headerRows && headerRows == grid->headerRows;
    return height <= roomHeight / 2 || isFirst || row + 2 == grid->rows;
}

PartRows::PartRows(const TablePart& part) : part_(part), cells_(part.columns()) {}

const std::vector<RowPiece>& PartRows::next() {
    const std::uint32_t dataWidth = part_.dataEnd - part_.dataBegin;
    for (const GridCell& cell : part_.grid->row(row_)) {
        const std::uint32_t end = cell.column + cell.columnSpan;
        for (std::uint32_t i = cell.column; i < std::min(end, part_.labelColumns); ++i) cells_[i] = &cell;
        for (std::uint32_t i = std::max(cell.column, part_.dataBegin); i < std::min(end, part_.dataEnd);
             ++i) {
            cells_[part_.labelColumns + i - part_.dataBegin] = &cell;
        }
    }
    pieces_.clear();
    for (std::uint32_t i = 0; i < part_.labelColumns + dataWidth;) {
        RowPiece piece{cells_[i], i, 1, RowPlace::whole};
        while (i + piece.span < cells_.size() && cells_[i + piece.span] == piece.cell) ++piece.span;
        if (piece.cell->rowSpan > 1) {
            piece.place = piece.cell->row == row_ ? RowPlace::first : RowPlace::further;
        }
        i += piece.span;
        pieces_.push_back(piece);
    }
    ++row_;
    return pieces_;
}

TableFit fitTable(const TableGrid& grid, const TableRoom& room, WideTables wide) {
    return Fitter(grid, room, wide).fit();
}

}  // namespace vexa::frontend
