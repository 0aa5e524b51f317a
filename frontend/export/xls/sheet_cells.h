// The cells of a worksheet in a binary workbook, and its rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xls/book_strings.h"
#include "frontend/export/xls/book_styles.h"
#include "frontend/export/xls/cell_records.h"
#include "frontend/export/xls/shared_formulas.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend::biff {

/// Rows and columns that are in use, counted from the first of the sheet.
struct SheetExtent {
    std::uint32_t rows = 0;
    std::uint32_t columns = 0;

    void include(std::uint32_t rowsUsed, std::uint32_t columnsUsed);
};

/// What is put on a sheet, and where it begins. Everything must live as long as it is used.
struct PlacedContent {
    const SheetContent& content;
    std::uint32_t row = 0;
    std::uint32_t column = 0;
    const std::vector<CellFormat>& formats;  ///< by id of the style
    BookStrings& strings;
};

class SheetCells {
  public:
    /// Takes in a record of a row, a cell, or what goes with one; records stand one behind the other. Views
    /// into them are kept. False where it is none, or is broken.
    [[nodiscard]] bool read(const RecordView& record);
    /// To be called when all records have been read.
    void finishReading();

    /// What holds values.
    [[nodiscard]] SheetExtent used() const;
    /// Every cell and row, empty ones too.
    [[nodiscard]] SheetExtent extent() const;

    /// Puts the content over what stands there.
    void place(const PlacedContent& placed);
    [[nodiscard]] bool overwrote() const { return overwrote_; }
    /// Whether formulas of several cells were in the way, which went.
    [[nodiscard]] bool cutsFormulas() const { return cutsFormulas_; }
    /// Whether one of the placed cells is in the range.
    [[nodiscard]] bool placedWithin(const CellRange& range) const { return placedCells(range) > 0; }

    /// Sets the height of a row in points; of one that `keeps` its own only where it is lower.
    void setHeight(std::uint32_t row, double points, bool keeps);
    /// In points; `usual` where it says nothing.
    [[nodiscard]] double height(std::uint32_t row, double usual) const;

    /// Appends rows and cells in blocks. What begins where goes to `blocks`: the index's entry of each.
    void append(std::string& out, double usualHeight, std::vector<std::uint32_t>& blocks);

  private:
    struct Row {
        std::string_view raw;  ///< as read; empty where it is not
        double height = 0;     ///< as set; 0 where it is not
    };
    void encode(const PlacedContent& placed);
    void encodeCell(const PlacedContent& placed, const SheetCell& cell, Records& records);
    [[nodiscard]] std::uint64_t placedCells(const CellRange& range) const;
    void dissolveCut(BookStrings& strings);
    void cutOut();
    void cutRow(std::vector<CellView>::const_iterator& cell, std::vector<CellView>::const_iterator ownBegin,
                std::vector<CellView>::const_iterator ownEnd, std::vector<CellView>& kept);
    void appendRow(std::string& out, std::uint32_t row, double usualHeight, std::size_t begin,
                   std::size_t end) const;

    std::vector<CellView> cells_;  ///< by row, then by column
    std::vector<CellView> own_;    ///< the placed ones
    std::map<std::uint32_t, Row> rows_;
    SharedFormulas shared_;
    std::string ownBytes_;
    std::deque<std::string> pieces_;
    bool isSorted_ = true;
    bool overwrote_ = false;
    bool cutsFormulas_ = false;
};

}  // namespace vexa::frontend::biff
