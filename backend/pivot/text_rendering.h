// Tables and notes of the output log as text for a terminal.
//
// All texts are UTF-8. Text that came from outside is made safe: it cannot steer the terminal.
#pragma once

#include <cstddef>
#include <string>

#include "backend/pivot/output_log.h"
#include "backend/pivot/pivot_table.h"

namespace vexa {

/// What the terminal can do.
struct RenderOptions {
    std::size_t width = 0;  ///< columns of the terminal, 0 for no limit
    bool unicode = true;    ///< lines drawn with box characters instead of - | +
    bool bold = false;      ///< bold text by ANSI sequences; otherwise bold is not shown
};

/// Points of a table's column widths that count as one column of the terminal.
constexpr int pointsPerColumn = 6;
/// No limit makes a column narrower than so many columns of text: below that nothing can be read.
constexpr std::size_t narrowestColumn = 6;

/// The table with its title above (unless that is hidden), its caption (where it differs from the title) and
/// its notes below, in lines that each end in a line feed.
///
/// Rows and columns stand in the order of their categories. Where an axis has several dimensions, and in a
/// table with layers, only rows and columns that have a cell are shown; otherwise every category is. A table
/// that is wider than the terminal is cut into blocks of columns, each with the row labels; in a terminal too
/// narrow for the labels and one narrow column the lines are longer than the terminal is wide. Where a row's
/// label takes several lines, or a row does in a table without row labels, a line is drawn between all rows.
/// A table without rows or columns says so.
[[nodiscard]] std::string renderTable(const PivotTable& table, const RenderOptions& options);

/// `label: value`, or the value alone where there is no label, in lines that each end in a line feed. A value
/// that is continued on further lines stands below itself, unless the label takes more than half of the
/// terminal.
[[nodiscard]] std::string renderNotes(const NotesAdded& notes, const RenderOptions& options);

}  // namespace vexa
