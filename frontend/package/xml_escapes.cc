#include "frontend/package/xml_escapes.h"

#include <array>

namespace vexa::frontend {
namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";
constexpr std::string_view replacement = "\xEF\xBF\xBD";

unsigned valueAt(std::string_view text, std::size_t index) { return static_cast<unsigned char>(text[index]); }

bool isContinuation(std::string_view text, std::size_t index) {
    return index < text.size() && (valueAt(text, index) & 0xC0U) == 0x80U;
}

/// Where a text stands, and so what it may hold as it is.
enum class Place { documentFile, content, value };

constexpr bool isPlain(unsigned byte, Place place) {
    if (byte == '&' || byte == '<' || byte == '>') {
        return false;
    }
    switch (place) {
        case Place::documentFile:
            return byte >= 0x20U && byte < 0x7FU && byte != '"' && byte != '\\';
        case Place::content:
            return (byte >= 0x20U && byte < 0x80U) || byte == '\t' || byte == '\n';
        case Place::value:
            return byte >= 0x20U && byte < 0x80U && byte != '"';
    }
    return false;
}

using PlainTable = std::array<bool, 256>;

constexpr PlainTable makePlainTable(Place place) {
    PlainTable table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        table[byte] = isPlain(byte, place);
    }
    return table;
}

constexpr PlainTable plainInDocumentFile = makePlainTable(Place::documentFile);
constexpr PlainTable plainInContent = makePlainTable(Place::content);
constexpr PlainTable plainInValue = makePlainTable(Place::value);

/// What stands for a character of special meaning; empty for every other one.
std::string_view entityOf(char character, XmlEscapes escapes) {
    switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        default:
            break;
    }
    if (escapes == XmlEscapes::replacing) {
        // As they stand, a reader would make blanks of them, or one line end of two characters.
        switch (character) {
            case '\t':
                return "&#9;";
            case '\n':
                return "&#10;";
            case '\r':
                return "&#13;";
            default:
                break;
        }
    }
    return {};
}

void appendImpossible(std::string& out, unsigned byte, XmlEscapes escapes) {
    if (escapes == XmlEscapes::replacing) {
        out += replacement;
        return;
    }
    out += '\\';
    out += hexDigits[byte >> 4U];
    out += hexDigits[byte & 0xFU];
}

// U+FFFE and U+FFFF are characters of three bytes, and are replaced once.
std::size_t impossibleLength(std::string_view text, std::size_t index, XmlEscapes escapes) {
    const bool whole = escapes == XmlEscapes::replacing && valueAt(text, index) == 0xEFU &&
                       isContinuation(text, index + 1) && isContinuation(text, index + 2);
    return whole ? 3 : 1;
}

void appendEscaped(std::string& out, std::string_view text, const PlainTable& plain, XmlEscapes escapes) {
    std::size_t index = 0;
    while (index < text.size()) {
        std::size_t end = index;
        while (end < text.size() && plain[valueAt(text, end)]) {
            ++end;
        }
        out.append(text, index, end - index);
        index = end;
        if (index == text.size()) {
            return;
        }
        if (const std::string_view entity = entityOf(text[index], escapes); !entity.empty()) {
            out += entity;
            ++index;
        } else if (const std::size_t length = xmlCharacterLength(text, index); length > 0) {
            out.append(text, index, length);
            index += length;
        } else {
            appendImpossible(out, valueAt(text, index), escapes);
            index += impossibleLength(text, index, escapes);
        }
    }
}

int hexValue(char digit) {
    const auto place = hexDigits.find(digit);
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

}  // namespace

std::size_t xmlCharacterLength(std::string_view text, std::size_t index) {
    const unsigned first = valueAt(text, index);
    const std::size_t length = first < 0xC2U   ? 0
                               : first < 0xE0U ? 2
                               : first < 0xF0U ? 3
                               : first < 0xF5U ? 4
                                               : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text, index + i)) {
            return 0;
        }
    }
    if (length < 3) {
        return length;
    }
    const unsigned second = valueAt(text, index + 1);
    const bool overlong = (first == 0xE0U && second < 0xA0U) || (first == 0xF0U && second < 0x90U);
    const bool outside = (first == 0xEDU && second > 0x9FU) || (first == 0xF4U && second > 0x8FU);
    const bool noCharacter = first == 0xEFU && second == 0xBFU && valueAt(text, index + 2) >= 0xBEU;
    return overlong || outside || noCharacter ? 0 : length;
}

void appendXmlText(std::string& out, std::string_view text, XmlEscapes escapes) {
    const bool ours = escapes == XmlEscapes::backslashes;
    appendEscaped(out, text, ours ? plainInDocumentFile : plainInContent, escapes);
}

void appendXmlValue(std::string& out, std::string_view text, XmlEscapes escapes) {
    const bool ours = escapes == XmlEscapes::backslashes;
    appendEscaped(out, text, ours ? plainInDocumentFile : plainInValue, escapes);
}

bool decodeBackslashes(std::string& text) {
    std::size_t from = text.find('\\');
    if (from == std::string::npos) {
        return true;
    }
    std::size_t to = from;
    while (from < text.size()) {
        if (text[from] != '\\') {
            text[to++] = text[from++];
            continue;
        }
        const bool whole = text.size() - from >= 3;
        const int high = whole ? hexValue(text[from + 1]) : -1;
        const int low = whole ? hexValue(text[from + 2]) : -1;
        if (high < 0 || low < 0) {
            return false;
        }
        text[to++] = static_cast<char>(high * 16 + low);
        from += 3;
    }
    text.resize(to);
    return true;
}

}  // namespace vexa::frontend
