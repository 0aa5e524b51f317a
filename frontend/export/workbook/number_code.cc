#include "frontend/export/workbook/number_code.h"

#include <cmath>
#include <limits>

#include "backend/tables/formats/number_text.h"

namespace vexa::frontend {

namespace {

using tables::DisplayFormat;
using tables::FormatKind;
using tables::numberText;

/// Days from the beginning of the workbooks' calendar to 1970. It has a 29th of February 1900, so that days
/// before the 1st of March 1900 have other numbers in some programs than in others.
constexpr double daysBefore1970 = 25569;
constexpr double firstCertainDay = 61;
/// Seconds of which some programs show no length any more.
constexpr double endOfLengths = 4294967296.0;
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

/// Whole seconds as days, with few digits and never less than they are: some programs cut what lacks the
/// least part of a second.
double daysOf(double seconds, double daysBefore) {
    const double days = seconds / secondsOfDay + daysBefore;
    const double steps = days < 100'000 ? 1e10 : 1e9;
    return std::ceil(days * steps) / steps;
}

SheetNumber timeNumber(double seconds, DisplayFormat format) {
    if (std::abs(seconds) >= endOfTimes) return sheetNumber(seconds, {});
    const double whole = std::trunc(seconds);
    const bool isKnown = whole >= 0 && whole < endOfLengths;
    const double days = whole == 0 ? 0 : daysOf(whole, 0);
    return {isKnown ? NumberObstacle::none : NumberObstacle::noSuchTime, days, format, false};
}

SheetNumber dateNumber(double seconds, DisplayFormat format) {
    // Without a day of the calendar the table shows the number itself.
    if (!(seconds >= firstYear && seconds < endOfYears)) return sheetNumber(seconds, {});
    const double days = daysOf(std::floor(seconds), daysBefore1970);
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
