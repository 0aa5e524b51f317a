// Display formats: how a number of a table is shown.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexa::tables {

enum class FormatKind : std::uint8_t {
    none,          ///< no format: fifteen significant digits at most
    plain,         ///< F: 1234.50
    comma,         ///< COMMA: 1,234.50
    dot,           ///< DOT: 1.234,50
    dollar,        ///< DOLLAR: $1,234.50
    percent,       ///< PCT: 12.5%, the number as it is
    scientific,    ///< E: 1.23E+03
    zeroPadded,    ///< N: 001234
    date,          ///< DATE: 05-Mar-2026
    americanDate,  ///< ADATE: 03/05/2026
    europeanDate,  ///< EDATE: 05.03.2026
    sortableDate,  ///< SDATE: 2026/03/05
    time,          ///< TIME: 10:07:09
    dateTime,      ///< DATETIME: 05-Mar-2026 10:07:09
};

/// The greatest width and number of decimals that a format may name.
inline constexpr int kGreatestFormatWidth = 40;
inline constexpr int kMostFormatDecimals = 16;

/// A format. Width is a wish of the one who named it: only `zeroPadded` makes a text longer for it, nothing
/// makes one shorter.
struct DisplayFormat {
    FormatKind kind = FormatKind::none;
    std::uint8_t width = 0;     ///< characters, 1 to 40; 0 where dates name none
    std::uint8_t decimals = 0;  ///< 0 to 16; 0 for dates and times

    bool operator==(const DisplayFormat&) const = default;
};
static_assert(sizeof(DisplayFormat) == 3);

/// The format of that name, in any case, with blanks around it or without; nothing where there is none.
///
/// `F8.2`: one of F, COMMA, DOT, DOLLAR, PCT, E, N, then the width (1 to 40), then a point and the decimals
/// (0 to 16 and less than the width), or neither for no decimals. DATE, ADATE, EDATE, SDATE, TIME and
/// DATETIME stand alone or before a width, and have no decimals.
[[nodiscard]] std::optional<DisplayFormat> parseFormat(std::string_view name);

/// The name that `parseFormat` reads as `format`: F8.2, F8.0, N6, DATE, TIME8; empty for no format.
[[nodiscard]] std::string formatText(DisplayFormat format);

/// True for the kinds whose numbers are seconds.
[[nodiscard]] constexpr bool countsSeconds(FormatKind kind) { return kind >= FormatKind::date; }

}  // namespace vexa::tables
