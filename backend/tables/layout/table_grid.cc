#include "backend/tables/layout/table_grid.h"

#include <algorithm>

#include "backend/tables/layout/cell_styles.h"
#include "backend/tables/layout/column_contents.h"
#include "backend/tables/layout/footnote_letters.h"

namespace vexa::tables {

namespace {

GridRole roleAt(const FlatTable& table, std::size_t row, std::size_t column) {
    if (row < table.headerRows) {
        return column < table.headerColumns ? GridRole::corner : GridRole::columnLabel;
    }
    return column < table.headerColumns ? GridRole::rowLabel : GridRole::data;
}

Area areaOf(GridRole role) {
    switch (role) {
        case GridRole::corner:
            return Area::corner;
        case GridRole::columnLabel:
            return Area::columnLabels;
        case GridRole::rowLabel:
            return Area::rowLabels;
        case GridRole::data:
            break;
    }
    return Area::data;
}

/// The lines around a place of a flat table with `rows` rows and `columns` columns.
CellBorders bordersAt(const TableGrid& grid, std::uint32_t row, std::uint32_t column) {
    const auto at = [](std::uint32_t boundary, std::uint32_t end, std::uint32_t labels, Border first,
                       Border behindLabels, Border last) {
        if (boundary == 0) return static_cast<std::uint8_t>(first);
        if (boundary == end) return static_cast<std::uint8_t>(last);
        return boundary == labels ? static_cast<std::uint8_t>(behindLabels) : noBorder;
    };
    const auto vertical = [&](std::uint32_t boundary) {
        return at(boundary, grid.columns, grid.labelColumns, Border::left, Border::besideLabels,
                  Border::right);
    };
    const auto horizontal = [&](std::uint32_t boundary) {
        return at(boundary, grid.rows, grid.headerRows, Border::top, Border::belowHeader, Border::bottom);
    };
    return {horizontal(row), vertical(column + 1), horizontal(row + 1), vertical(column)};
}

/// A cell of the grid for a cell of the flat table, which has at most `maximalFlatCells` of them.
void addFlatCell(const FlatTable& table, std::size_t index, const std::vector<StyleId>& own,
                 CellStyles& styles, TableGrid& grid) {
    const FlatCell& flat = table.cells[index];
    GridCell& cell = grid.cells.emplace_back();
    cell.row = static_cast<std::uint32_t>(index / table.columns);
    cell.column = static_cast<std::uint32_t>(index % table.columns);
    cell.role = roleAt(table, cell.row, cell.column);
    cell.kind = flat.text.empty() ? CellKind::empty : CellKind::text;
    cell.textBegin = static_cast<std::uint32_t>(grid.texts.size());
    cell.textLength = static_cast<std::uint32_t>(flat.text.size());
    grid.texts += flat.text;
    cell.style = styles.of(areaOf(cell.role), flat.style < own.size() ? own[flat.style] : 0, false,
                           bordersAt(grid, cell.row, cell.column));
}

}  // namespace

std::string TableGrid::markText(const GridCell& cell) const {
    return cell.marks == 0 ? std::string() : bracketedMarks(marks[cell.marks - 1]);
}

TableGrid layOut(const FlatTable& table, const LayoutOptions& options) {
    TableGrid grid;
    grid.isFlat = true;
    TableStyle style;
    std::vector<StyleId> own;
    own.reserve(table.styles.size());
    for (const CellStyle& each : table.styles) own.push_back(style.intern(each));
    CellStyles styles(style, grid.styles);
    grid.title = {table.title, styles.ofText(Area::title)};
    grid.caption.style = styles.ofText(Area::caption);
    if (options.notesAndCaptions && table.caption != table.title) grid.caption.text = table.caption;
    grid.layer.style = styles.ofText(Area::layers);
    grid.footnoteStyle = styles.ofText(Area::footnotes);
    grid.rows = static_cast<std::uint32_t>(table.rows());
    grid.columns = grid.rows == 0 ? 0 : static_cast<std::uint32_t>(table.columns);
    grid.headerRows = static_cast<std::uint32_t>(std::min(table.headerRows, table.rows()));
    grid.labelColumns = std::min(
        static_cast<std::uint32_t>(std::min<std::size_t>(table.headerColumns, UINT32_MAX)), grid.columns);
    grid.widths.resize(grid.columns);
    grid.cells.reserve(table.cells.size());
    for (std::size_t i = 0; i < std::size_t{grid.rows} * grid.columns; ++i) {
        if (i % table.columns == 0) grid.rowBegin.push_back(i);
        addFlatCell(table, i, own, styles, grid);
    }
    grid.rowBegin.push_back(grid.cells.size());
    alignWrittenNumbers(grid);
    return grid;
}

}  // namespace vexa::tables
