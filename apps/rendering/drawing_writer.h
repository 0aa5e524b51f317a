// Draws a drawing with lines.
#pragma once

#include <functional>
#include <string_view>

#include "apps/rendering/drawing.h"
#include "apps/rendering/text_style.h"

namespace vexa::rendering {

/// Takes a text piece by piece.
using TextSink = std::function<void(std::string_view)>;

/// Writes the drawing, whose widths are set, into `sink`; every line ends in a line feed. A text that is
/// wider than its span is wrapped.
void writeDrawing(const Drawing& drawing, const RenderOptions& options, const TextSink& sink);

}  // namespace vexa::rendering
