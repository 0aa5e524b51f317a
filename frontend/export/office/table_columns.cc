#include "frontend/export/office/table_columns.h"

#include <algorithm>
#include <cmath>

namespace vexa::frontend {

namespace {

using tables::GridCell;
using tables::GridRole;
using tables::ShownStyle;
using tables::TableGrid;

/// Columns are this much wider than what was measured, for fonts that are not quite what was assumed.
constexpr double slack = 1.03;
constexpr double slackPoints = 1.5;
/// Labels over columns are broken beyond so many times their size.
constexpr double labelEms = 8;
/// Lines that are broken at blanks are not of one length.
constexpr double unevenLines = 1.2;
/// Raised marks are so large.
constexpr double markScale = 0.65;
constexpr double smallestColumn = 6;

double marksWidth(const TableGrid& grid, const GridCell& cell, const FontWidths& font) {
    double width = 0;
    if (cell.marks == 0) return width;
    for (const std::string& mark : grid.marks[cell.marks - 1]) width += font.width(mark + ",");
    return width * markScale;
}

class Measurer {
  public:
    explicit Measurer(const TableGrid& grid) : grid_(grid) {
        needs_.columns.resize(grid.columns);
        needs_.extents.reserve(grid.cells.size());
        needs_.fonts.reserve(grid.styles.size());
        for (const ShownStyle& style : grid.styles) {
            needs_.fonts.emplace_back(style.look.font, style.look.size, style.look.bold);
        }
    }

    ColumnNeeds measure() {
        for (const GridCell& cell : grid_.cells) {
            needs_.extents.push_back(extentOf(cell));
            if (cell.columnSpan == 1) take(cell, needs_.extents.back());
        }
        for (std::size_t i = 0; i < grid_.cells.size(); ++i) {
            if (grid_.cells[i].columnSpan > 1) widen(grid_.cells[i], needs_.extents[i]);
        }
        for (std::uint32_t i = 0; i < grid_.columns; ++i) applySettings(i);
        for (std::size_t i = 0; i < grid_.labelColumns; ++i) needs_.labels += needs_.columns[i].natural;
        return std::move(needs_);
    }

  private:
    CellExtent extentOf(const GridCell& cell) {
        const FontWidths& font = needs_.fonts[cell.style];
        const TextExtent text = font.extent(grid_.text(cell));
        const double marks = marksWidth(grid_, cell, font);
        return {static_cast<float>((text.width + marks) * slack + slackPoints),
                static_cast<float>((text.word + marks) * slack + slackPoints),
                static_cast<std::uint32_t>(text.lines)};
    }

    /// The width that the cell wants, and the one that it can do with.
    [[nodiscard]] ColumnNeed needOf(const GridCell& cell, const CellExtent& extent) const {
        const ShownStyle& style = grid_.style(cell);
        const double margins = cellMargins(style);
        ColumnNeed need{extent.width + margins, extent.word + margins};
        if (cell.role == GridRole::data && cell.kind == tables::CellKind::number) need.least = need.natural;
        if (cell.role == GridRole::columnLabel) {
            need.natural =
                std::max(need.least, margins + brokenWidth(extent.width, labelEms * style.look.size));
        }
        return need;
    }

    /// What a text takes when it is broken into as few lines as fit `most`, and these are about as long.
    [[nodiscard]] static double brokenWidth(double width, double most) {
        if (width <= most) return width;
        const double lines = std::ceil(width / most);
        return std::min(width / lines * unevenLines, most);
    }

    void take(const GridCell& cell, const CellExtent& extent) {
        const ColumnNeed need = needOf(cell, extent);
        ColumnNeed& column = needs_.columns[cell.column];
        column.natural = std::max(column.natural, need.natural);
        column.least = std::max(column.least, need.least);
    }

    /// What a cell over several columns lacks is spread over them.
    void widen(const GridCell& cell, const CellExtent& extent) {
        const ColumnNeed need = needOf(cell, extent);
        ColumnNeed have;
        for (std::uint32_t i = 0; i < cell.columnSpan; ++i) {
            have.natural += needs_.columns[cell.column + i].natural;
            have.least += needs_.columns[cell.column + i].least;
        }
        const double natural = std::max(need.natural - have.natural, 0.0) / cell.columnSpan;
        const double least = std::max(need.least - have.least, 0.0) / cell.columnSpan;
        for (std::uint32_t i = 0; i < cell.columnSpan; ++i) {
            ColumnNeed& column = needs_.columns[cell.column + i];
            column.natural += natural;
            column.least += least;
            column.natural = std::max(column.natural, column.least);
        }
    }

    void applySettings(std::uint32_t index) {
        ColumnNeed& need = needs_.columns[index];
        if (index < grid_.labelColumns) {
            if (grid_.maxLabelWidth) need.natural = std::min(need.natural, *grid_.maxLabelWidth);
        } else {
            if (grid_.minColumnWidth) need.natural = std::max(need.natural, *grid_.minColumnWidth);
            if (grid_.maxColumnWidth) need.natural = std::min(need.natural, *grid_.maxColumnWidth);
        }
        need.natural = std::max(need.natural, smallestColumn);
        need.least = std::clamp(need.least, smallestColumn, need.natural);
        if (index < grid_.widths.size() && grid_.widths[index]) {
            need.natural = need.least = std::max(*grid_.widths[index], smallestColumn);
        }
    }

    const TableGrid& grid_;
    ColumnNeeds needs_;
};

}  // namespace

double hangingMarks(const TableGrid& grid, const GridCell& cell) {
    if (cell.marks == 0 || !cell.alignsRight) return 0;
    const tables::AreaLook& look = grid.style(cell).look;
    const bool isRight = look.horizontal == tables::HorizontalAlign::right ||
                         look.horizontal == tables::HorizontalAlign::mixed;
    if (!isRight) return 0;
    const FontWidths font(look.font, look.size, look.bold);
    // Between two marks stands a comma, behind the last one none.
    const double width = marksWidth(grid, cell, font) - font.width(",") * markScale;
    return std::min(width, look.marginRight);
}

double cellMargins(const ShownStyle& style) { return style.look.marginLeft + style.look.marginRight; }

ColumnNeeds measureColumns(const TableGrid& grid) { return Measurer(grid).measure(); }

}  // namespace vexa::frontend
