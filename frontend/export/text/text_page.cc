#include "frontend/export/text/text_page.h"

#include <variant>

#include "backend/strings/dictionary.h"
#include "backend/text/text_width.h"
#include "frontend/export/picture_files.h"
#include "frontend/export/text/encoded_text.h"
#include "frontend/export/text/table_text.h"

namespace vexa::frontend {

namespace {

using tables::CellStyle;
using tables::layOut;
using tables::LayoutOptions;
using tables::Place;
using tables::ShownStyle;
using tables::Table;
using tables::TableGrid;
using tables::TableLayout;

/// What is handed on together, or a little more.
constexpr std::size_t pieceBytes = 1U << 18U;

class TextWriter {
  public:
    TextWriter(const ExportTask& task, const ByteSink& out)
        : task_(task), request_(*task.request.text), encoded_(task.request.text->encoding, out, task.report) {
        table_.columnWidth = static_cast<std::size_t>(request_.columnWidth.value_or(0));
        table_.tabs = request_.separator == TextSeparator::tab;
        table_.rowBorder = request_.rowBorder;
        table_.columnBorder = request_.columnBorder;
        take_ = [this](std::string& text) { passOn(text); };
        layout_.notesAndCaptions = request_.notesAndCaptions;
    }

    PackageResult write() {
        std::size_t done = 0;
        for (const ExportedItem& item : task_.plan.items) {
            writeItem(item);
            if (task_.report.failed() || !task_.goesOn(++done)) return {};
            passOn(text_);
            if (!result_) return result_;
        }
        return encoded_.write(text_);
    }

  private:
    void passOn(std::string& text) {
        if (text.size() < pieceBytes) return;
        if (result_) result_ = encoded_.write(text);
        text.clear();
    }

    void writeItem(const ExportedItem& item) {
        if (item.item().pageBreakBefore) task_.report.lose(Feature::pageBreaks, item);
        const ItemContent& content = item.item().content;
        if (const auto* const heading = std::get_if<HeadingContent>(&content)) {
            writeStyled(item, *heading);
        } else if (const auto* const text = std::get_if<TextContent>(&content)) {
            writeStyled(item, *text);
        } else if (const auto* const title = std::get_if<PageTitleContent>(&content)) {
            writeStyled(item, *title);
        } else if (const auto* const log = std::get_if<LogContent>(&content)) {
            writeLines(log->text);
        } else if (const auto* const warning = std::get_if<WarningContent>(&content)) {
            writeLines(warning->text);
        } else if (const auto* const notes = std::get_if<NotesContent>(&content)) {
            writeNotes(*notes);
        } else if (const auto* const table = std::get_if<TableContent>(&content)) {
            writeTable(item, table->table);
        } else if (const auto* const grid = std::get_if<GridContent>(&content)) {
            divide();
            writeGrid(item, layOut(*grid->grid, layout_));
        } else if (pictureOf(item) != nullptr) {
            writePicture(item);
        } else if (item.item().type() == ItemType::unknown) {
            task_.report.lose(Feature::unknownItems, item);
            writeLines(item.label);
        }
    }

    /// A blank line between what is written and what comes.
    void divide() {
        if (hasText_) text_ += '\n';
        hasText_ = true;
    }

    void writeLines(std::string_view lines) {
        divide();
        for (;;) {
            const std::size_t end = lines.find_first_of("\r\n");
            text_ += printableText(withoutTabs(lines.substr(0, end)));
            text_ += '\n';
            passOn(text_);
            if (end == std::string_view::npos) return;
            lines.remove_prefix(end + (lines.substr(end).starts_with("\r\n") ? 2 : 1));
            if (lines.empty()) return;
        }
    }

    /// Tabs as blanks up to the next eighth column of a line without wide letters.
    static std::string withoutTabs(std::string_view line) {
        constexpr std::size_t tabWidth = 8;
        std::string text;
        for (const char each : line) {
            if (each == '\t') {
                text.append(tabWidth - text.size() % tabWidth, ' ');
            } else {
                text += each;
            }
        }
        return text;
    }

    void writeStyled(const ExportedItem& item, const StyledText& text) {
        noteStyle(item, text.style);
        writeLines(text.text);
    }

    void writeNotes(const NotesContent& notes) {
        std::string lines;
        for (const NoteLine& line : notes.lines) {
            lines += labelBeforeValue(line) + line.value + "\n";
        }
        writeLines(lines);
    }

    void writeTable(const ExportedItem& item, const Table& table) {
        TableLayout layout(table, layout_);
        for (const Place layer : item.layers) {
            divide();
            const TableGrid grid = layout.grid(layer);
            writeGrid(item, grid);
            if (task_.report.failed()) return;
            noteStyles(item, grid);
        }
    }

    void writeGrid(const ExportedItem& item, const TableGrid& grid) {
        const std::size_t lines = textLinesOf(grid, table_);
        if (lines <= mostTextLines) {
            appendTable(text_, grid, table_, take_);
            return;
        }
        task_.report.fail(
            ExportError::other,
            composed(
                "Item ^1 (^2) has about ^3 lines of text in its cells, and ^4 are possible. Choose a larger COLUMNWIDTH, or another format."_text,
                {std::to_string(item.number), item.shortLabel(), std::to_string(lines),
                 std::to_string(mostTextLines)}));
    }

    void writePicture(const ExportedItem& item) {
        task_.report.countPicture();
        const std::string beside = task_.pictures.add(item);
        if (beside.empty()) task_.report.lose(Feature::pictures, item);
        writeLines(beside.empty() ? "[" + alternativeOf(item) + "]"
                                  : "[" + alternativeOf(item) + ": " + beside + "]");
    }

    void noteStyles(const ExportedItem& item, const TableGrid& grid) {
        for (const ShownStyle& style : grid.styles) noteStyle(item, style.own);
        for (const auto& width : grid.widths) {
            if (width) task_.report.lose(Feature::columnWidths, item);
        }
    }

    /// What the document itself sets is missed; what comes from a look is not.
    void noteStyle(const ExportedItem& item, const CellStyle& style) {
        ExportReport& report = task_.report;
        if (!style.font.empty()) report.lose(Feature::fonts, item);
        if (style.size) report.lose(Feature::fontSizes, item);
        if (style.color) report.lose(Feature::textColors, item);
        if (style.background) report.lose(Feature::backgrounds, item);
        if (style.bold || style.italic || style.underline) report.lose(Feature::emphasis, item);
    }

    const ExportTask& task_;
    const TextExport& request_;
    EncodedText encoded_;
    PackageResult result_;
    TextTaker take_;
    std::string text_;      // that was not handed on yet
    bool hasText_ = false;  // ever
    TextTableOptions table_;
    LayoutOptions layout_;
};

}  // namespace

PackageResult writeTextPage(const ExportTask& task, const ByteSink& out) {
    return TextWriter(task, out).write();
}

}  // namespace vexa::frontend
