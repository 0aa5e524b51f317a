#include "frontend/export/word/rtf/rtf_table.h"

#include <array>
#include <string_view>
#include <vector>

#include "frontend/export/office/office_values.h"
#include "frontend/export/office/table_columns.h"
#include "frontend/export/word/word_content.h"

namespace vexa::frontend {

namespace {

using tables::AreaLook;
using tables::BorderLine;
using tables::GridCell;
using tables::LineStyle;
using tables::ShownStyle;
using tables::TableGrid;

/// What cells of one style have in common, made once.
struct CellWords {
    std::string cell;                 ///< of its definition
    std::array<std::string, 2> text;  ///< of the paragraph of a text and of a number
};

class RtfTable {
  public:
    RtfTable(std::string& rtf, const TablePart& part, RtfTables& tables, RtfStyles& styles)
        : rtf_(rtf),
          part_(part),
          grid_(*part.grid),
          tables_(tables),
          styles_(styles),
          words_(grid_.styles.size()) {
        double edge = 0;
        for (const double width : part.widths) edges_.push_back(twipsOf(edge += width));
    }

    void append(const TextTaker& take) {
        PartRows rows(part_);
        for (std::uint32_t row = 0; row < grid_.rows; ++row) {
            appendRow(row, rows.next());
            take(rtf_);
        }
    }

  private:
    void appendRow(std::uint32_t row, const std::vector<RowPiece>& pieces) {
        rtf_ +=
            "\\trowd\\trgaph0\\trleft0\\trpaddl0\\trpaddt0\\trpaddr0\\trpaddb0\\trpaddfl3\\trpaddft3\\trpaddf"
            "r3\\trpaddfb3";
        if (part_.staysTogether(row)) rtf_ += "\\trkeep";
        if (row < part_.headerRows) rtf_ += "\\trhdr";
        for (const RowPiece& piece : pieces) appendDefinition(piece);
        rtf_ += '\n';
        const bool keeps = part_.keepsWithNext(row);
        for (const RowPiece& piece : pieces) appendCell(piece, keeps);
        rtf_ += "\\row\n";
    }

    void appendDefinition(const RowPiece& piece) {
        if (piece.place == RowPlace::first) rtf_ += "\\clvmgf";
        if (piece.place == RowPlace::further) rtf_ += "\\clvmrg";
        rtf_ += wordsOf(*piece.cell).cell;
        appendWord(rtf_, "cellx", edges_[piece.column + piece.span - 1]);
    }

    void appendCell(const RowPiece& piece, bool keepsWithNext) {
        const GridCell& cell = *piece.cell;
        const std::string& words = wordsOf(cell).text[alignsRight(cell) ? 1 : 0];
        rtf_.append("\\pard\\plain\\intbl").append(words).append(keepsWithNext ? "\\keepn" : "");
        if (const double hanging = hangingMarks(grid_, cell); hanging > 0)
            appendWord(rtf_, "ri", twipsOf((grid_.style(cell).look.marginRight - hanging) * part_.scale));
        if (piece.place != RowPlace::further) {
            if (!alignsRight(cell) && isRightToLeft(grid_.text(cell)))
                rtf_.append("\\rtlpar").append(turnedWords(words));
            rtf_ += ' ';
            appendRtfText(rtf_, grid_.text(cell));
            appendMarks(cell);
        }
        rtf_ += "\\cell\n";
    }

    void appendMarks(const GridCell& cell) {
        if (cell.marks == 0) return;
        rtf_ += "{\\super ";
        bool isFirst = true;
        for (const std::string& mark : grid_.marks[cell.marks - 1]) {
            rtf_.append(isFirst ? "" : ",").append(mark);
            isFirst = false;
        }
        rtf_ += '}';
    }

    /// Not a text that is written from the right: what is left for it is where it begins.
    [[nodiscard]] bool alignsRight(const GridCell& cell) const {
        return cell.alignsRight &&
               (cell.kind == tables::CellKind::number || !isRightToLeft(grid_.text(cell)));
    }

    const CellWords& wordsOf(const GridCell& cell) {
        CellWords& words = words_[cell.style];
        const std::size_t kind = alignsRight(cell) ? 1 : 0;
        if (words.text[kind].empty()) {
            const ShownStyle& style = grid_.style(cell);
            words.cell.clear();
            appendLook(words.cell, style);
            words.text[kind] = styles_.tableText(textStyleOf(style.look, kind == 1, part_.scale));
            appendMargins(words.text[kind], style.look);
        }
        return words;
    }

    void appendLook(std::string& rtf, const ShownStyle& style) {
        constexpr std::array<std::string_view, 3> places{"\\clvertalt", "\\clvertalc", "\\clvertalb"};
        constexpr std::array<std::string_view, 4> sides{"\\clbrdrt", "\\clbrdrr", "\\clbrdrb", "\\clbrdrl"};
        rtf += places[static_cast<std::size_t>(style.look.vertical)];
        for (std::size_t i = 0; i < sides.size(); ++i) appendBorder(rtf, sides[i], style.borders[i]);
        if (style.look.background)
            appendWord(rtf, "clcbpat", static_cast<std::int64_t>(tables_.color(*style.look.background)));
    }

    void appendBorder(std::string& rtf, std::string_view side, const BorderLine& line) {
        constexpr std::array<std::string_view, 7> lines{"",
                                                        "\\brdrs\\brdrw10",
                                                        "\\brdrs\\brdrw20",
                                                        "\\brdrs\\brdrw40",
                                                        "\\brdrdb\\brdrw15",
                                                        "\\brdrdash\\brdrw10",
                                                        "\\brdrdot\\brdrw10"};
        if (line.style == LineStyle::none) return;
        rtf.append(side).append(lines[static_cast<std::size_t>(line.style)]);
        appendWord(rtf, "brdrcf", static_cast<std::int64_t>(tables_.color(line.color)));
    }

    /// As indents and spaces of the paragraph: readers do not agree on which side the words for cells mean.
    void appendMargins(std::string& rtf, const AreaLook& look) const {
        appendWord(rtf, "li", twipsOf(look.marginLeft * part_.scale));
        appendWord(rtf, "ri", twipsOf(look.marginRight * part_.scale));
        appendWord(rtf, "sb", twipsOf(look.marginTop * part_.scale));
        appendWord(rtf, "sa", twipsOf(look.marginBottom * part_.scale));
    }

    std::string& rtf_;
    const TablePart& part_;
    const TableGrid& grid_;
    RtfTables& tables_;
    RtfStyles& styles_;
    std::vector<CellWords> words_;
    std::vector<std::int64_t> edges_;  // right ones of the columns, twips
};

}  // namespace

void appendRtfTable(std::string& rtf, const TablePart& part, RtfTables& tables, RtfStyles& styles,
                    const TextTaker& take) {
    RtfTable(rtf, part, tables, styles).append(take);
}

}  // namespace vexa::frontend
