// Any bytes as a workbook that a small export goes into: refused, or changed into one that can be changed
// again, with every part that nobody knows as it was. The first byte chooses what is done and where.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "frontend/export/xlsx/sheet_insertion.h"
#include "frontend/package/zip_reader.h"

namespace {

using vexa::frontend::ExportReport;
using vexa::frontend::gatherInto;
using vexa::frontend::SheetContent;
using vexa::frontend::SheetLocation;
using vexa::frontend::SheetOperation;
using vexa::frontend::SheetValue;
using vexa::frontend::WorkbookExport;
using vexa::frontend::WorkbookFile;
using vexa::frontend::ZipReader;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// A title over two columns, numbers, a picture.
SheetContent content() {
    SheetContent made;
    made.styles.emplace_back();
    made.texts = "title";
    made.cells.resize(4);
    made.cells[0].value = SheetValue::text;
    made.cells[0].textLength = 5;
    made.cells[0].raised = 2;
    made.cells[1].column = 1;
    made.cells[2].row = 1;
    made.cells[2].value = SheetValue::number;
    made.cells[3].row = 1;
    made.cells[3].column = 1;
    made.merged.push_back({0, 0, 1, 2});
    made.widths[1] = 80;
    made.heights[1] = 20;
    made.pictures.push_back({3, 0, 2, 20, 20, "png", "<svg/>", "alternative", 0});
    made.pageBreaks.push_back(2);
    made.rows = 5;
    made.columns = 2;
    return made;
}

WorkbookExport optionsOf(unsigned choice) {
    WorkbookExport options;
    options.sheet = (choice & 1U) != 0 ? "Data" : "New";
    options.operation = (choice & 2U) != 0 ? SheetOperation::modifySheet : SheetOperation::createSheet;
    options.location = (choice & 4U) != 0   ? SheetLocation::startCell
                       : (choice & 8U) != 0 ? SheetLocation::lastColumn
                                            : SheetLocation::lastRow;
    options.startCell = (choice & 16U) != 0 ? "B2" : "A1";
    return options;
}

/// False where the workbook is refused; else `changed` is the new one.
bool change(std::string_view bytes, const WorkbookExport& options, std::string& changed) {
    WorkbookFile workbook;
    ExportReport report;
    changed.clear();
    if (!workbook.open(std::string(bytes)) || !insertSheet(workbook, content(), options, report)) {
        return false;
    }
    return static_cast<bool>(workbook.write(gatherInto(changed)));
}

void requireSame(std::string_view before, std::string_view after, std::string_view part) {
    ZipReader old(vexa::frontend::workbookLimits);
    ZipReader made(vexa::frontend::workbookLimits);
    require(static_cast<bool>(old.open(before)) && static_cast<bool>(made.open(after)));
    const auto place = old.find(part);
    if (place && old.entry(*place).name == part) {
        const auto copied = made.find(part);
        require(copied && old.packed(*place) == made.packed(*copied));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > (1U << 20U)) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const WorkbookExport options = optionsOf(data[0]);
    std::string changed;
    if (!change(bytes, options, changed)) {
        return 0;
    }
    requireSame(bytes, changed, "unknown/part.bin");
    WorkbookExport below = options;
    below.operation = SheetOperation::modifySheet;
    below.location = SheetLocation::startCell;
    below.startCell = "D9";
    std::string again;
    // What was refused for its tables or its limits may be so once more; what was written is read again.
    WorkbookFile workbook;
    require(static_cast<bool>(workbook.open(changed)));
    static_cast<void>(change(changed, below, again));
    return 0;
}
