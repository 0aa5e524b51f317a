#include "frontend/export/html/table_html.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <vector>

#include "backend/tables/formats/number_text.h"
#include "frontend/export/html/html_text.h"

namespace vexa::frontend {

namespace {

using tables::appendShortest;
using tables::GridCell;
using tables::GridFootnote;
using tables::GridRole;
using tables::GridText;
using tables::ShownStyleId;
using tables::TableGrid;

class TableWriter {
  public:
    TableWriter(std::string& html, const TableGrid& grid, std::string_view id, StyleClasses* classes,
                const TextTaker& take)
        : html_(html), take_(take), grid_(grid), id_(id), classes_(classes) {
        if (classes_ == nullptr) return;
        classes_->begin(grid);
        if (!grid.marks.empty()) measureMarks();
    }

    void write() {
        html_ += "<table";
        if (classes_ != nullptr) writeLimits();
        html_ += ">\n";
        writeTitle();
        writeWidths();
        writeRows(0, grid_.headerRows, "thead");
        writeRows(grid_.headerRows, grid_.rows, "tbody");
        html_ += "</table>\n";
        writeBelow();
    }

  private:
    void measureMarks() {
        letters_.assign(grid_.columns, 0);
        for (const GridCell& cell : grid_.cells) {
            if (cell.marks == 0 || !cell.alignsRight) continue;
            std::size_t letters = 0;
            for (const std::string& mark : grid_.marks[cell.marks - 1]) letters += mark.size() + 1;
            letters_[cell.column] = std::max(letters_[cell.column], letters - 1);
        }
    }

    /// What the style sheet of the page asks for as the widths of columns that have none of their own.
    void writeLimits() {
        std::string limits;
        const auto limit = [&limits](std::string_view name, const std::optional<double>& width) {
            if (!width) return;
            limits.append("--").append(name).append(":");
            appendShortest(limits, *width);
            limits += "pt;";
        };
        limit("least", grid_.minColumnWidth);
        limit("most", grid_.maxColumnWidth);
        limit("label", grid_.maxLabelWidth);
        if (limits.empty()) return;
        html_ += " style=\"" + limits + "\"";
        ownWidths_.reserve(grid_.columns);
        for (const auto& width : grid_.widths) ownWidths_.push_back(width.has_value());
    }

    [[nodiscard]] bool hasOwnWidth(const GridCell& cell) const {
        return cell.column < ownWidths_.size() && ownWidths_[cell.column];
    }

    void writeTitle() {
        if (grid_.title.text.empty() && grid_.layer.text.empty()) return;
        html_ += "<caption>";
        writePart("div", grid_.title);
        writePart("div", grid_.layer);
        html_ += "</caption>\n";
    }

    void writePart(std::string_view element, const GridText& text) {
        if (text.text.empty()) return;
        open(element, text.style, false);
        html_ += '>';
        appendHtmlLines(html_, text.text);
        html_.append("</").append(element).append(">");
    }

    void writeWidths() {
        bool any = false;
        for (const auto& width : grid_.widths) any = any || width.has_value();
        if (!any || classes_ == nullptr) return;
        html_ += "<colgroup>";
        for (const auto& width : grid_.widths) {
            html_ += "<col";
            if (width) {
                html_ += " style=\"width:";
                appendShortest(html_, *width);
                html_ += "pt\"";
            }
            html_ += ">";
        }
        html_ += "</colgroup>\n";
    }

    void writeRows(std::size_t begin, std::size_t end, std::string_view element) {
        if (begin == end) return;
        html_.append("<").append(element).append(">\n");
        for (std::size_t row = begin; row < end; ++row) {
            html_ += "<tr>";
            for (const GridCell& cell : grid_.row(row)) {
                if (cell.role == GridRole::data) {
                    writeData(cell);
                } else {
                    writeCell(cell);
                }
                if (html_.size() >= PackedText::pieceBytes) take_(html_);
            }
            html_ += "</tr>\n";
            take_(html_);
        }
        html_.append("</").append(element).append(">\n");
    }

    void writeCell(const GridCell& cell) {
        const std::string_view text = grid_.text(cell);
        const bool isHeading = cell.role != GridRole::corner || !text.empty();
        const std::string_view element = isHeading ? "th" : "td";
        open(element, cell.style, false);
        if (isHeading) html_ += cell.role == GridRole::rowLabel ? " scope=\"row\"" : " scope=\"col\"";
        writeSpan("colspan", cell.columnSpan);
        writeSpan("rowspan", cell.rowSpan);
        if (classes_ != nullptr && cell.role == GridRole::columnLabel && cell.columnSpan == 1 &&
            grid_.maxColumnWidth && !hasOwnWidth(cell)) {
            html_ += " style=\"max-width:var(--most)\"";
        }
        html_ += '>';
        appendHtmlLines(html_, text);
        if (cell.marks != 0) writeMarks(cell);
        html_.append("</").append(element).append(">");
    }

    /// Most cells by far; one place each. What a format makes of a number has nothing to be escaped.
    void writeData(const GridCell& cell) {
        const bool isPlain = cell.kind == tables::CellKind::number && !cell.hasOwnText && cell.marks == 0 &&
                             letters_.empty() && ownWidths_.empty();
        if (isPlain) {
            writePlain(classes_ == nullptr ? std::string_view("<td>")
                                           : classes_->cellOf(cell.style, cell.alignsRight),
                       grid_.text(cell));
            return;
        }
        if (classes_ == nullptr) {
            html_ += "<td>";
        } else if (letters_.empty() && ownWidths_.empty()) {
            html_ += classes_->cellOf(cell.style, cell.alignsRight);
        } else {
            openDataWithStyle(cell);
        }
        appendHtmlLines(html_, grid_.text(cell));
        if (cell.marks != 0) writeMarks(cell);
        html_ += "</td>";
    }

    /// A cell at once.
    void writePlain(std::string_view open, std::string_view text) {
        constexpr std::string_view close = "</td>";
        const std::size_t begin = html_.size();
        html_.resize(begin + open.size() + text.size() + close.size());
        char* to = std::copy(open.begin(), open.end(), html_.data() + begin);
        to = std::copy(text.begin(), text.end(), to);
        std::copy(close.begin(), close.end(), to);
    }

    void openDataWithStyle(const GridCell& cell) {
        open("td", cell.style, cell.alignsRight);
        if (!letters_.empty() && letters_[cell.column] > 1 && cell.alignsRight) {
            writeRoom(cell);
        } else if (hasOwnWidth(cell)) {
            html_ += " style=\"min-width:0;max-width:none\"";
        }
        html_ += '>';
    }

    /// A single mark has room between two columns; several need more, beside every number of the column.
    void writeRoom(const GridCell& cell) {
        html_ += " style=\"padding-right:";
        appendShortest(html_, 0.5 + 0.45 * static_cast<double>(letters_[cell.column]));
        html_ += hasOwnWidth(cell) ? "em;min-width:0;max-width:none\"" : "em\"";
    }

    void writeSpan(std::string_view attribute, std::uint32_t span) {
        if (span > 1)
            html_.append(" ").append(attribute).append("=\"").append(std::to_string(span)).append("\"");
    }

    /// The first reference to a footnote is what the footnote leads back to. Marks of numbers take no room,
    /// so that the numbers stay below each other.
    void writeMarks(const GridCell& cell) {
        html_ += cell.alignsRight && classes_ != nullptr ? "<sup class=\"beside\">" : "<sup>";
        bool isFirst = true;
        for (const std::string& mark : grid_.marks[cell.marks - 1]) {
            if (!isFirst) html_ += ',';
            isFirst = false;
            html_ += "<a href=\"#" + noteName(mark) + "\"";
            if (referred_.insert(mark).second) html_ += " id=\"" + referenceName(mark) + "\"";
            html_ += ">" + mark + "</a>";
        }
        html_ += "</sup>";
    }

    [[nodiscard]] std::string noteName(const std::string& mark) const {
        return std::string(id_) + "n-" + mark;
    }
    [[nodiscard]] std::string referenceName(const std::string& mark) const {
        return std::string(id_) + "r-" + mark;
    }

    void writeBelow() {
        if (!grid_.caption.text.empty()) {
            writePart("p", grid_.caption);
            html_ += '\n';
        }
        if (grid_.footnotes.empty()) return;
        open("ul", grid_.footnoteStyle, false, "footnotes");
        html_ += ">\n";
        for (const GridFootnote& note : grid_.footnotes) {
            writeNote(note);
            take_(html_);
        }
        html_ += "</ul>\n";
    }

    void writeNote(const GridFootnote& note) {
        html_ += "<li";
        if (!note.mark.empty()) {
            // A mark may stand where the grid shows nothing; there is no way back to it then.
            const bool isReferred = referred_.find(note.mark) != referred_.end();
            html_ += " id=\"" + noteName(note.mark) + "\"><sup>";
            if (isReferred) html_ += "<a href=\"#" + referenceName(note.mark) + "\">";
            html_ += note.mark;
            html_ += isReferred ? "</a></sup> " : "</sup> ";
        } else {
            html_ += '>';
        }
        appendHtmlLines(html_, note.text);
        html_ += "</li>\n";
    }

    /// The start of a tag with its classes, without its end.
    void open(std::string_view element, ShownStyleId style, bool alignsRight, std::string_view more = {}) {
        html_.append("<").append(element);
        if (classes_ == nullptr) return;
        const std::string& name = classes_->classOf(style, alignsRight);
        if (name.empty() && more.empty()) return;
        html_ += " class=\"";
        html_.append(more);
        if (!name.empty() && !more.empty()) html_ += ' ';
        html_.append(name).append("\"");
    }

    std::string& html_;
    const TextTaker& take_;
    const TableGrid& grid_;
    std::string_view id_;
    StyleClasses* classes_;
    std::vector<std::size_t> letters_;  // of the widest marks that numbers of a column have
    std::vector<bool> ownWidths_;       // of columns, where the others have limits
    std::set<std::string> referred_;
};

}  // namespace

void appendTable(std::string& html, const TableGrid& grid, std::string_view id, StyleClasses* classes,
                 const TextTaker& take) {
    TableWriter(html, grid, id, classes, take).write();
}

}  // namespace vexa::frontend
