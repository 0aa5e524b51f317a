#include "apps/rendering/drawing.h"

#include <algorithm>
#include <unordered_map>

#include "apps/rendering/safe_text.h"

namespace vexa::rendering {

namespace {

using Widths = std::vector<std::size_t>;

template <typename Action>
void forEachSpan(const Drawing& drawing, const Action& action) {
    for (const DrawnRow& row : drawing.header) {
        for (const DrawnSpan& span : row.spans) action(span);
    }
    DrawnRow row;
    for (std::size_t i = 0; i < drawing.body->count(); ++i) {
        drawing.body->make(i, drawing.cut, row);
        for (const DrawnSpan& span : row.spans) action(span);
    }
}

std::size_t widthOfColumns(const Widths& widths, std::size_t first, std::size_t count) {
    std::size_t width = columnFrame * (count - 1);
    for (std::size_t i = 0; i < count; ++i) width += widths[first + i];
    return width;
}

/// Widths of texts. Of long ones that stay where they are each is looked at once.
class NaturalWidths {
  public:
    std::size_t of(const DrawnSpan& span) {
        constexpr std::size_t longText = 1024;
        if (!span.textStays || span.text.size() <= longText) return naturalWidth(span.text);
        const auto [found, isNew] = known_.try_emplace(span.text.data());
        if (isNew) found->second = naturalWidth(span.text);
        return found->second;
    }

  private:
    std::unordered_map<const char*, std::size_t> known_;
};

/// What a text over several columns needs.
struct BroadNeed {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::size_t width = 0;
};

/// Widens `count` columns evenly until a text of `need` columns fits, the last ones first by what does not
/// divide.
void widenFor(Drawing& drawing, std::size_t first, std::size_t count, std::size_t need) {
    const std::size_t have = widthOfColumns(drawing.widths, first, count);
    if (need <= have) return;
    const std::size_t missing = need - have;
    for (std::size_t i = 0; i < count; ++i) drawing.widths[first + i] += (missing + i) / count;
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

/// The spans of a row that a cut takes, wholly or in part; on request only the latter.
std::vector<DrawnSpan> clippedSpans(const DrawnRow& row, std::size_t labels, const Cut& cut, bool onlyCut) {
    std::vector<DrawnSpan> clipped;
    auto each = std::partition_point(row.spans.begin(), row.spans.end(), [&](const DrawnSpan& span) {
        return span.first < labels || span.first + span.count <= cut.begin;
    });
    for (; each != row.spans.end() && each->first < cut.end; ++each) {
        const DrawnSpan part = cut.partOf(*each, labels);
        if (!onlyCut || part.count < each->count) clipped.push_back(part);
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
    const std::vector<DrawnSpan> rest = clippedSpans(row, labels, cut, false);
    clipped.spans.insert(clipped.spans.end(), rest.begin(), rest.end());
    return clipped;
}

/// A block's columns and header.
Drawing blockHead(const Drawing& drawing, const Cut& cut) {
    Drawing block;
    block.labelColumns = drawing.labelColumns;
    block.body = drawing.body;
    block.cut = cut;
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
            widenFor(block, span.first, span.count, naturalWidth(span.text));
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

DrawnSpan Cut::partOf(const DrawnSpan& span, std::size_t labels) const {
    DrawnSpan part = span;
    const std::size_t first = std::max<std::size_t>(span.first, begin);
    part.first = static_cast<std::uint32_t>(labels + first - begin);
    part.count = static_cast<std::uint32_t>(std::min<std::size_t>(span.first + span.count, end) - first);
    return part;
}

std::size_t Drawing::widthOf(const DrawnSpan& span) const {
    return widthOfColumns(widths, span.first, span.count);
}

void fitColumns(Drawing& drawing, const WidthLimits& limits) {
    std::fill(drawing.widths.begin(), drawing.widths.end(), std::size_t{1});
    const auto data = drawing.widths.begin() + static_cast<std::ptrdiff_t>(drawing.labelColumns);
    std::fill(data, drawing.widths.end(), std::max(limits.leastData.value_or(1), std::size_t{1}));
    NaturalWidths widths;
    std::vector<BroadNeed> broad;
    forEachSpan(drawing, [&](const DrawnSpan& span) {
        if (span.text.empty()) return;
        const std::size_t need = widths.of(span);
        if (span.count == 1) return widenFor(drawing, span.first, 1, need);
        broad.push_back({span.first, span.count, need});
    });
    for (const BroadNeed& each : broad) widenFor(drawing, each.first, each.count, each.width);
    for (std::size_t i = 0; i < std::min(limits.wanted.size(), drawing.widths.size()); ++i) {
        if (limits.wanted[i]) drawing.widths[i] = std::max(*limits.wanted[i], narrowestColumn);
    }
    for (std::size_t i = 0; limits.mostLabel && i < drawing.labelColumns; ++i) {
        drawing.widths[i] = std::min(drawing.widths[i], std::max(*limits.mostLabel, narrowestColumn));
    }
    limitLabels(drawing, limits.terminal);
    limitData(drawing, limits);
}

void forEachBlock(const Drawing& drawing, std::size_t width,
                  const std::function<void(const Drawing&)>& action) {
    const std::size_t columns = drawing.widths.size();
    if (width == 0 || drawing.labelColumns == columns ||
        widestCut(drawing, drawing.labelColumns, width).end == columns) {
        action(drawing);
        return;
    }
    for (Cut cut{drawing.labelColumns, drawing.labelColumns}; cut.begin < columns; cut.begin = cut.end) {
        action(nextBlock(drawing, width, cut));
    }
}

}  // namespace vexa::rendering
