#include "backend/platform/character_set_implementations.h"
#include "backend/platform/letters.h"
#include "backend/platform/utf8.h"

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

std::string utf16ToUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        const bool high = code >= 0xD800 && code <= 0xDBFF;
        if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            code = 0x10000U + ((code - 0xD800U) << 10U) + (text[++i] - 0xDC00U);
        }
        appendUtf8(result, code);
    }
    return result;
}

std::u16string utf8ToUtf16(std::string_view text, bool* valid) {
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character read = decodeUtf8(text);
        if (!read.valid && valid != nullptr) *valid = false;
        if (read.code < 0x10000) {
            result.push_back(static_cast<char16_t>(read.code));
        } else {
            const char32_t offset = read.code - 0x10000U;
            result.push_back(static_cast<char16_t>(0xD800U + (offset >> 10U)));
            result.push_back(static_cast<char16_t>(0xDC00U + (offset & 0x3FFU)));
        }
        text.remove_prefix(read.length);
    }
    return result;
}

}  // namespace vexa
