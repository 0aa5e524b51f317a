// How wide the columns of one table have to be on a worksheet.
#pragma once

#include <cstdint>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/font_widths.h"

namespace vexa::frontend {

/// What a cell takes beside its text, points.
inline constexpr double cellPadding = 7;
/// Fonts of readers are not quite those that were measured.
inline constexpr double fontReserve = 1.03;

/// What a cell needs for a text of that width in one line, points.
[[nodiscard]] constexpr double cellWidth(double textWidth) { return textWidth * fontReserve + cellPadding; }
/// What of a cell's width texts can take for certain.
[[nodiscard]] constexpr double textRoom(double width) { return (width - cellPadding) / fontReserve + 0.01; }

/// Takes what the cells of a grid need, each once. A number is never cut, whatever width is asked for; texts
/// are wrapped in columns that would become too wide.
class ColumnFit {
  public:
    explicit ColumnFit(const tables::TableGrid& grid);

    /// A number in one line, points.
    void addNumber(const tables::GridCell& cell, double width);
    void addText(const tables::GridCell& cell, const TextExtent& extent);

    /// Of all columns, points.
    [[nodiscard]] std::vector<double> widths() const;

  private:
    struct Need {
        double number = 0;
        double word = 0;  ///< of texts, up to what they may take
        double text = 0;
    };
    /// A word in a label over several columns.
    struct Span {
        std::uint32_t column = 0;
        std::uint32_t columns = 1;
        double word = 0;
    };
    [[nodiscard]] double widthOf(std::uint32_t column) const;
    [[nodiscard]] double mostForText(const tables::GridCell& cell) const;

    const tables::TableGrid& grid_;
    std::vector<Need> needs_;
    std::vector<Span> spans_;
};

}  // namespace vexa::frontend
