// Pictures on a worksheet of a binary workbook: its drawing, in pieces between the objects that they show.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/xls/book_drawings.h"
#include "frontend/export/xls/record_reader.h"
#include "frontend/export/xls/sheet_cells.h"

namespace vexa::frontend::biff {

/// Where a picture stands: two cells, and how far in each, in 1,024th of the column's width and 256th of the
/// row's height.
struct PictureAnchor {
    std::uint16_t firstColumn = 0;
    std::uint16_t firstX = 0;
    std::uint16_t firstRow = 0;
    std::uint16_t firstY = 0;
    std::uint16_t lastColumn = 0;
    std::uint16_t lastX = 0;
    std::uint16_t lastRow = 0;
    std::uint16_t lastY = 0;
};

class SheetDrawing {
  public:
    /// A record of the sheet behind its cells; those that are no part of the drawing say nothing.
    void read(const RecordView& record);

    /// Cells that drawn objects cover; comments do not count.
    [[nodiscard]] SheetExtent used() const;
    /// Whether pictures can be added: there is no drawing yet, or one whose pieces are all understood.
    [[nodiscard]] bool canGrow() const;

    void add(BookDrawings& book, std::string_view png, std::string_view alternative,
             const PictureAnchor& anchor);

    [[nodiscard]] bool changed() const { return !added_.empty(); }
    [[nodiscard]] bool isNew() const { return pieces_.empty(); }
    /// The first record of the drawing that was there, with what is said of the whole put right.
    [[nodiscard]] std::string mendedHead() const;
    /// Whole records that come behind those that were there.
    [[nodiscard]] std::string appended() const;

  private:
    [[nodiscard]] std::string headOf(std::size_t length) const;
    [[nodiscard]] std::vector<std::optional<PictureAnchor>> anchors() const;

    std::string bytes_;  ///< of the drawing that was there
    std::vector<RecordView> pieces_;
    std::vector<std::uint16_t> objects_;  ///< kinds, in their order
    std::uint16_t lastObject_ = 0;
    std::optional<std::uint32_t> drawing_;
    std::uint32_t firstShape_ = 0;  ///< of a new drawing: what holds all others
    std::uint32_t lastShape_ = 0;
    std::uint32_t addedShapes_ = 0;
    std::size_t addedLength_ = 0;
    struct Added {
        std::string shape;
        std::string object;  ///< its whole record
    };
    std::vector<Added> added_;
};

}  // namespace vexa::frontend::biff
