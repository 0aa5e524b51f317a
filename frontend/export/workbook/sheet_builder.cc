#include "frontend/export/workbook/sheet_builder.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "backend/strings/dictionary.h"
#include "frontend/export/office/office_pictures.h"
#include "frontend/export/picture_files.h"
#include "frontend/export/workbook/sheet_draft.h"
#include "frontend/export/workbook/sheet_styles.h"
#include "frontend/export/workbook/table_sheet.h"
#include "frontend/export/workbook/text_sheet.h"

namespace vexa::frontend {

namespace {

using tables::CellStyle;
using tables::layOut;
using tables::LayoutOptions;
using tables::Place;
using tables::Table;
using tables::TableLayout;

/// Points; no program shows larger pictures on a sheet.
constexpr double largestPicture = 10'000;

class SheetBuilder {
  public:
    SheetBuilder(const ExportTask& task, const SheetLimits& limits, bool notesAndCaptions)
        : task_(task),
          limits_(limits),
          draft_(limits, task.report),
          styles_(draft_, codes_),
          tables_{draft_, fitting_, codes_, styles_, task.report},
          pictures_(task.plan, task.surroundings.styleFolders, task.report) {
        layout_.notesAndCaptions = notesAndCaptions;
    }

    SheetContent build() {
        std::size_t done = 0;
        for (const ExportedItem& item : task_.plan.items) {
            addItem(item);
            if (draft_.failed() || !task_.goesOn(++done)) break;
        }
        if (!draft_.failed()) fitting_.finish(draft_.content(), limits_);
        return std::move(draft_.content());
    }

  private:
    void addItem(const ExportedItem& item) {
        breaksPage_ = breaksPage_ || item.item().pageBreakBefore;
        const ItemContent& content = item.item().content;
        if (const auto* const heading = std::get_if<HeadingContent>(&content)) {
            addText(item, heading->text, heading->style);
        } else if (const auto* const text = std::get_if<TextContent>(&content)) {
            addText(item, text->text, text->style);
        } else if (const auto* const title = std::get_if<PageTitleContent>(&content)) {
            addText(item, title->text, title->style);
        } else if (const auto* const log = std::get_if<LogContent>(&content)) {
            addText(item, log->text);
        } else if (const auto* const warning = std::get_if<WarningContent>(&content)) {
            addText(item, warning->text);
        } else if (const auto* const notes = std::get_if<NotesContent>(&content)) {
            addNotes(item, *notes);
        } else if (const auto* const table = std::get_if<TableContent>(&content)) {
            addLayers(item, table->table);
        } else if (const auto* const grid = std::get_if<GridContent>(&content)) {
            divide();
            row_ = addTable(tables_, item, layOut(*grid->grid, layout_), row_);
        } else if (pictureOf(item) != nullptr) {
            addPicture(item);
        } else if (item.item().type() == ItemType::unknown) {
            task_.report.lose(Feature::unknownItems, item);
            addText(item, item.label);
        }
    }

    /// A blank row between what is there and what comes.
    void divide() {
        if (row_ > 0) ++row_;
        if (breaksPage_) draft_.breakPage(row_);
        breaksPage_ = false;
    }

    void addText(const ExportedItem& item, std::string_view text, const CellStyle& own = {}) {
        divide();
        if (own.size && sheetFontSize(*own.size) != *own.size) task_.report.lose(Feature::fontSizes, item);
        row_ = addLines(draft_, fitting_, item, text, textStyle(item.item().type(), own), row_);
    }

    void addNotes(const ExportedItem& item, const NotesContent& notes) {
        std::string lines;
        for (const NoteLine& line : notes.lines) {
            lines.append(labelBeforeValue(line)).append(line.value).append("\n");
        }
        addText(item, lines);
    }

    void addLayers(const ExportedItem& item, const Table& table) {
        TableLayout layout(table, layout_);
        for (const Place layer : item.layers) {
            divide();
            if (!draft_.hasRoom(item, row_, layout.rows(), layout.columns())) return;
            if (!layout.fits()) {
                task_.report.fail(ExportError::other,
                                  composed("Item ^1 (^2) is too large for a sheet."_text,
                                           {std::to_string(item.number), item.shortLabel()}));
                return;
            }
            row_ = addTable(tables_, item, layout.grid(layer), row_);
            if (draft_.failed()) return;
        }
    }

    void addPicture(const ExportedItem& item) {
        divide();
        OfficePicture made = pictures_.make(item);
        const double larger = std::max(made.size.width, made.size.height);
        const double scale = larger > largestPicture ? largestPicture / larger : 1;
        if (scale < 1) task_.report.lose(Feature::pictureSizes, item);
        SheetPicture picture;
        picture.row = row_;
        picture.width = made.size.width * scale;
        picture.height = made.size.height * scale;
        picture.rows = static_cast<std::uint32_t>(std::max(1.0, std::ceil(picture.height / usualRowHeight)));
        if (!draft_.hasRoom(item, row_, picture.rows, 1)) return;
        picture.png = std::move(made.png);
        picture.svg = std::move(made.svg);
        appendCellText(picture.alternative, made.alternative);
        picture.item = item.number;
        row_ += picture.rows;
        draft_.add(std::move(picture));
    }

    const ExportTask& task_;
    SheetLimits limits_;
    SheetDraft draft_;
    SheetFitting fitting_;
    SheetCodes codes_;
    SheetStyles styles_;
    TableSurroundings tables_;
    OfficePictures pictures_;
    LayoutOptions layout_;
    std::uint32_t row_ = 0;
    bool breaksPage_ = false;  // before what comes; that of a header counts for what stands under it
};

}  // namespace

SheetContent buildSheet(const ExportTask& task, const SheetLimits& limits, bool notesAndCaptions) {
    return SheetBuilder(task, limits, notesAndCaptions).build();
}

}  // namespace vexa::frontend
