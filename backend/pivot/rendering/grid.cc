#include "backend/pivot/rendering/grid.h"

#include <algorithm>
#include <utility>

#include "backend/pivot/rendering/safe_text.h"
#include "backend/pivot/text_rendering.h"

namespace vexa::rendering {

namespace {

using Widths = std::vector<std::size_t>;

template <typename Action>
void forEachSpan(const Grid& grid, const Action& action) {
    for (const std::vector<GridRow>* rows : {&grid.header, &grid.body}) {
        for (const GridRow& row : *rows) {
            for (const GridSpan& span : row.spans) action(span);
        }
    }
}

/// Widens the columns of a span evenly until its text fits, the last ones first by what does not divide.
void widenFor(Grid& grid, const GridSpan& span) {
    const std::size_t need = naturalWidth(span.text);
    const std::size_t have = grid.widthOf(span);
    if (need <= have) return;
    const std::size_t missing = need - have;
    for (std::size_t i = 0; i < span.count; ++i) {
        grid.widths[span.first + i] += (missing + i) / span.count;
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
void limitLabels(Grid& grid, std::size_t terminal) {
    if (terminal == 0 || grid.labelColumns == 0) return;
    const auto data = grid.widths.begin() + static_cast<std::ptrdiff_t>(grid.labelColumns);
    const std::size_t widest = data == grid.widths.end() ? 0 : *std::max_element(data, grid.widths.end());
    const std::size_t left = terminal > widest + columnFrame ? terminal - widest - columnFrame : 0;
    const std::size_t area = std::max(terminal / 2 + 1, left);
    const std::size_t frame = grid.labelColumns * columnFrame + 1;
    const std::size_t cap = capFor(grid.widths, grid.labelColumns, area > frame ? area - frame : 0);
    for (std::size_t i = 0; i < grid.labelColumns; ++i) grid.widths[i] = std::min(grid.widths[i], cap);
}

std::size_t labelArea(const Grid& grid) {
    std::size_t area = 1;
    for (std::size_t i = 0; i < grid.labelColumns; ++i) area += grid.widths[i] + columnFrame;
    return area;
}

void limitData(Grid& grid, const WidthLimits& limits) {
    std::size_t most = SIZE_MAX;
    if (limits.mostData) most = std::max(*limits.mostData, limits.leastData.value_or(0));
    if (limits.terminal > 0) {
        const std::size_t taken = labelArea(grid) + columnFrame;
        most = std::min(most, limits.terminal > taken ? limits.terminal - taken : 0);
    }
    most = std::max(most, narrowestColumn);
    for (std::size_t i = grid.labelColumns; i < grid.widths.size(); ++i) {
        grid.widths[i] = std::min(grid.widths[i], most);
    }
}

/// The data columns `begin` to `end`, which go into one block.
struct Cut {
    std::size_t begin = 0;
    std::size_t end = 0;

    /// The columns of a span that it takes, counted as in the block.
    [[nodiscard]] GridSpan partOf(const GridSpan& span, std::size_t labels) const {
        GridSpan part = span;
        part.first = labels + std::max(span.first, begin) - begin;
        part.count = std::min(span.first + span.count, end) - std::max(span.first, begin);
        return part;
    }
};

/// The spans of a row that a cut takes, wholly or in part; on request only the latter.
std::vector<GridSpan> clippedSpans(const GridRow& row, std::size_t labels, const Cut& cut, bool onlyCut) {
    std::vector<GridSpan> clipped;
    auto each = std::partition_point(row.spans.begin(), row.spans.end(), [&](const GridSpan& span) {
        return span.first < labels || span.first + span.count <= cut.begin;
    });
    for (; each != row.spans.end() && each->first < cut.end; ++each) {
        GridSpan part = cut.partOf(*each, labels);
        if (!onlyCut || part.count < each->count) clipped.push_back(std::move(part));
    }
    return clipped;
}

/// The row as it stands in a block: its labels, and what the cut takes of the rest.
GridRow clippedRow(const GridRow& row, std::size_t labels, const Cut& cut) {
    GridRow clipped;
    clipped.ruleAbove = row.ruleAbove;
    const auto data = std::partition_point(row.spans.begin(), row.spans.end(),
                                           [&](const GridSpan& span) { return span.first < labels; });
    clipped.spans.assign(row.spans.begin(), data);
    for (GridSpan& span : clippedSpans(row, labels, cut, false)) clipped.spans.push_back(std::move(span));
    return clipped;
}

/// A block's columns and header.
Grid blockHead(const Grid& grid, const Cut& cut) {
    Grid block;
    block.labelColumns = grid.labelColumns;
    const auto at = [&](std::size_t column) {
        return grid.widths.begin() + static_cast<std::ptrdiff_t>(column);
    };
    block.widths.assign(at(0), at(grid.labelColumns));
    block.widths.insert(block.widths.end(), at(cut.begin), at(cut.end));
    for (const GridRow& row : grid.header) block.header.push_back(clippedRow(row, grid.labelColumns, cut));
    return block;
}

/// Gives the header's texts that are cut through as much room as they had; false when the block then gets too
/// wide.
bool widenForCutTexts(const Grid& grid, const Cut& cut, std::size_t width, Grid& block) {
    for (const GridRow& row : grid.header) {
        for (const GridSpan& span : clippedSpans(row, grid.labelColumns, cut, true)) widenFor(block, span);
    }
    std::size_t total = 1;
    for (const std::size_t each : block.widths) total += each + columnFrame;
    return total <= width;
}

/// How many data columns fit from `begin` on; one always does.
Cut widestCut(const Grid& grid, std::size_t begin, std::size_t width) {
    std::size_t taken = labelArea(grid) + grid.widths[begin] + columnFrame;
    std::size_t end = begin + 1;
    while (end < grid.widths.size() && taken + grid.widths[end] + columnFrame <= width) {
        taken += grid.widths[end++] + columnFrame;
    }
    return {begin, end};
}

/// The block that begins at a data column. It gives up columns where that keeps its header's texts in one
/// piece; where nothing does, they are wrapped.
Grid nextBlock(const Grid& grid, std::size_t width, Cut& cut) {
    cut = widestCut(grid, cut.begin, width);
    for (Cut smaller = cut; smaller.end > smaller.begin; --smaller.end) {
        Grid block = blockHead(grid, smaller);
        if (!widenForCutTexts(grid, smaller, width, block)) continue;
        cut = smaller;
        return block;
    }
    return blockHead(grid, cut);
}

}  // namespace

std::size_t Grid::widthOf(const GridSpan& span) const {
    std::size_t width = columnFrame * (span.count - 1);
    for (std::size_t i = 0; i < span.count; ++i) width += widths[span.first + i];
    return width;
}

void fitColumns(Grid& grid, const WidthLimits& limits) {
    std::fill(grid.widths.begin(), grid.widths.end(), std::size_t{1});
    const auto data = grid.widths.begin() + static_cast<std::ptrdiff_t>(grid.labelColumns);
    std::fill(data, grid.widths.end(), std::max(limits.leastData.value_or(1), std::size_t{1}));
    forEachSpan(grid, [&](const GridSpan& span) {
        if (span.count == 1) widenFor(grid, span);
    });
    forEachSpan(grid, [&](const GridSpan& span) {
        if (span.count > 1) widenFor(grid, span);
    });
    limitLabels(grid, limits.terminal);
    limitData(grid, limits);
}

std::vector<Grid> splitGrid(Grid grid, std::size_t width) {
    const std::size_t columns = grid.widths.size();
    std::vector<Grid> blocks;
    if (width == 0 || grid.labelColumns == columns ||
        widestCut(grid, grid.labelColumns, width).end == columns) {
        blocks.push_back(std::move(grid));
        return blocks;
    }
    for (Cut cut{grid.labelColumns, grid.labelColumns}; cut.begin < columns; cut.begin = cut.end) {
        blocks.push_back(nextBlock(grid, width, cut));
        for (const GridRow& row : grid.body) {
            blocks.back().body.push_back(clippedRow(row, grid.labelColumns, cut));
        }
    }
    return blocks;
}

}  // namespace vexa::rendering
