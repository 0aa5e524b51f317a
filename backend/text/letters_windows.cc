#include <windows.h>

#include <array>

#include "backend/text/letter_widths.h"
#include "backend/text/letters.h"

namespace vexa {

namespace {

constexpr char32_t kCapitalIWithDot = 0x130;
constexpr char32_t kSmallIWithoutDot = 0x131;

/// `code` as the system maps it; `code` itself where the result is no single character.
char32_t mapped(char32_t code, DWORD how) {
    std::array<wchar_t, 2> units{};
    std::array<wchar_t, 4> result{};
    int count = 1;
    if (code < 0x10000) {
        units[0] = static_cast<wchar_t>(code);
    } else {
        units[0] = static_cast<wchar_t>(0xD7C0 + (code >> 10U));
        units[1] = static_cast<wchar_t>(0xDC00 + (code & 0x3FFU));
        count = 2;
    }
    // Without the flag the system leaves letters alone whose capital does not lead back to them.
    const int length =
        LCMapStringEx(LOCALE_NAME_INVARIANT, how | LCMAP_LINGUISTIC_CASING, units.data(), count,
                      result.data(), static_cast<int>(result.size()), nullptr, nullptr, 0);
    if (length != count) return code;
    if (count == 1) return result[0];
    return 0x10000U + ((char32_t{result[0]} - 0xD800U) << 10U) + (char32_t{result[1]} - 0xDC00U);
}

}  // namespace

char32_t foldedLetter(char32_t code) {
    // These two are an i in some languages only.
    if (code == kCapitalIWithDot || code == kSmallIWithoutDot || code > 0x10FFFF) return code;
    // Over the capital, so that both small forms of a letter that has two come out the same.
    return mapped(mapped(code, LCMAP_UPPERCASE), LCMAP_LOWERCASE);
}

char32_t capitalLetter(char32_t code) { return code > 0x10FFFF ? code : mapped(code, LCMAP_UPPERCASE); }

int letterWidth(char32_t code) { return letterWidthByTable(code); }

}  // namespace vexa
