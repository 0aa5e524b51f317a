#include "frontend/export/pdf/table_flow.h"

#include <algorithm>
#include <optional>

#include "backend/strings/dictionary.h"
#include "frontend/export/pdf/table_looks.h"
#include "frontend/export/pdf/table_measures.h"
#include "frontend/export/pdf/table_notes.h"
#include "frontend/export/pdf/table_painter.h"

namespace vexa::frontend::pdf {

namespace {

using tables::GridText;
using tables::TableGrid;

constexpr double textGap = 3;      // below title and layer, above caption and footnotes
constexpr double partGap = 12;     // between columns that stand below each other
constexpr double linesAround = 2;  // for what lines take beyond the rows

class TableFlow {
  public:
    TableFlow(const TableGrid& grid, TextShaper& shaper, StructureTree& structure, PageFlow& flow)
        : grid_(grid),
          structure_(structure),
          flow_(flow),
          measures_(grid, shaper, flow.width()),
          shaper_(shaper),
          notes_(grid, shaper, structure, flow) {}

    TablePages write() {
        TablePages pages;
        pages.hasLongLabels = measures_.hasLongLabels();
        const double header = rowsHeight(0, grid_.headerRows);
        repeated_ = header <= flow_.bodyHeight() / 2 ? grid_.headerRows : 0;
        reserveBegin(header);
        pages.begin = flow_.place();
        namedPage_ = pages.begin.page;
        // Not before, since headings that waited for it come first.
        painter_.emplace(grid_, measures_, shaper_, structure_, flow_);
        writeTitle();
        if (grid_.rows > 0 && grid_.columns > 0) {
            for (const ColumnRange& range : measures_.ranges()) writeRange(range);
        } else {
            writeCaption(0);
            flow_.leaveSpace(textGap);
            notes_.write({}, true);
        }
        painter_->finish();
        return pages;
    }

  private:
    [[nodiscard]] double rowsHeight(std::uint32_t begin, std::uint32_t end) const {
        double height = 0;
        for (std::uint32_t row = begin; row < end; ++row) height += measures_.rowHeight(row);
        return height;
    }

    [[nodiscard]] ParagraphLook look(const GridText& text, double width) const {
        ParagraphLook look = paragraphLook(grid_.styles[text.style].look);
        look.width = width;
        return look;
    }

    [[nodiscard]] double heightOf(const GridText& text) {
        return text.text.empty() ? 0 : flow_.heightOf(look(text, 0), text.text);
    }

    [[nodiscard]] double titleHeight() {
        const double height = heightOf(grid_.title) + heightOf(grid_.layer);
        return height > 0 ? height + textGap : 0;
    }
    [[nodiscard]] double captionHeight() {
        return grid_.caption.text.empty() ? 0 : heightOf(grid_.caption) + textGap;
    }

    /// A table that fits on one page stands on one, else its first rows stand with its title.
    void reserveBegin(double header) {
        const bool isOneRange = measures_.ranges().size() == 1;
        const double whole = titleHeight() + rowsHeight(0, grid_.rows) +
                             (isOneRange ? captionHeight() + notes_.wholeHeight() + textGap : 0) +
                             linesAround;
        if (whole <= flow_.freshRest()) return flow_.reserve(whole);
        const std::uint32_t first = std::min(grid_.headerRows + 2, grid_.rows);
        const double least = titleHeight() + header + rowsHeight(grid_.headerRows, first) + linesAround;
        flow_.reserve(std::min(least, flow_.freshRest()));
    }

    void writeTitle() {
        if (grid_.title.text.empty() && grid_.layer.text.empty()) return;
        StructureElement caption = structure_.open("Caption", painter_->element());
        const double width = measures_.width(measures_.ranges().front());
        if (!grid_.title.text.empty()) flow_.write(look(grid_.title, width), grid_.title.text, &caption);
        if (!grid_.layer.text.empty()) flow_.write(look(grid_.layer, width), grid_.layer.text, &caption);
        structure_.close(caption);
        flow_.advance(textGap);
    }

    /// On a page that does not have the title, a line says what goes on there: it is no content, since the
    /// table has its title. `needed` is what has to have room on the page; where only the line is in its way,
    /// there is none.
    void writeTitleAgain(double needed) {
        if (flow_.place().page == namedPage_) return;
        namedPage_ = flow_.place().page;
        continuedTop_ = flow_.y();
        ParagraphLook look = paragraphLook(grid_.styles[grid_.title.style].look);
        look.width = measures_.width(measures_.ranges().front());
        const std::string text = composed("^1 (continued)"_text, {grid_.title.text});
        const double line = flow_.heightOf(look, text) + textGap;
        const bool isInTheWay = needed <= flow_.bodyHeight() && needed + line > flow_.bodyHeight();
        if (grid_.title.text.empty() || line > flow_.bodyHeight() / 8 || isInTheWay) return;
        flow_.write(look, text, nullptr);
        flow_.advance(textGap);
        continuedTop_ = flow_.y();
    }

    /// No row of the table stands on the page.
    [[nodiscard]] bool isAtTop() const {
        return flow_.isAtTop() || (flow_.place().page == namedPage_ && flow_.y() <= continuedTop_ + 0.01);
    }

    void writeCaption(double width) {
        if (grid_.caption.text.empty()) return;
        StructureElement caption = structure_.open("P", structure_.document());
        flow_.write(look(grid_.caption, width), grid_.caption.text, &caption);
        structure_.close(caption);
    }

    void writeRange(const ColumnRange& range) {
        TablePart part;
        part.columns = range;
        part.isFirstRange = &range == &measures_.ranges().front();
        part.isLastRange = &range == &measures_.ranges().back();
        part.headerRows = repeated_;
        if (!part.isFirstRange) {
            flow_.leaveSpace(partGap);
            const double whole = rowsHeight(0, grid_.rows) + linesAround;
            flow_.reserve(std::min(whole, flow_.freshRest()));
            writeTitleAgain(whole);
        }
        part.firstRow = repeated_;
        if (part.firstRow == grid_.rows) {  // a header alone
            part.endRow = grid_.rows;
            writePart(part, part.isLastRange);
            return;
        }
        while (part.firstRow < grid_.rows) {
            bool goesOn = false;  // on the same page
            if (findEnd(part)) {
                writePart(part, part.isLastRange && part.endRow == grid_.rows);
            } else if (isAtTop() || isCutHere(part)) {
                cutRow(part);
                goesOn = grid_.footnotes.empty();
            } else {
                beginPage(part);
                continue;
            }
            part.firstRow = part.endRow;
            if (part.firstRow == grid_.rows) break;
            part.headerRows = 0;
            if (!isCutHere(part) && !(goesOn && findEnd(part))) beginPage(part);
        }
    }

    /// The next row is higher than a page, and here is room for a good part of it.
    [[nodiscard]] bool isCutHere(const TablePart& part) const {
        constexpr double goodPart = 100;
        const double row = measures_.rowHeight(part.firstRow);
        return row + rowsHeight(0, repeated_) + linesAround > flow_.bodyHeight() &&
               flow_.rest() > rowsHeight(0, part.headerRows) + goodPart;
    }

    void beginPage(TablePart& part) {
        flow_.breakPage();
        flow_.reserve(0);
        part.headerRows = repeated_;
        writeTitleAgain(rowsHeight(0, repeated_) + measures_.rowHeight(part.firstRow) + linesAround);
    }

    /// Adds the notes of a row's cells that the part shows; of the header when `row` is within it.
    double addNotes(std::uint32_t row, const TablePart& part) {
        if (grid_.footnotes.empty()) return 0;
        double height = 0;
        for (const tables::GridCell& cell : grid_.row(row)) {
            const bool isLabel = cell.column < grid_.labelColumns;
            const bool isSeen = isLabel || (cell.column < part.columns.end &&
                                            cell.column + cell.columnSpan > part.columns.begin);
            if (isSeen) height += notes_.add(cell);
        }
        return height;
    }

    /// As many rows as the page has room for, with their footnotes; false when that is none.
    bool findEnd(TablePart& part) {
        notes_.begin();
        part.cutHeight = 0;
        part.endRow = part.firstRow;
        double height = linesAround;
        for (std::uint32_t row = 0; row < part.headerRows; ++row) {
            height += measures_.rowHeight(row) + addNotes(row, part);
        }
        if (!grid_.footnotes.empty()) {
            TablePart first = part;
            first.endRow = part.firstRow + 1;
            for (const SeenCell& each : painter_->cellsOf(first)) {
                if (each.beginsAbove) height += notes_.add(grid_.cells[each.cell]);
            }
        }
        const double room = flow_.rest();
        while (part.endRow < grid_.rows) {
            const TablePart before = part;
            height += measures_.rowHeight(part.endRow) + addNotes(part.endRow, part);
            const bool isLast = part.isLastRange && part.endRow + 1 == grid_.rows;
            const double below = isLast ? captionHeight() + notes_.unlistedHeight() : 0;
            if (height + below > room &&
                !(isLast && part.endRow == part.firstRow && isAtTop() && height <= room)) {
                if (part.endRow > part.firstRow) recount(before);
                return part.endRow > part.firstRow;
            }
            ++part.endRow;
        }
        return true;
    }

    /// Lists the footnotes of a part again, after those of a row that does not fit were added.
    void recount(const TablePart& part) {
        if (grid_.footnotes.empty()) return;
        notes_.begin();
        for (const SeenCell& each : painter_->cellsOf(part)) notes_.add(grid_.cells[each.cell]);
    }

    void writePart(const TablePart& part, bool isLast) {
        painter_->draw(part);
        flow_.advance(linesAround / 2);
        const std::vector<MarkPlace> marks = painter_->takeMarks();
        if (isLast) {
            flow_.leaveSpace(textGap);
            writeCaption(measures_.width(part.columns));
        }
        flow_.leaveSpace(textGap);
        notes_.write(marks, isLast);
    }

    /// A row that is higher than a page: each page shows as many lines of its cells as it has room for.
    void cutRow(TablePart& part) {
        part.endRow = part.firstRow + 1;
        recount(part);
        double left = measures_.rowHeight(part.firstRow);
        const double lost = lineHeightOf(part.firstRow);
        for (;;) {
            const double room = flow_.rest() - rowsHeight(0, part.headerRows) - linesAround;
            part.cutHeight = std::max(1.0, std::min(room, left));
            // At its end a part may miss a line that would not fit, and each part has margins.
            left -= std::max(0.0, part.cutHeight - lost);
            if (painter_->draw(part)) break;
            beginPage(part);
        }
        part.cutHeight = 0;
        if (part.endRow == grid_.rows && part.isLastRange) writeCaption(0);
        notes_.write(painter_->takeMarks(), part.isLastRange && part.endRow == grid_.rows);
    }

    /// More than the margins and the highest line of the row's cells take.
    [[nodiscard]] double lineHeightOf(std::uint32_t row) const {
        double height = 0;
        for (const tables::GridCell& cell : grid_.row(row)) {
            const tables::AreaLook& look = grid_.style(cell).look;
            height = std::max(height, look.marginTop + look.marginBottom + 2 * look.size);
        }
        return height;
    }

    const TableGrid& grid_;
    StructureTree& structure_;
    PageFlow& flow_;
    TableMeasures measures_;
    TextShaper& shaper_;
    std::optional<TablePainter> painter_;
    TableNotes notes_;
    std::uint32_t repeated_ = 0;  // rows of the header
    PdfObject namedPage_ = 0;     // the last one that says which table it is
    double continuedTop_ = -1;    // where its rows begin, when it is not the first one
};

}  // namespace

TablePages writeTable(const TableGrid& grid, TextShaper& shaper, StructureTree& structure, PageFlow& flow) {
    return TableFlow(grid, shaper, structure, flow).write();
}

}  // namespace vexa::frontend::pdf
