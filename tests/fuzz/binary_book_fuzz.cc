// Any bytes as the stream of a binary workbook: refused, or what an export makes of it can be read again, has
// the other sheets as they were, and is the same every time. The first byte says what is done.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "frontend/export/xls/binary_book.h"

using namespace vexa::frontend;

namespace {

void require(bool ok) {
    if (!ok) {
        std::abort();
    }
}

SheetContent sample() {
    SheetContent content;
    content.texts = "text\xE2\x82\xAC";
    SheetStyle loud;
    loud.bold = true;
    loud.color = {0x123456};
    loud.numberFormat = "dd.mm.yyyy";
    content.styles = {SheetStyle{}, loud};
    SheetCell text;
    text.value = SheetValue::text;
    text.textLength = 7;
    text.raised = 3;
    SheetCell number;
    number.row = 1;
    number.column = 2;
    number.value = SheetValue::number;
    number.number = 1234.5;
    number.style = 1;
    content.cells = {text, number};
    for (std::uint16_t column = 3; column < 6; ++column) {
        SheetCell blank;
        blank.row = 1;
        blank.column = column;
        content.cells.push_back(blank);
    }
    content.merged.push_back({1, 3, 1, 3});
    content.widths[0] = 70;
    content.heights[1] = 30;
    content.pageBreaks.push_back(1);
    content.rows = 4;
    content.columns = 6;
    return content;
}

SheetPicture picture() {
    SheetPicture shown;
    shown.row = 2;
    shown.rows = 2;
    shown.width = 100;
    shown.height = 25;
    shown.png = "no PNG";
    shown.alternative = "a picture";
    return shown;
}

struct Task {
    bool replaces = false;
    bool adds = false;
    bool draws = false;
    bool below = false;
};

std::string fileOf(std::string stream) {
    CompoundFile file;
    file.addStream(0, "Workbook", std::move(stream));
    file.addStream(0, "Other", "kept");
    std::string bytes;
    require(static_cast<bool>(file.write(gatherInto(bytes))));
    return bytes;
}

/// The file with the sample on a sheet; empty where that is refused.
std::string changed(const std::string& file, const Task& task) {
    biff::BinaryBook book;
    if (!book.read(file)) return {};
    SheetContent content = sample();
    if (task.draws) content.pictures.push_back(picture());
    ExportReport report;
    const std::vector<biff::CellFormat> formats = book.styles().add(content, report);
    std::size_t sheet = 0;
    if (task.adds) {
        if (book.findSheet("Fuzz")) return {};
        sheet = book.addSheet("Fuzz");
    }
    if (task.replaces && !book.emptySheet(sheet)) return {};
    biff::SheetStream stream(book.styles().digitWidth());
    if (!book.openSheet(sheet, stream)) return {};
    const std::uint32_t row = task.below ? stream.used().rows : 3;
    if (row + content.rows > biff::rowCount) return {};
    if (!stream.place({content, row, 1, formats, book.strings()}, book.drawings())) {
        return {};
    }
    book.closeSheet(sheet, stream);
    if (!book.finish()) return {};
    std::string bytes;
    require(static_cast<bool>(book.write(gatherInto(bytes))));
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Task task{(data[0] & 1U) != 0, (data[0] & 2U) != 0, (data[0] & 4U) != 0, (data[0] & 8U) != 0};
    const std::string file = fileOf({reinterpret_cast<const char*>(data) + 1, size - 1});
    const std::string once = changed(file, task);
    require(changed(file, task) == once);
    if (once.empty()) return 0;
    CompoundFile written;
    require(static_cast<bool>(written.read(once)) && written.entry(*written.find("Other")).content == "kept");
    biff::BinaryBook again;
    require(static_cast<bool>(again.read(once)));
    require(!task.adds || again.findSheet("Fuzz").has_value());
    return 0;
}
