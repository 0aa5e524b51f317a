// Tables as commands build them, for the tests of what is made from them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/pivot/bp_procedure.h"
#include "backend/pivot/pivot_table.h"

namespace vexa {

/// A text that is never translated.
BpString plain(std::string_view text);
/// A dimension on an axis.
BpDimension dimension(BpPivotTable& table, const std::string& label, int axis);
/// The table that `fill` builds.
PivotTable built(const std::string& title, const std::function<void(BpPivotTable&)>& fill);

/// The open documents: one without a name, one active.
PivotTable documents();
/// A comment of two lines, with a hidden title.
PivotTable comment();
/// Counts by region and sex below two years, the first of which is divided into quarters.
PivotTable grouped();
/// A layer a country; the second has no cell for the second row.
PivotTable layered();
/// Wide characters take two columns of the terminal, combining ones none.
PivotTable wideTexts();
/// Texts of a language by keys, of which one is a sentence.
PivotTable longKeys();
/// Rows of which some stand in a group, and one in a group that is not shown.
PivotTable exportSummary();
/// A group that stands nowhere but above one of two columns, and a long text without blanks.
PivotTable crowded();
/// One column dimension alone.
PivotTable columnsOnly();
/// One layer dimension alone.
PivotTable layersOnly();
/// Row and column dimension, categories as told, and no cell.
PivotTable withoutCells(const std::vector<std::string>& keys);
/// More columns than a terminal holds, under groups that the cuts go through.
PivotTable broad();

}  // namespace vexa
