#include "backend/text/character_set_implementations.h"
#include "backend/text/letters.h"
#include "backend/text/utf16.h"
#include "backend/text/utf8.h"

namespace vexa {

std::size_t Utf8CharacterSet::characterLength(const char* text, std::size_t available) const {
    return available == 0 ? 0 : decodeUtf8({text, available}).length;
}

std::string Utf8CharacterSet::toUtf8(std::string_view text) const { return validUtf8(text); }

std::string Utf8CharacterSet::fromUtf8(std::string_view text) const { return std::string(text); }

std::optional<std::u16string> Utf8CharacterSet::toUtf16(std::string_view text) const {
    bool valid = true;
    std::u16string result = utf8ToUtf16(text, &valid);
    if (!valid) return std::nullopt;
    return result;
}

char32_t Utf8CharacterSet::foldedCharacter(std::string_view character) const {
    const Utf8Character read = decodeUtf8(character);
    if (!read.valid) return 0x80000000U | static_cast<unsigned char>(character[0]);
    return foldedLetter(read.code);
}

void Utf8CharacterSet::appendCapital(std::string& text, std::string_view character) const {
    const Utf8Character read = decodeUtf8(character);
    if (read.valid) {
        appendUtf8(text, capitalLetter(read.code));
    } else {
        text.append(character);
    }
}

}  // namespace vexa
