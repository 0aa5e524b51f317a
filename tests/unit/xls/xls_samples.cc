#include "tests/unit/xls/xls_samples.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "backend/text/utf16.h"
#include "frontend/export/workbook/sheet_place.h"
#include "frontend/export/xls/book_text.h"
#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {

namespace {

std::string numberText(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

double shortValue(std::uint32_t bits) {
    double value = 0;
    if ((bits & 2U) != 0) {
        value = static_cast<std::int32_t>(bits) >> 2;
    } else {
        const std::uint64_t wide = std::uint64_t{bits & 0xFFFFFFFCU} << 32U;
        std::memcpy(&value, &wide, sizeof value);
    }
    return (bits & 1U) != 0 ? value / 100 : value;
}

/// The shared texts, by another way than the exporter's: all records are in one piece.
std::vector<std::string> textsIn(const std::string& stream) {
    std::vector<biff::RecordView> globals;
    std::vector<std::string> texts;
    if (!biff::splitRecords(stream, globals)) return texts;
    for (const biff::RecordView& record : globals) {
        if (record.id != biff::id::sst) continue;
        const std::string content = biff::joinedContent(record.raw);
        std::size_t at = 8;
        for (std::uint32_t i = 0; i < biff::fourAt(content, 4); ++i) {
            const std::size_t units = biff::twoAt(content, at);
            const std::uint32_t flags = biff::numberAt(content, at + 2, 1);
            const std::size_t width = (flags & 1U) != 0 ? 2 : 1;
            const std::size_t runs = (flags & 8U) != 0 ? biff::twoAt(content, at + 3) : 0;
            at += (flags & 8U) != 0 ? 5 : 3;
            std::u16string text;
            for (std::size_t unit = 0; unit < units; ++unit) {
                text += static_cast<char16_t>(biff::numberAt(content, at + unit * width, width));
            }
            texts.push_back(utf16ToUtf8(text));
            at += units * width + runs * 4;
        }
    }
    return texts;
}

}  // namespace

ExportOutcome exportXls(const ViewerDocument& document, const WorkbookExport& target) {
    ExportRequest request;
    request.xls = target;
    return exportDocument(document, request, {});
}

std::string xlsOf(const ViewerDocument& document, WorkbookExport request) {
    const ExportFolder folder;
    request.file = folder.file("a.xls");
    const ExportOutcome outcome = exportXls(document, request);
    return outcome.response.success
               ? folder.read("a.xls")
               : "(" + std::to_string(outcome.response.errorCode) + ": " + outcome.reason + ")";
}

SheetContent contentWith(const std::vector<std::string>& cells) {
    SheetContent content;
    content.styles.emplace_back();
    std::map<std::pair<std::uint64_t, std::uint64_t>, SheetCell> placed;
    for (const std::string& each : cells) {
        const std::size_t colon = each.find(':');
        if (colon != std::string::npos) {
            const SheetPlace first = *parseSheetPlace(each.substr(0, colon));
            const SheetPlace last = *parseSheetPlace(each.substr(colon + 1));
            content.merged.push_back({static_cast<std::uint32_t>(first.row),
                                      static_cast<std::uint32_t>(first.column),
                                      static_cast<std::uint32_t>(last.row - first.row + 1),
                                      static_cast<std::uint32_t>(last.column - first.column + 1)});
            continue;
        }
        const std::size_t equals = each.find('=');
        const SheetPlace place = *parseSheetPlace(each.substr(0, equals));
        const std::string value = each.substr(equals + 1);
        SheetCell cell;
        cell.row = static_cast<std::uint32_t>(place.row);
        cell.column = static_cast<std::uint16_t>(place.column);
        if (!value.empty()) {
            char* end = nullptr;
            cell.number = std::strtod(value.c_str(), &end);
            cell.value = *end == '\0' ? SheetValue::number : SheetValue::text;
            cell.textBegin = static_cast<std::uint32_t>(content.texts.size());
            cell.textLength = static_cast<std::uint32_t>(value.size());
            if (cell.value == SheetValue::text) content.texts += value;
        }
        content.rows = std::max(content.rows, cell.row + 1);
        content.columns = std::max(content.columns, cell.column + 1U);
        placed[{place.row, place.column}] = cell;
    }
    for (const auto& [place, cell] : placed) content.cells.push_back(cell);
    return content;
}

std::string bookWith(const std::string& sheet, const std::vector<std::string>& cells) {
    biff::BinaryBook book;
    book.makeNew(sheet, "title");
    const SheetContent content = contentWith(cells);
    ExportReport report;
    const std::vector<biff::CellFormat> formats = book.styles().add(content, report);
    biff::SheetStream stream(book.styles().digitWidth());
    EXPECT_TRUE(book.openSheet(0, stream));
    EXPECT_TRUE(stream.place({content, 0, 0, formats, book.strings()}, book.drawings()));
    book.closeSheet(0, stream);
    EXPECT_TRUE(book.finish());
    std::string bytes;
    EXPECT_TRUE(book.write(gatherInto(bytes)));
    return bytes;
}

std::string streamOf(const std::string& file, std::string_view name) {
    CompoundFile compound;
    EXPECT_TRUE(compound.read(file));
    const auto place = compound.find(name);
    return place ? compound.entry(*place).content : "(none)";
}

std::string withStream(const std::string& file, std::string stream) {
    CompoundFile compound;
    EXPECT_TRUE(compound.read(file));
    compound.entry(*compound.find("Workbook")).content = std::move(stream);
    std::string bytes;
    EXPECT_TRUE(compound.write(gatherInto(bytes)));
    return bytes;
}

std::string withRecord(const std::string& stream, std::uint16_t before, std::uint16_t id,
                       std::string_view content) {
    std::string record;
    biff::Records(record).begin(id).bytes(content).end();
    std::string out = stream;
    std::size_t at = 0;
    while (at + 4 < out.size() && biff::twoAt(out, at) != before) at += 4U + biff::twoAt(out, at + 2);
    out.insert(at, record);
    // Sheets begin where the workbook says.
    for (std::size_t entry = 0; entry + 4 < out.size() && biff::twoAt(out, entry) != biff::id::eof;
         entry += 4U + biff::twoAt(out, entry + 2)) {
        const std::uint32_t place = biff::fourAt(out, entry + 4);
        if (biff::twoAt(out, entry) == biff::id::boundSheet && place >= at) {
            biff::setNumber(out, entry + 4, place + static_cast<std::uint32_t>(record.size()), 4);
        }
    }
    return out;
}

std::string cellsIn(const std::string& file, const std::string& name) {
    const std::string stream = streamOf(file);
    std::vector<biff::RecordView> records;
    if (!biff::splitRecords(stream, records)) return "(broken)";
    std::size_t at = 0;
    for (const biff::RecordView& record : records) {
        if (record.id == biff::id::boundSheet && biff::textAt(record.content(), 6, 1) == name) {
            at = biff::fourAt(record.content(), 0);
        }
    }
    if (at == 0) return "(no sheet)";
    const std::vector<std::string> texts = textsIn(stream);
    if (!biff::splitRecords(std::string_view(stream).substr(at), records)) return "(broken sheet)";
    std::string shown;
    for (const biff::RecordView& record : records) {
        const std::string_view content = record.content();
        if (record.id == biff::id::mergedCells) {
            for (std::size_t i = 0; i < biff::twoAt(content, 0); ++i) {
                shown +=
                    sheetPlaceName({biff::twoAt(content, 2 + i * 8), biff::twoAt(content, 6 + i * 8)}) + ":" +
                    sheetPlaceName({biff::twoAt(content, 4 + i * 8), biff::twoAt(content, 8 + i * 8)}) + " ";
            }
        }
        const auto cells = biff::isCellRecord(record.id) ? biff::cellsOf(record) : std::nullopt;
        if (!cells) continue;
        for (std::uint16_t column = cells->first; column <= cells->last; ++column) {
            shown += sheetPlaceName({cells->row, column}) + "=";
            if (record.id == biff::id::labelSst) shown += texts.at(biff::fourAt(content, 6));
            if (record.id == biff::id::rk) shown += numberText(shortValue(biff::fourAt(content, 6)));
            if (record.id == biff::id::mulRk) {
                shown += numberText(shortValue(
                    biff::fourAt(content, 6 + std::size_t{6} * (column - std::size_t{cells->first}))));
            }
            if (record.id == biff::id::number) {
                double value = 0;
                std::memcpy(&value, content.data() + 6, sizeof value);
                shown += numberText(value);
            }
            if (record.id == biff::id::formula) shown += "(formula)";
            shown += " ";
        }
    }
    return shown;
}

}  // namespace vexa::frontend
