// What the tests of workbooks share.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "frontend/export/export_report.h"
#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xlsx/workbook_file.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

/// Makes the content of a sheet cell by cell, by row and column.
class ContentMaker {
  public:
    ContentMaker();
    ContentMaker& number(std::uint32_t row, std::uint16_t column, double value);
    ContentMaker& text(std::uint32_t row, std::uint16_t column, std::string_view text,
                       std::uint32_t raised = 0);
    ContentMaker& blank(std::uint32_t row, std::uint16_t column);
    SheetContent content;

  private:
    SheetCell& add(std::uint32_t row, std::uint16_t column);
};

/// Two rows: a text over two merged columns, and two numbers.
[[nodiscard]] SheetContent smallContent();

using Parts = std::map<std::string, std::string>;

/// A workbook of a sheet `Data`, whose XML is between `<worksheet ...>` and its end, and a sheet `Other`.
/// `more` are further parts, or others in the place of these.
[[nodiscard]] std::string workbookWith(const std::string& sheet, const Parts& more = {});
/// The archive of these parts.
[[nodiscard]] std::string archiveWith(const Parts& parts);
/// Every part of an archive.
[[nodiscard]] Parts partsOf(const std::string& bytes);

/// What an export does with a workbook.
struct Inserted {
    bool done = false;
    ExportError error = ExportError::none;
    std::string reason;
    std::string bytes;
    Parts parts;

    /// What stands in the list of rows of the first sheet.
    [[nodiscard]] std::string rows() const;
    [[nodiscard]] std::string sheet() const;
};
[[nodiscard]] Inserted insertInto(const std::string& bytes, const SheetContent& content,
                                  const WorkbookExport& options);
[[nodiscard]] WorkbookExport modifying(std::string_view sheet,
                                       SheetLocation location = SheetLocation::lastRow,
                                       std::string_view startCell = {});
[[nodiscard]] WorkbookExport creating(std::string_view sheet);
/// A new workbook of this content.
[[nodiscard]] Inserted insertIntoNew(const SheetContent& content, WorkbookKind kind = WorkbookKind::xlsx,
                                     WorkbookExport options = {});

}  // namespace vexa::frontend
