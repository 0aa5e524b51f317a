#include "frontend/export/html/style_classes.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "backend/tables/formats/number_text.h"

namespace vexa::frontend {

namespace {

using tables::appendShortest;
using tables::AreaLook;
using tables::BorderLine;
using tables::CellStyle;
using tables::Color;
using tables::HorizontalAlign;
using tables::LineStyle;
using tables::ShownStyle;
using tables::ShownStyleId;
using tables::TableGrid;
using tables::VerticalAlign;

void declare(std::string& css, std::string_view property, std::string_view value) {
    css.append(property).append(":").append(value).append(";");
}

std::string points(double length) {
    std::string text;
    appendShortest(text, length);
    return text + "pt";
}

std::string colorOf(Color color) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4) text += digits[color.rgb >> shift & 0xF];
    return text;
}

bool isGeneral(std::string_view font) {
    return font == "serif" || font == "sans-serif" || font == "monospace";
}

/// A family in quotes, with what could end them left out.
std::string familyOf(std::string_view font) {
    if (isGeneral(font)) return std::string(font);
    std::string family = "\"";
    for (const char each : font) {
        const bool isSafe =
            each != '"' && each != '\\' && each != '<' && static_cast<unsigned char>(each) >= ' ';
        if (isSafe) family += each;
    }
    return family + "\",sans-serif";
}

std::string_view alignmentOf(HorizontalAlign align, bool alignsRight) {
    switch (align) {
        case HorizontalAlign::left:
            return "left";
        case HorizontalAlign::center:
            return "center";
        case HorizontalAlign::right:
            return "right";
        case HorizontalAlign::mixed:
            break;
    }
    return alignsRight ? "right" : "left";
}

std::string_view verticalOf(VerticalAlign align) {
    constexpr std::array<std::string_view, 3> words{"top", "middle", "bottom"};
    return words[static_cast<std::size_t>(align)];
}

std::string lineOf(const BorderLine& line) {
    constexpr std::array<std::string_view, 7> words{"none",       "0.5pt solid",  "1pt solid",   "2pt solid",
                                                    "3pt double", "0.5pt dashed", "0.5pt dotted"};
    return std::string(words[static_cast<std::size_t>(line.style)]) + " " + colorOf(line.color);
}

void declareBorders(std::string& css, const ShownStyle& style) {
    constexpr std::array<std::string_view, 4> sides{"border-top", "border-right", "border-bottom",
                                                    "border-left"};
    for (std::size_t i = 0; i < sides.size(); ++i) {
        if (style.borders[i].style != LineStyle::none) declare(css, sides[i], lineOf(style.borders[i]));
    }
}

void declareEmphasis(std::string& css, bool bold, bool italic, bool underline) {
    declare(css, "font-weight", bold ? "bold" : "normal");
    if (italic) declare(css, "font-style", "italic");
    if (underline) declare(css, "text-decoration", "underline");
}

}  // namespace

std::string styleDeclarations(const ShownStyle& style, bool alignsRight, bool restyle) {
    const AreaLook& look = style.look;
    std::string css;
    declareEmphasis(css, look.bold, look.italic, look.underline);
    declare(css, "text-align", alignmentOf(look.horizontal, alignsRight));
    declare(css, "vertical-align", verticalOf(look.vertical));
    if (restyle) return css;
    declare(css, "font-family", familyOf(look.font));
    declare(css, "font-size", points(look.size));
    declare(css, "color", colorOf(look.color));
    if (look.background) declare(css, "background-color", colorOf(*look.background));
    declare(css, "padding",
            points(look.marginTop) + " " + points(look.marginRight) + " " + points(look.marginBottom) + " " +
                points(look.marginLeft));
    declareBorders(css, style);
    return css;
}

std::string styleDeclarations(const CellStyle& style, bool restyle) {
    std::string css;
    if (style.bold) declare(css, "font-weight", *style.bold ? "bold" : "normal");
    if (style.italic) declare(css, "font-style", *style.italic ? "italic" : "normal");
    if (style.underline) declare(css, "text-decoration", *style.underline ? "underline" : "none");
    if (restyle) return css;
    if (!style.font.empty()) declare(css, "font-family", familyOf(style.font));
    if (style.size) declare(css, "font-size", points(*style.size));
    if (style.color) declare(css, "color", colorOf(*style.color));
    if (style.background) declare(css, "background-color", colorOf(*style.background));
    return css;
}

/// What the grid before had in the same places is known: mostly the two have one look.
void StyleClasses::begin(const TableGrid& grid) {
    const std::size_t same = static_cast<std::size_t>(
        std::mismatch(styles_.begin(), styles_.end(), grid.styles.begin(), grid.styles.end()).first -
        styles_.begin());
    known_.resize(same * 2);
    known_.resize(grid.styles.size() * 2, 0);
    styles_.resize(same);
    styles_.insert(styles_.end(), grid.styles.begin() + static_cast<std::ptrdiff_t>(same), grid.styles.end());
}

std::size_t StyleClasses::find(ShownStyleId style, bool alignsRight) {
    const auto [found, added] = byDeclarations_.try_emplace(
        styleDeclarations(styles_[style], alignsRight, restyle_), classes_.size());
    if (added) {
        StyleClass& made = classes_.emplace_back();
        if (!found->first.empty()) {
            made.name = "s" + std::to_string(classes_.size());
            made.cell = "<td class=\"" + made.name + "\">";
            rules_ += "." + made.name + "{" + found->first + "}\n";
        }
    }
    known_[style * 2 + (alignsRight ? 1 : 0)] = found->second + 1;
    return found->second;
}

}  // namespace vexa::frontend
