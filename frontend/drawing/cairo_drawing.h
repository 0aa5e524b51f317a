// Pictures on cairo surfaces. For what may take any time and memory it is called in a process apart.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>

#include "frontend/document/item.h"

namespace vexa::frontend {

struct CairoRelease {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoRelease>;
using CairoContext = std::unique_ptr<cairo_t, CairoRelease>;

/// No bitmap has more pixels, and no side of one more than the second number.
inline constexpr double maximalPixels = 64e6;
inline constexpr double maximalSide = 32'000;

/// Draws the picture with its upper left corner at the origin; `width` and `height` are in the target's
/// units. An SVG keeps its proportions unless it says otherwise itself, a PNG fills the place. What it refers
/// to outside of itself is not drawn. False, with the reason as shown, when it cannot be drawn.
[[nodiscard]] bool drawOnCairo(cairo_t* target, const Picture& picture, double width, double height,
                               std::string& reason);

/// The status of a context as a reason; true when it is well.
[[nodiscard]] bool isWell(cairo_status_t status, std::string& reason);

}  // namespace vexa::frontend
