#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

bool canDraw() { return false; }

std::unique_ptr<PendingDrawing> beginDrawing(const Picture& /*picture*/, std::string /*rules*/,
                                             std::string /*alternative*/, const DrawingOrder& /*order*/) {
    return nullptr;
}

}  // namespace vexa::frontend
