// Encapsulated PostScript: one page, level 2.
#pragma once

#include <string>

#include "frontend/document/item.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

/// The picture as the order says. The bounding box is that of what is drawn, of a blank picture the whole.
/// Letters that take other forms beside each other are curves whatever the order says. Empty, with the reason
/// as shown, when it cannot be drawn.
[[nodiscard]] std::string epsFile(const Picture& picture, const DrawingOrder& order, std::string& reason);

}  // namespace vexa::frontend
