#include "frontend/drawing/bitmap.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "backend/strings/dictionary.h"
#include "frontend/drawing/cairo_drawing.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

namespace {

double pixelsOf(double points) { return std::max(1.0, std::round(points * pixelsPerPoint)); }

/// cairo's colours are multiplied by what the pixel covers.
std::uint32_t plainPixel(std::uint32_t premultiplied) {
    const std::uint32_t alpha = premultiplied >> 24U;
    if (alpha == 0) return 0;
    const auto channel = [&](unsigned int shift) {
        const std::uint32_t value = premultiplied >> shift & 0xFFU;
        return std::min<std::uint32_t>(0xFF, (value * 0xFF + alpha / 2) / alpha);
    };
    return channel(16) << 24U | channel(8) << 16U | channel(0) << 8U | alpha;
}

void copyPixels(cairo_surface_t* surface, Bitmap& bitmap) {
    cairo_surface_flush(surface);
    const unsigned char* const data = cairo_image_surface_get_data(surface);
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    bitmap.pixels.resize(static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.height));
    auto* to = bitmap.pixels.data();
    for (int y = 0; y < bitmap.height; ++y) {
        const auto* from =
            reinterpret_cast<const std::uint32_t*>(data + stride * static_cast<std::size_t>(y));
        to = std::transform(from, from + bitmap.width, to, plainPixel);
    }
}

}  // namespace

bool drawBitmap(const Picture& picture, double width, double height, bool transparent, Bitmap& bitmap,
                std::string& reason) {
    const double wide = pixelsOf(width);
    const double high = pixelsOf(height);
    if (!(wide <= maximalSide && high <= maximalSide && wide * high <= maximalPixels)) {
        reason = translated("It has too many pixels."_text);
        return false;
    }
    bitmap.width = static_cast<int>(wide);
    bitmap.height = static_cast<int>(high);
    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, bitmap.width, bitmap.height));
    const CairoContext context(cairo_create(surface.get()));
    if (!transparent) {
        cairo_set_source_rgb(context.get(), 1, 1, 1);
        cairo_paint(context.get());
    }
    if (!drawOnCairo(context.get(), picture, wide, high, reason)) return false;
    copyPixels(surface.get(), bitmap);
    return true;
}

std::vector<std::uint32_t> paletteOf(const Bitmap& bitmap, std::size_t most) {
    std::set<std::uint32_t> colors;
    std::uint32_t last = 0;
    for (const std::uint32_t each : bitmap.pixels) {
        if (!colors.empty() && each == last) continue;
        colors.insert(last = each);
        if (colors.size() > most) return {};
    }
    return {colors.begin(), colors.end()};
}

}  // namespace vexa::frontend
