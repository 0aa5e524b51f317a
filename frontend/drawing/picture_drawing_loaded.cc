// Drawing by the library that is loaded for it.

#include "frontend/drawing/drawing_library.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

bool canDraw() { return isDrawingInstalled(); }

DrawnPicture drawPicture(const Picture& picture, const std::string& rules, const std::string& alternative,
                         const DrawingOrder& order) {
    using Draw =
        void (*)(const Picture&, const std::string&, const std::string&, const DrawingOrder&, DrawnPicture&);
    DrawnPicture drawn;
    if (const auto draw = reinterpret_cast<Draw>(drawingFunction("vexaDrawPicture")); draw != nullptr) {
        draw(picture, rules, alternative, order, drawn);
    }
    return drawn;
}

}  // namespace vexa::frontend
