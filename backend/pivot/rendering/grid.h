// A drawing of a table before it is drawn: rows of texts that span columns, and how wide the columns are.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vexa::rendering {

enum class Align { left, centre, right };

/// A text over one or more columns.
struct GridSpan {
    std::string text;  ///< safe text; line feeds break lines
    std::size_t first = 0;
    std::size_t count = 1;
    Align align = Align::left;
    bool bold = false;
    bool openBelow = false;  ///< no line is drawn between it and what stands below
    bool openLeft = false;   ///< no line is drawn between it and what stands left of it
    bool goesOn = false;     ///< blank, because what stands above it holds for this row too
};

/// Spans that cover all columns from left to right.
struct GridRow {
    std::vector<GridSpan> spans;
    bool ruleAbove = false;  ///< of a row of the body: a line is drawn between it and the row above
};

struct Grid {
    std::size_t labelColumns = 0;     ///< how many of the columns hold row labels
    std::vector<std::size_t> widths;  ///< columns of text, without the blanks and lines around it
    std::vector<GridRow> header;
    std::vector<GridRow> body;

    /// Columns of text that a span has.
    [[nodiscard]] std::size_t widthOf(const GridSpan& span) const;
};

/// Blanks and line that every column adds to its text.
constexpr std::size_t columnFrame = 3;

/// What limits the columns, in columns of the terminal.
struct WidthLimits {
    std::optional<std::size_t> leastData;
    std::optional<std::size_t> mostData;
    std::size_t terminal = 0;  ///< 0 for none
};

/// Sets the grid's widths from its texts and the limits.
void fitColumns(Grid& grid, const WidthLimits& limits);

/// The grid in blocks of data columns that each fit into `width` columns where one data column does; 0 for no
/// limit.
[[nodiscard]] std::vector<Grid> splitGrid(Grid grid, std::size_t width);

}  // namespace vexa::rendering
