#include "backend/text/line_breaks.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace vexa {

namespace {

constexpr char32_t kFirstBeyondAscii = 0x80;
constexpr char32_t kZeroWidthSpace = 0x200B;

struct Range {
    char32_t first;
    char32_t last;
};

/// Closing punctuation, dashes, units behind numbers, small kana, marks of prolonging and repeating: none of
/// them begins a line.
constexpr Range kBindLeft[] = {
    {0xB0, 0xB0},        // degree
    {0xB7, 0xB7},        // middle dot
    {0xBB, 0xBB},        // closing guillemet
    {0x2010, 0x2010},    // hyphen
    {0x2013, 0x2015},    // dashes
    {0x2019, 0x2019},    // closing quotation marks
    {0x201D, 0x201D},    //
    {0x2025, 0x2027},    // ellipses, hyphenation point
    {0x2030, 0x2034},    // per mille, primes
    {0x203A, 0x203A},    // closing guillemet
    {0x203C, 0x203C},    // double punctuation
    {0x2047, 0x2049},    //
    {0x2103, 0x2103},    // degrees of temperature
    {0x2109, 0x2109},    //
    {0x3001, 0x3002},    // ideographic comma and full stop
    {0x3005, 0x3005},    // repetition
    {0x3009, 0x3009},    // closing brackets
    {0x300B, 0x300B},    //
    {0x300D, 0x300D},    //
    {0x300F, 0x300F},    //
    {0x3011, 0x3011},    //
    {0x3015, 0x3015},    //
    {0x3017, 0x3017},    //
    {0x3019, 0x3019},    //
    {0x301B, 0x301C},    // and the wave dash
    {0x301E, 0x301F},    //
    {0x303B, 0x303B},    // repetition
    {0x3041, 0x3041},    // small hiragana
    {0x3043, 0x3043},    //
    {0x3045, 0x3045},    //
    {0x3047, 0x3047},    //
    {0x3049, 0x3049},    //
    {0x3063, 0x3063},    //
    {0x3083, 0x3083},    //
    {0x3085, 0x3085},    //
    {0x3087, 0x3087},    //
    {0x308E, 0x308E},    //
    {0x3095, 0x3096},    //
    {0x309B, 0x309E},    // sound marks, repetition
    {0x30A0, 0x30A1},    // double hyphen, small katakana
    {0x30A3, 0x30A3},    //
    {0x30A5, 0x30A5},    //
    {0x30A7, 0x30A7},    //
    {0x30A9, 0x30A9},    //
    {0x30C3, 0x30C3},    //
    {0x30E3, 0x30E3},    //
    {0x30E5, 0x30E5},    //
    {0x30E7, 0x30E7},    //
    {0x30EE, 0x30EE},    //
    {0x30F5, 0x30F6},    //
    {0x30FB, 0x30FE},    // middle dot, prolonging, repetition
    {0x31F0, 0x31FF},    // small katakana
    {0xFE50, 0xFE58},    // small punctuation
    {0xFE5A, 0xFE5A},    //
    {0xFE5C, 0xFE5C},    //
    {0xFE5E, 0xFE5E},    //
    {0xFF01, 0xFF01},    // full-width punctuation
    {0xFF05, 0xFF05},    //
    {0xFF09, 0xFF09},    //
    {0xFF0C, 0xFF0E},    //
    {0xFF1A, 0xFF1B},    //
    {0xFF1F, 0xFF1F},    //
    {0xFF3D, 0xFF3D},    //
    {0xFF5D, 0xFF5E},    //
    {0xFF60, 0xFF61},    //
    {0xFF63, 0xFF65},    // half-width punctuation
    {0xFF67, 0xFF70},    // small half-width katakana, prolonging
    {0xFF9E, 0xFF9F},    // half-width sound marks
    {0xFFE0, 0xFFE0},    // cent
    {0x1F3FB, 0x1F3FF},  // colours of skin
};

/// Opening punctuation and signs before numbers: none of them ends a line.
constexpr Range kBindRight[] = {
    {0xA1, 0xA1},      // opening exclamation mark
    {0xA3, 0xA3},      // pound
    {0xA5, 0xA5},      // yen
    {0xAB, 0xAB},      // opening guillemet
    {0xBF, 0xBF},      // opening question mark
    {0x2018, 0x2018},  // opening quotation marks
    {0x201A, 0x201A},  //
    {0x201C, 0x201C},  //
    {0x201E, 0x201E},  //
    {0x2039, 0x2039},  // opening guillemet
    {0x20A9, 0x20A9},  // won
    {0x3008, 0x3008},  // opening brackets
    {0x300A, 0x300A},  //
    {0x300C, 0x300C},  //
    {0x300E, 0x300E},  //
    {0x3010, 0x3010},  //
    {0x3014, 0x3014},  //
    {0x3016, 0x3016},  //
    {0x3018, 0x3018},  //
    {0x301A, 0x301A},  //
    {0x301D, 0x301D},  //
    {0xFE59, 0xFE59},  // small brackets
    {0xFE5B, 0xFE5B},  //
    {0xFE5D, 0xFE5D},  //
    {0xFF04, 0xFF04},  // full-width dollar, brackets
    {0xFF08, 0xFF08},  //
    {0xFF3B, 0xFF3B},  //
    {0xFF5B, 0xFF5B},  //
    {0xFF5F, 0xFF5F},  //
    {0xFF62, 0xFF62},  //
    {0xFFE1, 0xFFE1},  // pound
    {0xFFE5, 0xFFE6},  // yen, won
};

/// No-break spaces and joiners.
constexpr Range kBindBoth[] = {
    {0xA0, 0xA0}, {0x2007, 0x2007}, {0x200D, 0x200D}, {0x202F, 0x202F}, {0x2060, 0x2060}, {0xFEFF, 0xFEFF},
};

constexpr Range kHangul[] = {
    {0x1100, 0x11FF}, {0x3131, 0x318E}, {0xA960, 0xA97F}, {0xAC00, 0xD7FF}, {0xFFA0, 0xFFDC},
};

template <std::size_t Count>
bool isIn(const Range (&ranges)[Count], char32_t code) {
    const auto* const found =
        std::lower_bound(std::begin(ranges), std::end(ranges), code,
                         [](const Range& range, char32_t it) { return range.last < it; });
    return found != std::end(ranges) && found->first <= code;
}

constexpr std::array<BreakTraits, kFirstBeyondAscii> asciiTraits() {
    std::array<BreakTraits, kFirstBeyondAscii> traits{};
    for (const char c : std::string_view("!%),-.:;?]}\"'"))
        traits[static_cast<unsigned char>(c)].bindsLeft = true;
    for (const char c : std::string_view("$([{\"'")) traits[static_cast<unsigned char>(c)].bindsRight = true;
    return traits;
}

constexpr std::array<BreakTraits, kFirstBeyondAscii> kAscii = asciiTraits();

bool isIdeograph(char32_t code) { return code >= 0x4E00 && code <= 0x9FFF; }
bool isHalfWidthKatakana(char32_t code) { return code >= 0xFF61 && code <= 0xFF9F; }

}  // namespace

BreakTraits breakTraitsOf(char32_t code, std::size_t columns) {
    if (code < kFirstBeyondAscii) return kAscii[code];
    if (isIdeograph(code)) return {true, false, false};
    if (code == kZeroWidthSpace) return {true, true, false};
    const bool both = isIn(kBindBoth, code);
    const bool wide = columns == 2 && !isIn(kHangul, code);
    return {wide || isHalfWidthKatakana(code), both || isIn(kBindLeft, code), both || isIn(kBindRight, code)};
}

}  // namespace vexa
