// Writes the rows of an export between those of a worksheet, its cells over those that stand in their places.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "frontend/export/xlsx/sheet_change.h"
#include "frontend/export/xlsx/sheet_copy.h"

namespace vexa::frontend {

class RowChange : public SheetCopy {
  public:
    /// Everything that is referred to must live as long.
    RowChange(const ByteSource& source, const SheetChange& change, DeflateStream& out, SheetChanged& changed);

  protected:
    ~RowChange() = default;

    /// Writes the element of the rows, whose start tag is the piece.
    void sheetData();

    const SheetFootprint& footprint_;
    const SheetSurvey& survey_;

  private:
    void ownRowsBefore(std::uint32_t row);
    void keptRowsHere();
    void row();
    void changedRow();
    void restOfRow();
    bool followCell();
    void cell();
    void replacedCell();
    void keptCell();
    void formula(bool isCut);
    [[nodiscard]] bool mayChangeFormulas() const;
    [[nodiscard]] SheetSpot spot() const;

    SheetRows rows_;
    SheetChanged& changed_;
    /// Formulas that other cells share with one that is written over.
    std::map<std::string, const SharedFormula*, std::less<>> lostShared_;
    /// Where formulas of several cells stand that are cut into.
    std::set<SheetSpot> cutArrays_;
    bool isRowDone_ = false;
    const std::vector<KeptRows>& kept_;
    std::size_t nextKept_ = 0;
    std::uint64_t leftOut_ = 0;  ///< bytes that the source left out so far
    std::int64_t lastRow_ = -1;
    std::int64_t lastColumn_ = -1;
};

}  // namespace vexa::frontend
