// The smallest workbook, to which sheets are added as to any other.
#pragma once

#include <string>
#include <string_view>

#include "frontend/export/xlsx/workbook_package.h"

namespace vexa::frontend {

/// Puts in what every workbook has, but no sheet. `main` is the name of the part of the workbook.
PackageResult beginWorkbook(WorkbookPackage& package, const std::string& main, bool hasMacros,
                            std::string_view title, std::string_view language);

/// A worksheet without rows. `codeName` is what macros call it, or empty.
[[nodiscard]] std::string emptySheet(std::string_view codeName, bool isFirst);

}  // namespace vexa::frontend
