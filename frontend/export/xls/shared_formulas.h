// Formulas of binary workbooks that several cells have in common: the record of one of the cells is followed
// by the formula, and all of them name that cell.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/export/xls/cell_records.h"

namespace vexa::frontend::biff {

class SharedFormulas {
  public:
    /// A record behind that of a formula. Ranges whose cells belong together are kept in mind.
    void read(const RecordView& record);

    /// Ranges with one formula for all of their cells, of which none can have another one alone.
    [[nodiscard]] const std::vector<CellRange>& whole() const { return whole_; }

    /// Whether the cell has its value from the formula of such a range.
    [[nodiscard]] static bool belongsTo(const CellView& cell, const CellRange& range);

    /// A formula that goes: what several cells share in it has to go to another of them.
    void drop(const CellView& cell);
    /// Puts what was dropped where it is still needed. `pieces` owns what is written anew.
    void settle(std::vector<CellView>& cells, std::deque<std::string>& pieces) const;

  private:
    using Place = std::pair<std::uint32_t, std::uint32_t>;
    static std::optional<Place> placeNamed(const CellView& cell);

    std::vector<CellRange> whole_;
    std::map<Place, std::string_view> dropped_;  ///< the formula, by the cell that all name
};

}  // namespace vexa::frontend::biff
