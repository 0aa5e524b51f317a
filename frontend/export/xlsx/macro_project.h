// The project of macros of a workbook that has none yet: the modules of the workbook and of its sheets,
// without any code.
#pragma once

#include <string>
#include <vector>

#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// What macros call the workbook.
inline constexpr std::string_view workbookCodeName = "ThisWorkbook";

/// The bytes of the project, a compound file; the same for equal names. `sheets` are what macros call the
/// sheets: letters and digits.
PackageResult makeMacroProject(const std::vector<std::string>& sheets, std::string& project);

/// A stream of a project as it is stored, in pieces of 4,096 bytes: without gain, which a few lines do not
/// need. `text` has 3,600 bytes at most.
[[nodiscard]] std::string packedMacroText(std::string_view text);

}  // namespace vexa::frontend
