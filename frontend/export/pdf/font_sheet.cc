#include "frontend/export/pdf/font_sheet.h"

#include <algorithm>
#include <array>
#include <utility>

#include "backend/text/utf8.h"
#include "frontend/drawing/glyph_names.h"
#include "frontend/export/pdf/pdf_file.h"

namespace vexa::frontend::pdf {

namespace {

constexpr unsigned int firstCode = 32;
constexpr std::size_t mostCodes = 256 - firstCode;

/// The characters from 0x80 to 0x9F of the Western European set; 0 where it has none.
constexpr std::array<char16_t, 32> westernMiddle{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char32_t westernCharacter(unsigned int code) {
    return code >= 0x80 && code < 0xA0 ? westernMiddle[code - 0x80] : code;
}

/// The code of a character in the Western European set; 0 for one that is not in it.
unsigned char westernCode(char32_t character) {
    if (character >= 0x20 && character < 0x7F) return static_cast<unsigned char>(character);
    if (character >= 0xA0 && character <= 0xFF) return static_cast<unsigned char>(character);
    for (std::size_t i = 0; i < westernMiddle.size(); ++i) {
        if (westernMiddle[i] == character && character != 0) return static_cast<unsigned char>(0x80 + i);
    }
    return 0;
}

bool isWithin(char32_t character, char32_t first, char32_t last) {
    return character >= first && character <= last;
}

}  // namespace

bool isFoundByName(char32_t character) {
    if (westernCode(character) != 0) return true;
    // Latin, Greek, Cyrillic and Armenian letters without the marks that stand over others, and signs without
    // those that only steer texts.
    return isWithin(character, 0x100, 0x2FF) || isWithin(character, 0x370, 0x482) ||
           isWithin(character, 0x48A, 0x58F) || isWithin(character, 0x1E00, 0x1FFF) ||
           isWithin(character, 0x2010, 0x2027) || isWithin(character, 0x2030, 0x205E) ||
           isWithin(character, 0x2070, 0x20CF) || isWithin(character, 0x2100, 0x2BFF);
}

FontSheet::FontSheet(std::string name, bool isWestern) : name_(std::move(name)), isWestern_(isWestern) {}

bool FontSheet::take(const std::u32string& characters) {
    if (isWestern_) {
        return std::all_of(characters.begin(), characters.end(),
                           [](char32_t each) { return westernCode(each) != 0; });
    }
    std::map<char32_t, unsigned char> codes = codes_;
    for (const char32_t each : characters) {
        codes.try_emplace(each, static_cast<unsigned char>(firstCode + codes.size()));
        if (codes.size() > mostCodes) return false;
    }
    codes_ = std::move(codes);
    return true;
}

unsigned char FontSheet::code(char32_t character) const {
    if (isWestern_) return westernCode(character);
    const auto found = codes_.find(character);
    return found == codes_.end() ? static_cast<unsigned char>(firstCode) : found->second;
}

std::vector<char32_t> FontSheet::characters() const {
    std::vector<char32_t> characters(isWestern_ ? mostCodes : codes_.size());
    for (std::size_t i = 0; isWestern_ && i < characters.size(); ++i)
        characters[i] = westernCharacter(static_cast<unsigned int>(firstCode + i));
    for (const auto& [character, code] : codes_) characters[code - firstCode] = character;
    return characters;
}

std::string FontSheet::encoding() const {
    if (isWestern_) return "/WinAnsiEncoding";
    std::string text =
        "<</Type/Encoding/BaseEncoding/WinAnsiEncoding/Differences[" + std::to_string(firstCode);
    for (const char32_t each : characters()) text += "/" + glyphName(each);
    return text + "]>>";
}

std::string FontSheet::unicodeMap() const {
    if (isWestern_) return {};
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::size_t mostLines = 100;
    std::string map =
        "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n/CIDSystemInfo<</Registry(Adobe)"
        "/Ordering(UCS)/Supplement 0>>def\n/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
        "1 begincodespacerange\n<00><FF>\nendcodespacerange\n";
    const std::vector<char32_t> all = characters();
    for (std::size_t begin = 0; begin < all.size(); begin += mostLines) {
        const std::size_t end = std::min(all.size(), begin + mostLines);
        map += std::to_string(end - begin) + " beginbfchar\n";
        for (std::size_t i = begin; i < end; ++i) {
            const std::size_t code = firstCode + i;
            std::string text;
            appendUtf8(text, all[i]);
            map += {'<', digits[code >> 4U], digits[code & 0xFU], '>', '<'};
            appendHexUtf16(map, text);
            map += ">\n";
        }
        map += "endbfchar\n";
    }
    return map + "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n";
}

}  // namespace vexa::frontend::pdf
