#include "backend/tables/formats/decimal_digits.h"

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>

namespace vexa::tables {

DecimalDigits DecimalDigits::withDecimals(double value, int decimals) {
    DecimalDigits digits(value, 1);
    const int wanted = digits.exponent_ + 1 + decimals;
    if (wanted > kSignificantDigits) digits.read(value, wanted);
    return digits;
}

void DecimalDigits::read(double value, int wanted) {
    assert(std::isfinite(value) && value >= 0);
    std::array<char, 32> text{};
    char* const begin = text.data();
    char* const end = begin + text.size();
    const std::to_chars_result written =
        wanted > kSignificantDigits
            ? std::to_chars(begin, end, value, std::chars_format::scientific)
            : std::to_chars(begin, end, value, std::chars_format::scientific, kSignificantDigits - 1);
    assert(written.ec == std::errc{});
    take(begin, written.ptr);
}

/// Reads `d.ddde+XX`, or `de+XX`.
void DecimalDigits::take(const char* text, const char* end) {
    count_ = 0;
    while (text != end && *text != 'e') {
        if (*text != '.') digits_[count_++] = *text;
        ++text;
    }
    while (count_ > 1 && digits_[count_ - 1] == '0') --count_;
    const char* const exponent = text + (text[1] == '+' ? 2 : 1);
    exponent_ = 0;
    std::from_chars(exponent, end, exponent_);
}

void DecimalDigits::roundTo(int place) {
    const int kept = exponent_ - place + 1;
    if (kept >= static_cast<int>(count_)) return;
    const bool up = kept >= 0 && digits_[static_cast<std::size_t>(kept)] >= '5';
    count_ = kept > 0 ? static_cast<std::size_t>(kept) : 0;
    if (up) {
        while (count_ > 0 && digits_[count_ - 1] == '9') --count_;
        if (count_ > 0) {
            ++digits_[count_ - 1];
        } else {
            digits_[count_++] = '1';
            ++exponent_;
        }
    }
    if (count_ == 0) {
        digits_[count_++] = '0';
        exponent_ = 0;
    }
}

}  // namespace vexa::tables
