#include "frontend/export/workbook/text_sheet.h"

#include <string>
#include <utility>

#include "backend/text/text_width.h"
#include "frontend/export/font_widths.h"
#include "frontend/export/workbook/column_fit.h"
#include "frontend/export/workbook/sheet_styles.h"

namespace vexa::frontend {

namespace {

constexpr double textSize = 10;
constexpr double headingSize = 13;
constexpr tables::Color titleColor{0x555555};
constexpr tables::Color warningColor{0x9C4A00};

std::string withoutTabs(std::string_view line) {
    constexpr std::size_t tabWidth = 8;
    std::string text;
    for (;;) {
        const std::size_t tab = line.find('\t');
        const std::string_view part = line.substr(0, tab);
        text.append(part);
        if (tab == std::string_view::npos) return text;
        // What stands before ends at such a place.
        text.append(tabWidth - displayWidth(part) % tabWidth, ' ');
        line.remove_prefix(tab + 1);
    }
}

}  // namespace

SheetStyle textStyle(ItemType type, const tables::CellStyle& own) {
    SheetStyle style;
    style.size = textSize;
    if (type == ItemType::heading) style.bold = true;
    if (type == ItemType::heading) style.size = headingSize;
    if (type == ItemType::pageTitle) style.color = titleColor;
    if (type == ItemType::warning) style.color = warningColor;
    if (type == ItemType::log) style.font = "monospace";
    if (own.bold) style.bold = *own.bold;
    if (own.italic) style.italic = *own.italic;
    if (own.underline) style.underline = *own.underline;
    if (!own.font.empty()) style.font = sheetFont(own.font);
    if (own.size) style.size = sheetFontSize(*own.size);
    if (own.color) style.color = *own.color;
    style.background = own.background;
    return style;
}

std::uint32_t addLines(SheetDraft& draft, SheetFitting& fitting, const ExportedItem& item,
                       std::string_view text, SheetStyle style, std::uint32_t row) {
    const FontWidths font(style.font, style.size, style.bold);
    const bool isFilled = style.background.has_value();
    while (!draft.failed()) {
        const std::size_t end = text.find_first_of("\r\n");
        const std::string line = withoutTabs(text.substr(0, end));
        const double width = cellWidth(font.width(line));
        // What is short enough shows over the empty cells beside it.
        style.wraps = width > lineRoom;
        const std::uint32_t rows =
            style.wraps ? rowsOfLines(font.linesIn(line, textRoom(lineRoom)), style.size) : 1;
        if (!draft.hasRoom(item, row, rows, 1)) break;
        const std::uint32_t cell = draft.addText(item, row, 0, line, {}, draft.intern(style));
        if (style.wraps || isFilled) {
            fitting.add({cell, rows, 1, width, true});
        } else if (style.size > largestUsualFont) {
            fitting.add({cell, 1, 1, width, false});
        }
        row += rows;
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
        if (text.empty()) break;
    }
    return row;
}

}  // namespace vexa::frontend
