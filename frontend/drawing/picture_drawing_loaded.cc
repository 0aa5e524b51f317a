// Drawing by the library that is loaded for it.

#include <utility>

#include "frontend/drawing/drawing_library.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

bool canDraw() { return isDrawingInstalled(); }

std::unique_ptr<PendingDrawing> beginDrawing(const Picture& picture, std::string rules,
                                             std::string alternative, const DrawingOrder& order) {
    using Begin = void (*)(const Picture&, std::string, std::string, const DrawingOrder&,
                           std::unique_ptr<PendingDrawing>&);
    std::unique_ptr<PendingDrawing> drawing;
    if (const auto begin = reinterpret_cast<Begin>(drawingFunction("vexaBeginDrawing")); begin != nullptr) {
        begin(picture, std::move(rules), std::move(alternative), order, drawing);
    }
    return drawing;
}

}  // namespace vexa::frontend
