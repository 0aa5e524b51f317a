// Pieces of a picture as bitmaps, for forms that cannot tell everything by lines and texts.
#pragma once

#include <string>

#include "frontend/document/item.h"
#include "frontend/drawing/bitmap.h"
#include "frontend/drawing/vector_target.h"

namespace vexa::frontend {

class BitmapSource {
  public:
    /// `picture` must live as long; its size in points.
    BitmapSource(const Picture& picture, double width, double height)
        : picture_(picture), width_(width), height_(height) {}

    /// The picture as it looks in that place, which grows to whole pixels; on white, with several dots for
    /// each of 96 an inch. The picture is drawn when the first piece is asked for. False when it cannot be,
    /// and when the pieces would have many times the pixels of the picture.
    [[nodiscard]] bool cut(VectorBox& place, Bitmap& piece);
    /// False, with the reason as shown, when something could not be cut.
    [[nodiscard]] bool isWell(std::string& reason) const;

  private:
    bool draw();

    const Picture& picture_;
    double width_;
    double height_;
    Bitmap whole_;
    bool failed_ = false;
    std::string reason_;
    double pixels_ = 0;  // of all pieces so far
};

}  // namespace vexa::frontend
