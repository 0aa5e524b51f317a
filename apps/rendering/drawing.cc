#include "apps/rendering/drawing.h"

#include <algorithm>
#include <utility>

#include "apps/rendering/safe_text.h"

namespace vexa::rendering {

namespace {

using Widths = std::vector<std::size_t>;

template <typename Action>
void forEachSpan(const Drawing& drawing, const Action& action) {
    for (const std::vector<DrawnRow>* rows : {&drawing.header, &drawing.body}) {
        for (const DrawnRow& row : *rows) {
            for (const DrawnSpan& span : row.spans) action(span);
        }
    }
}

/// Widens the columns of a span evenly until its text fits, the last ones first by what does not divide.
void widenFor(Drawing& drawing, const DrawnSpan& span) {
    const std::size_t need = naturalWidth(span.text);
    const std::size_t have = drawing.widthOf(span);
    if (need <= have) return;
    const std::size_t missing = need - have;
    for (std::size_t i = 0; i < span.count; ++i) {
        drawing.widths[span.first + i] += (missing + i) / span.count;
    }
}

/// The largest width, from `narrowestColumn` up, to which columns can be cut so that they take `budget`
/// together.
std::size_t capFor(const Widths& widths, std::size_t count, std::size_t budget) {
    std::size_t cap = std::max(budget, narrowestColumn);
    const auto total = [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < count; ++i) sum += std::min(widths[i], cap);
        return sum;
    };
    while (cap > narrowestColumn && total() > budget) --cap;
    return cap;
}

/// Row labels take half of the terminal at most, without the line behind them, or what the widest data column
/// leaves them.
void limitLabels(Drawing& drawing, std::size_t terminal) {
    if (terminal == 0 || drawing.labelColumns == 0) return;
    const auto data = drawing.widths.begin() + static_cast<std::ptrdiff_t>(drawing.labelColumns);
    const std::size_t widest =
        data == drawing.widths.end() ? 0 : *std::max_element(data, drawing.widths.end());
    const std::size_t left = terminal > widest + columnFrame ? terminal - widest - columnFrame : 0;
    const std::size_t area = std::max(terminal / 2 + 1, left);
    const std::size_t frame = drawing.labelColumns * columnFrame + 1;
    const std::size_t cap = capFor(drawing.widths, drawing.labelColumns, area > frame ? area - frame : 0);
    for (std::size_t i = 0; i < drawing.labelColumns; ++i)
        drawing.widths[i] = std::min(drawing.widths[i], cap);
}

std::size_t labelArea(const Drawing& drawing) {
    std::size_t area = 1;
    for (std::size_t i = 0; i < drawing.labelColumns; ++i) area += drawing.widths[i] + columnFrame;
    return area;
}

void limitData(Drawing& drawing, const WidthLimits& limits) {
    std::size_t most = SIZE_MAX;
    if (limits.mostData) most = std::max(*limits.mostData, limits.leastData.value_or(0));
    if (limits.terminal > 0) {
        const std::size_t taken = labelArea(drawing) + columnFrame;
        most = std::min(most, limits.terminal > taken ? limits.terminal - taken : 0);
    }
    most = std::max(most, narrowestColumn);
    for (std::size_t i = drawing.labelColumns; i < drawing.widths.size(); ++i) {
        drawing.widths[i] = std::min(drawing.widths[i], most);
    }
}

/// The data columns `begin` to `end`, which go into one block.
struct Cut {
    std::size_t begin = 0;
    std::size_t end = 0;

    /// The columns of a span that it takes, counted as in the block.
    [[nodiscard]] DrawnSpan partOf(const DrawnSpan& span, std::size_t labels) const {
        DrawnSpan part = span;
        part.first = labels + std::max(span.first, begin) - begin;
        part.count = std::min(span.first + span.count, end) - std::max(span.first, begin);
        return part;
    }
};

/// The spans of a row that a cut takes, wholly or in part; on request only the latter.
std::vector<DrawnSpan> clippedSpans(const DrawnRow& row, std::size_t labels, const Cut& cut, bool onlyCut) {
    std::vector<DrawnSpan> clipped;
    auto each = std::partition_point(row.spans.begin(), row.spans.end(), [&](const DrawnSpan& span) {
        return span.first < labels || span.first + span.count <= cut.begin;
    });
    for (; each != row.spans.end() && each->first < cut.end; ++each) {
        DrawnSpan part = cut.partOf(*each, labels);
        if (!onlyCut || part.count < each->count) clipped.push_back(std::move(part));
    }
    return clipped;
}

/// The row as it stands in a block: its labels, and what the cut takes of the rest.
DrawnRow clippedRow(const DrawnRow& row, std::size_t labels, const Cut& cut) {
    DrawnRow clipped;
    clipped.ruleAbove = row.ruleAbove;
    const auto data = std::partition_point(row.spans.begin(), row.spans.end(),
                                           [&](const DrawnSpan& span) { return span.first < labels; });
    clipped.spans.assign(row.spans.begin(), data);
    for (DrawnSpan& span : clippedSpans(row, labels, cut, false)) clipped.spans.push_back(std::move(span));
    return clipped;
}

/// A block's columns and header.
Drawing blockHead(const Drawing& drawing, const Cut& cut) {
    Drawing block;
    block.labelColumns = drawing.labelColumns;
    const auto at = [&](std::size_t column) {
        return drawing.widths.begin() + static_cast<std::ptrdiff_t>(column);
    };
    block.widths.assign(at(0), at(drawing.labelColumns));
    block.widths.insert(block.widths.end(), at(cut.begin), at(cut.end));
    for (const DrawnRow& row : drawing.header)
        block.header.push_back(clippedRow(row, drawing.labelColumns, cut));
    return block;
}

/// Gives the header's texts that are cut through as much room as they had; false when the block then gets too
/// wide.
bool widenForCutTexts(const Drawing& drawing, const Cut& cut, std::size_t width, Drawing& block) {
    for (const DrawnRow& row : drawing.header) {
        for (const DrawnSpan& span : clippedSpans(row, drawing.labelColumns, cut, true))
            widenFor(block, span);
    }
    std::size_t total = 1;
    for (const std::size_t each : block.widths) total += each + columnFrame;
    return total <= width;
}

/// How many data columns fit from `begin` on; one always does.
Cut widestCut(const Drawing& drawing, std::size_t begin, std::size_t width) {
    std::size_t taken = labelArea(drawing) + drawing.widths[begin] + columnFrame;
    std::size_t end = begin + 1;
    while (end < drawing.widths.size() && taken + drawing.widths[end] + columnFrame <= width) {
        taken += drawing.widths[end++] + columnFrame;
    }
    return {begin, end};
}

/// The block that begins at a data column. It gives up columns where that keeps its header's texts in one
/// piece; where nothing does, they are wrapped.
Drawing nextBlock(const Drawing& drawing, std::size_t width, Cut& cut) {
    cut = widestCut(drawing, cut.begin, width);
    for (Cut smaller = cut; smaller.end > smaller.begin; --smaller.end) {
        Drawing block = blockHead(drawing, smaller);
        if (!widenForCutTexts(drawing, smaller, width, block)) continue;
        cut = smaller;
        return block;
    }
    return blockHead(drawing, cut);
}

}  // namespace

std::size_t Drawing::widthOf(const DrawnSpan& span) const {
    std::size_t width = columnFrame * (span.count - 1);
    for (std::size_t i = 0; i < span.count; ++i) width += widths[span.first + i];
    return width;
}

void fitColumns(Drawing& drawing, const WidthLimits& limits) {
    std::fill(drawing.widths.begin(), drawing.widths.end(), std::size_t{1});
    const auto data = drawing.widths.begin() + static_cast<std::ptrdiff_t>(drawing.labelColumns);
    std::fill(data, drawing.widths.end(), std::max(limits.leastData.value_or(1), std::size_t{1}));
    forEachSpan(drawing, [&](const DrawnSpan& span) {
        if (span.count == 1) widenFor(drawing, span);
    });
    forEachSpan(drawing, [&](const DrawnSpan& span) {
        if (span.count > 1) widenFor(drawing, span);
    });
    for (std::size_t i = 0; i < std::min(limits.wanted.size(), drawing.widths.size()); ++i) {
        if (limits.wanted[i]) drawing.widths[i] = std::max(*limits.wanted[i], narrowestColumn);
    }
    for (std::size_t i = 0; limits.mostLabel && i < drawing.labelColumns; ++i) {
        drawing.widths[i] = std::min(drawing.widths[i], std::max(*limits.mostLabel, narrowestColumn));
    }
    limitLabels(drawing, limits.terminal);
    limitData(drawing, limits);
}

std::vector<Drawing> splitDrawing(Drawing drawing, std::size_t width) {
    const std::size_t columns = drawing.widths.size();
    std::vector<Drawing> blocks;
    if (width == 0 || drawing.labelColumns == columns ||
        widestCut(drawing, drawing.labelColumns, width).end == columns) {
        blocks.push_back(std::move(drawing));
        return blocks;
    }
    for (Cut cut{drawing.labelColumns, drawing.labelColumns}; cut.begin < columns; cut.begin = cut.end) {
        blocks.push_back(nextBlock(drawing, width, cut));
        for (const DrawnRow& row : drawing.body) {
            blocks.back().body.push_back(clippedRow(row, drawing.labelColumns, cut));
        }
    }
    return blocks;
}

}  // namespace vexa::rendering
