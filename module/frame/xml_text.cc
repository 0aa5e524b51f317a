#include "module/frame/xml_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>

#include "backend/text/character_set.h"
#include "module/frame/special_bytes.h"

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

constexpr std::string_view kSpecials = "\"&'<>";

/// An entity in a form that is copied without asking for its length.
struct StoredEntity {
    std::array<char, 8> text{};
    std::size_t length = 0;
};

constexpr StoredEntity stored(char character) {
    StoredEntity entity;
    for (const char each : entityOf(character)) {
        entity.text[entity.length++] = each;
    }
    return entity;
}

/// By the low four bits of their characters, which differ.
constexpr std::size_t kEntityKeys = 16;
constexpr std::array<StoredEntity, kEntityKeys> kEntities = [] {
    std::array<StoredEntity, kEntityKeys> entities{};
    for (const char character : kSpecials) {
        entities[static_cast<std::size_t>(character) % kEntityKeys] = stored(character);
    }
    return entities;
}();

/// Collects short pieces before they are appended to a text: most pieces are too short to be worth an append.
class PieceWriter {
  public:
    // Most texts would pay for clearing it.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): `pieces_` is written before it is read
    explicit PieceWriter(std::string& text) : text_(text) {}

    /// `piece` without its special character at the end, and the entity of that character.
    void addEscaped(const char* piece, std::size_t length) {
        if (length > kLongest) {
            flush();
            text_.append(piece, length);
        } else {
            std::memcpy(end_, piece, length);
            end_ += length;
        }
        const StoredEntity& entity = kEntities[static_cast<std::size_t>(piece[length]) % kEntityKeys];
        std::memcpy(end_, entity.text.data(), entity.text.size());
        end_ += entity.length;
        if (end_ > pieces_.data() + kEnough) {
            flush();
        }
    }

    void flush() {
        text_.append(pieces_.data(), end_);
        end_ = pieces_.data();
    }

  private:
    static constexpr std::size_t kLongest = 1024;
    static constexpr std::size_t kEnough = 3072;

    std::string& text_;
    std::array<char, kEnough + kLongest + sizeof(StoredEntity)> pieces_;
    char* end_ = pieces_.data();
};

/// Replaces every special byte. Only for texts in which no such byte can be part of a longer character.
std::string escapeByBytes(std::string_view text) {
    SpecialBytes places(text);
    std::size_t at = places.next();
    if (at == text.size()) {
        return std::string(text);
    }
    std::string escaped;
    escaped.reserve(text.size() + text.size() / 8);
    PieceWriter pieces(escaped);
    std::size_t copied = 0;
    for (; at < text.size(); at = places.next()) {
        pieces.addEscaped(text.data() + copied, at - copied);
        copied = at + 1;
    }
    pieces.flush();
    escaped.append(text, copied);
    return escaped;
}

std::string escapeByCharacters(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        // Length 0 is a zero byte: the texts of the text library end there, this one need not.
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
    const bool byBytes = std::all_of(kSpecials.begin(), kSpecials.end(),
                                     [&set](char special) { return set.standsAlone(special); });
    return byBytes ? escapeByBytes(text) : escapeByCharacters(std::string(text));
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

void appendTextIfAny(std::string& xml, std::string_view name, const std::string& value) {
    if (!value.empty()) {
        appendText(xml, name, value);
    }
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
