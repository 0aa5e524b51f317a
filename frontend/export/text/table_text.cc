#include "frontend/export/text/table_text.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/text/text_width.h"

namespace vexa::frontend {

namespace {

using tables::GridCell;
using tables::GridFootnote;
using tables::GridRole;
using tables::TableGrid;

enum class Align { left, center, right };

/// A cell with its text in lines.
struct TextCell {
    const GridCell* cell = nullptr;
    std::vector<std::string> lines;
    Align align = Align::left;
};

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    for (;;) {
        const std::size_t end = text.find_first_of("\r\n");
        lines.push_back(printableText(text.substr(0, end)));
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    }
}

std::size_t widest(const std::vector<std::string>& lines) {
    std::size_t width = 0;
    for (const std::string& line : lines) width = std::max(width, displayWidth(line));
    return width;
}

/// In one line: line breaks and tabs are blanks.
std::string inOneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char each) { return each == '\t' || each == '\n' || each == '\r'; },
        ' ');
    return printableText(line);
}

void appendLine(std::string& text, std::string line) {
    while (line.ends_with(' ')) line.pop_back();
    text += line;
    text += '\n';
}

void appendParagraph(std::string& text, const std::string& paragraph) {
    if (paragraph.empty()) return;
    for (std::string& line : linesOf(paragraph)) appendLine(text, std::move(line));
}

class TextGrid {
  public:
    TextGrid(const TableGrid& grid, const TextTableOptions& options) : grid_(grid), options_(options) {
        for (const GridCell& cell : grid.cells) cells_.push_back(makeCell(cell));
        fitWidths();
        if (options.columnWidth > 0) wrapCells();
        fitHeights();
    }

    void append(std::string& text) const {
        appendRule(text);
        for (std::size_t row = 0; row < grid_.rows; ++row) {
            if (row > 0 && (row == grid_.headerRows || beginsGroup(row))) appendRule(text);
            for (std::size_t line = 0; line < heights_[row]; ++line) appendLine(text, lineOf(row, line));
        }
        appendRule(text);
    }

  private:
    [[nodiscard]] TextCell makeCell(const GridCell& cell) const {
        TextCell made{&cell, linesOf(std::string(grid_.text(cell)) + grid_.markText(cell)), Align::left};
        if (cell.role == GridRole::columnLabel) made.align = Align::center;
        if (cell.role == GridRole::data && cell.kind == tables::CellKind::number) made.align = Align::right;
        return made;
    }

    /// Blanks and border that every column but the last adds to its text.
    [[nodiscard]] std::size_t frame() const { return 2 + displayWidth(options_.columnBorder); }

    [[nodiscard]] std::size_t widthOf(const GridCell& cell) const {
        std::size_t width = frame() * (cell.columnSpan - 1);
        for (std::size_t i = 0; i < cell.columnSpan; ++i) width += widths_[cell.column + i];
        return width;
    }

    void fitWidths() {
        widths_.assign(grid_.columns, options_.columnWidth > 0 ? options_.columnWidth : 1);
        if (options_.columnWidth > 0) return;
        for (const TextCell& each : cells_) {
            if (each.cell->columnSpan > 1) continue;
            std::size_t& width = widths_[each.cell->column];
            width = std::max(width, widest(each.lines));
        }
        for (const TextCell& each : cells_) {
            if (each.cell->columnSpan > 1) widenFor(each);
        }
    }

    void widenFor(const TextCell& cell) {
        const std::size_t need = widest(cell.lines);
        const std::size_t have = widthOf(*cell.cell);
        if (need <= have) return;
        const std::size_t span = cell.cell->columnSpan;
        for (std::size_t i = 0; i < span; ++i) widths_[cell.cell->column + i] += (need - have + i) / span;
    }

    void wrapCells() {
        for (TextCell& each : cells_) {
            std::vector<std::string> wrapped;
            for (const std::string& line : each.lines) {
                for (std::string& part : wrapText(line, widthOf(*each.cell)))
                    wrapped.push_back(std::move(part));
            }
            each.lines = std::move(wrapped);
        }
    }

    /// Rows are as high as their cells; a cell over several rows adds what it lacks to the last of them.
    void fitHeights() {
        heights_.assign(grid_.rows, 1);
        for (const TextCell& each : cells_) {
            if (each.cell->rowSpan == 1)
                heights_[each.cell->row] = std::max(heights_[each.cell->row], each.lines.size());
        }
        for (const TextCell& each : cells_) {
            std::size_t have = 0;
            for (std::size_t i = 0; i < each.cell->rowSpan; ++i) have += heights_[each.cell->row + i];
            if (have < each.lines.size())
                heights_[each.cell->row + each.cell->rowSpan - 1] += each.lines.size() - have;
        }
        occupants_.assign(grid_.rows, {});
        for (const TextCell& each : cells_) {
            for (std::size_t i = 0; i < each.cell->rowSpan; ++i)
                occupants_[each.cell->row + i].push_back(&each);
        }
        for (auto& row : occupants_) {
            std::sort(row.begin(), row.end(), [](const TextCell* left, const TextCell* right) {
                return left->cell->column < right->cell->column;
            });
        }
    }

    /// A new outermost row label that spans several rows, or stands below one that does.
    [[nodiscard]] bool beginsGroup(std::size_t row) const {
        if (grid_.labelColumns < 2 || row <= grid_.headerRows || occupants_[row].empty()) return false;
        const TextCell* const first = occupants_[row].front();
        const TextCell* const above = occupants_[row - 1].front();
        return first != above && (first->cell->rowSpan > 1 || above->cell->rowSpan > 1);
    }

    /// The text of a cell in a line of a row, counted from where the cell begins.
    [[nodiscard]] std::string lineOf(const TextCell& cell, std::size_t row, std::size_t line) const {
        for (std::size_t i = cell.cell->row; i < row; ++i) line += heights_[i];
        return line < cell.lines.size() ? cell.lines[line] : std::string();
    }

    [[nodiscard]] std::string lineOf(std::size_t row, std::size_t line) const {
        std::string text = options_.columnBorder;
        for (const TextCell* each : occupants_[row]) {
            text += ' ';
            appendAligned(text, lineOf(*each, row, line), widthOf(*each->cell), each->align);
            text += ' ';
            text += options_.columnBorder;
        }
        return text;
    }

    static void appendAligned(std::string& text, const std::string& part, std::size_t width, Align align) {
        const std::size_t taken = displayWidth(part);
        const std::size_t blanks = width > taken ? width - taken : 0;
        std::size_t before = 0;
        if (align == Align::right) before = blanks;
        if (align == Align::center) before = blanks / 2;
        text.append(before, ' ').append(part).append(blanks - before, ' ');
    }

    void appendRule(std::string& text) const {
        const std::size_t step = displayWidth(options_.rowBorder);
        if (step == 0) return;
        std::size_t total = displayWidth(options_.columnBorder);
        for (const std::size_t width : widths_) total += width + frame();
        for (std::size_t i = 0; i + step <= total; i += step) text += options_.rowBorder;
        text += '\n';
    }

    const TableGrid& grid_;
    const TextTableOptions& options_;
    std::vector<TextCell> cells_;
    std::vector<std::size_t> widths_;
    std::vector<std::size_t> heights_;
    std::vector<std::vector<const TextCell*>>
        occupants_;  // of each row, by column, with those from rows above
};

/// Rows with tabs between their columns; a cell over several places stands in the first one.
void appendTabbed(std::string& text, const TableGrid& grid) {
    for (std::size_t row = 0; row < grid.rows; ++row) {
        std::uint32_t column = 0;
        for (const GridCell& cell : grid.row(row)) {
            for (; column < cell.column; ++column) text += '\t';
            text += inOneLine(std::string(grid.text(cell)) + grid.markText(cell));
        }
        for (; column + 1 < grid.columns; ++column) text += '\t';
        text += '\n';
    }
}

}  // namespace

void appendTable(std::string& text, const TableGrid& grid, const TextTableOptions& options) {
    appendParagraph(text, grid.title.text);
    appendParagraph(text, grid.layer.text);
    if (options.tabs) {
        appendTabbed(text, grid);
    } else if (grid.rows > 0 && grid.columns > 0) {
        TextGrid(grid, options).append(text);
    }
    appendParagraph(text, grid.caption.text);
    for (const GridFootnote& note : grid.footnotes) {
        appendParagraph(text, note.mark.empty() ? note.text : "[" + note.mark + "] " + note.text);
    }
}

}  // namespace vexa::frontend
