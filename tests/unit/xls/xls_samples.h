// What the tests of binary workbooks share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/export_document.h"
#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xls/binary_book.h"

namespace vexa::frontend {

/// The bytes of a document's export into a new workbook, or what went wrong.
[[nodiscard]] std::string xlsOf(const ViewerDocument& document, WorkbookExport request = {});

/// Exports into the file that `request` names.
[[nodiscard]] ExportOutcome exportXls(const ViewerDocument& document, const WorkbookExport& request);

/// A new workbook as bytes, with a sheet and these cells: "B2=text", "C3=1.5", "A1:B2" for merged ones.
[[nodiscard]] std::string bookWith(const std::string& sheet, const std::vector<std::string>& cells);

/// The content of a sheet that the same cells give.
[[nodiscard]] SheetContent contentWith(const std::vector<std::string>& cells);

/// The stream of the workbook in a file, and a file with another stream in its place.
[[nodiscard]] std::string streamOf(const std::string& file, std::string_view name = "Workbook");
[[nodiscard]] std::string withStream(const std::string& file, std::string stream);

/// The stream with one more record before the first one of a kind.
[[nodiscard]] std::string withRecord(const std::string& stream, std::uint16_t before, std::uint16_t id,
                                     std::string_view content);

/// What stands in the cells of a sheet, in their order: "A1=text B1=1.5 C1=", and merged ranges behind.
[[nodiscard]] std::string cellsIn(const std::string& file, const std::string& sheet);

}  // namespace vexa::frontend
