#include <cassert>

#include "backend/text/character_set_implementations.h"
#include "backend/text/letters.h"
#include "backend/text/utf16.h"
#include "backend/text/utf8.h"

namespace vexa {

namespace {

constexpr std::size_t kLongestCharacter = 4;
constexpr std::uint8_t kNoCharacter = 1;
constexpr std::uint8_t kPair = 2;
constexpr std::uint8_t kLonger = 3;

unsigned char byteOf(char c) { return static_cast<unsigned char>(c); }

/// True when the characters that the command language is written in stand for themselves.
bool carriesAscii(const CodePageConverter& converter) {
    std::string ascii = "\t\n\r";
    for (char c = ' '; c <= '~'; ++c) ascii.push_back(c);
    const auto read = converter.toUtf16Strictly(ascii);
    return read && *read == utf8ToUtf16(ascii) && converter.fromUtf16(*read) == ascii;
}

std::uint8_t classifyPair(const CodePageConverter& converter, int lead, int trail) {
    const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
    switch (converter.classify({bytes, 2})) {
        case CodePageConverter::Reading::character:
            return kPair;
        case CodePageConverter::Reading::needsMore:
            return kLonger;
        case CodePageConverter::Reading::broken:
            break;
    }
    return kNoCharacter;
}

}  // namespace

std::unique_ptr<CharacterSet> CodePage::make(std::string name, std::unique_ptr<CodePageConverter> converter) {
    if (!carriesAscii(*converter)) return nullptr;
    Lengths lengths = measure(*converter);
    for (int byte = 0; byte < 0x80; ++byte) {
        if (lengths.rowOfLead[static_cast<std::size_t>(byte)] != 0) return nullptr;
    }
    return std::unique_ptr<CharacterSet>(
        new CodePage(std::move(name), std::move(converter), std::move(lengths)));
}

CodePage::CodePage(std::string name, std::unique_ptr<CodePageConverter> converter, Lengths lengths)
    : CharacterSet(std::move(name), false, lengths.pairs.empty(), lengths.asciiTrails()),
      converter_(std::move(converter)),
      lengths_(std::move(lengths)) {}

CodePage::Lengths CodePage::measure(const CodePageConverter& converter) {
    Lengths lengths;
    std::uint8_t rows = 0;
    for (int lead = 0; lead < 256; ++lead) {
        const char byte = static_cast<char>(lead);
        if (converter.classify({&byte, 1}) != CodePageConverter::Reading::needsMore) continue;
        if (rows == 255) break;
        lengths.rowOfLead[static_cast<std::size_t>(lead)] = ++rows;
        for (int trail = 0; trail < 256; ++trail)
            lengths.pairs.push_back(classifyPair(converter, lead, trail));
    }
    return lengths;
}

CodePage::AsciiTrails CodePage::Lengths::asciiTrails() const {
    AsciiTrails trails;
    for (std::size_t place = 0; place < pairs.size(); ++place) {
        const std::size_t trail = place % 256;
        if (pairs[place] == kLonger) {
            return AsciiTrails().set();  // the third and fourth bytes are not measured
        }
        if (trail < trails.size() && pairs[place] == kPair) {
            trails.set(trail);
        }
    }
    return trails;
}

std::size_t CodePage::characterLength(const char* text, std::size_t available) const {
    if (available == 0) return 0;
    const std::size_t row = lengths_.rowOfLead[byteOf(text[0])];
    if (row == 0 || available == 1) return 1;
    const std::uint8_t pair = lengths_.pairs[(row - 1) * 256 + byteOf(text[1])];
    return pair == kLonger ? longLength(text, available) : pair;
}

std::size_t CodePage::longLength(const char* text, std::size_t available) const {
    for (std::size_t length = 3; length <= kLongestCharacter && length <= available; ++length) {
        switch (converter_->classify({text, length})) {
            case CodePageConverter::Reading::character:
                return length;
            case CodePageConverter::Reading::broken:
                return 1;
            case CodePageConverter::Reading::needsMore:
                break;
        }
    }
    return 1;
}

std::string CodePage::toUtf8(std::string_view text) const {
    if (asciiPrefix(text) == text.size()) return std::string(text);
    return utf16ToUtf8(converter_->toUtf16(text));
}

std::string CodePage::fromUtf8(std::string_view text) const {
    if (asciiPrefix(text) == text.size()) return std::string(text);
    return converter_->fromUtf16(utf8ToUtf16(text));
}

std::optional<std::u16string> CodePage::toUtf16(std::string_view text) const {
    return converter_->toUtf16Strictly(text);
}

std::optional<char32_t> CodePage::read(std::string_view character) const {
    assert(!character.empty());
    if (byteOf(character[0]) < 0x80) return byteOf(character[0]);
    const auto units = converter_->toUtf16Strictly(character);
    if (!units) return std::nullopt;
    const std::string utf8 = utf16ToUtf8(*units);
    if (utf8.empty()) return std::nullopt;
    const Utf8Character first = decodeUtf8(utf8);
    if (first.length != utf8.size()) return std::nullopt;
    return first.code;
}

char32_t CodePage::foldedCharacter(std::string_view character) const {
    if (const auto code = read(character)) return foldedLetter(*code);
    char32_t bytes = 0;
    for (const char c : character) bytes = bytes << 8U | byteOf(c);
    return 0x80000000U | bytes;
}

void CodePage::appendCapital(std::string& text, std::string_view character) const {
    const auto code = read(character);
    const char32_t capital = code ? capitalLetter(*code) : 0;
    if (!code || capital == *code) {
        text.append(character);
        return;
    }
    std::string utf8;
    appendUtf8(utf8, capital);
    const std::string converted = fromUtf8(utf8);
    text.append(read(converted) == capital ? std::string_view(converted) : character);
}

}  // namespace vexa
