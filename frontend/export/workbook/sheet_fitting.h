// What is known of a worksheet only when all of it is there: how wide its columns are, and so how many lines
// texts take and how many columns those that stand by themselves.
#pragma once

#include <cstdint>
#include <vector>

#include "frontend/export/workbook/sheet_content.h"

namespace vexa::frontend {

/// What a text that stands by itself takes at least in one line before it is wrapped, points.
inline constexpr double lineRoom = 480;
/// Points of the largest font that the usual row is high enough for.
inline constexpr double largestUsualFont = 10;

/// A cell that needs a higher row, or one wider than its column: with several lines, a large font, or merged
/// with others.
struct FittedText {
    std::uint32_t cell = 0;     ///< its number among the cells
    std::uint32_t rows = 1;     ///< that are merged
    std::uint32_t columns = 1;  ///< at least, where it spreads
    double width = 0;           ///< in one line, points, with what a cell takes beside its text
    /// A text by itself in its rows: takes further columns up to its width, or `lineRoom` where that is less.
    bool spreads = false;
};

/// Rows that a text by itself may take, since no row is as high as all of it.
[[nodiscard]] std::uint32_t rowsOfLines(std::size_t lines, double fontSize);

class SheetFitting {
  public:
    void widen(std::uint32_t column, double points);
    /// In the order of the cells.
    void add(const FittedText& text) { texts_.push_back(text); }

    /// Sets widths and heights; adds the merged ranges of texts by themselves, with their cells.
    void finish(SheetContent& content, const SheetLimits& limits);

  private:
    struct Spread {
        std::uint32_t cell = 0;
        std::uint32_t rows = 1;
        std::uint32_t columns = 1;
    };
    void addUpWidths(const SheetContent& content, const SheetLimits& limits);
    [[nodiscard]] double widthFrom(std::uint32_t column, std::uint32_t columns) const;
    void spread(FittedText& text, const SheetContent& content);
    [[nodiscard]] double heightOf(const FittedText& text, const SheetContent& content) const;
    void fitOneRow(SheetContent& content, const FittedText& text) const;
    void fitRows(SheetContent& content, const FittedText& text) const;
    void insertCells(SheetContent& content) const;
    void insertRanges(SheetContent& content) const;

    std::vector<double> widths_;  // of columns that have one, 0 otherwise
    std::vector<double> ends_;    // of columns, from the left edge of the sheet on
    std::vector<FittedText> texts_;
    std::vector<Spread> spreads_;
};

}  // namespace vexa::frontend
