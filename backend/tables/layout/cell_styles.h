// The styles of a grid's cells: an area's look, what the table itself sets, bands and borders. Equal ones are
// made once.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "backend/tables/layout/table_grid.h"

namespace vexa::tables {

/// Which line stands at each side of a cell: top, right, bottom, left. `noBorder` for none.
using CellBorders = std::array<std::uint8_t, 4>;
inline constexpr std::uint8_t noBorder = borderCount;

class CellStyles {
  public:
    /// `styles` gets the styles; both must outlive the object.
    CellStyles(const TableStyle& style, std::vector<ShownStyle>& styles);

    /// The style of a cell of an area that has `own` as its style beyond the area's, and stands in a band or
    /// not.
    [[nodiscard]] ShownStyleId of(Area area, StyleId own, bool banded, const CellBorders& borders) {
        const Wanted wanted{area, banded, borders, own};
        if (hasLast_ && wanted == last_) return lastId_;
        last_ = wanted;
        hasLast_ = true;
        return lastId_ = find(wanted);
    }
    /// The style of a text outside the grid.
    [[nodiscard]] ShownStyleId ofText(Area area) {
        return of(area, 0, false, {noBorder, noBorder, noBorder, noBorder});
    }

  private:
    struct Wanted {
        Area area;
        bool banded;
        CellBorders borders;
        StyleId own;

        bool operator==(const Wanted&) const = default;
    };
    [[nodiscard]] ShownStyleId find(const Wanted& wanted);
    [[nodiscard]] ShownStyle make(Area area, StyleId own, bool banded, const CellBorders& borders) const;

    const TableStyle& style_;
    std::vector<ShownStyle>& styles_;
    std::array<std::uint8_t, borderCount + 1> sameLine_{};  // the first border that is drawn alike
    std::unordered_map<std::uint64_t, ShownStyleId> ids_;
    Wanted last_{};  // neighbours mostly want the same
    ShownStyleId lastId_ = 0;
    bool hasLast_ = false;
};

}  // namespace vexa::tables
