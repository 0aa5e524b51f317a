#include "frontend/export/word/docx/docx_table.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "frontend/export/office/office_values.h"
#include "frontend/export/office/table_columns.h"
#include "frontend/export/word/docx/docx_text.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

namespace {

using tables::AreaLook;
using tables::BorderLine;
using tables::GridCell;
using tables::HorizontalAlign;
using tables::LineStyle;
using tables::ShownStyle;
using tables::TableGrid;
using tables::VerticalAlign;

/// The margins of cells that the style of tables has, points.
constexpr double usualSide = 4;
constexpr double usualOver = 1;

void appendLength(std::string& xml, std::string_view element, double points) {
    xml.append("<w:").append(element).append(" w:w=\"").append(std::to_string(twipsOf(points)));
    xml.append("\" w:type=\"dxa\"/>");
}

void appendBorder(std::string& xml, std::string_view side, const BorderLine& line) {
    constexpr std::array<std::string_view, 7> words{"nil",    "single", "single", "single",
                                                    "double", "dashed", "dotted"};
    /// In eighths of a point; of a double line each of its two.
    constexpr std::array<std::string_view, 7> sizes{"0", "4", "8", "16", "6", "4", "4"};
    if (line.style == LineStyle::none) return;
    const auto style = static_cast<std::size_t>(line.style);
    xml.append("<w:").append(side).append(" w:val=\"").append(words[style]).append("\" w:sz=\"");
    xml.append(sizes[style]).append("\" w:space=\"0\" w:color=\"").append(officeColor(line.color));
    xml.append("\"/>");
}

void appendBorders(std::string& xml, const std::array<BorderLine, 4>& borders) {
    const auto isDrawn = [](const BorderLine& line) { return line.style != LineStyle::none; };
    if (std::none_of(borders.begin(), borders.end(), isDrawn)) return;
    xml += "<w:tcBorders>";
    appendBorder(xml, "top", borders[0]);
    appendBorder(xml, "left", borders[3]);
    appendBorder(xml, "bottom", borders[2]);
    appendBorder(xml, "right", borders[1]);
    xml += "</w:tcBorders>";
}

void appendMargins(std::string& xml, const AreaLook& look, double scale) {
    const bool isUsual = scale == 1 && look.marginLeft == usualSide && look.marginRight == usualSide &&
                         look.marginTop == usualOver && look.marginBottom == usualOver;
    if (isUsual) return;
    xml += "<w:tcMar>";
    appendLength(xml, "top", look.marginTop * scale);
    appendLength(xml, "left", look.marginLeft * scale);
    appendLength(xml, "bottom", look.marginBottom * scale);
    appendLength(xml, "right", look.marginRight * scale);
    xml += "</w:tcMar>";
}

/// What cells of one style have in common, made once.
struct CellXml {
    std::string properties;  ///< of the cell, behind its width and spans
    /// Of a text and of a number: what stands first and last in `w:pPr`, and what stands in `w:rPr`.
    std::array<std::string, 2> style;
    std::array<std::string, 2> align;
    std::array<std::string, 2> run;
};

class DocxTable {
  public:
    DocxTable(std::string& xml, const TablePart& part, TextStyles& styles)
        : xml_(xml), part_(part), grid_(*part.grid), styles_(styles), cells_(grid_.styles.size()) {
        for (const double width : part.widths) widths_.push_back(twipsOf(width));
    }

    void append(const TextTaker& take) {
        xml_ += "<w:tbl>";
        appendTableProperties();
        PartRows rows(part_);
        for (std::uint32_t row = 0; row < grid_.rows; ++row) {
            appendRow(row, rows.next());
            take(xml_);
        }
        xml_ += "</w:tbl>";
    }

  private:
    void appendTableProperties() {
        std::int64_t total = 0;
        for (const std::int64_t width : widths_) total += width;
        xml_ += "<w:tblPr><w:tblStyle w:val=\"PivotTable\"/><w:tblW w:w=\"" + std::to_string(total) +
                "\" w:type=\"dxa\"/><w:tblLayout w:type=\"fixed\"/>";
        appendLook();
        if (!part_.name.empty()) {
            xml_ += "<w:tblCaption w:val=\"";
            appendXmlValue(xml_, part_.name, XmlEscapes::replacing);
            xml_ += "\"/>";
        }
        xml_ += "</w:tblPr><w:tblGrid>";
        for (const std::int64_t width : widths_) xml_ += "<w:gridCol w:w=\"" + std::to_string(width) + "\"/>";
        xml_ += "</w:tblGrid>";
    }

    /// Which labels the table has, for those to whom it is read out.
    void appendLook() {
        const bool rows = grid_.headerRows > 0;
        const bool columns = part_.labelColumns > 0;
        const std::string_view number = rows && columns ? "06A0" : rows ? "0620" : columns ? "0680" : "0600";
        xml_.append("<w:tblLook w:val=\"").append(number).append("\" w:firstRow=\"").append(rows ? "1" : "0");
        xml_.append("\" w:lastRow=\"0\" w:firstColumn=\"").append(columns ? "1" : "0");
        xml_ += "\" w:lastColumn=\"0\" w:noHBand=\"1\" w:noVBand=\"1\"/>";
    }

    void appendRow(std::uint32_t row, const std::vector<RowPiece>& pieces) {
        xml_ += "<w:tr>";
        const bool isKept = part_.staysTogether(row);
        const bool isHeader = row < part_.headerRows;
        if (isKept || isHeader) {
            xml_ += "<w:trPr>";
            if (isKept) xml_ += "<w:cantSplit/>";
            if (isHeader) xml_ += "<w:tblHeader/>";
            xml_ += "</w:trPr>";
        }
        const bool keeps = part_.keepsWithNext(row);
        for (const RowPiece& piece : pieces) appendCell(piece, keeps);
        xml_ += "</w:tr>";
    }

    void appendCell(const RowPiece& piece, bool keepsWithNext) {
        const GridCell& cell = *piece.cell;
        const CellXml& made = cellXml(cell);
        std::int64_t width = 0;
        for (std::uint32_t i = 0; i < piece.span; ++i) width += widths_[piece.column + i];
        xml_.append("<w:tc><w:tcPr><w:tcW w:w=\"")
            .append(std::to_string(width))
            .append("\" w:type=\"dxa\"/>");
        if (piece.span > 1)
            xml_.append("<w:gridSpan w:val=\"").append(std::to_string(piece.span)).append("\"/>");
        if (piece.place == RowPlace::first) xml_ += "<w:vMerge w:val=\"restart\"/>";
        if (piece.place == RowPlace::further) xml_ += "<w:vMerge/>";
        appendCellProperties(cell, made);
        xml_ += "</w:tcPr><w:p><w:pPr>";
        const std::size_t kind = alignsRight(cell) ? 1 : 0;
        const bool isTurned = kind == 0 && isRightToLeft(grid_.text(cell));
        xml_.append(made.style[kind]).append(keepsWithNext ? "<w:keepNext/>" : "");
        xml_.append(isTurned ? "<w:bidi/>" : "").append(made.align[kind]);
        xml_ += "</w:pPr>";
        if (piece.place != RowPlace::further) appendText(cell, made.run[kind], isTurned);
        xml_ += "</w:p></w:tc>";
    }

    void appendText(const GridCell& cell, const std::string& properties, bool isTurned) {
        const std::string_view text = grid_.text(cell);
        appendRun(xml_, text, isTurned ? properties + "<w:rtl/>" : properties);
        if (cell.marks == 0) return;
        std::string marks;
        for (const std::string& mark : grid_.marks[cell.marks - 1])
            marks += (marks.empty() ? "" : ",") + mark;
        appendRun(xml_, marks, properties + "<w:vertAlign w:val=\"superscript\"/>");
    }

    /// Not a text that is written from the right: what is left for it is where it begins.
    [[nodiscard]] bool alignsRight(const GridCell& cell) const {
        return cell.alignsRight &&
               (cell.kind == tables::CellKind::number || !isRightToLeft(grid_.text(cell)));
    }

    const CellXml& cellXml(const GridCell& cell) {
        CellXml& made = cells_[cell.style];
        const std::size_t kind = alignsRight(cell) ? 1 : 0;
        if (made.style[kind].empty()) {
            const ShownStyle& style = grid_.style(cell);
            made.properties.clear();
            appendProperties(made.properties, style);
            makeText(made, kind, textStyleOf(style.look, kind == 1, part_.scale));
        }
        return made;
    }

    void appendCellProperties(const GridCell& cell, const CellXml& made) {
        const double hanging = hangingMarks(grid_, cell);
        if (hanging > 0) {
            ShownStyle style = grid_.style(cell);
            style.look.marginRight -= hanging;
            appendProperties(xml_, style);
        } else {
            xml_ += made.properties;
        }
    }

    void appendProperties(std::string& xml, const ShownStyle& style) const {
        appendBorders(xml, style.borders);
        if (style.look.background) appendShading(xml, *style.look.background);
        appendMargins(xml, style.look, part_.scale);
        if (style.look.vertical == VerticalAlign::center) xml += "<w:vAlign w:val=\"center\"/>";
        if (style.look.vertical == VerticalAlign::bottom) xml += "<w:vAlign w:val=\"bottom\"/>";
    }

    void makeText(CellXml& made, std::size_t kind, const WordTextStyle& style) {
        const std::size_t number = styles_.find(style);
        if (number < mostTableStyles) {
            made.style[kind] = "<w:pStyle w:val=\"" + tableStyleId(number) + "\"/>";
            return;
        }
        made.style[kind] = "<w:pStyle w:val=\"TableText\"/>";
        if (style.align != HorizontalAlign::left)
            made.align[kind].append("<w:jc w:val=\"").append(justification(style.align)).append("\"/>");
        made.run[kind] = runProperties(style);
    }

    std::string& xml_;
    const TablePart& part_;
    const TableGrid& grid_;
    TextStyles& styles_;
    std::vector<CellXml> cells_;
    std::vector<std::int64_t> widths_;
};

}  // namespace

void appendDocxTable(std::string& xml, const TablePart& part, TextStyles& styles, const TextTaker& take) {
    DocxTable(xml, part, styles).append(take);
}

}  // namespace vexa::frontend
