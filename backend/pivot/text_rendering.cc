#include "backend/pivot/text_rendering.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/pivot/rendering/axis_labels.h"
#include "backend/pivot/rendering/footnotes.h"
#include "backend/pivot/rendering/grid.h"
#include "backend/pivot/rendering/grid_writer.h"
#include "backend/pivot/rendering/safe_text.h"
#include "backend/pivot/rendering/sheet.h"
#include "backend/strings/dictionary.h"
#include "backend/text/text_width.h"

namespace vexa::rendering {

namespace {

std::optional<std::size_t> columnsOf(std::optional<int> points) {
    if (!points) return std::nullopt;
    return static_cast<std::size_t>(std::max(*points, 0) / pointsPerColumn);
}

/// What stands before a value and the value, as the user's language puts them together.
std::string withLabel(const std::string& label, const std::string& value) {
    return composed("^1: ^2"_text, {label, value});
}

/// Appends the text, wrapped to the terminal; lines after the first are indented by `indent` columns.
void appendLines(std::string_view given, std::size_t indent, bool bold, const RenderOptions& options,
                 std::string& text) {
    const std::size_t room = options.width > indent ? options.width - indent : 1;
    bool first = true;
    for (const std::string& line : wrapText(safeText(given), options.width == 0 ? SIZE_MAX : room)) {
        if (!first) text.append(indent, ' ');
        text += bold ? emphasized(line, options) : line;
        text += '\n';
        first = false;
    }
}

/// Writes one table: the labels are the same in all its sheets, the notes are lettered through.
class TableRenderer {
  public:
    TableRenderer(const PivotTable& table, const RenderOptions& options)
        : table_(table),
          options_(options),
          axes_(axesOf(table)),
          rowLabels_(labelsOn(axes_.rows, table)),
          columnLabels_(labelsOn(axes_.columns, table)) {}

    std::string render();

  private:
    void appendSheets();
    void appendLayer(const Sheet& sheet);
    [[nodiscard]] Grid gridOf(const Sheet& sheet);
    void addCells(const Sheet& sheet, Grid& grid);
    void alignColumn(const Sheet& sheet, std::size_t column, Grid& grid);
    [[nodiscard]] std::string markerOf(const PivotCell& cell);
    void appendCaption();
    void appendNotes();

    const PivotTable& table_;
    const RenderOptions& options_;
    TableAxes axes_;
    AxisLabels rowLabels_;
    AxisLabels columnLabels_;
    Footnotes footnotes_;
    std::string text_;
};

std::string TableRenderer::render() {
    if (!table_.titleHidden && !table_.title.empty()) appendLines(table_.title, 0, true, options_, text_);
    appendSheets();
    appendCaption();
    appendNotes();
    return std::move(text_);
}

void TableRenderer::appendSheets() {
    bool first = true;
    for (const Sheet& sheet : sheetsOf(table_, axes_)) {
        if (table_.dimensions.empty() || sheet.rows.empty() || sheet.columns.empty()) {
            text_ += translated("(empty)"_text) + '\n';
            continue;
        }
        if (!first) text_ += '\n';
        appendLayer(sheet);
        bool firstBlock = true;
        for (const Grid& block : splitGrid(gridOf(sheet), options_.width)) {
            if (!firstBlock) text_ += '\n';
            drawGrid(block, options_, text_);
            firstBlock = false;
        }
        first = false;
    }
}

void TableRenderer::appendLayer(const Sheet& sheet) {
    for (std::size_t i = 0; i < sheet.layer.size(); ++i) {
        const PivotDimension& dimension = table_.dimensions[axes_.layers[i]];
        const std::string& category = dimension.categories[sheet.layer[i]].label;
        appendLines(dimension.label.empty() ? category : withLabel(dimension.label, category), 0, false,
                    options_, text_);
    }
}

Grid TableRenderer::gridOf(const Sheet& sheet) {
    Grid grid;
    grid.labelColumns = labelColumnsOf(rowLabels_);
    grid.widths.resize(grid.labelColumns + sheet.columns.size());
    grid.header = headerRows(rowLabels_, columnLabels_, sheet);
    grid.body = labelledRows(rowLabels_, sheet);
    addCells(sheet, grid);
    for (std::size_t column = 0; column < sheet.columns.size(); ++column) alignColumn(sheet, column, grid);
    fitColumns(grid,
               {columnsOf(table_.minDataColumnWidth), columnsOf(table_.maxDataColumnWidth), options_.width});
    return grid;
}

void TableRenderer::addCells(const Sheet& sheet, Grid& grid) {
    for (std::size_t row = 0; row < sheet.rows.size(); ++row) {
        for (std::size_t column = 0; column < sheet.columns.size(); ++column) {
            GridSpan span{"", grid.labelColumns + column};
            if (const PivotCell* cell = sheet.cell(row, column)) {
                span.text = safeText(cell->text) + markerOf(*cell);
                span.align = cell->number ? Align::right : Align::left;
                span.bold = table_.extrasOf(*cell).bold;
            }
            grid.body[row].spans.push_back(std::move(span));
        }
    }
}

/// Over numbers the header stands at the right, as they do, and numbers with and without notes stand below
/// each other.
void TableRenderer::alignColumn(const Sheet& sheet, std::size_t column, Grid& grid) {
    bool numbers = false;
    bool texts = false;
    std::size_t widest = 0;
    for (std::size_t row = 0; row < sheet.rows.size(); ++row) {
        const PivotCell* cell = sheet.cell(row, column);
        if (cell == nullptr) continue;
        (cell->number ? numbers : texts) = true;
        if (cell->number) widest = std::max(widest, markerOf(*cell).size());
    }
    if (!columnLabels_.empty()) {
        grid.header.back().spans[rowLabels_.size() + column].align =
            numbers && !texts ? Align::right : Align::left;
    }
    for (std::size_t row = 0; widest > 0 && row < sheet.rows.size(); ++row) {
        const PivotCell* cell = sheet.cell(row, column);
        if (cell == nullptr || !cell->number) continue;
        std::vector<GridSpan>& spans = grid.body[row].spans;
        spans[spans.size() - sheet.columns.size() + column].text.append(widest - markerOf(*cell).size(), ' ');
    }
}

std::string TableRenderer::markerOf(const PivotCell& cell) {
    return footnotes_.markerOf(table_.extrasOf(cell).notes);
}

void TableRenderer::appendCaption() {
    if (!table_.caption.empty() && table_.caption != table_.title) {
        appendLines(table_.caption, 0, false, options_, text_);
    }
}

void TableRenderer::appendNotes() {
    const std::vector<std::string>& notes = footnotes_.notes();
    for (std::size_t i = 0; i < notes.size(); ++i) {
        const std::string marker = "[" + footnoteLetters(i) + "] ";
        text_ += marker;
        appendLines(notes[i], marker.size(), false, options_, text_);
    }
}

}  // namespace

}  // namespace vexa::rendering

namespace vexa {

std::string renderTable(const PivotTable& table, const RenderOptions& options) {
    return rendering::TableRenderer(table, options).render();
}

std::string renderNotes(const NotesAdded& notes, const RenderOptions& options) {
    const std::string label = printableText(notes.label);
    std::string value = printableText(notes.value);
    std::string text;
    if (!label.empty()) {
        const std::string whole = rendering::withLabel(label, value);
        if (whole.ends_with(value)) text = whole.substr(0, whole.size() - value.size());
        if (text.empty() || displayWidth(text) > options.width / 2) {
            value = whole;
            text.clear();
        }
    }
    rendering::appendLines(value, displayWidth(text), false, options, text);
    return text;
}

}  // namespace vexa
