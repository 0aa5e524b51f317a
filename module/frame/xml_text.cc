#include "module/frame/xml_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "backend/platform/character_set.h"

namespace vexa {

namespace {

/// The entity of a character that has one, else nothing.
constexpr std::string_view entityOf(char character) {
    switch (character) {
        case '"':
            return "&quot;";
        case '&':
            return "&amp;";
        case '\'':
            return "&apos;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        default:
            return {};
    }
}

/// Bytes that are looked at together; most texts have no special character in any of them.
constexpr std::size_t kBlock = 64;

/// True when one of the next `kBlock` bytes is special. Without a branch in the loop, so that the compiler
/// can look at many bytes at a time: & and ' differ in one bit, < and > in another.
bool blockHasSpecial(const char* block) {
    unsigned char found = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const auto byte = static_cast<unsigned char>(block[i]);
        const bool special = byte == '"' || (byte | 1U) == '\'' || (byte | 2U) == '>';
        found = static_cast<unsigned char>(found | static_cast<unsigned char>(special));
    }
    return found != 0;
}

/// The first byte at or behind `from` that is special, or the end. Only for texts in which no such byte can
/// be part of a longer character.
std::size_t findSpecial(std::string_view text, std::size_t from) {
    while (text.size() - from >= kBlock && !blockHasSpecial(text.data() + from)) {
        from += kBlock;
    }
    const auto found = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                                    [](char each) { return !entityOf(each).empty(); });
    return static_cast<std::size_t>(found - text.begin());
}

std::string escapeByBytes(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t special = findSpecial(text, at);
        escaped += text.substr(at, special - at);
        if (special < text.size()) {
            escaped += entityOf(text[special]);
        }
        at = special + 1;
    }
    return escaped;
}

std::string escapeByCharacters(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        // Length 0 is a zero byte: the platform's texts end there, this one need not.
        const auto length = static_cast<std::size_t>(std::max(VEXAMBmbclen_A(text.c_str() + at), 1));
        const std::string_view character = std::string_view(text).substr(at, length);
        const std::string_view entity = length == 1 ? entityOf(character.front()) : std::string_view();
        escaped += entity.empty() ? character : entity;
        at += length;
    }
    return escaped;
}

}  // namespace

std::string escapeXml(std::string_view text) {
    const CharacterSet& set = currentCharacterSet();
    // The bytes of a longer UTF-8 character are all above 127.
    return set.isUtf8() || set.isSingleByte() ? escapeByBytes(text) : escapeByCharacters(std::string(text));
}

std::string toXmlUtf8(const std::string& text) {
    const char16_t* const converted = VEXAMBTranscodeGeneric(text.c_str());
    return converted == nullptr ? std::string() : VEXAMBU16ToU8(converted);
}

void appendAsIs(std::string& xml, std::string_view name, std::string_view value) {
    ((((xml += ' ') += name) += "=\"") += value) += '"';
}

void appendText(std::string& xml, std::string_view name, const std::string& value) {
    appendAsIs(xml, name, toXmlUtf8(value));
}

void appendFlag(std::string& xml, std::string_view name, bool value) {
    appendAsIs(xml, name, value ? "true" : "false");
}

void appendInteger(std::string& xml, std::string_view name, std::int32_t value) {
    appendAsIs(xml, name, std::to_string(value));
}

void appendNumber(std::string& xml, std::string_view name, double value) {
    constexpr int kSignificantDigits = 6;
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general,
                                   kSignificantDigits);
    appendAsIs(xml, name, {text.data(), static_cast<std::size_t>(end.ptr - text.data())});
}

}  // namespace vexa
