// A table before it is drawn in a terminal: rows of texts that span columns, and how wide the columns are.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "apps/rendering/text_style.h"

namespace vexa::rendering {

enum class Align { left, centre, right };

/// A text over one or more columns.
struct DrawnSpan {
    std::string text;  ///< safe text; line feeds break lines
    std::size_t first = 0;
    std::size_t count = 1;
    Align align = Align::left;
    TextStyle style;
    bool openBelow = false;  ///< no line is drawn between it and what stands below
    bool openLeft = false;   ///< no line is drawn between it and what stands left of it
    bool goesOn = false;     ///< blank, because what stands above it holds for this row too
};

/// Spans that cover all columns from left to right.
struct DrawnRow {
    std::vector<DrawnSpan> spans;
    bool ruleAbove = false;  ///< of a row of the body: a line is drawn between it and the row above
};

struct Drawing {
    std::size_t labelColumns = 0;     ///< how many of the columns hold row labels
    std::vector<std::size_t> widths;  ///< columns of text, without the blanks and lines around it
    std::vector<DrawnRow> header;
    std::vector<DrawnRow> body;

    /// Columns of text that a span has.
    [[nodiscard]] std::size_t widthOf(const DrawnSpan& span) const;
};

/// Blanks and line that every column adds to its text.
constexpr std::size_t columnFrame = 3;

/// No limit makes a column narrower than so many columns of text: below that nothing can be read.
constexpr std::size_t narrowestColumn = 6;

/// What limits the columns, in columns of the terminal.
struct WidthLimits {
    std::optional<std::size_t> leastData;
    std::optional<std::size_t> mostData;
    std::optional<std::size_t> mostLabel;
    std::vector<std::optional<std::size_t>>
        wanted;                ///< of single columns; others stand as their texts want it
    std::size_t terminal = 0;  ///< 0 for none
};

/// Sets the drawing's widths from its texts and the limits.
void fitColumns(Drawing& drawing, const WidthLimits& limits);

/// The drawing in blocks of data columns that each fit into `width` columns where one data column does; 0 for
/// no limit.
[[nodiscard]] std::vector<Drawing> splitDrawing(Drawing drawing, std::size_t width);

}  // namespace vexa::rendering
