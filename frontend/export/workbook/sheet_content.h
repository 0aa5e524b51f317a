// What an export puts on a worksheet: cells with their values and styles, merged places, widths, pictures.
// The same for every kind of workbook, and nothing of any file's form. Counted from the upper left corner of
// what is exported; whoever writes a sheet adds the place where that begins.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/tables/model/table_look.h"

namespace vexa::frontend {

/// How a cell is drawn. `general` alignment leaves numbers right and texts left.
struct SheetStyle {
    std::string font = "sans-serif";  ///< as the document names it; generic families too
    double size = 9;                  ///< points
    bool bold = false;
    bool italic = false;
    bool underline = false;
    tables::Color color;
    std::optional<tables::Color> background;
    tables::HorizontalAlign horizontal = tables::HorizontalAlign::mixed;
    tables::VerticalAlign vertical = tables::VerticalAlign::top;
    bool wraps = false;
    std::array<tables::BorderLine, 4> borders{};  ///< top, right, bottom, left
    std::string numberFormat;                     ///< a format code of workbooks; empty: General

    bool operator==(const SheetStyle&) const = default;
};

/// Index into `SheetContent::styles`.
using SheetStyleId = std::uint32_t;

enum class SheetValue : std::uint8_t { blank, text, number };

/// One cell. A merged range has a cell in each of its places, so that all of them bear its borders; only the
/// first has a value.
struct SheetCell {
    std::uint32_t row = 0;
    std::uint16_t column = 0;
    SheetValue value = SheetValue::blank;
    SheetStyleId style = 0;
    double number = 0;
    std::uint32_t textBegin = 0;  ///< in `SheetContent::texts`, UTF-8
    std::uint32_t textLength = 0;
    /// Bytes at the end of the text that are raised: the marks of footnotes. Not more than the text has.
    std::uint32_t raised = 0;
};

struct SheetRange {
    std::uint32_t row = 0;
    std::uint32_t column = 0;
    std::uint32_t rows = 1;
    std::uint32_t columns = 1;

    bool operator==(const SheetRange&) const = default;
};

/// A picture, with its upper left corner in that of a cell. Its rows are reserved: nothing else stands there.
struct SheetPicture {
    std::uint32_t row = 0;
    std::uint32_t column = 0;
    std::uint32_t rows = 1;  ///< of the usual height, as many as it takes
    double width = 0;        ///< points
    double height = 0;
    std::string png;          ///< bytes; an empty frame where this build cannot draw
    std::string svg;          ///< what the bitmap was drawn from; empty where there is none
    std::string alternative;  ///< UTF-8
    std::size_t item = 0;     ///< number of the item
};

struct SheetContent {
    std::vector<SheetCell> cells;  ///< by row, then by column; no place twice
    std::string texts;
    std::vector<SheetStyle> styles;  ///< no two are equal
    std::vector<SheetRange> merged;  ///< ranges of more than one place, by row, then by column; none overlap
    std::map<std::uint32_t, double> widths;   ///< of columns, points
    std::map<std::uint32_t, double> heights;  ///< of rows, points, where the usual one does not do
    std::vector<SheetPicture> pictures;
    std::vector<std::uint32_t> pageBreaks;  ///< rows that a page begins with, ascending; not the first one
    std::uint32_t rows = 0;                 ///< that it takes, pictures included
    std::uint32_t columns = 0;

    [[nodiscard]] std::string_view text(const SheetCell& cell) const {
        return std::string_view(texts).substr(cell.textBegin, cell.textLength);
    }
};

/// What a kind of workbook can hold.
struct SheetLimits {
    std::uint32_t rows = 1'048'576;
    std::uint32_t columns = 16'384;
    std::size_t textUnits = 32'767;  ///< UTF-16 units in a cell
};
inline constexpr SheetLimits officeSheetLimits{};
inline constexpr SheetLimits binarySheetLimits{65'536, 256, 32'767};

/// The height of a row that says nothing of it, points.
inline constexpr double usualRowHeight = 15;

}  // namespace vexa::frontend
