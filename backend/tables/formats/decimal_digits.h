// The decimal digits of a double. For the number formats' own files.
#pragma once

#include <array>
#include <string_view>

namespace vexa::tables {

/// A finite number above or equal to 0 as digits: the first stands before the point, times ten to the
/// `exponent`. Zero is one digit 0.
class DecimalDigits {
  public:
    /// `value` with fifteen significant digits where no more than these are needed to show `wanted` digits,
    /// with the digits of the shortest number that reads as `value` otherwise.
    DecimalDigits(double value, int wanted) { read(value, wanted); }
    /// The same, where `decimals` digits behind the point are wanted.
    [[nodiscard]] static DecimalDigits withDecimals(double value, int decimals);

    [[nodiscard]] std::string_view digits() const { return {digits_.data(), count_}; }
    [[nodiscard]] int exponent() const { return exponent_; }
    [[nodiscard]] bool isZero() const { return digits_[0] == '0'; }

    /// Keeps the digits down to 10^`place`; half and more of it goes up.
    void roundTo(int place);

  private:
    DecimalDigits() = default;

    void read(double value, int wanted);
    void take(const char* text, const char* end);

    std::array<char, 18> digits_{};
    std::size_t count_ = 0;
    int exponent_ = 0;
};

/// The digits that are significant in numbers as users see them.
inline constexpr int kSignificantDigits = 15;

}  // namespace vexa::tables
