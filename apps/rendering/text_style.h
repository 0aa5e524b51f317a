// Styles of text that a terminal shows.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "backend/tables/model/table_look.h"

namespace vexa::rendering {

/// The colours that a terminal has.
enum class ColorDepth { none, palette, full };

/// What the terminal can do.
struct RenderOptions {
    std::size_t width = 0;  ///< columns of the terminal, 0 for no limit
    bool unicode = true;    ///< lines drawn with box characters instead of - | +
    bool styled = false;    ///< bold, italic and underlined text by ANSI sequences; otherwise none is shown
    ColorDepth colors = ColorDepth::none;
};

struct TextStyle {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    std::optional<tables::Color> color;
    std::optional<tables::Color> background;

    bool operator==(const TextStyle&) const = default;
};

/// What of a table's own style a terminal can show; `bold` where the style does not say.
[[nodiscard]] TextStyle textStyle(const tables::CellStyle& own, bool bold);

/// What makes a terminal show what follows in a style, up to `styleEnd`; empty where the style changes
/// nothing.
[[nodiscard]] std::string styleBegin(const TextStyle& style, const RenderOptions& options);
inline constexpr std::string_view styleEnd = "\x1b[0m";

/// `text`, which has one line, as the terminal shows it in a style.
[[nodiscard]] std::string styled(std::string_view text, const TextStyle& style, const RenderOptions& options);

/// The colour of the palette of 256 that is nearest: one of its cube or of its greys.
[[nodiscard]] int paletteColor(tables::Color color);

}  // namespace vexa::rendering
