// Tables and notes as text for a terminal.
//
// All texts are UTF-8. Text that came from outside is made safe: it cannot steer the terminal.
#pragma once

#include <string>

#include "apps/rendering/drawing_writer.h"
#include "apps/rendering/text_style.h"
#include "backend/pivot/output_log.h"
#include "backend/tables/layout/table_grid.h"
#include "backend/tables/model/table.h"

namespace vexa::rendering {

/// A table with its title above, its caption and its footnotes below, in lines that each end in a line feed.
///
/// A table that is wider than the terminal is cut into blocks of columns, each with the row labels; in a
/// terminal too narrow for the labels and one narrow column the lines are longer than the terminal is wide.
/// Where a row's label takes several lines, or a row does in a table without row labels, a line is drawn
/// between all rows. Of styles what the table itself sets is shown, not its look. A table without rows or
/// columns says so.
[[nodiscard]] std::string renderTable(const tables::TableGrid& grid, const RenderOptions& options);

void renderTable(const tables::TableGrid& grid, const RenderOptions& options, const TextSink& sink);

/// The same with all layers one below the other, each after what it is called; `sink` takes it piece by
/// piece. Their footnotes are lettered through and stand below the last one.
void renderTable(const tables::Table& table, const RenderOptions& options, const TextSink& sink);
[[nodiscard]] std::string renderTable(const tables::Table& table, const RenderOptions& options);

/// `label: value`, or the value alone where there is no label, in lines that each end in a line feed. A value
/// that is continued on further lines stands below itself, unless the label takes more than half of the
/// terminal.
[[nodiscard]] std::string renderNotes(const NotesAdded& notes, const RenderOptions& options);

}  // namespace vexa::rendering
