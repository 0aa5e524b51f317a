// What the tests of worksheets share.
#pragma once

#include <string>

#include "frontend/document/viewer_document.h"
#include "frontend/export/export_report.h"
#include "frontend/export/workbook/sheet_builder.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

/// A worksheet of items, which are written as results are (docs/formats/results-json.md).
struct BuiltSheet {
    explicit BuiltSheet(const std::string& items, const SheetLimits& limits = officeSheetLimits,
                        bool notesAndCaptions = true, const ExportRequest& request = {});
    explicit BuiltSheet(const ViewerDocument& document, const SheetLimits& limits = officeSheetLimits,
                        bool notesAndCaptions = true, const ExportRequest& request = {});

    /// What stands in a cell, by its name ("B3"): a text as it is with its raised end in brackets, a number
    /// with its format code behind it; "(none)" where there is no cell, "(blank)" for an empty one.
    [[nodiscard]] std::string at(const std::string& cell) const;
    [[nodiscard]] const SheetStyle& styleAt(const std::string& cell) const;
    /// "A1:B1 C3:C4 ".
    [[nodiscard]] std::string merged() const;
    /// Of a column by its letters, and of a row by its number, points; 0 where none is set.
    [[nodiscard]] double widthOf(const std::string& column) const;
    [[nodiscard]] double heightOf(std::uint32_t row) const;
    /// The texts of column A, each row ended by a line feed.
    [[nodiscard]] std::string firstColumn() const;

    ExportReport report;
    SheetContent content;

  private:
    void build(const ViewerDocument& document, const SheetLimits& limits, bool notesAndCaptions,
               const ExportRequest& request);
    [[nodiscard]] const SheetCell* find(const std::string& cell) const;
    [[nodiscard]] std::string shown(const SheetCell* cell) const;
};

}  // namespace vexa::frontend
