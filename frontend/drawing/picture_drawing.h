// A chart or a tree as a picture file of another form. What is drawn comes from outside, so it is drawn in a
// process of its own that has limits; nothing is ever fetched.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "frontend/document/item.h"

namespace vexa::frontend {

enum class DrawnForm : std::uint8_t { png, jpg, bmp, tif, eps, emf };
enum class DrawnDepth : std::uint8_t { blackWhite, grays256, colors16, colors256, true24Bit, true32Bit };

/// Of 96 an inch.
inline constexpr double pixelsPerPoint = 96.0 / 72.0;

/// Points; no program takes more as a page.
inline constexpr double largestPage = 14'400;

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
    bool sharesLittle = false;  ///< one of few bytes of pictures, which take little memory all together
};

struct DrawnPicture {
    std::string bytes;   ///< of the file; empty only when not even a placeholder could be made
    std::string reason;  ///< why there is a placeholder, as shown; empty for the picture itself
};

/// Whether this build draws.
[[nodiscard]] bool canDraw();

/// A drawing that goes on in a process of its own; it is given up with the object.
class PendingDrawing {
  public:
    PendingDrawing() = default;
    virtual ~PendingDrawing() = default;
    PendingDrawing(const PendingDrawing&) = delete;
    PendingDrawing& operator=(const PendingDrawing&) = delete;

    /// Waits for the picture. Called once.
    [[nodiscard]] virtual DrawnPicture finish() = 0;
};

/// Begins to draw `picture`, which must live as long, with `rules` applied to it (an SVG). Of what cannot be
/// drawn a placeholder is made that says `alternative`. Equal arguments give equal bytes, whatever else is
/// drawn at the same time. Null where this build does not draw.
[[nodiscard]] std::unique_ptr<PendingDrawing> beginDrawing(const Picture& picture, std::string rules,
                                                           std::string alternative,
                                                           const DrawingOrder& order);

}  // namespace vexa::frontend
