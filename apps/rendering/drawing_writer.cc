#include "apps/rendering/drawing_writer.h"

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
    Writer(const Drawing& drawing, const RenderOptions& options, std::string& text)
        : drawing_(drawing),
          options_(options),
          text_(text),
          corners_(options.unicode ? unicodeCorners : asciiCorners) {}

    void write();

  private:
    void writeRow(const DrawnRow& row);
    void writeLine(const DrawnSpan& span, const std::vector<std::string>& lines, std::size_t line);
    void writeRule(const DrawnRow* above, const DrawnRow* below);

    const Drawing& drawing_;
    const RenderOptions& options_;
    std::string& text_;
    const Corners& corners_;
};

bool isOneLine(const DrawnSpan& span, std::size_t width) {
    return span.text.find('\n') == std::string::npos && displayWidth(span.text) <= width;
}

std::vector<std::string> linesOf(const DrawnSpan& span, std::size_t width) {
    if (isOneLine(span, width)) return {span.text};
    return wrapText(span.text, width);
}

/// Whether one cannot see from the labels where a row of the body ends, because one of them takes several
/// lines.
bool needsRules(const Drawing& drawing) {
    const auto isBroken = [&](const DrawnSpan& span) {
        return span.first < drawing.labelColumns && !isOneLine(span, drawing.widthOf(span));
    };
    return std::any_of(drawing.body.begin(), drawing.body.end(), [&](const DrawnRow& row) {
        return std::any_of(row.spans.begin(), row.spans.end(), isBroken);
    });
}

/// For every boundary between columns, and both ends, whether the row has a line there.
std::vector<bool> boundariesOf(const DrawnRow* row, std::size_t columns) {
    std::vector<bool> boundaries(columns + 1, false);
    if (row == nullptr) return boundaries;
    for (const DrawnSpan& span : row->spans) {
        boundaries[span.first] = !span.openLeft;
        boundaries[span.first + span.count] = true;
    }
    return boundaries;
}

/// For every column, whether a line is drawn between two rows.
std::vector<bool> ruledColumns(const DrawnRow* above, const DrawnRow* below, std::size_t columns) {
    std::vector<bool> ruled(columns, true);
    if (above == nullptr || below == nullptr) return ruled;
    for (const DrawnSpan& span : above->spans) {
        for (std::size_t i = 0; i < span.count; ++i) ruled[span.first + i] = !span.openBelow;
    }
    for (const DrawnSpan& span : below->spans) {
        for (std::size_t i = 0; span.goesOn && i < span.count; ++i) ruled[span.first + i] = false;
    }
    return ruled;
}

/// A row of the header that only leaves room below groups, none of which is in this block.
bool isBlank(const DrawnRow& row) {
    return std::all_of(row.spans.begin(), row.spans.end(),
                       [](const DrawnSpan& span) { return span.openBelow && span.text.empty(); });
}

void Writer::write() {
    const DrawnRow* above = nullptr;
    for (const DrawnRow& row : drawing_.header) {
        if (isBlank(row)) continue;
        writeRule(above, &row);
        writeRow(row);
        above = &row;
    }
    const bool allRules = needsRules(drawing_);
    for (const DrawnRow& row : drawing_.body) {
        if (&row == &drawing_.body.front() || row.ruleAbove || allRules) writeRule(above, &row);
        writeRow(row);
        above = &row;
    }
    writeRule(above, nullptr);
}

void Writer::writeRow(const DrawnRow& row) {
    std::vector<std::vector<std::string>> lines;
    lines.reserve(row.spans.size());
    std::size_t height = 1;
    for (const DrawnSpan& span : row.spans) {
        lines.push_back(linesOf(span, drawing_.widthOf(span)));
        height = std::max(height, lines.back().size());
    }
    for (std::size_t line = 0; line < height; ++line) {
        for (std::size_t i = 0; i < row.spans.size(); ++i) writeLine(row.spans[i], lines[i], line);
        text_ += corners_[up | down];
        text_ += '\n';
    }
}

void Writer::writeLine(const DrawnSpan& span, const std::vector<std::string>& lines, std::size_t line) {
    static const std::string blank;
    const std::string& text = line < lines.size() ? lines[line] : blank;
    const std::size_t width = drawing_.widthOf(span);
    const std::size_t used = displayWidth(text);
    const std::size_t free = width > used ? width - used : 0;
    std::size_t before = 0;
    if (span.align == Align::right) before = free;
    if (span.align == Align::centre) before = free / 2;
    text_ += corners_[span.openLeft ? 0 : up | down];
    // A background fills the cell.
    const bool fills = span.style.background && options_.colors != ColorDepth::none;
    const std::string blanksBefore(1 + before, ' ');
    const std::string blanksBehind(1 + free - before, ' ');
    if (fills) {
        text_ += styled(blanksBefore + text + blanksBehind, span.style, options_);
    } else {
        text_ += blanksBefore;
        text_ += styled(text, span.style, options_);
        text_ += blanksBehind;
    }
}

void Writer::writeRule(const DrawnRow* above, const DrawnRow* below) {
    const std::size_t columns = drawing_.widths.size();
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
        for (std::size_t n = 0; n < drawing_.widths[i] + columnFrame - 1; ++n) {
            text_ += ruled[i] ? corners_[left | right] : corners_[0];
        }
    }
    text_ += '\n';
}

}  // namespace

void writeDrawing(const Drawing& drawing, const RenderOptions& options, std::string& text) {
    Writer(drawing, options, text).write();
}

}  // namespace vexa::rendering
