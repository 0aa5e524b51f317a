#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

bool canDraw() { return false; }

// NOLINTBEGIN(performance-unnecessary-value-param): where there is drawing, the texts are kept
std::unique_ptr<PendingDrawing> beginDrawing(const Picture& /*picture*/, std::string /*rules*/,
                                             std::string /*alternative*/, const DrawingOrder& /*order*/) {
    return nullptr;
}
// NOLINTEND(performance-unnecessary-value-param)

}  // namespace vexa::frontend
