// The pictures of a worksheet: those that are there, as far as they take places, and those of an export
// behind them.
#pragma once

#include <string>

#include "frontend/export/workbook/sheet_footprint.h"
#include "frontend/export/xlsx/sheet_survey.h"
#include "frontend/export/xlsx/workbook_package.h"

namespace vexa::frontend {

/// Widens what the survey says the sheet takes by what its drawing (a part's name) covers.
PackageResult surveyDrawing(const WorkbookPackage& package, const std::string& drawing, SheetSurvey& survey);

/// Adds the pictures of the content to the drawing, which must be there.
PackageResult addPictures(WorkbookPackage& package, const std::string& drawing,
                          const SheetFootprint& footprint);

/// Makes an empty drawing for the sheet, and gives its name and the id of the sheet's relation to it.
PackageResult addDrawing(WorkbookPackage& package, const std::string& sheet, std::string& drawing,
                         std::string& id);

}  // namespace vexa::frontend
