#include "frontend/export/workbook/table_sheet.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "backend/tables/formats/number_text.h"
#include "frontend/export/workbook/number_code.h"

namespace vexa::frontend {

namespace {

using tables::BorderLine;
using tables::CellKind;
using tables::GridCell;
using tables::GridFootnote;
using tables::GridRole;
using tables::GridText;
using tables::HorizontalAlign;
using tables::ShownStyle;
using tables::ShownStyleId;
using tables::TableGrid;

/// The sides of a range that a place of it stands at.
enum Side : std::uint8_t { top = 1, right = 2, bottom = 4, left = 8, allSides = 15 };

SheetStyle styleOf(const ShownStyle& shown) {
    SheetStyle style;
    style.font = shown.look.font;
    style.size = shown.look.size;
    style.bold = shown.look.bold;
    style.italic = shown.look.italic;
    style.underline = shown.look.underline;
    style.color = shown.look.color;
    style.background = shown.look.background;
    style.horizontal = shown.look.horizontal;
    style.vertical = shown.look.vertical;
    style.borders = shown.borders;
    return style;
}

class TableSheet {
  public:
    TableSheet(SheetDraft& draft, ExportReport& report, const ExportedItem& item, const TableGrid& grid,
               std::uint32_t row)
        : draft_(draft), report_(report), item_(item), grid_(grid), row_(row) {}

    std::uint32_t add() {
        const std::uint64_t rows = 3ULL + grid_.rows + grid_.footnotes.size();
        if (!draft_.hasRoom(item_, row_, rows, grid_.columns)) return row_;
        addLine(grid_.title.text, grid_.title.style);
        addLine(grid_.layer.text, grid_.layer.style);
        addGrid();
        addLine(grid_.caption.text, grid_.caption.style);
        for (const GridFootnote& note : grid_.footnotes) {
            addLine(note.mark.empty() ? note.text : "[" + note.mark + "] " + note.text, grid_.footnoteStyle);
        }
        return row_;
    }

  private:
    /// A text over the whole width of the table.
    void addLine(const std::string& text, ShownStyleId shown) {
        if (text.empty()) return;
        SheetStyle style = styleOf(grid_.styles[shown]);
        style.wraps = true;
        const SheetStyleId id = draft_.intern(style);
        draft_.addText(item_, row_, 0, text, {}, id);
        for (std::uint32_t column = 1; column < grid_.columns; ++column) draft_.addBlank(row_, column, id);
        draft_.merge({row_, 0, 1, std::max(grid_.columns, 1U)});
        ++row_;
    }

    void addGrid() {
        covers_.assign(grid_.columns, nullptr);
        for (std::uint32_t row = 0; row < grid_.rows && !draft_.failed(); ++row, ++row_) addRow(row);
    }

    /// The cells of a row, and what reaches into it from above.
    void addRow(std::uint32_t row) {
        const std::span<const GridCell> cells = grid_.row(row);
        std::size_t next = 0;
        for (std::uint32_t column = 0; column < grid_.columns; ++column) {
            if (next < cells.size() && cells[next].column == column) {
                const GridCell& cell = cells[next++];
                std::fill_n(covers_.begin() + column, cell.columnSpan, &cell);
                draft_.merge({row_, column, cell.rowSpan, cell.columnSpan});
                addFirst(cell);
            } else if (const GridCell* const cover = covers_[column]) {
                draft_.addBlank(row_, column, labelStyle(*cover, sidesOf(*cover, row, column)));
            }
        }
    }

    [[nodiscard]] static unsigned sidesOf(const GridCell& cell, std::uint32_t row, std::uint32_t column) {
        unsigned sides = 0;
        if (row == cell.row) sides |= top;
        if (row + 1 == cell.row + cell.rowSpan) sides |= bottom;
        if (column == cell.column) sides |= left;
        if (column + 1 == cell.column + cell.columnSpan) sides |= right;
        return sides;
    }

    void addFirst(const GridCell& cell) {
        const unsigned sides = sidesOf(cell, cell.row, cell.column);
        if (cell.kind == CellKind::number && cell.role == GridRole::data) {
            addNumber(cell, sides);
        } else if (cell.textLength == 0 && cell.marks == 0) {
            draft_.addBlank(row_, cell.column, labelStyle(cell, sides));
        } else {
            draft_.addText(item_, row_, cell.column, grid_.text(cell), grid_.markText(cell),
                           labelStyle(cell, sides));
        }
    }

    void addNumber(const GridCell& cell, unsigned sides) {
        const SheetNumber number = sheetNumber(cell.number, cell.format);
        if (number.obstacle != NumberObstacle::none) {
            SheetStyle style = styleAt(cell, sides);
            if (style.horizontal == HorizontalAlign::mixed) style.horizontal = HorizontalAlign::right;
            draft_.addText(item_, row_, cell.column, grid_.text(cell), grid_.markText(cell),
                           draft_.intern(style));
            return;
        }
        SheetStyle style = styleAt(cell, sides);
        style.numberFormat = formatCode(number.format, number.minusIsDropped);
        if (cell.marks != 0) style.numberFormat = codeWithSuffix(style.numberFormat, grid_.markText(cell));
        draft_.addNumber(row_, cell.column, number.value, draft_.intern(style));
    }

    [[nodiscard]] SheetStyle styleAt(const GridCell& cell, unsigned sides) const {
        SheetStyle style = styleOf(grid_.style(cell));
        for (std::size_t side = 0; side < style.borders.size(); ++side) {
            if ((sides >> side & 1U) == 0) style.borders[side] = {};
        }
        return style;
    }

    [[nodiscard]] SheetStyleId labelStyle(const GridCell& cell, unsigned sides) {
        SheetStyle style = styleAt(cell, sides);
        style.wraps = true;
        return draft_.intern(style);
    }

    SheetDraft& draft_;
    ExportReport& report_;
    const ExportedItem& item_;
    const TableGrid& grid_;
    std::uint32_t row_;
    std::vector<const GridCell*> covers_;  // by column: the last cell that began there or left of it
};

}  // namespace

std::uint32_t addTable(SheetDraft& draft, ExportReport& report, const ExportedItem& item,
                       const TableGrid& grid, std::uint32_t row) {
    return TableSheet(draft, report, item, grid, row).add();
}

}  // namespace vexa::frontend
