#include "frontend/drawing/vector_fonts.h"

#include <algorithm>

namespace vexa::frontend {

namespace {

/// Widths are in thousandths of the font's size.
constexpr double unitsOfSize = 1000;

std::uint32_t numberOf(std::string_view bytes) {
    std::uint32_t number = 0;
    for (const char each : bytes) number = number << 8U | static_cast<unsigned char>(each);
    return number;
}

int digitOf(char each) {
    if (each >= '0' && each <= '9') return each - '0';
    if (each >= 'a' && each <= 'f') return each - 'a' + 10;
    return each >= 'A' && each <= 'F' ? each - 'A' + 10 : -1;
}

/// The next `<hexadecimal text>` from `at` on, before `end`; `at` is behind it then.
bool nextBytes(const std::string& text, std::size_t& at, std::size_t end, std::string& bytes) {
    const std::size_t begin = text.find('<', at);
    if (begin >= end) return false;
    bytes.clear();
    int half = -1;
    for (at = begin + 1; at < end && text[at] != '>'; ++at) {
        const int digit = digitOf(text[at]);
        if (digit < 0) continue;
        if (half >= 0) bytes += static_cast<char>(half * 16 + digit);
        half = half < 0 ? digit : -1;
    }
    return at < end;
}

bool names(const std::string& name, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view each) { return name.find(each) != std::string::npos; });
}

}  // namespace

std::u32string fromBigEndian(std::string_view bytes) {
    std::u32string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t unit = numberOf(bytes.substr(i, 2));
        if (unit >= 0xD800 && unit < 0xDC00 && i + 3 < bytes.size()) {
            unit = 0x10000 + ((unit - 0xD800) << 10U) + (numberOf(bytes.substr(i + 2, 2)) - 0xDC00);
            i += 2;
        }
        text += unit;
    }
    return text;
}

VectorPageFont::VectorPageFont(QPDFObjectHandle font) {
    const std::string baseFont = font.getKey("/BaseFont").isName() ? font.getKey("/BaseFont").getName() : "/";
    QPDFObjectHandle described = font;
    if (font.getKey("/Subtype").isNameAndEquals("/Type0")) {
        codeBytes_ = 2;
        described = font.getKey("/DescendantFonts").getArrayItem(0);
        readCidWidths(described);
    } else {
        readWidths(font);
    }
    readName(described.getKey("/FontDescriptor"), baseFont);
    if (QPDFObjectHandle map = font.getKey("/ToUnicode"); map.isStream()) {
        const auto data = map.getStreamData();
        readMap(std::string(reinterpret_cast<const char*>(data->getBuffer()), data->getSize()));
    }
}

void VectorPageFont::readName(QPDFObjectHandle descriptor, const std::string& baseFont) {
    // "/ABCDEF+DejaVuSans-Bold"
    const std::size_t plus = baseFont.find('+');
    font_.postScript = baseFont.substr(plus == std::string::npos ? 1 : plus + 1);
    font_.bold = names(font_.postScript, {"Bold", "Black", "Heavy"});
    font_.italic = names(font_.postScript, {"Italic", "Oblique"});
    font_.family = font_.postScript.substr(0, font_.postScript.find('-'));
    if (descriptor.isDictionary() && descriptor.getKey("/FontFamily").isString()) {
        font_.family = descriptor.getKey("/FontFamily").getUTF8Value();
    }
}

void VectorPageFont::readWidths(QPDFObjectHandle font) {
    if (!font.getKey("/Widths").isArray() || !font.getKey("/FirstChar").isInteger()) return;
    auto code = static_cast<std::uint32_t>(font.getKey("/FirstChar").getIntValueAsInt());
    for (const QPDFObjectHandle& each : font.getKey("/Widths").getArrayAsVector()) {
        widths_[code++] = QPDFObjectHandle(each).getNumericValue() / unitsOfSize;
    }
}

/// [ 3 [ 600 500 ] 17 [ 250 ] ]
void VectorPageFont::readCidWidths(QPDFObjectHandle descendant) {
    if (!descendant.getKey("/W").isArray()) return;
    std::uint32_t code = 0;
    for (QPDFObjectHandle each : descendant.getKey("/W").getArrayAsVector()) {
        if (each.isInteger()) code = static_cast<std::uint32_t>(each.getIntValueAsInt());
        if (!each.isArray()) continue;
        for (QPDFObjectHandle width : each.getArrayAsVector()) {
            widths_[code++] = width.getNumericValue() / unitsOfSize;
        }
    }
}

void VectorPageFont::readMap(const std::string& map) {
    std::string code;
    std::string last;
    std::string text;
    std::size_t at = 0;
    while ((at = map.find("beginbfchar", at)) != std::string::npos) {
        const std::size_t end = std::min(map.find("endbfchar", at), map.size());
        while (nextBytes(map, at, end, code) && nextBytes(map, at, end, text)) {
            characters_[numberOf(code)] = fromBigEndian(text);
        }
        at = end;
    }
    at = 0;
    while ((at = map.find("beginbfrange", at)) != std::string::npos) {
        const std::size_t end = std::min(map.find("endbfrange", at), map.size());
        while (nextBytes(map, at, end, code) && nextBytes(map, at, end, last) &&
               nextBytes(map, at, end, text)) {
            std::u32string characters = fromBigEndian(text);
            for (std::uint32_t i = numberOf(code); i <= numberOf(last) && i <= 0xFFFF; ++i) {
                characters_[i] = characters;
                if (!characters.empty()) ++characters.back();
            }
        }
        at = end;
    }
}

std::vector<VectorGlyph> VectorPageFont::glyphs(std::string_view bytes) const {
    std::vector<VectorGlyph> glyphs;
    for (std::size_t i = 0; i + codeBytes_ <= bytes.size(); i += codeBytes_) {
        const std::uint32_t code = numberOf(bytes.substr(i, codeBytes_));
        VectorGlyph& glyph = glyphs.emplace_back();
        if (const auto found = characters_.find(code); found != characters_.end()) {
            glyph.text = found->second;
        } else if (codeBytes_ == 1 && code >= ' ') {
            glyph.text = std::u32string(1, static_cast<char32_t>(code));
        }
        if (const auto found = widths_.find(code); found != widths_.end()) glyph.advance = found->second;
    }
    return glyphs;
}

}  // namespace vexa::frontend
