#include "frontend/export/text/table_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <numeric>
#include <span>
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

enum class Align : std::uint8_t { left, center, right };

/// One line of a cell, as it is shown.
struct TextLine {
    std::string_view text;
    std::size_t width = 0;  ///< columns
};

/// The same of a line that was made for cells, among the letters of all such lines. There may be millions.
struct MadeLine {
    std::size_t begin = 0;
    std::uint32_t length = 0;
    std::uint32_t width = 0;
};

/// Of a cell whose text is its only line.
constexpr std::uint32_t asItStands = UINT32_MAX;

/// How the cell of the same number is shown: where its lines stand among those that were made for cells.
struct TextCell {
    std::uint32_t firstLine = asItStands;
    std::uint32_t lines = 0;
    std::uint32_t width = 0;   ///< of its widest line
    std::uint32_t behind = 0;  ///< columns that stay free where others of its column have marks
    Align align = Align::left;
};

/// Cells that show the same text in the same width have the same lines.
using LinesKey = std::array<std::size_t, 4>;

/// Whether a text is shown as it is, a column a byte. Without branches, since most texts are.
bool isPlain(std::string_view text) {
    constexpr unsigned char first = ' ';
    constexpr unsigned char count = '~' - ' ';
    unsigned other = 0;
    for (const char each : text) {
        other |= static_cast<unsigned char>(static_cast<unsigned char>(each) - first) > count ? 1U : 0U;
    }
    return other == 0;
}

/// Calls `take` with each line of a text.
template <typename Take>
void forEachLine(std::string_view text, Take take) {
    for (;;) {
        const std::size_t end = text.find_first_of("\r\n");
        take(text.substr(0, end));
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    }
}

/// In one line: line breaks and tabs are blanks.
std::string inOneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char each) { return each == '\t' || each == '\n' || each == '\r'; },
        ' ');
    return printableText(line);
}

/// Ends the line that begins at `begin` of the text, without blanks at its end.
void endLine(std::string& text, std::size_t begin) {
    while (text.size() > begin && text.back() == ' ') text.pop_back();
    text += '\n';
}

/// A line that may become hundreds of megabytes long: what there is of it is handed on meanwhile. Blanks wait
/// until something stands behind them, since a line has none at its end.
class LongLine {
  public:
    LongLine(std::string& text, const TextTaker& take) : text_(text), take_(take) {}

    void add(std::string_view piece) {
        while (!piece.empty()) {
            const std::string_view part = wholeCharacters(piece);
            const std::size_t last = part.find_last_not_of(' ');
            const std::size_t length = last == std::string_view::npos ? 0 : last + 1;
            if (length > 0) addWaiting();
            text_ += part.substr(0, length);
            blanks_ += part.size() - length;
            take_(text_);
            piece.remove_prefix(part.size());
        }
    }
    void addBlanks(std::size_t count) { blanks_ += count; }
    void end() { text_ += '\n'; }

  private:
    void addWaiting() {
        while (blanks_ > 0) {
            const std::size_t count = std::min(blanks_, PackedText::pieceBytes);
            text_.append(count, ' ');
            blanks_ -= count;
            if (blanks_ > 0) take_(text_);
        }
    }

    /// What of a long piece can be handed on by itself.
    static std::string_view wholeCharacters(std::string_view piece) {
        constexpr unsigned char trail = 0x80;
        constexpr unsigned char trailMask = 0xC0;
        std::size_t length = std::min(piece.size(), PackedText::pieceBytes);
        while (length < piece.size() && length > 0 &&
               (static_cast<unsigned char>(piece[length]) & trailMask) == trail)
            --length;
        return piece.substr(0, length > 0 ? length : piece.size());
    }

    std::string& text_;
    const TextTaker& take_;
    std::size_t blanks_ = 0;
};

void appendParagraph(std::string& text, std::string_view paragraph) {
    if (paragraph.empty()) return;
    forEachLine(paragraph, [&text](std::string_view line) {
        const std::size_t begin = text.size();
        text += printableText(line);
        endLine(text, begin);
    });
}

class TextGrid {
  public:
    TextGrid(const TableGrid& grid, const TextTableOptions& options)
        : grid_(grid), options_(options), border_(displayWidth(options.columnBorder)) {
        cells_.reserve(grid.cells.size());
        for (const GridCell& cell : grid.cells) addCell(cell);
        if (!grid.marks.empty()) keepRoomForMarks();
        fitWidths();
        if (options.columnWidth > 0) wrapCells();
        fitHeights();
        findOccupants();
    }

    void append(std::string& text, const TextTaker& take) const {
        appendRule(text, take);
        for (std::size_t row = 0; row < grid_.rows; ++row) {
            if (row > 0 && (row == grid_.headerRows || beginsGroup(row))) appendRule(text, take);
            for (std::size_t line = 0; line < heights_[row]; ++line) {
                appendRow(text, row, line, take);
                take(text);
            }
        }
        appendRule(text, take);
    }

  private:
    void addCell(const GridCell& cell) {
        TextCell made;
        if (cell.role == GridRole::columnLabel) made.align = Align::center;
        if (cell.alignsRight) made.align = Align::right;
        const std::string_view text = grid_.text(cell);
        if (cell.marks == 0 && isPlain(text)) {
            made.lines = 1;
            made.width = static_cast<std::uint32_t>(text.size());
        } else {
            makeLines({cell.textBegin, cell.textLength, cell.marks, 0}, made, [&] {
                const std::string marked =
                    cell.marks == 0 ? std::string() : std::string(text) + grid_.markText(cell);
                forEachLine(cell.marks == 0 ? text : std::string_view(marked),
                            [this](std::string_view line) { addLine(printableText(line)); });
            });
        }
        cells_.push_back(made);
    }

    /// Numbers stand below each other, with marks and without.
    void keepRoomForMarks() {
        std::vector<std::size_t> widest(grid_.columns, 0);
        for (const GridCell& cell : grid_.cells) {
            if (!cell.alignsRight || cell.marks == 0) continue;
            widest[cell.column] = std::max(widest[cell.column], grid_.markText(cell).size());
        }
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            const GridCell& cell = grid_.cells[i];
            if (!cell.alignsRight || widest[cell.column] == 0) continue;
            cells_[i].behind = static_cast<std::uint32_t>(widest[cell.column] - grid_.markText(cell).size());
        }
    }

    /// Lines that were made before, or `make` adds.
    template <typename Make>
    void makeLines(const LinesKey& key, TextCell& cell, const Make& make) {
        const auto [found, isNew] = made_.try_emplace(key);
        if (isNew) {
            TextCell& lines = found->second;
            lines.firstLine = static_cast<std::uint32_t>(lines_.size());
            make();
            measure(lines);
        }
        cell.firstLine = found->second.firstLine;
        cell.lines = found->second.lines;
        cell.width = found->second.width;
    }

    void addLine(std::string_view text) {
        lines_.push_back({letters_.size(), static_cast<std::uint32_t>(text.size()),
                          static_cast<std::uint32_t>(displayWidth(text))});
        letters_ += text;
    }

    /// Takes the lines up to the last one for those of the cell.
    void measure(TextCell& cell) const {
        cell.lines = static_cast<std::uint32_t>(lines_.size() - cell.firstLine);
        cell.width = 0;
        for (std::size_t i = cell.firstLine; i < lines_.size(); ++i)
            cell.width = std::max(cell.width, lines_[i].width);
    }

    /// Blanks and border that every column but the last adds to its text.
    [[nodiscard]] std::size_t frame() const { return 2 + border_; }

    [[nodiscard]] std::size_t widthOf(const GridCell& cell) const {
        std::size_t width = frame() * (cell.columnSpan - 1);
        for (std::size_t i = 0; i < cell.columnSpan; ++i) width += widths_[cell.column + i];
        return width;
    }

    void fitWidths() {
        widths_.assign(grid_.columns, options_.columnWidth > 0 ? options_.columnWidth : 1);
        if (options_.columnWidth > 0) return;
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            const GridCell& cell = grid_.cells[i];
            if (cell.columnSpan > 1) continue;
            std::size_t& width = widths_[cell.column];
            width = std::max<std::size_t>(width, std::size_t{cells_[i].width} + cells_[i].behind);
        }
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            if (grid_.cells[i].columnSpan > 1) widenFor(grid_.cells[i], cells_[i].width);
        }
    }

    void widenFor(const GridCell& cell, std::size_t wanted) {
        const std::size_t have = widthOf(cell);
        if (wanted <= have) return;
        const std::size_t span = cell.columnSpan;
        for (std::size_t i = 0; i < span; ++i) widths_[cell.column + i] += (wanted - have + i) / span;
    }

    void wrapCells() {
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            const GridCell& cell = grid_.cells[i];
            const std::size_t width = widthOf(cell);
            TextCell& shown = cells_[i];
            if (shown.width <= width) continue;
            const TextCell unbroken = shown;
            makeLines({cell.textBegin, cell.textLength, cell.marks, width}, shown, [&] {
                for (std::size_t line = 0; line < unbroken.lines; ++line) {
                    const std::string whole(textOf(i, unbroken, line).text);
                    for (const std::string& part : wrapText(whole, width)) addLine(part);
                }
            });
        }
    }

    /// A line of a cell.
    [[nodiscard]] TextLine textOf(std::size_t index, const TextCell& cell, std::size_t line) const {
        if (cell.firstLine != asItStands) {
            const MadeLine& made = lines_[cell.firstLine + line];
            return {std::string_view(letters_).substr(made.begin, made.length), made.width};
        }
        const std::string_view text = grid_.text(grid_.cells[index]);
        return {text, text.size()};
    }

    /// Rows are as high as their cells; a cell over several rows adds what it lacks to the last of them.
    void fitHeights() {
        heights_.assign(grid_.rows, 1);
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            const GridCell& cell = grid_.cells[i];
            if (cell.rowSpan == 1)
                heights_[cell.row] = std::max<std::size_t>(heights_[cell.row], cells_[i].lines);
        }
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            const GridCell& cell = grid_.cells[i];
            if (cell.rowSpan == 1) continue;
            std::size_t have = 0;
            for (std::size_t row = 0; row < cell.rowSpan; ++row) have += heights_[cell.row + row];
            if (have < cells_[i].lines) heights_[cell.row + cell.rowSpan - 1] += cells_[i].lines - have;
        }
        tops_.resize(grid_.rows);
        std::exclusive_scan(heights_.begin(), heights_.end(), tops_.begin(), std::size_t{0});
    }

    void findOccupants() {
        const bool anySpans = std::any_of(grid_.cells.begin(), grid_.cells.end(),
                                          [](const GridCell& each) { return each.rowSpan > 1; });
        if (anySpans) {
            findSpanningOccupants();
            return;
        }
        begins_ = grid_.rowBegin;
        occupants_.resize(cells_.size());
        std::iota(occupants_.begin(), occupants_.end(), 0U);
    }

    void findSpanningOccupants() {
        begins_.assign(grid_.rows + 1, 0);
        for (const GridCell& each : grid_.cells) {
            for (std::size_t i = 0; i < each.rowSpan; ++i) ++begins_[each.row + i + 1];
        }
        for (std::size_t row = 0; row < grid_.rows; ++row) begins_[row + 1] += begins_[row];
        occupants_.resize(begins_.back());
        std::vector<std::size_t> ends(begins_.begin(), begins_.end() - 1);
        for (std::size_t index = 0; index < cells_.size(); ++index) {
            const GridCell& cell = grid_.cells[index];
            for (std::size_t i = 0; i < cell.rowSpan; ++i)
                occupants_[ends[cell.row + i]++] = static_cast<std::uint32_t>(index);
        }
        // Those from rows above came first.
        const auto isLeft = [this](std::uint32_t left, std::uint32_t right) {
            return grid_.cells[left].column < grid_.cells[right].column;
        };
        for (std::size_t row = 0; row < grid_.rows; ++row) {
            const auto begin = occupants_.begin() + static_cast<std::ptrdiff_t>(begins_[row]);
            const auto end = occupants_.begin() + static_cast<std::ptrdiff_t>(begins_[row + 1]);
            if (!std::is_sorted(begin, end, isLeft)) std::sort(begin, end, isLeft);
        }
    }

    [[nodiscard]] std::span<const std::uint32_t> occupants(std::size_t row) const {
        return {occupants_.data() + begins_[row], occupants_.data() + begins_[row + 1]};
    }

    /// A new outermost row label that spans several rows, or stands below one that does.
    [[nodiscard]] bool beginsGroup(std::size_t row) const {
        if (grid_.labelColumns < 2 || row <= grid_.headerRows || occupants(row).empty()) return false;
        const std::uint32_t first = occupants(row).front();
        const std::uint32_t above = occupants(row - 1).front();
        return first != above && (grid_.cells[first].rowSpan > 1 || grid_.cells[above].rowSpan > 1);
    }

    /// The text of a cell in a line of a row.
    [[nodiscard]] TextLine lineOf(std::uint32_t index, std::size_t row, std::size_t line) const {
        line += tops_[row] - tops_[grid_.cells[index].row];
        return line < cells_[index].lines ? textOf(index, cells_[index], line) : TextLine{};
    }

    [[nodiscard]] std::size_t roomOf(std::uint32_t index, const TextLine& line) const {
        const GridCell& shown = grid_.cells[index];
        return std::max(shown.columnSpan == 1 ? widths_[shown.column] : widthOf(shown), line.width);
    }

    /// The row is made of blanks first, and then what it holds is put into its places, unless it is long.
    void appendRow(std::string& text, std::size_t row, std::size_t line, const TextTaker& take) const {
        const std::string& border = options_.columnBorder;
        const std::size_t begin = text.size();
        std::size_t bytes = border.size();
        for (const std::uint32_t each : occupants(row)) {
            const TextLine shown = lineOf(each, row, line);
            bytes += roomOf(each, shown) + 2 - shown.width + shown.text.size() + border.size();
        }
        if (bytes > PackedText::pieceBytes) {
            appendLongRow(LongLine(text, take), row, line);
            return;
        }
        text.resize(begin + bytes, ' ');
        char* place = std::copy(border.begin(), border.end(), text.data() + begin);
        for (const std::uint32_t each : occupants(row)) {
            const TextLine shown = lineOf(each, row, line);
            const std::size_t blanks = roomOf(each, shown) - shown.width;
            const std::size_t behind = std::min<std::size_t>(blanks, cells_[each].behind);
            const std::size_t before = blanksBefore(blanks - behind, cells_[each].align);
            place = std::copy(shown.text.begin(), shown.text.end(), place + before + 1);
            place = std::copy(border.begin(), border.end(), place + (blanks - before) + 1);
        }
        endLine(text, begin);
    }

    /// The same, cell by cell.
    void appendLongRow(LongLine written, std::size_t row, std::size_t line) const {
        written.add(options_.columnBorder);
        for (const std::uint32_t each : occupants(row)) {
            const TextLine shown = lineOf(each, row, line);
            const std::size_t blanks = roomOf(each, shown) - shown.width;
            const std::size_t before = blanksBefore(blanks, cells_[each].align);
            written.addBlanks(before + 1);
            written.add(shown.text);
            written.addBlanks(blanks - before + 1);
            written.add(options_.columnBorder);
        }
        written.end();
    }

    static std::size_t blanksBefore(std::size_t blanks, Align align) {
        if (align == Align::left) return 0;
        return align == Align::right ? blanks : blanks / 2;
    }

    void appendRule(std::string& text, const TextTaker& take) const {
        const std::size_t step = displayWidth(options_.rowBorder);
        if (step == 0) return;
        std::size_t total = border_;
        for (const std::size_t width : widths_) total += width + frame();
        for (std::size_t i = 0; i + step <= total; i += step) {
            text += options_.rowBorder;
            if (i % PackedText::pieceBytes == 0) take(text);
        }
        text += '\n';
    }

    const TableGrid& grid_;
    const TextTableOptions& options_;
    std::size_t border_;  // columns
    std::vector<TextCell> cells_;
    std::vector<MadeLine> lines_;
    std::string letters_;  // of lines that no cell holds as they are shown
    std::map<LinesKey, TextCell> made_;
    std::vector<std::size_t> widths_;
    std::vector<std::size_t> heights_;
    std::vector<std::size_t> tops_;  // lines above each row
    // By row, then by column, those from rows above among them; where each row begins, and one more.
    std::vector<std::uint32_t> occupants_;
    std::vector<std::size_t> begins_;
};

/// Rows with tabs between their columns; a cell over several places stands in the first one.
void appendTabbed(std::string& text, const TableGrid& grid, const TextTaker& take) {
    for (std::size_t row = 0; row < grid.rows; ++row) {
        std::uint32_t column = 0;
        for (const GridCell& cell : grid.row(row)) {
            for (; column < cell.column; ++column) text += '\t';
            text += inOneLine(std::string(grid.text(cell)) + grid.markText(cell));
            take(text);
        }
        for (; column + 1 < grid.columns; ++column) text += '\t';
        text += '\n';
        take(text);
    }
}

}  // namespace

std::size_t textLinesOf(const TableGrid& grid, const TextTableOptions& options) {
    if (options.tabs) return 0;
    const auto ends = std::count(grid.texts.begin(), grid.texts.end(), '\n') +
                      std::count(grid.texts.begin(), grid.texts.end(), '\r');
    // What is cut into lines is held twice meanwhile.
    const std::size_t cut = options.columnWidth == 0 ? 0 : 2 * grid.texts.size() / options.columnWidth;
    return static_cast<std::size_t>(ends) + cut;
}

void appendTable(std::string& text, const TableGrid& grid, const TextTableOptions& options,
                 const TextTaker& take) {
    appendParagraph(text, grid.title.text);
    appendParagraph(text, grid.layer.text);
    if (options.tabs) {
        appendTabbed(text, grid, take);
    } else if (grid.rows > 0 && grid.columns > 0) {
        TextGrid(grid, options).append(text, take);
    }
    appendParagraph(text, grid.caption.text);
    for (const GridFootnote& note : grid.footnotes) {
        appendParagraph(text, note.mark.empty() ? note.text : "[" + note.mark + "] " + note.text);
        take(text);
    }
}

}  // namespace vexa::frontend
