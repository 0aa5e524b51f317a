#include "backend/text/utf8.h"

#include <cstring>

namespace vexa {

namespace {

unsigned byteAt(std::string_view text, std::size_t index) { return static_cast<unsigned char>(text[index]); }

constexpr Utf8Character kBrokenByte{kReplacementCharacter, 1, false};

bool isTrail(unsigned byte) { return (byte & 0xC0U) == 0x80U; }

Utf8Character decodePair(std::string_view text) {
    const unsigned first = byteAt(text, 0);
    const unsigned second = byteAt(text, 1);
    if (first < 0xC2 || !isTrail(second)) return kBrokenByte;
    return {(first & 0x1FU) << 6U | (second & 0x3FU), 2, true};
}

Utf8Character decodeTriple(std::string_view text) {
    const unsigned second = byteAt(text, 1);
    const unsigned third = byteAt(text, 2);
    if (!isTrail(second) || !isTrail(third)) return kBrokenByte;
    const char32_t code = (byteAt(text, 0) & 0x0FU) << 12U | (second & 0x3FU) << 6U | (third & 0x3FU);
    if (code < 0x800 || (code >= 0xD800 && code <= 0xDFFF)) return kBrokenByte;
    return {code, 3, true};
}

Utf8Character decodeQuadruple(std::string_view text) {
    char32_t code = byteAt(text, 0) & 0x07U;
    for (std::size_t i = 1; i < 4; ++i) {
        if (!isTrail(byteAt(text, i))) return kBrokenByte;
        code = code << 6U | (byteAt(text, i) & 0x3FU);
    }
    if (code < 0x10000 || code > 0x10FFFF) return kBrokenByte;
    return {code, 4, true};
}

void append(std::string& text, char32_t bits) {
    text.push_back(static_cast<char>(static_cast<unsigned char>(bits)));
}

}  // namespace

Utf8Character decodeUtf8(std::string_view text) {
    const unsigned lead = byteAt(text, 0);
    if (lead < 0x80) return {lead, 1, true};
    if (lead < 0xE0) return text.size() < 2 ? kBrokenByte : decodePair(text);
    if (lead < 0xF0) return text.size() < 3 ? kBrokenByte : decodeTriple(text);
    if (lead < 0xF8) return text.size() < 4 ? kBrokenByte : decodeQuadruple(text);
    return kBrokenByte;
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
        if (at < text.size() && byteAt(text, at) < 0x80) at += asciiPrefix(text.substr(at));
    }
    result.append(text, copied);
    return result;
}

}  // namespace vexa
