// What stays of a cell when its formula goes.
#pragma once

#include "frontend/export/xls/book_strings.h"
#include "frontend/export/xls/cell_records.h"

namespace vexa::frontend::biff {

/// Appends the cell as one of the value that its formula had last, style and all.
void appendValueOf(Records& records, const CellView& formula, BookStrings& strings);

}  // namespace vexa::frontend::biff
