#include "frontend/export/xls/new_book.h"

#include <cmath>

#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xls/book_text.h"

namespace vexa::frontend::biff {

namespace {

/// The version of the programs that such workbooks are for.
constexpr std::uint32_t build = 0x0DBB;
constexpr std::uint32_t year = 0x07CC;
constexpr std::uint32_t utf16 = 0x04B0;

void appendBeginning(Records& records, std::uint32_t type) {
    records.begin(id::bof).two(version8).two(type).two(build).two(year).four(0x000080C1).four(0x0406).end();
}

void appendFlag(Records& records, std::uint16_t id, std::uint32_t value) {
    records.begin(id).two(value).end();
}

void appendWriter(Records& records) {
    constexpr std::size_t writerBytes = 112;
    records.begin(id::writeAccess);
    appendText(records, "Vexa Output", 2);
    records.bytes(std::string(writerBytes - records.length(), ' ')).end();
}

void appendWindow(Records& records) {
    // Place and size in twips, scroll bars and tabs, the first sheet on top, tabs on 60 percent.
    records.begin(id::window1).two(0).two(0).two(0x3C00).two(0x2580).two(0x38);
    records.two(0).two(0).two(1).two(600).end();
}

void appendPlainFont(Records& records) {
    constexpr std::uint32_t automaticColor = 0x7FFF;
    records.begin(id::font).two(10 * 20).two(0).two(automaticColor).two(400).two(0);
    records.one(0).one(0).one(0).one(0);
    appendText(records, "Arial", 1);
    records.end();
}

/// The formats of fifteen named styles, of which one is used, and that of a cell without a style.
void appendPlainFormats(Records& records) {
    constexpr std::uint32_t ofNamedStyle = 0xFFF5;
    constexpr std::uint32_t ofCell = 0x0001;
    constexpr std::uint32_t atBottom = 0x20;
    constexpr std::uint32_t noGround = 0x20C0;
    constexpr int namedStyles = 15;
    for (int i = 0; i <= namedStyles; ++i) {
        const bool isCell = i == namedStyles;
        records.begin(id::xf).two(0).two(0).two(isCell ? ofCell : ofNamedStyle).one(atBottom).one(0).one(0);
        records.one(i == 0 || isCell ? 0 : 0xF4).four(0).four(0).two(noGround).end();
    }
}

void appendUsualStyle(Records& records) {
    constexpr std::uint32_t builtIn = 0x8000;
    records.begin(id::style).two(builtIn).one(0).one(0xFF).end();
}

}  // namespace

std::string sheetEntry(std::string_view name) {
    std::string bytes;
    Records records(bytes);
    records.begin(id::boundSheet).four(0).one(0).one(0);
    appendText(records, name, 1);
    records.end();
    return bytes;
}

std::string newGlobals(std::string_view sheet) {
    std::string bytes;
    Records records(bytes);
    appendBeginning(records, globalsType);
    appendFlag(records, id::interfaceHeader, utf16);
    records.begin(id::interfaceMiddle).two(0).end();
    records.begin(id::interfaceEnd).end();
    appendWriter(records);
    appendFlag(records, id::codePage, utf16);
    appendFlag(records, id::dsf, 0);
    appendFlag(records, id::tabId, 1);
    appendFlag(records, id::functionGroups, 14);
    appendFlag(records, id::windowProtect, 0);
    appendFlag(records, id::protect, 0);
    appendFlag(records, id::password, 0);
    appendFlag(records, id::revisionProtect, 0);
    appendFlag(records, id::revisionPassword, 0);
    appendWindow(records);
    appendFlag(records, id::backup, 0);
    appendFlag(records, id::hideObj, 0);
    appendFlag(records, id::dateMode, 0);
    appendFlag(records, id::precision, 1);
    appendFlag(records, id::refreshAll, 0);
    appendFlag(records, id::bookBool, 0);
    for (int i = 0; i < 4; ++i) appendPlainFont(records);
    appendPlainFormats(records);
    appendUsualStyle(records);
    appendFlag(records, id::useSelfs, 0);
    bytes += sheetEntry(sheet);
    records.begin(id::country).two(1).two(1).end();
    records.begin(id::sst).four(0).four(0).end();
    records.begin(id::extSst).two(8).end();
    records.begin(id::eof).end();
    return bytes;
}

std::string newSheet(const NewSheet& sheet) {
    constexpr std::uint32_t usualView = 0x00B6;
    constexpr std::uint32_t isSelectedView = 0x0600;
    constexpr std::uint32_t automaticLines = 0x40;
    std::string bytes;
    Records records(bytes);
    appendBeginning(records, worksheetType);
    records.begin(id::index).four(0).four(0).four(0).four(0).end();
    appendFlag(records, id::calcMode, 1);
    appendFlag(records, id::calcCount, 100);
    appendFlag(records, id::refMode, 1);
    appendFlag(records, id::iteration, 0);
    records.begin(id::delta).real(0.001).end();
    appendFlag(records, id::saveRecalc, 1);
    appendFlag(records, id::printHeaders, 0);
    appendFlag(records, id::printLines, 0);
    appendFlag(records, id::gridSet, 1);
    records.begin(id::guts).two(0).two(0).two(0).two(0).end();
    records.begin(id::defaultRowHeight).two(0).two(static_cast<std::uint32_t>(usualRowHeight * 20)).end();
    appendFlag(records, id::wsBool, 0x04C1);
    appendFlag(records, id::defColWidth, 8);
    records.begin(id::dimensions).four(0).four(0).two(0).two(0).two(0).end();
    records.begin(id::window2).two(usualView | (sheet.isSelected ? isSelectedView : 0)).two(0).two(0);
    records.two(automaticLines).two(0).two(0).two(0).four(0).end();
    records.bytes(sheet.codeName);
    records.begin(id::eof).end();
    return bytes;
}

}  // namespace vexa::frontend::biff
