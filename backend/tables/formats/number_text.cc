#include "backend/tables/formats/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "backend/tables/formats/date_text.h"
#include "backend/tables/formats/decimal_digits.h"
#include "backend/tables/formats/fixed_text.h"

namespace vexa::tables {

namespace {

/// Whole numbers below are written without an exponent, as people do.
constexpr double kExponentFrom = 1e15;

FixedStyle fixedStyle(DisplayFormat format) {
    FixedStyle style;
    switch (format.kind) {
        case FormatKind::comma:
            style.groupMark = ',';
            break;
        case FormatKind::dot:
            style.groupMark = '.';
            style.decimalMark = ',';
            break;
        case FormatKind::dollar:
            style.groupMark = ',';
            style.prefix = '$';
            break;
        case FormatKind::percent:
            style.suffix = '%';
            break;
        case FormatKind::zeroPadded:
            style.zerosTo = format.width;
            break;
        default:
            break;
    }
    return style;
}

void appendScientific(std::string& out, double value, int decimals) {
    DecimalDigits number(std::abs(value), decimals + 1);
    number.roundTo(number.exponent() - decimals);
    const std::string_view digits = number.digits();
    if (value < 0) out += '-';
    out += digits.front();
    if (decimals > 0) {
        out += '.';
        out += digits.substr(1);
        out.append(static_cast<std::size_t>(decimals) + 1 - digits.size(), '0');
    }
    out += number.exponent() < 0 ? "E-" : "E+";
    const int exponent = std::abs(number.exponent());
    if (exponent < 10) out += '0';
    out += std::to_string(exponent);
}

/// False, and nothing appended, for a finite number.
bool appendNotFinite(std::string& out, double value) {
    if (std::isfinite(value)) return false;
    out += std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
    return true;
}

}  // namespace

void appendNumber(std::string& out, double value, DisplayFormat format) {
    if (appendNotFinite(out, value)) return;
    if (countsSeconds(format.kind)) {
        if (!appendSeconds(out, value, format.kind)) appendGeneral(out, value);
    } else if (format.kind == FormatKind::none) {
        appendGeneral(out, value);
    } else if (format.kind == FormatKind::scientific) {
        appendScientific(out, value, format.decimals);
    } else {
        appendFixed(out, value, format.decimals, fixedStyle(format));
    }
}

std::string numberText(double value, DisplayFormat format) {
    std::string text;
    appendNumber(text, value, format);
    return text;
}

void appendShortest(std::string& out, double value) {
    if (appendNotFinite(out, value)) return;
    std::array<char, 32> text{};
    char* const end = text.data() + text.size();
    const bool minusZero = value == 0 && std::signbit(value);
    const bool whole = std::abs(value) < kExponentFrom && value == std::floor(value) && !minusZero;
    const std::to_chars_result written =
        whole ? std::to_chars(text.data(), end, static_cast<std::int64_t>(value))
              : std::to_chars(text.data(), end, value);
    out.append(text.data(), written.ptr);
}

}  // namespace vexa::tables
