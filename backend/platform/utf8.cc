#include "backend/platform/utf8.h"

#include <cstdint>
#include <cstring>

namespace vexa {

namespace {

unsigned byteAt(std::string_view text, std::size_t index) { return static_cast<unsigned char>(text[index]); }

constexpr Utf8Character kBrokenByte{kReplacementCharacter, 1, false};

/// Bytes that the lead byte announces; 0 when it is none.
std::size_t announcedLength(unsigned lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

bool isCharacterOf(char32_t code, std::size_t length) {
    if (length == 3) return code >= 0x800 && (code < 0xD800 || code > 0xDFFF);
    if (length == 4) return code >= 0x10000 && code <= 0x10FFFF;
    return true;
}

void append(std::string& text, char32_t bits) {
    text.push_back(static_cast<char>(static_cast<unsigned char>(bits)));
}

}  // namespace

Utf8Character decodeUtf8(std::string_view text) {
    const unsigned lead = byteAt(text, 0);
    if (lead < 0x80) return {lead, 1, true};
    const std::size_t length = announcedLength(lead);
    if (length == 0 || length > text.size()) return kBrokenByte;
    char32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned trail = byteAt(text, i);
        if ((trail & 0xC0U) != 0x80U) return kBrokenByte;
        code = code << 6U | (trail & 0x3FU);
    }
    if (!isCharacterOf(code, length)) return kBrokenByte;
    return {code, length, true};
}

void appendUtf8(std::string& text, char32_t code) {
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) code = kReplacementCharacter;
    if (code < 0x80) {
        append(text, code);
        return;
    }
    if (code < 0x800) {
        append(text, 0xC0U | code >> 6U);
    } else if (code < 0x10000) {
        append(text, 0xE0U | code >> 12U);
        append(text, 0x80U | (code >> 6U & 0x3FU));
    } else {
        append(text, 0xF0U | code >> 18U);
        append(text, 0x80U | (code >> 12U & 0x3FU));
        append(text, 0x80U | (code >> 6U & 0x3FU));
    }
    append(text, 0x80U | (code & 0x3FU));
}

std::size_t asciiPrefix(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::size_t at = 0;
    for (std::uint64_t word = 0; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if ((word & kHighBits) != 0) break;
    }
    while (at < text.size() && byteAt(text, at) < 0x80) ++at;
    return at;
}

std::string validUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    std::size_t copied = 0;
    for (std::size_t at = asciiPrefix(text); at < text.size();) {
        const Utf8Character character = decodeUtf8(text.substr(at));
        if (!character.valid) {
            result.append(text, copied, at - copied);
            appendUtf8(result, kReplacementCharacter);
            copied = at + 1;
        }
        at += character.length;
        at += asciiPrefix(text.substr(at));
    }
    result.append(text, copied);
    return result;
}

}  // namespace vexa
