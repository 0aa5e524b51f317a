// The quick ways to a number's text, compared with slow ones that assume nothing: the C library's digits,
// rounded as texts.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "backend/tables/formats/fixed_text.h"
#include "backend/tables/formats/number_text.h"

namespace vexa::tables {
namespace {

/// What the C library writes for `value` by its conversion e, E or g.
std::string printed(char conversion, int precision, double value) {
    char text[64];
    int length = 0;
    if (conversion == 'e') length = std::snprintf(text, sizeof text, "%.*e", precision, value);
    if (conversion == 'E') length = std::snprintf(text, sizeof text, "%.*E", precision, value);
    if (conversion == 'g') length = std::snprintf(text, sizeof text, "%.*g", precision, value);
    return {text, static_cast<std::size_t>(length)};
}

/// The shortest digits, at least fifteen, that read as `value`, in the form d.ddde+XX.
std::string shortestFrom15(double value, bool many) {
    for (int precision = 14; precision < 16 && many; ++precision) {
        std::string text = printed('e', precision, value);
        if (std::strtod(text.c_str(), nullptr) == value) return text;
    }
    return printed('e', many ? 16 : 14, value);
}

/// `value`, 0 or above, rounded as a decimal text of its digits.
std::string roundedByText(double value, int decimals) {
    const std::string few = shortestFrom15(value, false);
    const int fewExponent = std::stoi(few.substr(few.find('e') + 1));
    const std::string text = shortestFrom15(value, fewExponent + 1 + decimals > 15);
    const int exponent = std::stoi(text.substr(text.find('e') + 1));
    std::string digits = text.substr(0, 1) + text.substr(2, text.find('e') - 2);
    // Written out with a zero in front, for a carry.
    std::string whole = exponent < 0 ? "0" : digits;
    std::string fraction =
        exponent < 0 ? std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits : "";
    if (exponent >= 0) {
        whole.resize(static_cast<std::size_t>(exponent) + 1, '0');
        if (digits.size() > whole.size()) fraction = digits.substr(whole.size());
    }
    fraction.resize(std::max(fraction.size(), static_cast<std::size_t>(decimals) + 1), '0');
    const bool up = fraction[static_cast<std::size_t>(decimals)] >= '5';
    std::string all = "0" + whole + fraction.substr(0, static_cast<std::size_t>(decimals));
    for (std::size_t i = all.size(); up && i-- > 0;) {
        if (all[i] != '9') {
            ++all[i];
            break;
        }
        all[i] = '0';
    }
    std::string result = all.substr(0, whole.size() + 1);
    result.erase(0, std::min(result.find_first_not_of('0'), result.size() - 1));
    if (decimals > 0) result += '.' + all.substr(whole.size() + 1);
    return result;
}

/// Numbers of every size, and those that data have: few decimals, halves, neighbours of halves.
class Numbers {
  public:
    double next() {
        const auto shape = static_cast<int>(random_() % 6);
        const auto decimals = static_cast<int>(random_() % 12);
        const auto whole = static_cast<double>(random_() >> (random_() % 60 + 3));
        const double short_ = whole / std::pow(10, decimals);
        const double half = (std::floor(short_) * 2 + 1) / 2 / std::pow(10, decimals % 6);
        switch (shape) {
            case 0: {
                const double any = std::bit_cast<double>(static_cast<std::uint64_t>(random_()));
                return std::isfinite(any) ? std::abs(any) : 1;
            }
            case 1:
                return short_;
            case 2:
                return half;
            case 3:
                return std::nextafter(half, 0);
            case 4:
                return std::nextafter(half, 1e300);
            default:
                return std::ldexp(static_cast<double>(random_() >> 11U),
                                  static_cast<int>(random_() % 80) - 70);
        }
    }

  private:
    std::mt19937_64 random_{20260305};
};

TEST(NumberRounding, FixedDecimalsEqualThoseOfTheDigits) {
    Numbers numbers;
    for (int i = 0; i < 60000; ++i) {
        const double value = numbers.next();
        const int decimals = i % 17;
        std::string quick;
        std::string byDigits;
        appendFixed(quick, value, decimals, {});
        appendFixedByDigits(byDigits, value, decimals, {});
        const std::string expected = roundedByText(value, decimals);
        ASSERT_EQ(quick, expected) << printed('g', 17, value) << " with " << decimals;
        ASSERT_EQ(byDigits, expected) << printed('g', 17, value) << " with " << decimals;
        std::string negative;
        appendFixed(negative, -value, decimals, {});
        const bool isZero = expected.find_first_not_of("0.") == std::string::npos;
        ASSERT_EQ(negative, (isZero ? "" : "-") + expected);
    }
}

TEST(NumberRounding, WithoutFormatIsWhatTheCLibraryWrites) {
    Numbers numbers;
    for (int i = 0; i < 60000; ++i) {
        const double value = numbers.next();
        ASSERT_EQ(numberText(value, {}), value == 0 ? "0" : printed('g', 15, value));
        ASSERT_EQ(numberText(-value, {}), value == 0 ? "0" : printed('g', 15, -value));
    }
}

TEST(NumberRounding, ScientificNotationDiffersFromTheCLibraryInHalvesOnly) {
    Numbers numbers;
    for (int i = 0; i < 60000; ++i) {
        const double value = numbers.next();
        const auto decimals = static_cast<std::uint8_t>(i % 15);
        const std::string text = numberText(value, {FormatKind::scientific, 20, decimals});
        const double back = parseNumber(text, {FormatKind::scientific, 20, decimals}).value_or(-1);
        if (value > 1e-300) {
            ASSERT_NEAR(back / value, 1, 0.51 * std::pow(10, -decimals) + 3e-16) << text;
        }
        if (decimals == 14) {
            std::string expected = printed('E', 14, value);
            ASSERT_EQ(text, expected);
        }
    }
}

TEST(NumberRounding, ShortestTextsReadBack) {
    Numbers numbers;
    for (int i = 0; i < 60000; ++i) {
        const double value = numbers.next();
        std::string text;
        appendShortest(text, value);
        ASSERT_EQ(std::strtod(text.c_str(), nullptr), value);
        ASSERT_EQ(parseNumber(text, {}), value) << text;
    }
}

TEST(NumberRounding, WhatIsShownInFullReadsBack) {
    Numbers numbers;
    for (int i = 0; i < 60000; ++i) {
        const double value = std::floor(numbers.next());
        if (value > 1e15) continue;
        for (const FormatKind kind : {FormatKind::plain, FormatKind::comma, FormatKind::dot,
                                      FormatKind::dollar, FormatKind::percent, FormatKind::zeroPadded}) {
            const DisplayFormat format{kind, 12, static_cast<std::uint8_t>(i % 4)};
            ASSERT_EQ(parseNumber(numberText(-value, format), format), 0 - value);
        }
    }
}

}  // namespace
}  // namespace vexa::tables
