#include "apps/rendering/drawing_writer.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
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

/// What is handed out at one time.
constexpr std::size_t pieceBytes = 65'536;

bool isOneLine(const DrawnSpan& span, std::size_t width) {
    return span.text.find('\n') == std::string_view::npos && displayWidth(span.text) <= width;
}

/// The lines of the texts of one row. A text that several spans have is wrapped once for each width.
class RowLines {
  public:
    void set(const Drawing& drawing, const DrawnRow& row);
    [[nodiscard]] std::size_t height() const { return height_; }
    /// Line `line` of the text of span `index`; empty behind the last one.
    [[nodiscard]] std::string_view line(const DrawnRow& row, std::size_t index, std::size_t line) const {
        const std::vector<std::string>* const lines = ofSpans_[index];
        if (lines == nullptr) return line == 0 ? row.spans[index].text : std::string_view();
        return line < lines->size() ? std::string_view((*lines)[line]) : std::string_view();
    }

  private:
    using Key = std::tuple<const char*, std::size_t, std::size_t>;  // text and width

    std::size_t height_ = 1;
    std::map<Key, std::vector<std::string>> wrapped_;
    std::vector<const std::vector<std::string>*> ofSpans_;  // null for a text of one line
};

void RowLines::set(const Drawing& drawing, const DrawnRow& row) {
    height_ = 1;
    wrapped_.clear();
    ofSpans_.assign(row.spans.size(), nullptr);
    for (std::size_t i = 0; i < row.spans.size(); ++i) {
        const DrawnSpan& span = row.spans[i];
        const std::size_t width = drawing.widthOf(span);
        if (isOneLine(span, width)) continue;
        const auto [found, isNew] = wrapped_.try_emplace({span.text.data(), span.text.size(), width});
        if (isNew) found->second = wrapText(span.text, width);
        ofSpans_[i] = &found->second;
        height_ = std::max(height_, found->second.size());
    }
}

class Writer {
  public:
    Writer(const Drawing& drawing, const RenderOptions& options, const TextSink& sink)
        : drawing_(drawing),
          options_(options),
          sink_(sink),
          corners_(options.unicode ? unicodeCorners : asciiCorners) {}

    void write();

  private:
    void writeHeader();
    void writeBody();
    void writeRow(const DrawnRow& row);
    void writeLine(const DrawnSpan& span, std::string_view text);
    void appendBlanks(std::size_t count);
    void writeRule(const DrawnRow* above, const DrawnRow* below);
    void handOutIfLong() {
        if (text_.size() < pieceBytes) return;
        sink_(text_);
        text_.clear();
    }

    const Drawing& drawing_;
    const RenderOptions& options_;
    const TextSink& sink_;
    const Corners& corners_;
    std::string text_;  // what is not handed out yet
    RowLines lines_;
    DrawnRow lastRow_;
    const DrawnRow* above_ = nullptr;  // the row written before
};

/// Whether one cannot see from the labels where a row of the body ends, because one of them takes several
/// lines.
bool needsRules(const Drawing& drawing) {
    const Cut onlyLabels{drawing.cut.begin, drawing.cut.begin};
    DrawnRow row;
    for (std::size_t i = 0; i < drawing.body->count() && drawing.labelColumns > 0; ++i) {
        drawing.body->make(i, onlyLabels, row);
        const bool isBroken = std::any_of(row.spans.begin(), row.spans.end(), [&](const DrawnSpan& span) {
            return !isOneLine(span, drawing.widthOf(span));
        });
        if (isBroken) return true;
    }
    return false;
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
    writeHeader();
    writeBody();
    writeRule(above_, nullptr);
    sink_(text_);
}

void Writer::writeHeader() {
    for (const DrawnRow& row : drawing_.header) {
        if (isBlank(row)) continue;
        writeRule(above_, &row);
        writeRow(row);
        above_ = &row;
    }
}

void Writer::writeBody() {
    const bool allRules = needsRules(drawing_);
    DrawnRow row;
    for (std::size_t i = 0; i < drawing_.body->count(); ++i) {
        drawing_.body->make(i, drawing_.cut, row);
        if (i == 0 || row.ruleAbove || allRules) writeRule(above_, &row);
        writeRow(row);
        std::swap(lastRow_, row);
        above_ = &lastRow_;
    }
}

void Writer::writeRow(const DrawnRow& row) {
    lines_.set(drawing_, row);
    for (std::size_t line = 0; line < lines_.height(); ++line) {
        for (std::size_t i = 0; i < row.spans.size(); ++i) {
            writeLine(row.spans[i], lines_.line(row, i, line));
            handOutIfLong();
        }
        text_ += corners_[up | down];
        text_ += '\n';
    }
}

void Writer::writeLine(const DrawnSpan& span, std::string_view text) {
    const std::size_t width = drawing_.widthOf(span);
    const std::size_t used = displayWidth(text);
    const std::size_t free = width > used ? width - used : 0;
    std::size_t before = 0;
    if (span.align == Align::right) before = free;
    if (span.align == Align::centre) before = free / 2;
    text_ += corners_[span.openLeft ? 0 : up | down];
    // A background fills the cell.
    const bool fills = span.style.background && options_.colors != ColorDepth::none;
    const bool isPlain = span.style == TextStyle() || (text.empty() && !fills);
    const std::string begin = isPlain ? std::string() : styleBegin(span.style, options_);
    if (fills) text_ += begin;
    appendBlanks(1 + before);
    if (!fills) text_ += begin;
    text_ += text;
    if (!fills && !begin.empty()) text_ += styleEnd;
    appendBlanks(1 + free - before);
    if (fills) text_ += styleEnd;
}

/// A span of very many columns can be far wider than what is held.
void Writer::appendBlanks(std::size_t count) {
    for (; count > pieceBytes; count -= pieceBytes) {
        text_.append(pieceBytes, ' ');
        handOutIfLong();
    }
    text_.append(count, ' ');
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
            handOutIfLong();
        }
    }
    text_ += '\n';
}

}  // namespace

void writeDrawing(const Drawing& drawing, const RenderOptions& options, const TextSink& sink) {
    Writer(drawing, options, sink).write();
}

}  // namespace vexa::rendering
