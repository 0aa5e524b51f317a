// Colors as a modification takes them: a keyword, or RGB(red green blue).
#pragma once

#include <cstdint>
#include <string>

#include <string_view>
#include "backend/text/system_text.h"

#include "backend/syntax/command_spec.h"

namespace vexa {

/// The words that the description of a color knows. GREY, DARKGREY and LIGHTGREY are among them and are yet
/// no color that `ParseColorValue` knows; this is meant.
inline constexpr std::string_view kColorWords[] = {
    "BLACK",     "BLUE",    "CYAN",   "DARKGRAY", "DARKGREY", "GRAY",  "GREY",   "GREEN", "LIGHTGRAY",
    "LIGHTGREY", "MAGENTA", "ORANGE", "PINK",     "RED",      "WHITE", "YELLOW", "RGB"};

/// What help texts call a color.
inline constexpr std::string_view kColorLabel =
    "{BLACK|BLUE|CYAN|DARKGRAY|GRAY|GREEN|LIGHTGRAY|MAGENTA|ORANGE|PINK|RED|WHITE|YELLOW|RGB(red green "
    "blue)}";

/// What a command says of a value that is no color.
inline constexpr SystemText kNoColor = "Subcommand ^1: Not a recognized RGB color"_text;

/// Components 0 to 255.
struct Color {
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
};

/// Reads the color of `parameter`. False when the value is none; `color` may then hold what was read.
[[nodiscard]] bool ParseColorValue(const ParamObj& parameter, Color& color);

/// Appends the attributes `prefix`Red, `prefix`Green and `prefix`Blue.
void appendColor(const Color& color, std::string_view prefix, std::string& request);

}  // namespace vexa
