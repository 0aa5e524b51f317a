// The grid of a table as a drawing for the terminal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "apps/rendering/drawing.h"
#include "backend/tables/layout/table_grid.h"

namespace vexa::rendering {

/// Points of a table's column widths that count as one column of the terminal.
constexpr int pointsPerColumn = 6;

/// Texts of cells as they are drawn. What can be shown as it is stays where it is; what must be changed for
/// it is kept here, once for all cells that show it.
class CellTexts {
  public:
    explicit CellTexts(const tables::TableGrid& grid) : grid_(grid) {}

    /// Sets the text of a span: that of the cell, its marks, and behind them blanks up to `marksWidth`
    /// columns.
    void set(const tables::GridCell& cell, std::size_t marksWidth, DrawnSpan& span);
    /// The texts that are kept are not used any more.
    void forget();

  private:
    using Key = std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, std::size_t>;

    [[nodiscard]] bool isShownAsItIs(const tables::GridCell& cell);
    [[nodiscard]] std::string made(const tables::GridCell& cell, std::size_t marksWidth) const;
    std::string_view keep(std::string text);

    const tables::TableGrid& grid_;
    std::unordered_map<std::uint32_t, bool> longTexts_;  // by their begin: whether they are shown as they are
    std::deque<std::string> kept_;
    std::size_t keptCount_ = 0;  // of those, the ones that are in use
    std::map<Key, std::string_view> shared_;
};

/// Column labels stand above their columns, in the lowest of their rows, and row labels in the first of
/// theirs. Numbers stand at the right, and with and without notes below each other; over them the label does,
/// too. A line is drawn where the outermost of several row dimensions begins anew.
class TableDrawing : private BodyRows {
  public:
    /// The grid must outlive the drawing. `terminal` is the width of the terminal, 0 for no limit.
    TableDrawing(const tables::TableGrid& grid, std::size_t terminal);

    /// The widths are set.
    [[nodiscard]] const Drawing& drawing() const { return drawing_; }

  private:
    /// What a column of data holds.
    struct ColumnContent {
        bool numbers = false;
        bool texts = false;
        std::size_t widestMark = 0;  ///< behind its numbers
    };

    [[nodiscard]] std::size_t count() const override { return grid_.rows - grid_.headerRows; }
    void make(std::size_t index, const Cut& cut, DrawnRow& row) override;

    void findContents();
    void findOutermost();
    void drawHeader();
    void cover(std::uint32_t row, std::uint32_t columns);
    [[nodiscard]] bool beginsOutermost(std::uint32_t row) const;
    [[nodiscard]] DrawnSpan headerSpan(const tables::GridCell& cell, std::uint32_t row);
    [[nodiscard]] DrawnSpan labelSpan(const tables::GridCell& cell, std::uint32_t row);
    [[nodiscard]] DrawnSpan dataSpan(const tables::GridCell& cell);
    [[nodiscard]] WidthLimits limitsFor(std::size_t terminal) const;

    const tables::TableGrid& grid_;
    Drawing drawing_;
    CellTexts headerTexts_;
    CellTexts rowTexts_;
    std::vector<ColumnContent> contents_;
    std::vector<const tables::GridCell*> covering_;        // by column; in the body, by column of labels
    tables::DimensionId outermost_ = tables::noDimension;  // of several row dimensions
};

}  // namespace vexa::rendering
