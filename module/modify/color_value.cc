#include "module/modify/color_value.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "module/frame/xml_text.h"
#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

struct NamedColor {
    std::string_view keyword;
    Color color;
};

constexpr NamedColor kNamedColors[] = {
    {"BLACK", {0, 0, 0}},           {"BLUE", {0, 0, 255}},      {"CYAN", {0, 255, 255}},
    {"DARKGRAY", {64, 64, 64}},     {"GRAY", {128, 128, 128}},  {"GREEN", {0, 255, 0}},
    {"LIGHTGRAY", {192, 192, 192}}, {"MAGENTA", {255, 0, 255}}, {"ORANGE", {255, 200, 0}},
    {"PINK", {255, 175, 175}},      {"RED", {255, 0, 0}},       {"WHITE", {255, 255, 255}},
    {"YELLOW", {255, 255, 0}},
};

constexpr std::uint32_t kGreatestComponent = 255;

/// RGB ( red green blue )
constexpr std::size_t kTripleTokens = 6;

/// A negative number becomes one far above the greatest component.
std::uint32_t component(const TokenInfoObj& token) {
    return static_cast<std::uint32_t>(leadingInteger(token.getString()));
}

bool readTriple(const ParamObj& parameter, Color& color) {
    const auto tokens = parameter.getTokenList();
    // Blue is not tested: what is no integer there counts as the number it begins with, or 0; this is meant.
    if (tokens.size() != kTripleTokens || !tokens[0].spells("RGB") ||
        !tokens[1].getString().starts_with('(') || !tokens[2].isInteger() || !tokens[3].isInteger() ||
        !tokens[5].getString().starts_with(')')) {
        return false;
    }
    color = {component(tokens[2]), component(tokens[3]), component(tokens[4])};
    return std::max({color.red, color.green, color.blue}) <= kGreatestComponent;
}

}  // namespace

bool ParseColorValue(const ParamObj& parameter, Color& color) {
    const auto* const named = std::find_if(
        std::begin(kNamedColors), std::end(kNamedColors),
        [&parameter](const NamedColor& each) { return parameter.isStringValueCase(each.keyword); });
    if (named != std::end(kNamedColors)) {
        color = named->color;
        return true;
    }
    return readTriple(parameter, color);
}

void appendColor(const Color& color, std::string_view prefix, std::string& request) {
    const std::pair<std::string_view, std::uint32_t> components[] = {
        {"Red", color.red}, {"Green", color.green}, {"Blue", color.blue}};
    for (const auto& [name, value] : components) {
        appendInteger(request, std::string(prefix).append(name), static_cast<std::int32_t>(value));
    }
}

}  // namespace vexa
