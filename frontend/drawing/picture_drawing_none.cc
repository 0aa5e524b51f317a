#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

bool canDraw() { return false; }

DrawnPicture drawPicture(const Picture& /*picture*/, const std::string& /*rules*/,
                         const std::string& /*alternative*/, const DrawingOrder& /*order*/) {
    return {};
}

}  // namespace vexa::frontend
