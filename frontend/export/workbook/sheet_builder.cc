#include "frontend/export/workbook/sheet_builder.h"

#include <string_view>
#include <utility>
#include <variant>

#include "frontend/export/picture_files.h"
#include "frontend/export/workbook/sheet_draft.h"
#include "frontend/export/workbook/table_sheet.h"

namespace vexa::frontend {

namespace {

using tables::CellStyle;
using tables::layOut;
using tables::LayoutOptions;
using tables::Place;
using tables::Table;
using tables::TableGrid;
using tables::TableLayout;

class SheetBuilder {
  public:
    SheetBuilder(const ExportTask& task, const SheetLimits& limits, bool notesAndCaptions)
        : task_(task), draft_(limits, task.report) {
        layout_.notesAndCaptions = notesAndCaptions;
    }

    SheetContent build() {
        std::size_t done = 0;
        for (const ExportedItem& item : task_.plan.items) {
            addItem(item);
            if (draft_.failed() || !task_.goesOn(++done)) break;
        }
        return std::move(draft_.content());
    }

  private:
    void addItem(const ExportedItem& item) {
        const ItemContent& content = item.item().content;
        if (const auto* const heading = std::get_if<HeadingContent>(&content)) {
            addLines(item, heading->text, heading->style);
        } else if (const auto* const text = std::get_if<TextContent>(&content)) {
            addLines(item, text->text, text->style);
        } else if (const auto* const title = std::get_if<PageTitleContent>(&content)) {
            addLines(item, title->text, title->style);
        } else if (const auto* const log = std::get_if<LogContent>(&content)) {
            addLines(item, log->text, {});
        } else if (const auto* const warning = std::get_if<WarningContent>(&content)) {
            addLines(item, warning->text, {});
        } else if (const auto* const notes = std::get_if<NotesContent>(&content)) {
            addNotes(item, *notes);
        } else if (const auto* const table = std::get_if<TableContent>(&content)) {
            addLayers(item, table->table);
        } else if (const auto* const grid = std::get_if<GridContent>(&content)) {
            divide();
            row_ = addTable(draft_, task_.report, item, layOut(*grid->grid, layout_), row_);
        } else if (pictureOf(item) != nullptr) {
            addLines(item, "[" + alternativeOf(item) + "]", {});
        } else if (item.item().type() == ItemType::unknown) {
            task_.report.lose(Feature::unknownItems, item);
            addLines(item, item.label, {});
        }
    }

    /// A blank row between what is there and what comes.
    void divide() {
        if (row_ > 0) ++row_;
    }

    void addLines(const ExportedItem& item, std::string_view text, const CellStyle& own) {
        divide();
        SheetStyle style;
        if (own.bold) style.bold = *own.bold;
        if (own.italic) style.italic = *own.italic;
        if (own.underline) style.underline = *own.underline;
        if (!own.font.empty()) style.font = own.font;
        if (own.size) style.size = *own.size;
        if (own.color) style.color = *own.color;
        style.background = own.background;
        const SheetStyleId id = draft_.intern(style);
        while (!draft_.failed()) {
            const std::size_t end = text.find_first_of("\r\n");
            if (!draft_.hasRoom(item, row_, 1, 1)) return;
            draft_.addText(item, row_++, 0, text.substr(0, end), {}, id);
            if (end == std::string_view::npos) return;
            text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
            if (text.empty()) return;
        }
    }

    void addNotes(const ExportedItem& item, const NotesContent& notes) {
        std::string lines;
        for (const NoteLine& line : notes.lines) {
            lines += line.label + (line.value.empty() ? "" : ": ") + line.value + "\n";
        }
        addLines(item, lines, {});
    }

    void addLayers(const ExportedItem& item, const Table& table) {
        TableLayout layout(table, layout_);
        for (const Place layer : item.layers) {
            if (draft_.failed()) return;
            divide();
            row_ = addTable(draft_, task_.report, item, layout.grid(layer), row_);
        }
    }

    const ExportTask& task_;
    SheetDraft draft_;
    LayoutOptions layout_;
    std::uint32_t row_ = 0;
};

}  // namespace

SheetContent buildSheet(const ExportTask& task, const SheetLimits& limits, bool notesAndCaptions) {
    return SheetBuilder(task, limits, notesAndCaptions).build();
}

}  // namespace vexa::frontend
