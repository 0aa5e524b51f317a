// A chart or a tree as a picture file of another form. What is drawn comes from outside, so it is drawn in a
// process of its own that has limits; nothing is ever fetched.
#pragma once

#include <cstdint>
#include <string>

#include "frontend/document/item.h"

namespace vexa::frontend {

enum class DrawnForm : std::uint8_t { png, jpg, bmp, tif, eps, emf };
enum class DrawnDepth : std::uint8_t { blackWhite, grays256, colors16, colors256, true24Bit, true32Bit };

/// What is asked for. Bitmaps have 96 dots an inch and a white ground; `true32Bit` keeps what is transparent.
struct DrawingOrder {
    DrawnForm form = DrawnForm::png;
    double width = 0;  ///< points
    double height = 0;
    DrawnDepth depth = DrawnDepth::true24Bit;  ///< PNG
    bool grayscale = false;                    ///< JPG
    bool compress = false;      ///< BMP: by runs, where the picture has no more than 256 colours
    bool preview = false;       ///< EPS: a TIFF for programs that cannot draw it
    bool curves = false;        ///< EPS: texts as curves, not in fonts that the reader has
    unsigned int seconds = 20;  ///< after which the drawing is given up
};

struct DrawnPicture {
    std::string bytes;   ///< of the file; empty only when not even a placeholder could be made
    std::string reason;  ///< why there is a placeholder, as shown; empty for the picture itself
};

/// Whether this build draws; where it does not, nothing comes of `drawPicture`.
[[nodiscard]] bool canDraw();

/// Draws `picture` with `rules` applied to it (an SVG). Of what cannot be drawn a placeholder is made that
/// says `alternative`. Equal arguments give equal bytes.
[[nodiscard]] DrawnPicture drawPicture(const Picture& picture, const std::string& rules,
                                       const std::string& alternative, const DrawingOrder& order);

}  // namespace vexa::frontend
