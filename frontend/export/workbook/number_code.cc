#include "frontend/export/workbook/number_code.h"

#include <cmath>
#include <limits>

#include "backend/tables/formats/number_text.h"

namespace vexa::frontend {

namespace {

using tables::DisplayFormat;
using tables::FormatKind;
using tables::numberText;

constexpr double secondsOfDay = 86400;
/// Days from the beginning of the workbooks' calendar to 1970. It has a 29th of February 1900, so that days
/// before the 1st of March 1900 have other numbers in some programs than in others.
constexpr double daysBefore1970 = 25569;
constexpr double firstCertainDay = 61;
/// The first day behind the year 9999.
constexpr double endOfDays = 2958466;
constexpr double firstYear = -62135596800.0;
constexpr double endOfYears = 253402300800.0;
constexpr double endOfTimes = 1e15;

std::string withDecimals(std::string code, int decimals) {
    if (decimals > 0) code.append(".").append(static_cast<std::size_t>(decimals), '0');
    return code;
}

/// Zeros that make the text as long as the width says, of which the minus is a part.
std::string zeroPaddedCode(DisplayFormat format, bool minusIsDropped) {
    const int ofDecimals = format.decimals == 0 ? 0 : format.decimals + 1;
    const auto zeros = [&](int taken) {
        const int whole = format.width - ofDecimals - taken;
        return withDecimals(std::string(static_cast<std::size_t>(whole < 1 ? 1 : whole), '0'),
                            format.decimals);
    };
    return zeros(0) + ";" + (minusIsDropped ? zeros(0) : "-" + zeros(1));
}

std::string plainCode(DisplayFormat format) {
    switch (format.kind) {
        case FormatKind::plain:
            return withDecimals("0", format.decimals);
        case FormatKind::comma:
        case FormatKind::dot:
            return withDecimals("#,##0", format.decimals);
        case FormatKind::dollar:
            return withDecimals("\"$\"#,##0", format.decimals);
        case FormatKind::percent:
            return withDecimals("0", format.decimals) + "\"%\"";
        case FormatKind::scientific:
            return withDecimals("0", format.decimals) + "E+00";
        case FormatKind::date:
            return R"([$-409]dd\-mmm\-yyyy)";
        case FormatKind::americanDate:
            return R"(mm\/dd\/yyyy)";
        case FormatKind::europeanDate:
            return R"(dd\.mm\.yyyy)";
        case FormatKind::sortableDate:
            return R"(yyyy\/mm\/dd)";
        case FormatKind::time:
            return "[hh]:mm:ss";
        case FormatKind::dateTime:
            return R"([$-409]dd\-mmm\-yyyy\ hh:mm:ss)";
        case FormatKind::none:
        case FormatKind::zeroPadded:
            break;
    }
    return {};
}

SheetNumber timeNumber(double seconds, DisplayFormat format) {
    if (std::abs(seconds) >= endOfTimes) return sheetNumber(seconds, {});
    const double days = std::trunc(seconds) / secondsOfDay;
    const bool isKnown = days >= 0 && days < endOfDays;
    return {isKnown ? NumberObstacle::none : NumberObstacle::noSuchTime, days == 0 ? 0 : days, format, false};
}

SheetNumber dateNumber(double seconds, DisplayFormat format) {
    // Without a day of the calendar the table shows the number itself.
    if (!(seconds >= firstYear && seconds < endOfYears)) return sheetNumber(seconds, {});
    const double days = std::floor(seconds) / secondsOfDay + daysBefore1970;
    return {days >= firstCertainDay ? NumberObstacle::none : NumberObstacle::beforeDays, days, format, false};
}

bool isShownWithoutMinus(double value, DisplayFormat format) {
    return value < 0 && std::abs(value) < 1 && numberText(value, format).front() != '-';
}

std::string quoted(std::string_view text) {
    std::string literal = "\"";
    for (const char each : text) {
        if (each == '"') {
            literal += "\"\\\"\"";  // ends the text, a mark of its own, goes on
        } else {
            literal += each;
        }
    }
    return literal + "\"";
}

}  // namespace

SheetNumber sheetNumber(double value, DisplayFormat format) {
    if (!std::isfinite(value)) return {NumberObstacle::notFinite, 0, format, false};
    if (countsSeconds(format.kind)) {
        return format.kind == FormatKind::time ? timeNumber(value, format) : dateNumber(value, format);
    }
    const bool isTooSmall = value != 0 && std::abs(value) < std::numeric_limits<double>::min();
    if (isTooSmall && (format.kind == FormatKind::none || format.kind == FormatKind::scientific)) {
        return {NumberObstacle::tooSmall, 0, format, false};
    }
    if (isTooSmall || value == 0) return {NumberObstacle::none, 0, format, false};
    return {NumberObstacle::none, value, format, isShownWithoutMinus(value, format)};
}

std::string formatCode(DisplayFormat format, bool minusIsDropped) {
    if (format.kind == FormatKind::zeroPadded) return zeroPaddedCode(format, minusIsDropped);
    const std::string code = plainCode(format);
    return minusIsDropped && !code.empty() ? code + ";" + code : code;
}

std::string codeWithSuffix(std::string_view code, std::string_view suffix) {
    if (code.empty()) code = "General";
    const std::string literal = quoted(suffix);
    std::string with;
    for (const char each : code) {
        if (each == ';') with += literal;
        with += each;
    }
    return with + literal;
}

std::string literalCode(std::string_view text) {
    // Of two sections the second one is for numbers below 0 and has no minus of its own.
    return quoted(text) + ";" + quoted(text);
}

}  // namespace vexa::frontend
