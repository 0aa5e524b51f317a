// Enhanced metafiles: records that draw paths and texts.
#pragma once

#include <string>

#include "frontend/document/item.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

/// The picture as the order says: lines, areas and texts are records of their own, with texts as texts; what
/// shines through, gradients and bitmaps are bitmaps, and a PNG is one. Empty, with the reason as shown, when
/// it cannot be drawn.
[[nodiscard]] std::string emfFile(const Picture& picture, const DrawingOrder& order, std::string& reason);

}  // namespace vexa::frontend
