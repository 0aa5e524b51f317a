// The extensions of a worksheet that are about places of it: sparklines, and the newer kinds of conditional
// formats and validations.
#pragma once

#include <string>

#include "frontend/export/workbook/sheet_footprint.h"

namespace vexa::frontend {

/// The list of extensions of a sheet, an element with all that is in it, without the places that the export
/// stands on. It stays byte for byte where there are none such, and is empty where nothing is left of it.
/// What cannot be read stays.
[[nodiscard]] std::string withoutTakenPlaces(std::string extensions, const SheetFootprint& footprint);

}  // namespace vexa::frontend
