// The smallest workbook, to which sheets are added as to any other.
#pragma once

#include <string>
#include <string_view>

#include "frontend/export/xlsx/workbook_package.h"

namespace vexa::frontend {

/// What macros call the sheet that a new workbook has, where it has macros.
inline constexpr std::string_view firstSheetCodeName = "Sheet1";

/// Puts in what every workbook has, but no sheet. `main` is the name of the part of the workbook. With macros
/// the project has a module for one sheet.
PackageResult beginWorkbook(WorkbookPackage& package, const std::string& main, bool hasMacros,
                            std::string_view title, std::string_view language);

/// A worksheet without rows. `codeName` is what macros call it, or empty.
[[nodiscard]] std::string emptySheet(std::string_view codeName, bool isFirst);

}  // namespace vexa::frontend
