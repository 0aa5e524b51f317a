// A table before it is drawn in a terminal: rows of texts that span columns, and how wide the columns are.
//
// The rows of the body are made where they are needed, one at a time, since there can be very many of them,
// and the same long text in all of their cells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "apps/rendering/text_style.h"

namespace vexa::rendering {

enum class Align : std::uint8_t { left, centre, right };

/// A text over one or more columns.
struct DrawnSpan {
    std::string_view text;  ///< safe text; line feeds break lines
    std::uint32_t first = 0;
    std::uint32_t count = 1;
    TextStyle style;
    Align align = Align::left;
    bool openBelow = false;  ///< no line is drawn between it and what stands below
    bool openLeft = false;   ///< no line is drawn between it and what stands left of it
    bool goesOn = false;     ///< blank, because what stands above it holds for this row too
    bool textStays = false;  ///< the text stands where it stands as long as the drawing does
};

/// Spans that cover all columns from left to right.
struct DrawnRow {
    std::vector<DrawnSpan> spans;
    bool ruleAbove = false;  ///< of a row of the body: a line is drawn between it and the row above
};

/// Data columns from `begin` to `end`, counted with those of the labels.
struct Cut {
    std::size_t begin = 0;
    std::size_t end = 0;

    /// The columns of a span that it takes, counted as in a block that has `labels` columns and these.
    [[nodiscard]] DrawnSpan partOf(const DrawnSpan& span, std::size_t labels) const;
};

/// Makes the rows of a body.
class BodyRows {
  public:
    BodyRows() = default;
    virtual ~BodyRows() = default;
    BodyRows(const BodyRows&) = delete;
    BodyRows& operator=(const BodyRows&) = delete;

    [[nodiscard]] virtual std::size_t count() const = 0;
    /// The labels of a row, and what the cut takes of the rest. `index` is 0 or one more than in the call
    /// before; the texts hold until the next call.
    virtual void make(std::size_t index, const Cut& cut, DrawnRow& row) = 0;
};

struct Drawing {
    std::size_t labelColumns = 0;     ///< how many of the columns hold row labels
    std::vector<std::size_t> widths;  ///< columns of text, without the blanks and lines around it
    std::vector<DrawnRow> header;
    BodyRows* body = nullptr;  ///< outlives the drawing
    Cut cut;                   ///< what it has of the body

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

/// Calls `action` for each block of data columns of the drawing, which fit into `width` columns where one
/// data column does; 0 for no limit.
void forEachBlock(const Drawing& drawing, std::size_t width,
                  const std::function<void(const Drawing&)>& action);

}  // namespace vexa::rendering
