// Draws a drawing with lines.
#pragma once

#include <string>

#include "apps/rendering/drawing.h"
#include "apps/rendering/text_style.h"

namespace vexa::rendering {

/// Appends the drawing, whose widths are set, to `text`; every line ends in a line feed. A text that is wider
/// than its span is wrapped.
void writeDrawing(const Drawing& drawing, const RenderOptions& options, std::string& text);

}  // namespace vexa::rendering
