#include "frontend/export/word/text_styles.h"

#include <algorithm>
#include <cmath>

#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

using tables::AreaLook;
using tables::HorizontalAlign;

/// Word processors take no longer names of fonts.
constexpr std::size_t longestFontName = 31;
constexpr int largestHalfPoints = 3276;

}  // namespace

std::string wordFont(std::string_view family) {
    if (family.empty() || family == "sans-serif") return "Arial";
    if (family == "serif") return "Times New Roman";
    if (family == "monospace") return "Courier New";
    std::string name;
    std::size_t letters = 0;
    for (std::size_t i = 0; i < family.size() && letters < longestFontName; ++letters) {
        const Utf8Character character = decodeUtf8(family.substr(i));
        const bool isSafe = character.valid && character.code >= ' ' && character.code != 0x7F &&
                            std::string_view(";,\"\\{}<>&").find(family[i]) == std::string_view::npos;
        if (isSafe) name += family.substr(i, character.length);
        i += character.length;
    }
    return name.empty() ? "Arial" : name;
}

int halfPointsOf(double points) {
    return static_cast<int>(std::clamp(std::lround(points * 2), 2L, static_cast<long>(largestHalfPoints)));
}

WordTextStyle textStyleOf(const AreaLook& look, bool isNumber, double scale) {
    WordTextStyle style;
    style.font = wordFont(look.font);
    // Texts that are made smaller must not be larger than their columns.
    style.halfPoints = scale < 1 ? std::max(static_cast<int>(std::floor(look.size * scale * 2)), 2)
                                 : halfPointsOf(look.size);
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
                      std::to_string(style.color.rgb) + static_cast<char>('0' + static_cast<int>(style.align));
    const auto [found, isNew] = numbers_.try_emplace(std::move(key), styles_.size());
    if (isNew) styles_.push_back(style);
    return found->second;
}

}  // namespace vexa::frontend
