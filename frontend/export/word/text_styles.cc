#include "frontend/export/word/text_styles.h"

#include <cmath>

#include "backend/text/utf8.h"
#include "frontend/export/office/office_values.h"

namespace vexa::frontend {

namespace {

using tables::AreaLook;
using tables::HorizontalAlign;

/// Word processors take no longer names of fonts.
constexpr std::size_t longestFontName = 31;

}  // namespace

std::string wordFont(std::string_view family) {
    const std::string whole = officeFont(family);
    std::size_t end = 0;
    for (std::size_t letters = 0; end < whole.size() && letters < longestFontName; ++letters) {
        end += decodeUtf8(std::string_view(whole).substr(end)).length;
    }
    return whole.substr(0, end);
}

WordTextStyle textStyleOf(const AreaLook& look, bool isNumber, double scale) {
    WordTextStyle style;
    style.font = wordFont(look.font);
    // Texts that are made smaller must not be larger than their columns.
    style.halfPoints = halfPointsOf(scale < 1 ? std::floor(look.size * scale * 2) / 2 : look.size);
    style.bold = look.bold;
    style.italic = look.italic;
    style.underline = look.underline;
    style.color = look.color;
    style.align = look.horizontal;
    if (style.align == HorizontalAlign::mixed) {
        style.align = isNumber ? HorizontalAlign::right : HorizontalAlign::left;
    }
    return style;
}

std::size_t TextStyles::find(const WordTextStyle& style) {
    std::string key = style.font + '\n' + std::to_string(style.halfPoints) + (style.bold ? 'b' : ' ') +
                      (style.italic ? 'i' : ' ') + (style.underline ? 'u' : ' ') +
                      std::to_string(style.color.rgb) +
                      static_cast<char>('0' + static_cast<int>(style.align));
    const auto [found, isNew] = numbers_.try_emplace(std::move(key), styles_.size());
    if (isNew) styles_.push_back(style);
    return found->second;
}

}  // namespace vexa::frontend
