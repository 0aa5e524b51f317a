#include "frontend/export/html/html_text.h"

#include <array>
#include <cstdint>

#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

enum class Treatment : std::uint8_t { asIs, escaped, replaced, multibyte };

constexpr std::array<Treatment, 256> makeTreatments() {
    std::array<Treatment, 256> treatments{};
    for (std::size_t i = 0; i < 32; ++i) treatments[i] = Treatment::replaced;
    treatments['\t'] = treatments['\n'] = Treatment::asIs;
    for (const char each : {'&', '<', '>', '"'})
        treatments[static_cast<unsigned char>(each)] = Treatment::escaped;
    treatments[0x7F] = Treatment::replaced;
    for (std::size_t i = 0x80; i < 256; ++i) treatments[i] = Treatment::multibyte;
    return treatments;
}
constexpr std::array<Treatment, 256> treatments = makeTreatments();

/// Whether every byte is a character that HTML holds as it is, line ends apart. Without branches, since most
/// texts are short and are of nothing else.
bool isPlain(std::string_view text) {
    bool isOther = false;
    for (const char each : text) {
        isOther |= treatments[static_cast<unsigned char>(each)] != Treatment::asIs || each == '\n';
    }
    return !isOther;
}

constexpr std::string_view replacement = "\xEF\xBF\xBD";

std::string_view escapeOf(char each) {
    switch (each) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        default:
            return "&quot;";
    }
}

/// Whether HTML may hold a character beyond ASCII.
bool isAllowed(char32_t code) {
    const bool isControl = code < 0xA0;
    const bool isNoCharacter = (code & 0xFFFE) == 0xFFFE || (code >= 0xFDD0 && code <= 0xFDEF);
    return !isControl && !isNoCharacter;
}

}  // namespace

void appendHtml(std::string& html, std::string_view text) {
    std::size_t begin = 0;
    std::size_t i = 0;
    const auto pass = [&](std::size_t length, std::string_view instead) {
        html.append(text.substr(begin, i - begin)).append(instead);
        i += length;
        begin = i;
    };
    while (i < text.size()) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (text[i] == '\r') {
            const bool isPair = i + 1 < text.size() && text[i + 1] == '\n';
            pass(isPair ? 2 : 1, "\n");
        } else if (treatments[byte] == Treatment::asIs) {
            ++i;
        } else if (treatments[byte] == Treatment::escaped) {
            pass(1, escapeOf(text[i]));
        } else if (treatments[byte] == Treatment::replaced) {
            pass(1, replacement);
        } else {
            const Utf8Character character = decodeUtf8(text.substr(i));
            if (character.valid && isAllowed(character.code)) {
                i += character.length;
            } else {
                pass(character.length, replacement);
            }
        }
    }
    html.append(text.substr(begin));
}

void appendHtmlLines(std::string& html, std::string_view text) {
    if (isPlain(text)) {
        html += text;
        return;
    }
    for (;;) {
        const std::size_t end = text.find_first_of("\r\n");
        appendHtml(html, text.substr(0, end));
        if (end == std::string_view::npos) return;
        html += "<br>";
        const bool isPair = text.substr(end).starts_with("\r\n");
        text.remove_prefix(end + (isPair ? 2 : 1));
    }
}

}  // namespace vexa::frontend
