// Numbers of tables as numbers of workbooks: the value that a cell holds, and the format code that shows it
// as the table does. Codes are those that the formats of workbooks have in common; literal texts in them do
// not change with the reader's language, the marks of decimals and thousands do.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "backend/tables/formats/display_format.h"

namespace vexa::frontend {

inline constexpr double secondsOfDay = 86'400;

/// Why a number is a text in a workbook.
enum class NumberObstacle : std::uint8_t {
    none,
    notFinite,   ///< nan, inf
    tooSmall,    ///< workbooks take numbers this close to 0 for 0
    beforeDays,  ///< a date before March 1900
    noSuchTime   ///< a time below 0, or of 2^32 seconds and more
};

/// A number in a workbook. With an obstacle there is none, and the cell holds the table's own text.
struct SheetNumber {
    NumberObstacle obstacle = NumberObstacle::none;
    double value = 0;              ///< of the cell: of dates and times days, whole seconds
    tables::DisplayFormat format;  ///< what the code has to show
    bool minusIsDropped = false;   ///< it is below 0 and rounded to 0
};

/// `value` as a cell holds it that shows it in `format`.
[[nodiscard]] SheetNumber sheetNumber(double value, tables::DisplayFormat format);

/// The code of a number's format, without colours; empty for General.
[[nodiscard]] std::string formatCode(tables::DisplayFormat format, bool minusIsDropped = false);

/// `code` with a text behind the number.
[[nodiscard]] std::string codeWithSuffix(std::string_view code, std::string_view suffix);

/// A code that shows `text` whatever the number is.
[[nodiscard]] std::string literalCode(std::string_view text);

/// What a code may have at most, in UTF-16 units.
inline constexpr std::size_t longestFormatCode = 255;

}  // namespace vexa::frontend
