// Numbers as they are shown, and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backend/tables/formats/display_format.h"

namespace vexa::tables {

/// Appends `value` to `out` in ASCII, as `format` shows it.
///
/// What is rounded is what fifteen significant digits say of the number, and halves go away from zero: 0.285
/// becomes 0.29 although the nearest double lies below it. Where a format shows more than fifteen digits, it
/// is the shortest number that reads as the same double; zeros follow its last digit. A number that is
/// rounded to zero has no minus.
///
/// Dates and times count seconds since 1970-01-01 00:00 in the Gregorian calendar, extended to all years;
/// fractions of a second are cut. A date outside the years 1 to 9999, and a time of 10^15 seconds or more, is
/// shown as a number without a format. So are NaN and infinity in every format: nan, inf, -inf.
void appendNumber(std::string& out, double value, DisplayFormat format);

/// The same as a text of its own.
[[nodiscard]] std::string numberText(double value, DisplayFormat format);

/// Appends the shortest text that `parseNumber` without a format, and every other reader, takes for the same
/// double; minus zero keeps its sign. NaN and infinity become nan, inf, -inf.
void appendShortest(std::string& out, double value);

/// The number that `text` shows in `format`; nothing when it shows none. Blanks around it do not count. Takes
/// what `appendNumber` writes, and in the same form what it does not: fewer or more digits, no grouping
/// marks, a plus, a missing $ or %, months in any case.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text, DisplayFormat format);

}  // namespace vexa::tables
