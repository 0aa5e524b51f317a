// How wide the columns and how high the rows of a table are on pages of a width, and which columns stand
// beside each other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/pdf/text_shaper.h"

namespace vexa::frontend::pdf {

/// Columns of data that stand beside each other, behind the row labels: from `begin` up to before `end`.
struct ColumnRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

/// Everything in points. Grid and shaper must outlive it.
class TableMeasures {
  public:
    TableMeasures(const tables::TableGrid& grid, TextShaper& shaper, double pageWidth);

    [[nodiscard]] double columnWidth(std::size_t column) const { return widths_[column]; }
    [[nodiscard]] double rowHeight(std::size_t row) const { return heights_[row]; }
    /// Of the labels together.
    [[nodiscard]] double labelWidth() const { return sum(0, grid_.labelColumns); }
    [[nodiscard]] double width(const ColumnRange& range) const {
        return labelWidth() + sum(range.begin, range.end);
    }
    /// Never empty.
    [[nodiscard]] const std::vector<ColumnRange>& ranges() const { return ranges_; }
    /// What the row labels want is more than half of the page's width.
    [[nodiscard]] bool hasLongLabels() const { return hasLongLabels_; }

    [[nodiscard]] TextStyleId textStyle(tables::ShownStyleId style) const { return styles_[style]; }
    /// The style of the marks behind a text of that style.
    [[nodiscard]] TextStyleId markStyle(tables::ShownStyleId style) const { return markStyles_[style]; }
    /// "a,b": the width of a cell's marks, with what keeps them apart from the text; 0 without marks.
    [[nodiscard]] double markWidth(const tables::GridCell& cell);
    /// What of that is taken from the text's room. Marks of a number on the right stand in the cell's margin,
    /// as far as it goes, so that numbers stand below each other with marks and without.
    [[nodiscard]] double markRoom(const tables::GridCell& cell);
    [[nodiscard]] double fontSize(tables::ShownStyleId style) const { return grid_.styles[style].look.size; }

  private:
    struct Natural {
        float width = 0;   ///< on one line, with margins
        float height = 0;  ///< with as many lines as it has itself, with margins
    };
    void setStyles();
    void measureCells();
    void setWidths(double pageWidth);
    void fitWidths(const std::vector<double>& wished, double pageWidth);
    void split(double pageWidth);
    [[nodiscard]] std::vector<bool> groupBegins() const;
    [[nodiscard]] std::vector<double> wishedWidths(double mostLabel) const;
    [[nodiscard]] std::vector<double> leastWidths();
    void widenForSpans(std::vector<double>& widths);
    void setHeights();
    [[nodiscard]] double leastWidth(const tables::GridCell& cell);
    [[nodiscard]] double heightOf(const tables::GridCell& cell, const Natural& natural);
    [[nodiscard]] double sum(std::size_t begin, std::size_t end) const;
    [[nodiscard]] bool isLabelColumn(std::size_t column) const { return column < grid_.labelColumns; }

    const tables::TableGrid& grid_;
    TextShaper& shaper_;
    std::vector<TextStyleId> styles_;
    std::vector<TextStyleId> markStyles_;
    std::vector<Natural> natural_;  // by cell
    std::vector<double> widths_;
    std::vector<double> heights_;
    std::vector<ColumnRange> ranges_;
    bool hasLongLabels_ = false;
};

/// How much smaller marks are than the text that they stand behind.
inline constexpr double markScale = 0.7;

/// The marks of a cell as they stand there: "a,b".
[[nodiscard]] std::string marksText(const std::vector<std::string>& marks);

}  // namespace vexa::frontend::pdf
