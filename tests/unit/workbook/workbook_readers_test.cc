// Whole workbooks as other readers find them, beside the sheet that was built. The readers are programs of
// this system; workbooks are the same bytes on Windows.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>

#include "backend/tables/formats/number_text.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/workbook/sheet_place.h"
#include "tests/unit/export/export_samples.h"
#include "tests/unit/import/random_documents.h"
#include "tests/unit/workbook/sheet_samples.h"

namespace vexa::frontend {
namespace {

using Lines = std::map<std::string, std::string>;  // by place, and by "merged" with its range

/// What the readers find in a workbook; nothing where there are none.
Lines found(const ViewerDocument& document, const std::string& extension) {
    const ExportFolder folder;
    const std::string file = folder.file("book" + extension);
    ExportRequest request;
    request.items = ExportedItems::all;
    auto& target = extension == ".xls" ? request.xls : request.xlsx;
    target.emplace();
    target->file = file;
    const ExportOutcome outcome = exportDocument(document, request, {});
    EXPECT_TRUE(outcome.response.success) << outcome.response.errorCode << outcome.reason;
    const std::string command = "/usr/bin/env -i PATH=/usr/bin:/bin python3 -W ignore \"" VEXA_SOURCE_FOLDER
                                "/tests/judges/read_workbook.py\" \"" +
                                file + "\" > \"" + folder.file("out") + "\" 2>&1";
    static_cast<void>(std::system(command.c_str()));
    Lines lines;
    std::istringstream out(folder.read("out"));
    for (std::string line; std::getline(out, line);) {
        const std::size_t blank = line.find(' ');
        const bool isCell = !line.starts_with("merged ");
        lines[isCell ? line.substr(0, blank) : line] = isCell ? line.substr(blank + 1) : std::string();
    }
    return lines;
}

/// How openpyxl says that a cell looks.
std::string lookOf(const SheetStyle& style, bool isMerged) {
    constexpr std::array<const char*, 7> lineNames{"-",      "thin",   "medium", "thick",
                                                   "double", "dashed", "dotted"};
    constexpr std::array<const char*, 4> sides{"general", "left", "center", "right"};
    std::string look = " | " + officeFont(style.font) + " " + tables::numberText(style.size, {}) + " ";
    look += std::string(style.bold ? "b" : "") + (style.italic ? "i" : "") + (style.underline ? "u" : "") +
            (style.wraps ? "w" : "") + " " + officeColor(style.color) + " ";
    look += (style.background ? officeColor(*style.background) : "-") + " " +
            sides[static_cast<std::size_t>(style.horizontal)];
    if (isMerged) return look + " merged";
    for (const tables::BorderLine& line : style.borders) {
        look += std::string(" ") + lineNames[static_cast<std::size_t>(line.style)];
    }
    return look;
}

std::string valueOf(const SheetContent& content, const SheetCell& cell) {
    if (cell.value == SheetValue::text) {
        return "text " + nlohmann::json(content.text(cell)).dump(-1, ' ', true);
    }
    const std::string& code = content.styles[cell.style].numberFormat;
    const bool isTime = code.find("yyyy") != std::string::npos || code.find("hh") != std::string::npos;
    return (isTime ? "seconds " + std::to_string(std::llround(cell.number * 86400))
                   : "number " + tables::numberText(cell.number, {})) +
           " " + (code.empty() ? "General" : code);
}

Lines expected(const SheetContent& content, bool withLooks) {
    Lines lines;
    std::set<std::string> merged;
    for (const SheetRange& range : content.merged) merged.insert(sheetPlaceName({range.row, range.column}));
    for (const SheetCell& cell : content.cells) {
        if (cell.value == SheetValue::blank) continue;
        const std::string place = sheetPlaceName({cell.row, cell.column});
        const std::string look =
            withLooks ? lookOf(content.styles[cell.style], merged.find(place) != merged.end()) : "";
        lines[place] = valueOf(content, cell) + look;
    }
    for (const SheetRange& range : content.merged) {
        lines["merged " + sheetPlaceName({range.row, range.column}) + ":" +
              sheetPlaceName({range.row + range.rows - 1, range.column + range.columns - 1})];
    }
    return lines;
}

void compare(const ViewerDocument& document) {
    ExportRequest request;
    request.items = ExportedItems::all;
    const BuiltSheet sheet(document, officeSheetLimits, true, request);
    for (const std::string extension : {".xlsx", ".xls"}) {
        SCOPED_TRACE(extension);
        const Lines read = found(document, extension);
        if (read.empty()) continue;
        const Lines wanted = expected(sheet.content, extension == ".xlsx");
        for (const auto& [place, line] : wanted) {
            const auto own = read.find(place);
            EXPECT_EQ(own == read.end() ? "(none)" : own->second, line) << place;
        }
        for (const auto& [place, line] : read) {
            EXPECT_TRUE(wanted.find(place) != wanted.end()) << place << " " << line;
        }
    }
}

TEST(WorkbookReaders, FindWhatWasBuilt) {
    ViewerDocument document;
    document.setName("March");
    fill(document, everything());
    compare(document);
}

TEST(WorkbookReaders, FindWhateverDocumentsHold) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    for (std::uint32_t seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE(seed);
        ViewerDocument document;
        document.edit(RandomDocuments(seed).document(15, true));
        compare(document);
    }
}

}  // namespace
}  // namespace vexa::frontend
