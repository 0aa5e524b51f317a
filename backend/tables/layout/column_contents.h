// Which side the texts of a column stand on where its look leaves it to what they are.
#pragma once

#include "backend/tables/layout/table_grid.h"

namespace vexa::tables {

/// Sets `alignsRight` of the data cells that hold texts; those of numbers have it, and bear it already.
///
/// A column of numbers stays one when some of its numbers are replaced by texts: all of its texts stand on
/// the right where the column has a format (`hasFormat`, by data column; empty where none has one), or more
/// numbers than words. What has neither letter nor digit, as the dash of a missing value, is no word. A
/// column of nothing but such signs is like the table.
void alignTexts(TableGrid& grid, const std::vector<bool>& hasFormat);

/// The same for a grid whose numbers are texts themselves: a column is one of numbers when all of its words
/// are numbers as they are written ("1,234.50", "$5.00", "12%", "-3.2E-05"; not "007").
void alignWrittenNumbers(TableGrid& grid);

}  // namespace vexa::tables
