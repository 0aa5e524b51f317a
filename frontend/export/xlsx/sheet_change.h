// Writes an export into a worksheet: its rows between those that are there, its cells over those that stand
// in their places. Everything else is copied as it comes.
#pragma once

#include <string>
#include <vector>

#include "frontend/export/workbook/sheet_footprint.h"
#include "frontend/export/xlsx/kept_rows.h"
#include "frontend/export/xlsx/sheet_rows.h"
#include "frontend/export/xlsx/sheet_survey.h"
#include "frontend/package/deflate_stream.h"
#include "frontend/package/zip_entry_stream.h"

namespace vexa::frontend {

struct SheetChange {
    const SheetFootprint& footprint;
    const CellNumbers& numbers;
    const SheetSurvey& survey;
    /// The id of the relation to the drawing, where the sheet has none yet and shall have one.
    std::string drawing;
    /// Rows that are copied as they are packed, whose blocks the source leaves out.
    std::vector<KeptRows> kept;
};

/// Whether formulas must be looked at in all rows, because the export stands on one that other cells share.
[[nodiscard]] bool changesFormulas(const SheetFootprint& footprint, const SheetSurvey& survey);

struct SheetChanged {
    bool overwrites = false;     ///< cells with values were replaced
    bool dropsFormulas = false;  ///< formulas went, with their cells or without
    bool cutsArrays = false;     ///< formulas of several cells were in the way: values stay where cells stay
};

/// `source` is the sheet that `survey` was made of.
///
/// In the way of what is written: merged ranges are dissolved; links, conditional formats and validations
/// lose those places; formulas that were shared with a cell that is written over get their own text; formulas
/// of several cells go as a whole and leave their values.
PackageResult changeSheet(const ByteSource& source, const SheetChange& change, DeflateStream& out,
                          SheetChanged& changed);

}  // namespace vexa::frontend
