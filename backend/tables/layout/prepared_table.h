// What all layers of a table have in common when they are laid out.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "backend/tables/layout/axis_labels.h"
#include "backend/tables/layout/axis_lines.h"
#include "backend/tables/layout/table_grid.h"

namespace vexa::tables {

struct PreparedTable {
    PreparedTable(Table given, const LayoutOptions& chosen);

    [[nodiscard]] const TableData& data() const { return *table.data; }
    [[nodiscard]] const TableView& view() const { return *table.view; }
    [[nodiscard]] const TableStyle& style() const { return *table.style; }
    [[nodiscard]] const TableLook& look() const { return *table.style->look(); }

    Table table;
    LayoutOptions options;
    AxisLines rows;
    AxisLines columns;
    AxisLabels rowLabels;
    AxisLabels columnLabels;
    bool hasCut = false;           ///< rows, or all, are left out
    std::uint64_t places = 0;      ///< of the whole grid
    std::uint64_t mostPlaces = 0;  ///< that it may have
    std::uint32_t headerRows = 0;
    std::uint32_t labelColumns = 0;
    std::uint32_t bodyRows = 0;
    std::uint32_t dataColumns = 0;
    std::vector<DisplayFormat> rowFormats;  ///< by line: what its categories say; empty where none does
    std::vector<DisplayFormat> columnFormats;
    std::vector<std::optional<double>> widths;  ///< of all columns of the grid
    std::vector<FootnoteId> unmarked;           ///< footnotes that nothing in the table refers to
    /// By boundary, from the first row's top to the last one's bottom: which line stands between rows of the
    /// body, and between data columns. `groupRows` and `groupColumns` stand only where the look draws them.
    std::vector<Border> dataRowBorders;
    std::vector<Border> labelRowBorders;
    std::vector<Border> dataColumnBorders;
    std::vector<Border> headerColumnBorders;

  private:
    void measure();
    void fit();
    void setFormats();
    void setWidths();
    void setRowBorders();
    void setColumnBorders();
};

/// The format that categories of `dimensions` name, the innermost first.
[[nodiscard]] DisplayFormat formatOfLine(const TableData& data, const std::vector<DimensionId>& dimensions,
                                         std::span<const CategoryId> line);

}  // namespace vexa::tables
