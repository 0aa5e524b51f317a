#include "frontend/export/slides/slide_tables.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <set>
#include <string_view>
#include <unordered_map>

#include "frontend/export/font_widths.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/office/table_columns.h"
#include "frontend/export/slides/slide_text.h"
#include "frontend/export/slides/slide_xml.h"

namespace vexa::frontend {

namespace {

using tables::GridCell;
using tables::GridFootnote;
using tables::HorizontalAlign;
using tables::LineStyle;
using tables::ShownStyle;
using tables::TableGrid;

/// Which footnotes rows of a part refer to.
class RowNotes {
  public:
    explicit RowNotes(const TablePart& part) : part_(part), grid_(*part.grid) {
        rows_.resize(grid_.rows);
        for (std::size_t i = 0; i < grid_.footnotes.size(); ++i) numbers_.emplace(grid_.footnotes[i].mark, i);
        for (const GridCell& cell : grid_.cells) {
            if (cell.marks != 0 && isShown(cell)) add(cell);
        }
    }
    [[nodiscard]] const std::set<std::size_t>& of(std::uint32_t row) const { return rows_[row]; }

  private:
    [[nodiscard]] bool isShown(const GridCell& cell) const {
        return cell.column < part_.labelColumns ||
               (cell.column < part_.dataEnd && cell.column + cell.columnSpan > part_.dataBegin);
    }
    void add(const GridCell& cell) {
        for (const std::string& mark : grid_.marks[cell.marks - 1]) {
            const auto found = numbers_.find(mark);
            if (found == numbers_.end()) continue;
            for (std::uint32_t i = 0; i < cell.rowSpan; ++i) rows_[cell.row + i].insert(found->second);
        }
    }

    const TablePart& part_;
    const TableGrid& grid_;
    std::unordered_map<std::string_view, std::size_t> numbers_;  // of footnotes, by their marks
    std::vector<std::set<std::size_t>> rows_;
};

/// Fills one slide after the other.
class Spreader {
  public:
    Spreader(const TablePart& part, const SlideBox& room, double tail)
        : part_(part), grid_(*part.grid), room_(room), tail_(tail), notes_(part) {
        const ShownStyle& style = grid_.styles[grid_.footnoteStyle];
        for (const GridFootnote& each : grid_.footnotes) {
            noteHeights_.push_back(textHeight(footnoteText(each), style, room.width));
        }
        for (std::uint32_t row = 0; row < part.headerRows; ++row) header_ += part.heights[row];
    }

    std::vector<SlideRows> spread() {
        begin(part_.headerRows);
        for (std::uint32_t row = part_.headerRows; row < grid_.rows; ++row) {
            if (!fits(row) && slides_.back().end > slides_.back().begin) begin(row);
            take(row);
        }
        for (SlideRows& each : slides_) each.cut = each.height > room_.height + 0.5;
        return std::move(slides_);
    }

  private:
    void begin(std::uint32_t row) {
        SlideRows& slide = slides_.emplace_back();
        slide.begin = slide.end = row;
        slide.height = header_;
        noted_.clear();
        notesHeight_ = 0;
        for (std::uint32_t i = 0; i < part_.headerRows; ++i) note(i);
    }

    void note(std::uint32_t row) {
        for (const std::size_t each : notes_.of(row)) {
            if (!noted_.insert(each).second) continue;
            notesHeight_ += noteHeights_[each];
            std::vector<std::size_t>& listed = slides_.back().footnotes;
            listed.insert(std::lower_bound(listed.begin(), listed.end(), each), each);
        }
    }

    [[nodiscard]] bool fits(std::uint32_t row) const {
        double below = notesHeight_;
        for (const std::size_t each : notes_.of(row)) {
            if (noted_.find(each) == noted_.end()) below += noteHeights_[each];
        }
        // What stands under the table is rather put on a slide with one row than alone.
        if (row + 1 == grid_.rows) below += std::min(tail_, room_.height / 3);
        if (below > 0) below += slideGap;
        return slides_.back().height + part_.heights[row] + below <= room_.height;
    }

    void take(std::uint32_t row) {
        slides_.back().end = row + 1;
        slides_.back().height += part_.heights[row];
        note(row);
    }

    const TablePart& part_;
    const TableGrid& grid_;
    const SlideBox& room_;
    double tail_;
    RowNotes notes_;
    std::vector<double> noteHeights_;
    double header_ = 0;
    std::vector<SlideRows> slides_;
    std::set<std::size_t> noted_;  // of the slide that is being filled
    double notesHeight_ = 0;
};

void writeLine(XmlWriter& xml, std::string_view element, const tables::BorderLine& line) {
    if (line.style == LineStyle::none) {
        // Said, since some programs give a side without a line that of the side beside it.
        xml.begin(element).attribute("w", "0").begin("a:noFill").end();
        xml.end();
        return;
    }
    xml.begin(element).attribute("w", emuOf(officeLineWidth(line.style))).attribute("cap", "flat");
    xml.attribute("cmpd", line.style == LineStyle::twofold ? "dbl" : "sng").attribute("algn", "ctr");
    xml.begin("a:solidFill").begin("a:srgbClr").attribute("val", officeColor(line.color)).end();
    xml.end();
    xml.begin("a:prstDash");
    xml.attribute("val", line.style == LineStyle::dashed   ? "dash"
                         : line.style == LineStyle::dotted ? "sysDot"
                                                           : "solid");
    xml.end();
    xml.end();
}

/// Sides of a cell, in the order of its borders.
constexpr std::size_t topSide = 1;
constexpr std::size_t rightSide = 2;
constexpr std::size_t bottomSide = 4;
constexpr std::size_t leftSide = 8;

std::string cellXml(const ShownStyle& style, double scale, std::size_t sides) {
    constexpr std::array<std::string_view, 3> anchors{"t", "ctr", "b"};
    const tables::AreaLook& look = style.look;
    XmlWriter xml(pieceXml);
    xml.begin("a:tcPr").attribute("marL", emuOf(look.marginLeft * scale));
    xml.attribute("marR", emuOf(look.marginRight * scale)).attribute("marT", emuOf(look.marginTop * scale));
    xml.attribute("marB", emuOf(look.marginBottom * scale));
    xml.attribute("anchor", anchors[static_cast<std::size_t>(look.vertical)]);
    writeLine(xml, "a:lnL", (sides & leftSide) != 0 ? style.borders[3] : tables::BorderLine());
    writeLine(xml, "a:lnR", (sides & rightSide) != 0 ? style.borders[1] : tables::BorderLine());
    writeLine(xml, "a:lnT", (sides & topSide) != 0 ? style.borders[0] : tables::BorderLine());
    writeLine(xml, "a:lnB", (sides & bottomSide) != 0 ? style.borders[2] : tables::BorderLine());
    if (look.background) {
        xml.begin("a:solidFill").begin("a:srgbClr").attribute("val", officeColor(*look.background)).end();
        xml.end();
    } else {
        xml.begin("a:noFill").end();
    }
    xml.end();
    return xml.take();
}

std::string propertiesXml(const SlideText& text, std::string_view element, const SlideRunStyle& style) {
    XmlWriter xml(pieceXml);
    text.properties(xml, element, style);
    return xml.take();
}

std::string paragraphXml(HorizontalAlign align, bool number) {
    if (align == HorizontalAlign::mixed) align = number ? HorizontalAlign::right : HorizontalAlign::left;
    return align == HorizontalAlign::left     ? R"(<a:pPr algn="l"/>)"
           : align == HorizontalAlign::center ? R"(<a:pPr algn="ctr"/>)"
                                              : R"(<a:pPr algn="r"/>)";
}

}  // namespace

double textHeight(std::string_view text, const ShownStyle& style, double width) {
    if (text.empty()) return 0;
    const FontWidths font(style.look.font, style.look.size, style.look.bold);
    return static_cast<double>(font.linesIn(text, width)) * style.look.size * heightOfLine;
}

std::string footnoteText(const GridFootnote& footnote) {
    return footnote.mark.empty() ? footnote.text : footnote.mark + ". " + footnote.text;
}

std::vector<SlideRows> spreadRows(const TablePart& part, const SlideBox& room, double tail) {
    return Spreader(part, room, tail).spread();
}

SlideTableWriter::SlideTableWriter(const TablePart& part, const SlideText& text)
    : part_(part), grid_(*part.grid), text_(text), rows_(part) {
    XmlWriter xml(pieceXml);
    for (std::uint32_t row = 0; row < part.headerRows; ++row) writeRow(xml, row, 0, part.headerRows);
    header_ = xml.take();
}

void SlideTableWriter::write(XmlWriter& xml, const SlideRows& rows, const SlideBox& place, int id) {
    writeFrame(xml, place, rows.height, id);
    xml.begin("a:graphic").begin("a:graphicData");
    xml.attribute("uri", "http://schemas.openxmlformats.org/drawingml/2006/table");
    xml.begin("a:tbl").begin("a:tblPr");
    if (part_.headerRows > 0) xml.attribute("firstRow", "1");
    if (part_.labelColumns > 0) xml.attribute("firstCol", "1");
    xml.element("a:tableStyleId", "{2D5ABB26-0587-4C30-8999-92F81FD0307C}").end();
    xml.begin("a:tblGrid");
    for (const double width : part_.widths) xml.begin("a:gridCol").attribute("w", emuOf(width)).end();
    xml.end();
    xml.raw(header_);
    for (std::uint32_t row = rows.begin; row < rows.end; ++row) writeRow(xml, row, rows.begin, rows.end);
    for (int i = 0; i < 4; ++i) xml.end();
}

void SlideTableWriter::writeFrame(XmlWriter& xml, const SlideBox& place, double height, int id) const {
    xml.begin("p:graphicFrame").begin("p:nvGraphicFramePr");
    writeShapeName(xml, {id, "Table " + std::to_string(id - 1), part_.name});
    xml.begin("p:cNvGraphicFramePr").begin("a:graphicFrameLocks").attribute("noGrp", "1").end();
    xml.end();
    xml.begin("p:nvPr").end();
    xml.end();
    const double width = std::accumulate(part_.widths.begin(), part_.widths.end(), 0.0);
    writePlace(xml, {place.left, place.top, width, height}, "p:xfrm");
}

void SlideTableWriter::writeRow(XmlWriter& xml, std::uint32_t row, std::uint32_t begin, std::uint32_t end) {
    xml.begin("a:tr").attribute("h", emuOf(part_.heights[row]));
    for (const RowPiece& piece : rows_.next()) {
        const std::uint32_t cellBegin = std::max(piece.cell->row, begin);
        const std::uint32_t cellEnd = std::min(piece.cell->row + piece.cell->rowSpan, end);
        const std::uint32_t realEnd = piece.cell->row + piece.cell->rowSpan;
        const bool ends = row == cellBegin ? realEnd == cellEnd : row + 1 == realEnd;
        writePiece(xml, piece, cellEnd - cellBegin, row > cellBegin, ends);
    }
    xml.end();
}

/// The first place of a merged cell has the lines of the whole, the others those of their own sides: programs
/// look at either. Where the cell goes on, on the next slide, there is no line.
void SlideTableWriter::writePiece(XmlWriter& xml, const RowPiece& piece, std::uint32_t rowSpan, bool further,
                                  bool ends) {
    for (std::uint32_t i = 0; i < piece.span; ++i) {
        xml.begin("a:tc");
        if (rowSpan > 1 && !further) xml.attribute("rowSpan", static_cast<std::int64_t>(rowSpan));
        if (piece.span > 1 && i == 0) xml.attribute("gridSpan", static_cast<std::int64_t>(piece.span));
        if (i > 0) xml.attribute("hMerge", "1");
        if (further) xml.attribute("vMerge", "1");
        writeText(xml, *piece.cell, i == 0 && !further);
        std::size_t sides = (further ? 0 : topSide) | (ends ? bottomSide : 0);
        if (i == 0) sides |= leftSide;
        if (i + 1 == piece.span || i == 0) sides |= rightSide;
        if (const double hanging = hangingMarks(grid_, *piece.cell); hanging > 0) {
            ShownStyle style = grid_.style(*piece.cell);
            style.look.marginRight -= hanging;
            xml.raw(cellXml(style, part_.scale, sides));
        } else {
            xml.raw(cellXmlOf(*piece.cell, sides));
        }
        xml.end();
    }
}

const std::string& SlideTableWriter::cellXmlOf(const GridCell& cell, std::size_t sides) {
    std::string& found = styleOf(cell).cells[sides];
    if (found.empty()) found = cellXml(grid_.style(cell), part_.scale, sides);
    return found;
}

SlideTableWriter::StyleXml& SlideTableWriter::styleOf(const GridCell& cell) {
    constexpr std::size_t mostStyles = 2'000;
    const std::size_t key = std::size_t{cell.style} * 2 + (cell.alignsRight ? 1 : 0);
    if (const auto found = styles_.find(key); found != styles_.end()) return found->second;
    if (styles_.size() >= mostStyles) styles_.clear();
    StyleXml& style = styles_[key];
    const ShownStyle& shown = grid_.style(cell);
    SlideRunStyle run = runStyleOf(shown.look, part_.scale);
    style.paragraph = paragraphXml(shown.look.horizontal, cell.alignsRight);
    style.run = propertiesXml(text_, "a:rPr", run);
    style.end = propertiesXml(text_, "a:endParaRPr", run);
    run.raised = true;
    style.mark = propertiesXml(text_, "a:rPr", run);
    return style;
}

void SlideTableWriter::writeText(XmlWriter& xml, const GridCell& cell, bool hasText) {
    const StyleXml& style = styleOf(cell);
    xml.begin("a:txBody").begin("a:bodyPr").end();
    xml.begin("a:lstStyle").end();
    std::string_view text = hasText ? grid_.text(cell) : std::string_view();
    const bool isMarked = hasText && cell.marks != 0;
    for (;;) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const bool isLast = end == text.size();
        if (isTooMuch(xml, text.substr(0, end))) break;
        xml.begin("a:p").raw(style.paragraph);
        if (end > 0) xml.begin("a:r").raw(style.run).element("a:t", withoutReturn(text.substr(0, end))).end();
        if (isLast && isMarked) {
            std::string marks;
            for (const std::string& each : grid_.marks[cell.marks - 1])
                marks += (marks.empty() ? "" : ",") + each;
            xml.begin("a:r").raw(style.mark).element("a:t", marks).end();
        } else if (end == 0) {
            xml.raw(style.end);
        }
        xml.end();
        if (isLast) break;
        text.remove_prefix(end + 1);
    }
    xml.end();
}

}  // namespace vexa::frontend
