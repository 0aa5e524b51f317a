// Draws parts of a table, one on each page that it goes over, and says what they are in the structure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/pdf/page_flow.h"
#include "frontend/export/pdf/table_lines.h"
#include "frontend/export/pdf/table_measures.h"

namespace vexa::frontend::pdf {

/// A part: rows of the header, rows behind it, and columns of data behind those of the labels.
struct TablePart {
    ColumnRange columns;
    bool isFirstRange = false;
    bool isLastRange = false;
    std::uint32_t headerRows = 0;
    std::uint32_t firstRow = 0;
    std::uint32_t endRow = 0;
    double cutHeight = 0;  ///< of its only row, when that is higher than a page; 0 for whole rows
};

/// A reference to a footnote that stands on the page.
struct MarkPlace {
    std::string mark;
    PdfObject link = 0;
    PagePlace place;
};

class TablePainter {
  public:
    TablePainter(const tables::TableGrid& grid, TableMeasures& measures, TextShaper& shaper,
                 StructureTree& structure, PageFlow& flow);

    /// The element of the table, for its caption.
    [[nodiscard]] StructureElement& element() { return table_; }
    /// Draws the part at the place of the flow, which has reserved room, and advances it. False when a cell
    /// of a row that is cut has more to show.
    bool draw(const TablePart& part);
    void finish();

    /// References of the parts drawn since the last call.
    [[nodiscard]] std::vector<MarkPlace> takeMarks() { return std::exchange(marks_, {}); }
    /// The cells that a part shows, in their order; those that begin before its first row too.
    [[nodiscard]] std::vector<SeenCell> cellsOf(const TablePart& part) const;

  private:
    /// Whether a text may be left to be gone on with.
    enum class Stop { never, anywhere, behindOneLine };
    /// A cell whose text goes on where the next part begins.
    struct OpenCell {
        StructureElement element;
        std::size_t linesDone = 0;
    };
    void findCovers();
    void place(const TablePart& part);
    void see(std::size_t index, const TablePart& part, std::vector<SeenCell>& seen) const;
    [[nodiscard]] std::uint32_t position(std::uint32_t row, const TablePart& part) const;
    void drawCell(const SeenCell& seen, const TablePart& part);
    /// Draws lines of the text from `first` on; gives how many are drawn then.
    std::size_t drawText(const tables::GridCell& cell, const Box& box, std::size_t first, Stop stop,
                         StructureElement* element);
    void drawMarks(const tables::GridCell& cell, double x, double baseline, StructureElement* element);
    [[nodiscard]] StructureElement& rowElement(std::uint32_t row);
    [[nodiscard]] StructureElement openCell(const tables::GridCell& cell, std::size_t index);
    void setHeaders(const tables::GridCell& cell, StructureElement& element) const;
    void closeRows(const TablePart& part);

    const tables::TableGrid& grid_;
    TableMeasures& measures_;
    TextShaper& shaper_;
    StructureTree& structure_;
    PageFlow& flow_;
    StructureElement table_;
    StructureElement head_;
    StructureElement body_;
    std::map<std::uint32_t, StructureElement> rows_;  // open ones
    std::vector<bool> isTagged_;                      // by cell
    std::vector<std::uint32_t> covers_;               // by row, then column of labels: the cell there
    bool isNested_ = false;                           // labels stand over or before several others
    std::vector<std::string> columnHeaders_;          // by column: names of its labels, in brackets
    std::vector<std::string> rowHeaders_;             // by row
    std::map<std::size_t, OpenCell> open_;            // by cell
    std::vector<double> columnEdges_;                 // of the part
    std::vector<double> rowEdges_;
    std::vector<MarkPlace> marks_;
};

}  // namespace vexa::frontend::pdf
