// The rows and cells of an export as a worksheet's XML, in their order, to be put between those that are
// there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/workbook/sheet_footprint.h"

namespace vexa::frontend {

/// What cells are named by in a workbook.
struct CellNumbers {
    std::vector<std::size_t> styles;   ///< by `SheetStyleId`
    std::vector<std::size_t> strings;  ///< of each cell of the content; of those with texts it counts
    std::size_t stringsBefore = 0;     ///< to be added to each
};

/// A cell's value as XML has it: as short as it can be, whole numbers without an exponent.
void appendCellNumber(std::string& out, double number);

class SheetRows {
  public:
    /// `rowHeight` is what a row of the sheet has that says nothing, points. `prefix` is that of its
    /// elements. All must live as long.
    SheetRows(const SheetFootprint& footprint, const CellNumbers& numbers, double rowHeight,
              std::string_view prefix);

    /// The next row that something is written in, from 0; nothing at the end.
    [[nodiscard]] std::optional<std::uint32_t> next() const;
    /// The height that its row wants, points.
    [[nodiscard]] std::optional<double> height() const;
    /// The column of the next cell in that row.
    [[nodiscard]] std::optional<std::uint32_t> nextColumn() const;
    /// Appends the next cell of the row.
    void appendCell(std::string& out);
    /// Appends all that is left of the row's cells, and goes to the next row.
    void finishRow(std::string& out);
    /// The whole next row.
    void appendRow(std::string& out);

  private:
    [[nodiscard]] std::uint32_t firstRow() const;

    const SheetFootprint& footprint_;
    const CellNumbers& numbers_;
    std::string_view prefix_;
    std::string cellTag_;
    std::string valueTag_;
    std::string endTags_;                      // of both
    std::map<std::uint32_t, double> heights_;  // of the content's rows
    std::map<std::uint32_t, double>::const_iterator nextHeight_;
    std::size_t nextCell_ = 0;
    std::uint32_t row_ = 0;  // of the content
};

}  // namespace vexa::frontend
