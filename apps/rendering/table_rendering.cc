#include "apps/rendering/table_rendering.h"

#include <utility>
#include <vector>

#include "apps/rendering/drawing.h"
#include "apps/rendering/drawing_writer.h"
#include "apps/rendering/safe_text.h"
#include "apps/rendering/table_drawing.h"
#include "backend/strings/dictionary.h"
#include "backend/text/text_width.h"

namespace vexa::rendering {

namespace {

using tables::GridFootnote;
using tables::GridText;
using tables::TableGrid;

/// What stands before a value and the value, as the user's language puts them together.
constexpr SystemText labelledForm = "^1: ^2"_text;

/// What stands between the two.
std::string behindLabel() { return composed(labelledForm, {"", ""}); }

/// Appends the text, wrapped to the terminal; lines after the first are indented by `indent` columns.
void appendLines(std::string_view given, std::size_t indent, const TextStyle& style,
                 const RenderOptions& options, std::string& text) {
    const std::size_t room = options.width > indent ? options.width - indent : 1;
    bool first = true;
    for (const std::string& line : wrapText(safeText(given), options.width == 0 ? SIZE_MAX : room)) {
        if (!first) text.append(indent, ' ');
        text += styled(line, style, options);
        text += '\n';
        first = false;
    }
}

void writeText(const TableGrid& grid, const GridText& given, bool bold, const RenderOptions& options,
               const TextSink& sink) {
    if (given.text.empty()) return;
    std::string text;
    appendLines(given.text, 0, textStyle(grid.styles[given.style].own, bold), options, text);
    sink(text);
}

bool isEmpty(const TableGrid& grid) { return grid.rows == 0 || grid.columns == 0; }

/// The layer and the grid itself.
void writeGrid(const TableGrid& grid, const RenderOptions& options, const TextSink& sink) {
    if (isEmpty(grid)) {
        sink(translated("(empty)"_text) + '\n');
        return;
    }
    writeText(grid, grid.layer, false, options, sink);
    const TableDrawing table(grid, options.width);
    bool first = true;
    forEachBlock(table.drawing(), options.width, [&](const Drawing& block) {
        if (!first) sink("\n");
        writeDrawing(block, options, sink);
        first = false;
    });
}

void writeNote(const GridFootnote& note, const TextStyle& style, const RenderOptions& options,
               const TextSink& sink) {
    const std::string mark = note.mark.empty() ? "" : '[' + note.mark + "] ";
    std::string text = styled(mark, style, options);
    appendLines(note.text, mark.size(), style, options, text);
    sink(text);
}

/// Those without a mark stand at the end.
void writeNotes(const std::vector<GridFootnote>& notes, const TextStyle& style, const RenderOptions& options,
                const TextSink& sink) {
    for (const bool marked : {true, false}) {
        for (const GridFootnote& note : notes) {
            if (note.mark.empty() != marked) writeNote(note, style, options, sink);
        }
    }
}

TextStyle noteStyle(const TableGrid& grid) { return textStyle(grid.styles[grid.footnoteStyle].own, false); }

}  // namespace

void renderTable(const TableGrid& grid, const RenderOptions& options, const TextSink& sink) {
    writeText(grid, grid.title, true, options, sink);
    writeGrid(grid, options, sink);
    writeText(grid, grid.caption, false, options, sink);
    writeNotes(grid.footnotes, noteStyle(grid), options, sink);
}

std::string renderTable(const TableGrid& grid, const RenderOptions& options) {
    std::string text;
    renderTable(grid, options, [&](std::string_view piece) { text += piece; });
    return text;
}

void renderTable(const tables::Table& table, const RenderOptions& options, const TextSink& sink) {
    const std::string separator = behindLabel();
    tables::LayoutOptions layoutOptions;
    layoutOptions.behindLabel = separator;
    layoutOptions.lettersGoOn = true;
    tables::TableLayout layout(table, layoutOptions);
    std::vector<GridFootnote> notes;
    TableGrid grid;
    bool first = true;
    for (const tables::Place layer : layersOf(table, tables::LayerChoice::all)) {
        grid = layout.grid(layer);
        if (first) writeText(grid, grid.title, true, options, sink);
        if (!first) sink("\n");
        writeGrid(grid, options, sink);
        notes.insert(notes.end(), grid.footnotes.begin(), grid.footnotes.end());
        if (isEmpty(grid)) break;  // they are all alike
        first = false;
    }
    writeText(grid, grid.caption, false, options, sink);
    writeNotes(notes, noteStyle(grid), options, sink);
}

std::string renderTable(const tables::Table& table, const RenderOptions& options) {
    std::string text;
    renderTable(table, options, [&](std::string_view piece) { text += piece; });
    return text;
}

std::string renderNotes(const NotesAdded& notes, const RenderOptions& options) {
    const std::string label = printableText(notes.label);
    std::string value = printableText(notes.value);
    std::string text;
    if (!label.empty()) {
        const std::string whole = composed(labelledForm, {label, value});
        if (whole.ends_with(value)) text = whole.substr(0, whole.size() - value.size());
        if (text.empty() || displayWidth(text) > options.width / 2) {
            value = whole;
            text.clear();
        }
    }
    appendLines(value, displayWidth(text), {}, options, text);
    return text;
}

}  // namespace vexa::rendering
