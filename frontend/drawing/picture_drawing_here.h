// What draws, inside the library that draws; everybody else calls `drawPicture`.
#pragma once

#include <string>

#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

/// See `drawPicture`.
[[nodiscard]] DrawnPicture drawPictureHere(const Picture& picture, const std::string& rules,
                                           const std::string& alternative, const DrawingOrder& order);

}  // namespace vexa::frontend

/// The exported name.
extern "C" void vexaDrawPicture(const vexa::frontend::Picture& picture, const std::string& rules,
                                const std::string& alternative, const vexa::frontend::DrawingOrder& order,
                                vexa::frontend::DrawnPicture& drawn);
