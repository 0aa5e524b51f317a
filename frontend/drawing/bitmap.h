// Bitmaps, and the files that hold them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frontend/document/item.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

/// Rows from the top; a pixel is 0xRRGGBBAA, its colours not multiplied by what it covers.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    [[nodiscard]] const std::uint32_t* row(int y) const {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};

/// The picture of that size in points, with 96 dots an inch; on white unless it may be `transparent`. False,
/// with the reason as shown, when it cannot be drawn or would be too large.
[[nodiscard]] bool drawBitmap(const Picture& picture, double width, double height, bool transparent,
                              Bitmap& bitmap, std::string& reason);

/// A file in the form of the order; empty when the library refuses it. EPS and EMF are none of them.
[[nodiscard]] std::string bitmapFile(const Bitmap& bitmap, const DrawingOrder& order);
/// A Windows bitmap: by runs of equal pixels when that is asked for and there are 256 colours at most, else
/// of 24 bits a pixel.
[[nodiscard]] std::string bmpFile(const Bitmap& bitmap, bool compress);

/// The bitmap's colours in the order of their numbers; empty when there are more than `most`.
[[nodiscard]] std::vector<std::uint32_t> paletteOf(const Bitmap& bitmap, std::size_t most);

}  // namespace vexa::frontend
