// Numbers with a fixed count of decimals. For the number formats' own files.
#pragma once

#include <string>

namespace vexa::tables {

/// What stands around the digits; 0 stands for no character.
struct FixedStyle {
    char decimalMark = '.';
    char groupMark = 0;  ///< before every third digit of the whole part
    char prefix = 0;     ///< between the minus and the digits
    char suffix = 0;
    int zerosTo = 0;  ///< zeros before the digits make the text that long
};

/// Appends the finite `value` with `decimals` digits (0 to 16) behind the mark, rounded as `appendNumber`
/// says.
void appendFixed(std::string& out, double value, int decimals, const FixedStyle& style);

/// What `appendFixed` does, by the digits of the number alone: slower, and without any assumption about
/// doubles.
void appendFixedByDigits(std::string& out, double value, int decimals, const FixedStyle& style);

/// Appends the finite `value` as `%.15g` writes it, but no minus before zero.
void appendGeneral(std::string& out, double value);

}  // namespace vexa::tables
