// Records of a sheet that are about places of it: links, conditional formats, validations.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "frontend/export/workbook/sheet_footprint.h"
#include "frontend/export/xls/record_reader.h"

namespace vexa::frontend::biff {

/// Takes the places that an export stands on out of these records; one that has no place left goes. Formulas
/// in them are written as seen from each cell, and stay. `pieces` owns what is written anew.
void leaveOutPlaces(std::vector<RecordView>& records, const SheetFootprint& footprint,
                    std::deque<std::string>& pieces);

}  // namespace vexa::frontend::biff
