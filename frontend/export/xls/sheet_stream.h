// A worksheet of a binary workbook: read, something put on it, and written again. What is not understood is
// kept as it stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xls/book_drawings.h"
#include "frontend/export/xls/record_reader.h"
#include "frontend/export/xls/sheet_cells.h"
#include "frontend/export/xls/sheet_columns.h"
#include "frontend/export/xls/sheet_drawing.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend::biff {

class SheetStream {
  public:
    /// `digitWidth`: of a digit of the workbook's usual font, in dots of 1/96 inch.
    explicit SheetStream(double digitWidth) : columns_(digitWidth) {}

    /// The records of a sheet, which must live as long as this. Refuses what is broken.
    PackageResult read(std::string_view substream);

    /// What values, merged cells and drawings cover.
    [[nodiscard]] SheetExtent used() const;

    /// Puts the content there, once. Refuses where something of the sheet cannot be kept right.
    PackageResult place(const PlacedContent& placed, BookDrawings& drawings);
    /// Whether values were there that are no more.
    [[nodiscard]] bool overwrote() const { return cells_.overwrote(); }
    [[nodiscard]] bool cutsFormulas() const { return cells_.cutsFormulas(); }

    /// The records of the sheet. Places in them are counted from the sheet's own beginning.
    [[nodiscard]] std::string write();

  private:
    void readRecord(const RecordView& record);
    void readMerged(const RecordView& record);
    void placeColumns(const PlacedContent& placed, std::uint32_t inUse);
    void placeRows(const PlacedContent& placed, std::uint32_t inUse);
    void placeMerged(const PlacedContent& placed);
    void placePageBreaks(const PlacedContent& placed);
    void placePictures(const PlacedContent& placed, BookDrawings& drawings);
    [[nodiscard]] PictureAnchor anchorOf(const SheetPicture& picture, std::uint32_t row,
                                         std::uint32_t column) const;
    void writeFront(std::string& out, std::size_t blocks);
    void writeBack(std::string& out) const;
    void writeColumns(std::string& out);
    void writePageBreaks(std::string& out) const;
    void writeMerged(std::string& out) const;
    void writeDimensions(std::string& out, std::string_view raw) const;
    void mendIndex(std::string& out, std::size_t tableAt, const std::vector<std::uint32_t>& blocks) const;

    std::vector<RecordView> front_;
    std::vector<RecordView> back_;
    std::deque<std::string> pieces_;  ///< records that were written anew
    SheetColumns columns_;
    SheetCells cells_;
    SheetDrawing drawing_;
    std::vector<CellRange> merged_;
    std::vector<CellRange> pivots_;
    std::map<std::uint32_t, std::uint32_t> pageBreaks_;  ///< by row: the columns that they go through
    bool pageBreaksChanged_ = false;
    double usualHeight_ = 12.75;
    bool mergedChanged_ = false;
    bool columnsWritten_ = false;
    std::size_t indexAt_ = 0;  ///< while it is written
    std::size_t columnsAt_ = 0;
};

}  // namespace vexa::frontend::biff
