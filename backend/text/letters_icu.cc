#include <unicode/uchar.h>

#include "backend/text/letters.h"

namespace vexa {

namespace {

bool takesNoColumn(char32_t code, int category) {
    constexpr char32_t kSoftHyphen = 0xAD;
    if (code == kSoftHyphen) return false;
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK || category == U_FORMAT_CHAR)
        return true;
    // Vowels and final consonants of Hangul join the syllable before them.
    return (code >= 0x1160 && code <= 0x11FF) || (code >= 0xD7B0 && code <= 0xD7FF);
}

/// Ideographs and syllables: the bulk of wide text, known without a look into the tables.
bool isIdeographOrSyllable(char32_t code) {
    return (code >= 0x4E00 && code <= 0x9FFF) || (code >= 0xAC00 && code <= 0xD7A3);
}

/// One of the letters that two by two make a flag: each takes half of the flag's two columns.
bool isFlagLetter(char32_t code) { return code >= 0x1F1E6 && code <= 0x1F1FF; }

}  // namespace

char32_t foldedLetter(char32_t code) {
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(code), U_FOLD_CASE_DEFAULT));
}

char32_t capitalLetter(char32_t code) { return static_cast<char32_t>(u_toupper(static_cast<UChar32>(code))); }

int letterWidth(char32_t code) {
    if (code < 0x300) return 1;
    if (isIdeographOrSyllable(code)) return 2;
    const auto character = static_cast<UChar32>(code);
    if (takesNoColumn(code, u_charType(character))) return 0;
    if (isFlagLetter(code)) return 1;
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    if (width == U_EA_WIDE || width == U_EA_FULLWIDTH) return 2;
    return u_hasBinaryProperty(character, UCHAR_EMOJI_PRESENTATION) != 0 ? 2 : 1;
}

}  // namespace vexa
