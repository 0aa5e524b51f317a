// Tables on slides: which rows stand on which slide, and their XML.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/office/table_parts.h"
#include "frontend/export/slides/slide_design.h"
#include "frontend/export/slides/slide_text.h"

namespace vexa::frontend {

/// The rows of a part that stand on one slide, beside the header rows, and what stands under them.
struct SlideRows {
    std::uint32_t begin = 0;  ///< rows of the grid
    std::uint32_t end = 0;
    double height = 0;                   ///< of all rows, the header's among them; points
    std::vector<std::size_t> footnotes;  ///< of the grid: those that these rows refer to
    bool cut = false;                    ///< one row alone is higher than the slide
};

/// How the rows of a part are spread over slides with so much room for table and footnotes. The last one
/// has `tail` points left below, where one slide can have that; at least one, even of a part without rows.
[[nodiscard]] std::vector<SlideRows> spreadRows(const TablePart& part, const SlideBox& room, double tail);

/// The height of a text of the grid's own in its style, in a place of that width.
[[nodiscard]] double textHeight(std::string_view text, const tables::ShownStyle& style, double width);
/// What stands before a footnote's text, and both: "a. Without abroad."
[[nodiscard]] std::string footnoteText(const tables::GridFootnote& footnote);

/// Writes the rows of one part, slide after slide.
class SlideTableWriter {
  public:
    SlideTableWriter(const TablePart& part, const SlideText& text);

    /// `p:graphicFrame` with the rows, which must follow those of the call before. `id` is the shape's.
    void write(XmlWriter& xml, const SlideRows& rows, const SlideBox& place, int id);

  private:
    void writeRow(XmlWriter& xml, std::uint32_t row, std::uint32_t begin, std::uint32_t end);
    void writePiece(XmlWriter& xml, const RowPiece& piece, std::uint32_t rowSpan, bool further, bool ends);
    void writeText(XmlWriter& xml, const tables::GridCell& cell, bool hasText);
    /// By style and whether the cell is a number: the XML of its paragraphs, runs and cells.
    struct StyleXml {
        std::string paragraph;
        std::string run;
        std::string mark;
        std::string end;
        std::array<std::string, 16> cells;  ///< by the sides that have their line
    };
    /// Good until the next call: where a table has very many styles, only some are kept.
    StyleXml& styleOf(const tables::GridCell& cell);
    const std::string& cellXmlOf(const tables::GridCell& cell, std::size_t sides);
    void writeFrame(XmlWriter& xml, const SlideBox& place, double height, int id) const;

    const TablePart& part_;
    const tables::TableGrid& grid_;
    const SlideText& text_;
    PartRows rows_;
    std::string header_;  // the rows that stand on every slide
    std::unordered_map<std::size_t, StyleXml> styles_;
};

}  // namespace vexa::frontend
