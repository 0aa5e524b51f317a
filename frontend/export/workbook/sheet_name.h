// Names of worksheets: which ones workbooks allow, and when two are the same.
#pragma once

#include <cstddef>
#include <string_view>

#include "frontend/export/export_report.h"

namespace vexa::frontend {

/// UTF-16 units of the longest name of a sheet.
inline constexpr std::size_t longestSheetName = 31;

/// Why a name (UTF-8) is none for a sheet, else `none`: `sheetNameTooLong`, or `sheetNameForbidden` where it
/// is empty, holds one of : \ / ? * [ ] or a control character, or begins or ends with an apostrophe.
[[nodiscard]] ExportError sheetNameError(std::string_view name);

/// Fails the report, with a reason, where the name is none for a sheet.
bool checkSheetName(std::string_view name, ExportReport& report);

/// Whether workbooks take two names for the same: without regard to case, blanks count.
[[nodiscard]] bool isSameSheetName(std::string_view left, std::string_view right);

}  // namespace vexa::frontend
