#include "backend/pivot/rendering/grid_writer.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "backend/text/text_width.h"

namespace vexa::rendering {

namespace {

// A place where lines meet is the sum of the directions in which they go. A line that would begin there out
// of nothing, going down only, begins with the text below instead.
constexpr unsigned up = 1;
constexpr unsigned down = 2;
constexpr unsigned left = 4;
constexpr unsigned right = 8;

using Corners = std::array<std::string_view, 16>;
constexpr Corners unicodeCorners = {" ", "│", " ", "│", "─", "┘", "┐", "┤",
                                    "─", "└", "┌", "├", "─", "┴", "┬", "┼"};
constexpr Corners asciiCorners = {" ", "|", " ", "|", "-", "+", "+", "+",
                                  "-", "+", "+", "+", "-", "+", "+", "+"};

class Writer {
  public:
    Writer(const Grid& grid, const RenderOptions& options, std::string& text)
        : grid_(grid),
          options_(options),
          text_(text),
          corners_(options.unicode ? unicodeCorners : asciiCorners) {}

    void write();

  private:
    void writeRow(const GridRow& row);
    void writeLine(const GridSpan& span, const std::vector<std::string>& lines, std::size_t line);
    void writeRule(const GridRow* above, const GridRow* below);

    const Grid& grid_;
    const RenderOptions& options_;
    std::string& text_;
    const Corners& corners_;
};

bool isOneLine(const GridSpan& span, std::size_t width) {
    return span.text.find('\n') == std::string::npos && displayWidth(span.text) <= width;
}

std::vector<std::string> linesOf(const GridSpan& span, std::size_t width) {
    if (isOneLine(span, width)) return {span.text};
    return wrapText(span.text, width);
}

/// Whether one cannot see from the labels where a row of the body ends, because one of them takes several
/// lines.
bool needsRules(const Grid& grid) {
    const auto isBroken = [&](const GridSpan& span) {
        return span.first < grid.labelColumns && !isOneLine(span, grid.widthOf(span));
    };
    return std::any_of(grid.body.begin(), grid.body.end(), [&](const GridRow& row) {
        return std::any_of(row.spans.begin(), row.spans.end(), isBroken);
    });
}

/// For every boundary between columns, and both ends, whether the row has a line there.
std::vector<bool> boundariesOf(const GridRow* row, std::size_t columns) {
    std::vector<bool> boundaries(columns + 1, false);
    if (row == nullptr) return boundaries;
    for (const GridSpan& span : row->spans) {
        boundaries[span.first] = !span.openLeft;
        boundaries[span.first + span.count] = true;
    }
    return boundaries;
}

/// For every column, whether a line is drawn between two rows.
std::vector<bool> ruledColumns(const GridRow* above, const GridRow* below, std::size_t columns) {
    std::vector<bool> ruled(columns, true);
    if (above == nullptr || below == nullptr) return ruled;
    for (const GridSpan& span : above->spans) {
        for (std::size_t i = 0; i < span.count; ++i) ruled[span.first + i] = !span.openBelow;
    }
    for (const GridSpan& span : below->spans) {
        for (std::size_t i = 0; span.goesOn && i < span.count; ++i) ruled[span.first + i] = false;
    }
    return ruled;
}

/// A row of the header that only leaves room below groups, none of which is in this block.
bool isBlank(const GridRow& row) {
    return std::all_of(row.spans.begin(), row.spans.end(),
                       [](const GridSpan& span) { return span.openBelow && span.text.empty(); });
}

void Writer::write() {
    const GridRow* above = nullptr;
    for (const GridRow& row : grid_.header) {
        if (isBlank(row)) continue;
        writeRule(above, &row);
        writeRow(row);
        above = &row;
    }
    const bool allRules = needsRules(grid_);
    for (const GridRow& row : grid_.body) {
        if (&row == &grid_.body.front() || row.ruleAbove || allRules) writeRule(above, &row);
        writeRow(row);
        above = &row;
    }
    writeRule(above, nullptr);
}

void Writer::writeRow(const GridRow& row) {
    std::vector<std::vector<std::string>> lines;
    lines.reserve(row.spans.size());
    std::size_t height = 1;
    for (const GridSpan& span : row.spans) {
        lines.push_back(linesOf(span, grid_.widthOf(span)));
        height = std::max(height, lines.back().size());
    }
    for (std::size_t line = 0; line < height; ++line) {
        for (std::size_t i = 0; i < row.spans.size(); ++i) writeLine(row.spans[i], lines[i], line);
        text_ += corners_[up | down];
        text_ += '\n';
    }
}

void Writer::writeLine(const GridSpan& span, const std::vector<std::string>& lines, std::size_t line) {
    static const std::string blank;
    const std::string& text = line < lines.size() ? lines[line] : blank;
    const std::size_t width = grid_.widthOf(span);
    const std::size_t used = displayWidth(text);
    const std::size_t free = width > used ? width - used : 0;
    std::size_t before = 0;
    if (span.align == Align::right) before = free;
    if (span.align == Align::centre) before = free / 2;
    text_ += corners_[span.openLeft ? 0 : up | down];
    text_.append(1 + before, ' ');
    text_ += span.bold ? emphasized(text, options_) : text;
    text_.append(1 + free - before, ' ');
}

void Writer::writeRule(const GridRow* above, const GridRow* below) {
    const std::size_t columns = grid_.widths.size();
    const std::vector<bool> upper = boundariesOf(above, columns);
    const std::vector<bool> lower = boundariesOf(below, columns);
    const std::vector<bool> ruled = ruledColumns(above, below, columns);
    for (std::size_t i = 0; i <= columns; ++i) {
        unsigned corner = 0;
        if (upper[i]) corner |= up;
        if (lower[i]) corner |= down;
        if (i > 0 && ruled[i - 1]) corner |= left;
        if (i < columns && ruled[i]) corner |= right;
        text_ += corners_[corner];
        if (i == columns) break;
        for (std::size_t n = 0; n < grid_.widths[i] + columnFrame - 1; ++n) {
            text_ += ruled[i] ? corners_[left | right] : corners_[0];
        }
    }
    text_ += '\n';
}

}  // namespace

void drawGrid(const Grid& grid, const RenderOptions& options, std::string& text) {
    Writer(grid, options, text).write();
}

std::string emphasized(const std::string& text, const RenderOptions& options) {
    if (!options.bold || text.empty()) return text;
    return "\x1b[1m" + text + "\x1b[0m";
}

}  // namespace vexa::rendering
