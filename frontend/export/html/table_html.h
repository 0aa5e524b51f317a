// One grid of a table as an HTML table with its footnotes.
#pragma once

#include <string>
#include <string_view>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/html/style_classes.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

/// Appends the table, its caption and its footnotes. `id` begins the names that links lead to: letters,
/// digits, unlike that of every other grid of the page. Without `classes` nothing is styled. `take` is called
/// between rows and, where they are long, within them.
void appendTable(std::string& html, const tables::TableGrid& grid, std::string_view id, StyleClasses* classes,
                 const TextTaker& take);

}  // namespace vexa::frontend
