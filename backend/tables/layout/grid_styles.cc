#include "backend/tables/layout/grid_styles.h"

#include <algorithm>
#include <vector>

namespace vexa::tables {

namespace {

constexpr std::size_t noCell = SIZE_MAX;

std::uint8_t number(Border border) { return static_cast<std::uint8_t>(border); }

class GridStyler {
  public:
    GridStyler(const PreparedTable& prepared, CellStyles& styles, TableGrid& grid)
        : prepared_(prepared), styles_(styles), grid_(grid) {}

    void run();

  private:
    void setHeaderStyle(GridCell& cell);
    void setBodyStyle(GridCell& cell);
    [[nodiscard]] StyleId labelStyle(const GridCell& cell) const;

    const PreparedTable& prepared_;
    CellStyles& styles_;
    TableGrid& grid_;
    std::vector<std::size_t> above_;  // by column: the last cell of the header over it, or `noCell`
};

void GridStyler::run() {
    above_.assign(grid_.columns, noCell);
    for (GridCell& cell : grid_.cells) {
        if (cell.row < grid_.headerRows) {
            setHeaderStyle(cell);
        } else {
            setBodyStyle(cell);
        }
    }
}

StyleId GridStyler::labelStyle(const GridCell& cell) const {
    if (cell.category != noGroup) return prepared_.style().category(cell.dimension, cell.category);
    return cell.group == noGroup ? 0 : prepared_.style().group(cell.dimension, cell.group);
}

void GridStyler::setHeaderStyle(GridCell& cell) {
    const std::uint32_t end = cell.row + cell.rowSpan;
    const bool isCorner = cell.role == GridRole::corner;
    CellBorders borders{noBorder, noBorder, noBorder, noBorder};
    const std::size_t above = above_[cell.column];
    if (cell.row == 0) {
        borders[0] = number(Border::top);
    } else if (!isCorner && above != noCell && grid_.cells[above].columnSpan > 1) {
        borders[0] = number(Border::headerRows);
    }
    if (end == grid_.headerRows) {
        borders[2] = number(end == grid_.rows ? Border::bottom : Border::belowHeader);
    } else if (!isCorner && cell.columnSpan > 1) {
        borders[2] = number(Border::headerRows);
    }
    const auto side = [&](std::uint32_t boundary) {
        if (boundary == 0) return number(Border::left);
        if (boundary < grid_.labelColumns) return number(Border::labelColumns);
        return number(prepared_.headerColumnBorders[boundary - grid_.labelColumns]);
    };
    borders[1] = side(cell.column + cell.columnSpan);
    borders[3] = side(cell.column);
    const auto index = static_cast<std::size_t>(&cell - grid_.cells.data());
    std::fill_n(above_.begin() + cell.column, cell.columnSpan, index);
    cell.style = styles_.of(isCorner ? Area::corner : Area::columnLabels, labelStyle(cell), false, borders);
}

void GridStyler::setBodyStyle(GridCell& cell) {
    const RowBanding& banding = prepared_.look().banding;
    const std::uint32_t row = cell.row - grid_.headerRows;
    const std::uint32_t end = cell.column + cell.columnSpan;
    bool banded = banding.rows > 0 && row / banding.rows % 2 == 1;
    CellBorders borders{};
    if (cell.role == GridRole::data) {
        const std::uint32_t column = cell.column - grid_.labelColumns;
        borders = {number(prepared_.dataRowBorders[row]), number(prepared_.dataColumnBorders[column + 1]),
                   number(prepared_.dataRowBorders[row + 1]), number(prepared_.dataColumnBorders[column])};
        const PlaceMap<StyleId>& cells = prepared_.style().cells();
        cell.style = styles_.of(Area::data, cells.isEmpty() ? 0 : cells.at(cell.place), banded, borders);
        return;
    }
    banded = banded && banding.labels;
    borders = {number(prepared_.labelRowBorders[row]),
               number(end < grid_.labelColumns ? Border::labelColumns : Border::besideLabels),
               number(prepared_.labelRowBorders[row + cell.rowSpan]),
               number(cell.column == 0 ? Border::left : Border::labelColumns)};
    cell.style = styles_.of(Area::rowLabels, labelStyle(cell), banded, borders);
}

}  // namespace

void setCellStyles(const PreparedTable& prepared, CellStyles& styles, TableGrid& grid) {
    GridStyler(prepared, styles, grid).run();
}

}  // namespace vexa::tables
