#include "backend/text/text_width.h"

#include <algorithm>

#include "backend/text/letters.h"
#include "backend/text/utf8.h"

namespace vexa {

namespace {

constexpr char32_t kDelete = 0x7F;

bool isControl(char32_t code) { return code < 0x20 || (code >= kDelete && code < 0xA0); }

/// Line and paragraph separators, and the marks that turn the direction of what follows them.
bool steersDisplay(char32_t code) {
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool isPlainAscii(char c) { return c >= ' ' && c <= '~'; }

/// Bytes at the beginning of `text` that are all printable ASCII characters.
std::size_t plainPrefix(std::string_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isPlainAscii) - text.begin());
}

char32_t visibleForm(char32_t code) {
    constexpr char32_t kPictures = 0x2400;
    if (code < 0x20) return kPictures + code;
    if (code == kDelete) return 0x2421;
    return isControl(code) || steersDisplay(code) ? kReplacementCharacter : code;
}

}  // namespace

std::size_t characterWidth(char32_t code) {
    if (code < 0x300 || steersDisplay(code)) return 1;
    return static_cast<std::size_t>(letterWidth(code));
}

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    for (;;) {
        const std::size_t plain = plainPrefix(text);
        width += plain;
        text.remove_prefix(plain);
        if (text.empty()) return width;
        const Utf8Character character = decodeUtf8(text);
        width += characterWidth(character.code);
        text.remove_prefix(character.length);
    }
}

std::string printableText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (;;) {
        const std::size_t plain = plainPrefix(text);
        result.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) return result;
        const Utf8Character character = decodeUtf8(text);
        appendUtf8(result, visibleForm(character.code));
        text.remove_prefix(character.length);
    }
}

bool isPrintableText(std::string_view text) {
    for (;;) {
        text.remove_prefix(plainPrefix(text));
        if (text.empty()) return true;
        const Utf8Character character = decodeUtf8(text);
        if (!character.valid || visibleForm(character.code) != character.code) return false;
        text.remove_prefix(character.length);
    }
}

}  // namespace vexa
