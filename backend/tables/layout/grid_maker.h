// Makes the grid of one layer.
#pragma once

#include <map>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "backend/tables/layout/cell_styles.h"
#include "backend/tables/layout/footnote_letters.h"
#include "backend/tables/layout/prepared_table.h"
#include "backend/tables/layout/table_grid.h"

namespace vexa::tables {

class GridMaker {
  public:
    GridMaker(const PreparedTable& prepared, FootnoteLetters& letters, bool isFirst);

    [[nodiscard]] TableGrid make(Place layer);

  private:
    void makeFrame(Place layer);
    void makeHeader();
    void makeCorner(std::uint32_t row);
    void makeHeaderRow(const DimensionLabels* labels, bool isHeading, std::uint32_t part,
                       std::uint32_t level);
    void makeBodyRow(std::uint32_t row, Place layer);
    void makeRowLabels(std::uint32_t row);
    void makeData(std::uint32_t row, std::uint32_t column, Place place);
    void makeLabel(const DimensionLabels& labels, CategoryId category, std::uint32_t part, GridCell& cell);
    void alignDataTexts();
    void setDataText(const TableCell& data, GridCell& cell);
    void setText(std::string_view text, GridCell& cell);
    void setMarks(const std::vector<FootnoteId>& footnotes, GridCell& cell);
    GridCell& add(GridRole role, std::uint32_t row, std::uint32_t column);
    [[nodiscard]] DisplayFormat formatAt(const GridCell& cell, const TableCell& data) const;
    [[nodiscard]] std::string layerText(Place layer);
    [[nodiscard]] std::vector<std::string> marksOf(const std::vector<FootnoteId>& footnotes);
    void makeFootnotes();

    const PreparedTable& prepared_;
    FootnoteLetters& letters_;
    bool isFirst_;           // of the layers that one layout makes
    bool hasTexts_ = false;  // among the data
    TableGrid grid_;
    CellStyles styles_;
    DisplayFormat layerFormat_;
    std::vector<std::uint32_t> newLevels_;  // by data column: the outermost level that is new
    std::vector<std::size_t> openLabels_;   // of the row before: its row labels, from the outermost on
    std::unordered_map<const char*, std::uint32_t> longTexts_;  // where they stand in the grid's texts
    std::map<std::vector<FootnoteId>, std::uint32_t> marks_;
    std::vector<bool> used_;          // by footnote: this grid refers to it
    std::vector<FootnoteId> listed_;  // those that this grid lists with their letters
};

}  // namespace vexa::tables
