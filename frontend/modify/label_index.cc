#include "frontend/modify/label_index.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vexa::frontend {

namespace {

constexpr std::int64_t greatestRoman = 3999;

std::string letters(std::int64_t number, char first) {
    constexpr std::int64_t alphabet = 26;
    std::string text;
    for (; number > 0; number = (number - 1) / alphabet) {
        text += static_cast<char>(first + (number - 1) % alphabet);
    }
    std::reverse(text.begin(), text.end());
    return text;
}

struct Numeral {
    std::int64_t value;
    std::string_view small;
    std::string_view capital;
};
constexpr std::array<Numeral, 13> numerals{{{1000, "m", "M"},
                                            {900, "cm", "CM"},
                                            {500, "d", "D"},
                                            {400, "cd", "CD"},
                                            {100, "c", "C"},
                                            {90, "xc", "XC"},
                                            {50, "l", "L"},
                                            {40, "xl", "XL"},
                                            {10, "x", "X"},
                                            {9, "ix", "IX"},
                                            {5, "v", "V"},
                                            {4, "iv", "IV"},
                                            {1, "i", "I"}}};

std::string roman(std::int64_t number, bool capital) {
    std::string text;
    for (const Numeral& numeral : numerals) {
        for (; number >= numeral.value; number -= numeral.value)
            text += capital ? numeral.capital : numeral.small;
    }
    return text;
}

}  // namespace

std::string indexText(IndexNotation notation, std::int64_t number) {
    const bool isRoman = notation == IndexNotation::smallRoman || notation == IndexNotation::capitalRoman;
    if (number <= 0 || notation == IndexNotation::number || (isRoman && number > greatestRoman)) {
        return std::to_string(number);
    }
    if (isRoman) return roman(number, notation == IndexNotation::capitalRoman);
    return letters(number, notation == IndexNotation::capitalLetters ? 'A' : 'a');
}

}  // namespace vexa::frontend
