#include "frontend/export/workbook/table_sheet.h"

#include <algorithm>
#include <string>
#include <vector>

#include "backend/strings/dictionary.h"
#include "backend/tables/formats/number_text.h"
#include "frontend/export/workbook/column_fit.h"

namespace vexa::frontend {

namespace {

using tables::CellKind;
using tables::FormatKind;
using tables::GridCell;
using tables::GridFootnote;
using tables::GridRole;
using tables::numberText;
using tables::ShownStyleId;
using tables::TableGrid;

class TableSheet {
  public:
    TableSheet(const TableSurroundings& sheet, const ExportedItem& item, const TableGrid& grid,
               std::uint32_t row)
        : sheet_(sheet), draft_(sheet.draft), item_(item), grid_(grid), row_(row), fit_(grid) {
        sheet.styles.begin(grid);
    }

    std::uint32_t add() {
        addLine(grid_.title.text, grid_.title.style);
        addLine(grid_.layer.text, grid_.layer.style);
        if (draft_.hasRoom(item_, row_, grid_.rows, grid_.columns)) addGrid();
        addLine(grid_.caption.text, grid_.caption.style);
        for (const GridFootnote& note : grid_.footnotes) {
            addLine(note.mark.empty() ? note.text : "[" + note.mark + "] " + note.text, grid_.footnoteStyle);
        }
        reportLosses();
        return row_;
    }

  private:
    /// A text over the whole width of the table.
    void addLine(const std::string& text, ShownStyleId shown) {
        if (text.empty() || draft_.failed()) return;
        const FontWidths& font = sheet_.styles.font(shown);
        const std::size_t lines = font.linesIn(text, textRoom(lineRoom));
        const std::uint32_t rows = rowsOfLines(lines, grid_.styles[shown].look.size);
        if (!draft_.hasRoom(item_, row_, rows, 1)) return;
        const SheetStyleId style = sheet_.styles.of(shown, allSides, SheetWording::text);
        const std::uint32_t cell = draft_.addText(item_, row_, 0, text, {}, style);
        row_ += rows;
        sheet_.fitting.add(
            {cell, rows, std::max(grid_.columns, 1U), cellWidth(font.extent(text).width), true});
    }

    void addGrid() {
        covers_.assign(grid_.columns, nullptr);
        draft_.expect(std::size_t{grid_.rows} * grid_.columns);
        for (std::uint32_t row = 0; row < grid_.rows && !draft_.failed(); ++row, ++row_) addRow(row);
        const std::vector<double> widths = fit_.widths();
        for (std::uint32_t column = 0; column < grid_.columns; ++column) {
            sheet_.fitting.widen(column, widths[column]);
        }
        addUnfitting(widths);
    }

    /// Texts that do not stand in one line of the place that this table gives them. Other tables can only
    /// make that wider.
    void addUnfitting(const std::vector<double>& widths) {
        for (const Text& text : texts_) {
            double room = 0;
            const GridCell& cell = *text.cell;
            for (std::uint32_t i = 0; i < cell.columnSpan; ++i) room += widths[cell.column + i];
            const bool isHigh = grid_.style(cell).look.size > largestUsualFont;
            if (text.lines == 1 && text.width <= room && !isHigh) continue;
            sheet_.fitting.add({text.number, cell.rowSpan, cell.columnSpan, text.width, false});
        }
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
                draft_.addBlank(
                    row_, column,
                    sheet_.styles.of(cover->style, sidesOf(*cover, row, column), SheetWording::text));
            }
        }
    }

    [[nodiscard]] static RangeSides sidesOf(const GridCell& cell, std::uint32_t row, std::uint32_t column) {
        RangeSides sides = 0;
        if (row == cell.row) sides |= topSide;
        if (row + 1 == cell.row + cell.rowSpan) sides |= bottomSide;
        if (column == cell.column) sides |= leftSide;
        if (column + 1 == cell.column + cell.columnSpan) sides |= rightSide;
        return sides;
    }

    void addFirst(const GridCell& cell) {
        if (cell.kind == CellKind::number && cell.role == GridRole::data) {
            addNumber(cell);
            return;
        }
        const SheetStyleId style = sheet_.styles.of(
            cell.style, sidesOf(cell, cell.row, cell.column),
            cell.alignsRight && cell.textLength > 0 ? SheetWording::insteadOf : SheetWording::text);
        if (cell.textLength == 0 && cell.marks == 0) {
            draft_.addBlank(row_, cell.column, style);
        } else {
            addText(cell, style);
        }
    }

    void addText(const GridCell& cell, SheetStyleId style) {
        const std::string_view text = grid_.text(cell);
        const std::string marks = cell.marks == 0 ? std::string() : grid_.markText(cell);
        const FontWidths& font = sheet_.styles.font(cell.style);
        TextExtent extent = font.extent(text);
        if (!marks.empty()) extent.width += font.width(marks);
        const std::uint32_t number = draft_.addText(item_, row_, cell.column, text, marks, style);
        fit_.addText(cell, extent);
        texts_.push_back({&cell, number, cellWidth(extent.width), extent.lines});
    }

    void addNumber(const GridCell& cell) {
        const SheetNumber number = sheetNumber(cell.number, cell.format);
        const std::optional<CodeId> code =
            number.obstacle == NumberObstacle::none ? codeOf(cell, number) : std::nullopt;
        const RangeSides sides = sidesOf(cell, cell.row, cell.column);
        if (code) {
            const std::uint32_t added =
                draft_.addNumber(row_, cell.column, number.value,
                                 sheet_.styles.of(cell.style, sides, SheetWording::number, *code));
            if (grid_.style(cell).look.size > largestUsualFont) texts_.push_back({&cell, added, 0, 1});
            hasDots_ = hasDots_ || number.format.kind == FormatKind::dot;
        } else {
            addText(cell, sheet_.styles.of(cell.style, sides, SheetWording::insteadOf));
            noteText(number.obstacle);
        }
        const FontWidths& font = sheet_.styles.font(cell.style);
        double width = font.width(grid_.text(cell));
        if (cell.marks != 0) width += font.width(grid_.markText(cell));
        fit_.addNumber(cell, width);
    }

    /// The table's own text is what a cell has to show, whatever value and format would give.
    [[nodiscard]] std::optional<CodeId> codeOf(const GridCell& cell, const SheetNumber& number) {
        if (!cell.hasOwnText && cell.marks == 0) return sheet_.codes.of(number);
        const std::string_view shown = grid_.text(cell);
        const bool isUsual = !cell.hasOwnText || shown == numberText(cell.number, cell.format);
        return sheet_.codes.of(number, cell.marks == 0 ? std::string() : grid_.markText(cell),
                               isUsual ? std::nullopt : std::optional(shown));
    }

    /// A number is a text.
    void noteText(NumberObstacle obstacle) {
        if (obstacle == NumberObstacle::notFinite) return;
        bool& noted = obstacle == NumberObstacle::beforeDays || obstacle == NumberObstacle::noSuchTime
                          ? hasUnknownDays_
                          : losesNumbers_;
        noted = true;
    }

    /// Whether letters are shown whose size no workbook can hold.
    [[nodiscard]] bool losesSizes() const {
        const auto isLost = [&](ShownStyleId style) {
            const double size = grid_.styles[style].look.size;
            return sheetFontSize(size) != size;
        };
        const auto isLostLine = [&](const tables::GridText& line) {
            return !line.text.empty() && isLost(line.style);
        };
        const auto isLostCell = [&](const GridCell& cell) {
            return (cell.textLength > 0 || cell.marks > 0) && isLost(cell.style);
        };
        return isLostLine(grid_.title) || isLostLine(grid_.layer) || isLostLine(grid_.caption) ||
               (!grid_.footnotes.empty() && isLost(grid_.footnoteStyle)) ||
               std::any_of(grid_.cells.begin(), grid_.cells.end(), isLostCell);
    }

    void reportLosses() const {
        const std::vector<std::string> item{std::to_string(item_.number), item_.shortLabel()};
        if (hasDots_) {
            sheet_.report.note(composed(
                "Item ^1 (^2): the format DOT is shown as COMMA, with the marks of the reader's system."_text,
                item));
        }
        if (hasUnknownDays_) {
            sheet_.report.note(composed(
                "Item ^1 (^2): dates before March 1900, and times below zero or of more than 136 years, are texts, because workbooks have no such numbers."_text,
                item));
        }
        if (losesNumbers_) sheet_.report.lose(Feature::numbers, item_);
        if (losesSizes()) sheet_.report.lose(Feature::fontSizes, item_);
    }

    /// A text of the grid, and how it stands in one line.
    struct Text {
        const GridCell* cell = nullptr;
        std::uint32_t number = 0;  ///< of the sheet's cell
        double width = 0;
        std::size_t lines = 1;
    };

    const TableSurroundings& sheet_;
    SheetDraft& draft_;
    const ExportedItem& item_;
    const TableGrid& grid_;
    std::uint32_t row_;
    ColumnFit fit_;
    std::vector<const GridCell*> covers_;  // by column: the last cell that began there or left of it
    std::vector<Text> texts_;
    bool hasDots_ = false;
    bool hasUnknownDays_ = false;
    bool losesNumbers_ = false;
};

}  // namespace

std::uint32_t addTable(const TableSurroundings& sheet, const ExportedItem& item, const TableGrid& grid,
                       std::uint32_t row) {
    return TableSheet(sheet, item, grid, row).add();
}

}  // namespace vexa::frontend
