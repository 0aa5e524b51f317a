// A grid of a table as lines of text.
#pragma once

#include <cstddef>
#include <string>

#include "backend/tables/layout/table_grid.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

struct TextTableOptions {
    std::size_t columnWidth =
        0;              ///< columns of text of every column without its padding; 0: as wide as needed
    bool tabs = false;  ///< cells divided by tabs, one line a row, without borders
    std::string rowBorder = "-";     ///< one character that fills lines between rows; empty for no lines
    std::string columnBorder = "|";  ///< one character between columns; empty for none
};

/// Lines of cells that are held while a table is written.
inline constexpr std::size_t mostTextLines = 5'000'000;

/// About how many lines the texts of a grid's cells come to, each counted once wherever it stands; 0 for
/// cells that are divided by tabs.
[[nodiscard]] std::size_t textLinesOf(const tables::TableGrid& grid, const TextTableOptions& options);

/// Title, layer, grid, caption and footnotes, in lines that each end in a line feed; UTF-8. Control
/// characters are made visible.
void appendTable(std::string& text, const tables::TableGrid& grid, const TextTableOptions& options,
                 const TextTaker& take);

}  // namespace vexa::frontend
