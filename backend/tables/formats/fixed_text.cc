#include "backend/tables/formats/fixed_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "backend/tables/formats/decimal_digits.h"

namespace vexa::tables {

namespace {

/// 10^0 to 10^17: each is a double without rounding.
constexpr std::array<double, 18> kPowers = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,
                                            1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17};

/// Below it every whole number of fifteen digits is a double.
constexpr double kWholeLimit = 1e15;
/// Below it every whole number is a double, and the shortest number that reads as it is the number itself.
constexpr double kExactLimit = 9007199254740992.0;

/// Twice the most that a number, times a power of ten in doubles, and its fifteen digits may differ, as a
/// part of the product: 5e-15 for the digits and 2^-53 for the product.
constexpr double kUncertain = 1.1e-14;

/// Digits of a number from the last to the first, in a buffer that has room for those of 64 bits.
class WholeDigits {
  public:
    /// At least `fewest` digits (at most 20), with zeros before the number's own.
    WholeDigits(std::uint64_t number, int fewest) {
        while (number >= 100) {
            const auto pair = static_cast<unsigned>(number % 100);
            number /= 100;
            put(pair % 10);
            put(pair / 10);
        }
        if (number >= 10) put(static_cast<unsigned>(number % 10));
        put(static_cast<unsigned>(number >= 10 ? number / 10 : number));
        while (static_cast<int>(text().size()) < fewest) put(0);
    }
    [[nodiscard]] std::string_view text() const { return {first_, static_cast<std::size_t>(end() - first_)}; }

  private:
    [[nodiscard]] const char* end() const { return buffer_.data() + buffer_.size(); }
    void put(unsigned digit) { *--first_ = static_cast<char>('0' + digit); }

    std::array<char, 20> buffer_{};
    char* first_ = buffer_.data() + buffer_.size();
};

/// Both parts of a number as digits; zeros that stand behind the written ones are counted only.
struct FixedParts {
    std::string_view whole;  ///< without zeros at its beginning; "0" for none
    std::size_t wholeZeros = 0;
    std::size_t zerosFirst = 0;  ///< of the fraction, before its digits
    std::string_view fraction;
    std::size_t fractionZeros = 0;
};

char* fill(char* to, std::size_t count, char character) {
    std::fill_n(to, count, character);
    return to + count;
}

char* copy(char* to, std::string_view text) { return std::copy(text.begin(), text.end(), to); }

/// The whole part with marks before every third digit.
char* copyGrouped(char* to, const FixedParts& parts, char mark) {
    const std::size_t count = parts.whole.size() + parts.wholeZeros;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && (count - i) % 3 == 0) *to++ = mark;
        *to++ = i < parts.whole.size() ? parts.whole[i] : '0';
    }
    return to;
}

void appendParts(std::string& out, bool negative, const FixedParts& parts, const FixedStyle& style) {
    const std::size_t wholeDigits = parts.whole.size() + parts.wholeZeros;
    const std::size_t decimals = parts.zerosFirst + parts.fraction.size() + parts.fractionZeros;
    const std::size_t marks = style.groupMark != 0 ? (wholeDigits - 1) / 3 : 0;
    std::size_t length = wholeDigits + marks + (decimals > 0 ? decimals + 1 : 0);
    length += (negative ? 1U : 0U) + (style.prefix != 0 ? 1U : 0U) + (style.suffix != 0 ? 1U : 0U);
    const auto wanted = static_cast<std::size_t>(style.zerosTo);
    const std::size_t padding = wanted > length ? wanted - length : 0;

    const std::size_t start = out.size();
    out.resize(start + length + padding);
    char* to = out.data() + start;
    if (negative) *to++ = '-';
    if (style.prefix != 0) *to++ = style.prefix;
    to = fill(to, padding, '0');
    if (marks > 0) {
        to = copyGrouped(to, parts, style.groupMark);
    } else {
        to = fill(copy(to, parts.whole), parts.wholeZeros, '0');
    }
    if (decimals > 0) {
        *to++ = style.decimalMark;
        to = fill(to, parts.zerosFirst, '0');
        to = fill(copy(to, parts.fraction), parts.fractionZeros, '0');
    }
    if (style.suffix != 0) *to = style.suffix;
}

/// `value` times 10^`decimals`, rounded, where doubles are enough to tell; nothing otherwise.
std::optional<std::uint64_t> roundedScaled(double value, int decimals) {
    const auto places = static_cast<std::size_t>(decimals);
    const double scaled = value * kPowers[places];
    if (scaled >= kWholeLimit / 10) return std::nullopt;
    const auto below = static_cast<std::uint64_t>(scaled);
    const double beyondHalf = scaled - static_cast<double>(below) - 0.5;
    if (std::abs(beyondHalf) > scaled * kUncertain) return beyondHalf > 0 ? below + 1 : below;
    // Most of what comes near a half is one that was written with one decimal more: the double nearest to it.
    const double half = (static_cast<double>(below) * 10 + 5) / kPowers[places + 1];
    if (half == value) return below + 1;
    return std::nullopt;
}

bool isPlain(const FixedStyle& style) {
    return style.groupMark == 0 && style.prefix == 0 && style.suffix == 0 && style.zerosTo == 0;
}

constexpr std::array<char, 200> makePairs() {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
/// 00 to 99, so that a division gives two digits.
constexpr std::array<char, 200> kPairs = makePairs();

char* putPair(char* before, std::uint64_t number) {
    const char* const pair = kPairs.data() + 2 * number;
    *--before = pair[1];
    *--before = pair[0];
    return before;
}

/// Most numbers by far: a sign, digits and a mark, written from the last to the first.
void appendPlain(std::string& out, bool negative, std::uint64_t number, int decimals, char mark) {
    constexpr std::size_t most = 40;  // 20 digits, or all decimals and what stands before them
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): not filled, since this is done for every number
    std::array<char, most> buffer;
    char* const end = buffer.data() + buffer.size();
    char* first = end;
    int left = decimals;
    for (; left >= 2; left -= 2, number /= 100) first = putPair(first, number % 100);
    for (; left > 0; --left, number /= 10) *--first = static_cast<char>('0' + number % 10);
    if (decimals > 0) *--first = mark;
    for (; number >= 100; number /= 100) first = putPair(first, number % 100);
    if (number >= 10) {
        first = putPair(first, number);
    } else {
        *--first = static_cast<char>('0' + number);
    }
    if (negative) *--first = '-';
    out.append(first, static_cast<std::size_t>(end - first));
}

/// Appends `number` divided by 10^`decimals`.
void appendScaled(std::string& out, bool negative, std::uint64_t number, int decimals,
                  const FixedStyle& style) {
    if (isPlain(style)) {
        appendPlain(out, negative && number != 0, number, decimals, style.decimalMark);
        return;
    }
    const WholeDigits digits(number, decimals + 1);
    const std::size_t whole = digits.text().size() - static_cast<std::size_t>(decimals);
    FixedParts parts;
    parts.whole = digits.text().substr(0, whole);
    parts.fraction = digits.text().substr(whole);
    appendParts(out, negative && number != 0, parts, style);
}

}  // namespace

void appendFixed(std::string& out, double value, int decimals, const FixedStyle& style) {
    const bool negative = value < 0;
    const double magnitude = std::abs(value);
    if (const std::optional<std::uint64_t> scaled = roundedScaled(magnitude, decimals)) {
        appendScaled(out, negative, *scaled, decimals, style);
    } else if (magnitude < kExactLimit && magnitude == std::floor(magnitude)) {
        const WholeDigits digits(static_cast<std::uint64_t>(magnitude), 1);
        FixedParts parts;
        parts.whole = digits.text();
        parts.fractionZeros = static_cast<std::size_t>(decimals);
        appendParts(out, negative, parts, style);
    } else {
        appendFixedByDigits(out, value, decimals, style);
    }
}

void appendFixedByDigits(std::string& out, double value, int decimals, const FixedStyle& style) {
    DecimalDigits number = DecimalDigits::withDecimals(std::abs(value), decimals);
    number.roundTo(-decimals);
    const std::string_view digits = number.digits();
    const auto places = static_cast<std::size_t>(decimals);
    FixedParts parts;
    if (number.exponent() < 0) {
        parts.whole = "0";
        parts.zerosFirst = static_cast<std::size_t>(-number.exponent() - 1);
        parts.fraction = digits;
    } else {
        const auto whole = static_cast<std::size_t>(number.exponent()) + 1;
        parts.whole = digits.substr(0, whole);
        parts.wholeZeros = whole - parts.whole.size();
        parts.fraction = digits.substr(parts.whole.size());
    }
    parts.fractionZeros = places - parts.zerosFirst - parts.fraction.size();
    appendParts(out, value < 0 && !number.isZero(), parts, style);
}

void appendGeneral(std::string& out, double value) {
    const double magnitude = std::abs(value);
    if (magnitude < kWholeLimit && magnitude == std::floor(magnitude)) {
        appendScaled(out, value < 0, static_cast<std::uint64_t>(magnitude), 0, {});
        return;
    }
    // The fewest decimals that give the number back are those that `%.15g` leaves after cutting zeros.
    for (int decimals = 1; decimals <= 6 && magnitude >= 1e-4; ++decimals) {
        const double scaled = magnitude * kPowers[static_cast<std::size_t>(decimals)];
        if (scaled >= kWholeLimit / 10) break;
        const double whole = std::floor(scaled + 0.5);
        if (std::abs(scaled - whole) <= scaled * kUncertain &&
            whole / kPowers[static_cast<std::size_t>(decimals)] == magnitude) {
            appendScaled(out, value < 0, static_cast<std::uint64_t>(whole), decimals, {});
            return;
        }
    }
    std::array<char, 32> text{};
    const std::to_chars_result written = std::to_chars(text.data(), text.data() + text.size(), value,
                                                       std::chars_format::general, kSignificantDigits);
    out.append(text.data(), written.ptr);
}

}  // namespace vexa::tables
