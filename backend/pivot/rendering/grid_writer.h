// Draws a grid with lines.
#pragma once

#include <string>

#include "backend/pivot/rendering/grid.h"
#include "backend/pivot/text_rendering.h"

namespace vexa::rendering {

/// Appends the grid, whose widths are set, to `text`; every line ends in a line feed. A text that is wider
/// than its span is wrapped.
void drawGrid(const Grid& grid, const RenderOptions& options, std::string& text);

/// `text` in bold where the options allow it.
[[nodiscard]] std::string emphasized(const std::string& text, const RenderOptions& options);

}  // namespace vexa::rendering
