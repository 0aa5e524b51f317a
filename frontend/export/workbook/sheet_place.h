// Where on a sheet an export begins.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/export/export_report.h"
#include "frontend/export/workbook/sheet_content.h"

namespace vexa::frontend {

/// A cell, counted from 0.
struct SheetPlace {
    std::uint64_t row = 0;
    std::uint64_t column = 0;

    bool operator==(const SheetPlace&) const = default;
};

/// "B3" and "$b$3", with blanks around it or without, however large; nothing for what is no cell's name.
[[nodiscard]] std::optional<SheetPlace> parseSheetPlace(std::string_view text);

/// "B3".
[[nodiscard]] std::string sheetPlaceName(const SheetPlace& place);

/// The place that STARTCELL names. Fails the report, with a reason, where that is no cell of a sheet with
/// these limits.
[[nodiscard]] std::optional<SheetPlace> startPlace(std::string_view text, const SheetLimits& limits,
                                                   ExportReport& report);

/// Whether so many rows and columns stand on the sheet when they begin at `place`. Fails the report
/// otherwise: with error 11 for columns, with 15 and a reason for rows.
bool fitsFrom(const SheetPlace& place, std::uint64_t rows, std::uint64_t columns, const SheetLimits& limits,
              ExportReport& report);

}  // namespace vexa::frontend
