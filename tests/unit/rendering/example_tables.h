// Tables as commands build them, for the tests of what is made from them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/rendering/table_rendering.h"
#include "backend/pivot/bp_procedure.h"
#include "backend/tables/model/table.h"

namespace vexa {

/// A text that is never translated.
BpString plain(std::string_view text);
/// A dimension on an axis.
BpDimension dimension(BpPivotTable& table, const std::string& label, int axis);
/// The table that `fill` builds.
tables::Table built(const std::string& title, const std::function<void(BpPivotTable&)>& fill);

/// The open documents: one without a name, one active.
tables::Table documents();
/// A comment of two lines, with a hidden title.
tables::Table comment();
/// Counts by region and sex below two years, the first of which is divided into quarters.
tables::Table grouped();
/// A layer a country; the second has no cell for the second row.
tables::Table layered();
/// Wide characters take two columns of the terminal, combining ones none.
tables::Table wideTexts();
/// Texts of a language by keys, of which one is a sentence.
tables::Table longKeys();
/// Rows of which some stand in a group, and one in a group that is not shown.
tables::Table exportSummary();
/// A group that stands nowhere but above one of two columns, and a long text without blanks.
tables::Table crowded();
/// One column dimension alone.
tables::Table columnsOnly();
/// One layer dimension alone.
tables::Table layersOnly();
/// Row and column dimension, categories as told, and no cell.
tables::Table withoutCells(const std::vector<std::string>& keys);
/// More columns than a terminal holds, under groups that the cuts go through.
tables::Table broad();

/// The picture of a table after a line feed, with the sequences for bold text written out as <b> and </b>.
std::string picture(const tables::Table& table, const rendering::RenderOptions& options);

}  // namespace vexa
