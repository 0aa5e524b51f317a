#include "apps/rendering/text_style.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vexa::rendering {

namespace {

using Components = std::array<int, 3>;

Components componentsOf(tables::Color color) {
    const auto at = [&](unsigned shift) { return static_cast<int>(color.rgb >> shift & 0xffU); };
    return {at(16), at(8), at(0)};
}

int distance(const Components& left, const Components& right) {
    int sum = 0;
    for (std::size_t i = 0; i < left.size(); ++i) sum += (left[i] - right[i]) * (left[i] - right[i]);
    return sum;
}

/// The steps of a component in the palette's cube.
constexpr std::array<int, 6> cubeSteps = {0, 95, 135, 175, 215, 255};
constexpr int firstOfCube = 16;
constexpr int firstGrey = 232;
constexpr int greys = 24;
constexpr int darkestGrey = 8;
constexpr int greyStep = 10;

int nearestStep(int component) {
    const auto nearest = std::min_element(cubeSteps.begin(), cubeSteps.end(), [&](int left, int right) {
        return std::abs(left - component) < std::abs(right - component);
    });
    return static_cast<int>(nearest - cubeSteps.begin());
}

void appendColor(std::string& codes, tables::Color color, bool background, ColorDepth depth) {
    if (depth == ColorDepth::none) return;
    codes += background ? ";48" : ";38";
    if (depth == ColorDepth::palette) {
        codes += ";5;" + std::to_string(paletteColor(color));
        return;
    }
    codes += ";2";
    for (const int component : componentsOf(color)) codes += ';' + std::to_string(component);
}

}  // namespace

TextStyle textStyle(const tables::CellStyle& own, bool bold) {
    return {own.bold.value_or(bold), own.italic.value_or(false), own.underline.value_or(false), own.color,
            own.background};
}

std::string styleBegin(const TextStyle& style, const RenderOptions& options) {
    std::string codes;
    if (options.styled) {
        codes += style.bold ? ";1" : "";
        codes += style.italic ? ";3" : "";
        codes += style.underline ? ";4" : "";
    }
    if (style.color) appendColor(codes, *style.color, false, options.colors);
    if (style.background) appendColor(codes, *style.background, true, options.colors);
    return codes.empty() ? codes : "\x1b[" + codes.substr(1) + 'm';
}

std::string styled(std::string_view text, const TextStyle& style, const RenderOptions& options) {
    std::string all = text.empty() ? std::string() : styleBegin(style, options);
    const bool isStyled = !all.empty();
    all += text;
    if (isStyled) all += styleEnd;
    return all;
}

int paletteColor(tables::Color color) {
    const Components wanted = componentsOf(color);
    const std::array<int, 3> steps = {nearestStep(wanted[0]), nearestStep(wanted[1]), nearestStep(wanted[2])};
    Components inCube{};
    for (std::size_t i = 0; i < steps.size(); ++i) {
        inCube[i] = cubeSteps[static_cast<std::size_t>(steps[i])];
    }
    const int mean = (wanted[0] + wanted[1] + wanted[2]) / 3;
    const int grey = std::clamp((mean - darkestGrey + greyStep / 2) / greyStep, 0, greys - 1);
    const int shade = darkestGrey + grey * greyStep;
    if (distance(wanted, {shade, shade, shade}) < distance(wanted, inCube)) return firstGrey + grey;
    return firstOfCube + (steps[0] * 6 + steps[1]) * 6 + steps[2];
}

}  // namespace vexa::rendering
