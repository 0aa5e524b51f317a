// Which places of a sheet an export takes.
#pragma once

#include <cstdint>
#include <vector>

#include "frontend/export/workbook/cell_reference.h"
#include "frontend/export/workbook/sheet_content.h"

namespace vexa::frontend {

/// A content on its place on a sheet. The content must live as long.
class SheetFootprint {
  public:
    SheetFootprint(const SheetContent& content, SheetSpot at);

    [[nodiscard]] const SheetContent& content() const { return content_; }
    [[nodiscard]] SheetSpot at() const { return at_; }
    /// From its first cell to its last one; without cells one place.
    [[nodiscard]] const SheetRange& box() const { return box_; }
    /// Whether there is a cell in the range. Between the first and the last cell of a row every place counts;
    /// pictures lie over the cells and take none.
    [[nodiscard]] bool touches(const SheetRange& range) const;
    /// Whether every place of the range is taken.
    [[nodiscard]] bool covers(const SheetRange& range) const;
    /// Whether a cell is written there.
    [[nodiscard]] bool hasCell(SheetSpot spot) const;
    /// What of the range is not taken.
    [[nodiscard]] std::vector<SheetRange> without(const SheetRange& range) const;

  private:
    std::vector<SheetRange>::const_iterator firstBlock(std::uint32_t row) const;

    const SheetContent& content_;
    SheetSpot at_;
    SheetRange box_;
    std::vector<SheetRange> blocks_;  ///< by row; rows of equal extent together
};

}  // namespace vexa::frontend
