#include "frontend/drawing/eps_file.h"

#include <cairo-ps.h>

#include <array>
#include <string_view>

#include "backend/strings/dictionary.h"
#include "frontend/drawing/bitmap.h"
#include "frontend/drawing/cairo_drawing.h"
#include "frontend/drawing/picture_drawing.h"
#include "frontend/drawing/post_script.h"
#include "frontend/drawing/vector_reader.h"

namespace vexa::frontend {

namespace {

cairo_status_t appendBytes(void* to, const unsigned char* bytes, unsigned int length) {
    static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
}

/// Takes out the comment line that begins so, in the comments at the beginning.
void dropLine(std::string& file, std::string_view beginning) {
    const std::size_t at = file.find(beginning);
    if (at == std::string::npos || at > file.find("%%EndComments")) return;
    file.erase(at, file.find('\n', at) + 1 - at);
}

/// Where the picture leaves ink.
bool inkOf(const Picture& picture, const DrawingOrder& order, VectorBox& ink, std::string& reason) {
    const CairoSurface surface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    {
        const CairoContext context(cairo_create(surface.get()));
        if (!drawOnCairo(context.get(), picture, order.width, order.height, reason)) return false;
    }
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    cairo_recording_surface_ink_extents(surface.get(), &left, &top, &width, &height);
    ink = {left, top, left + width, top + height};
    return isWell(cairo_surface_status(surface.get()), reason);
}

std::string postScript(const Picture& picture, const DrawingOrder& order, std::string& reason) {
    VectorBox ink;
    if (!inkOf(picture, order, ink, reason)) return {};
    std::string file;
    const CairoSurface surface(
        cairo_ps_surface_create_for_stream(appendBytes, &file, order.width, order.height));
    cairo_ps_surface_restrict_to_level(surface.get(), CAIRO_PS_LEVEL_2);
    cairo_ps_surface_set_eps(surface.get(), 1);
    {
        const CairoContext context(cairo_create(surface.get()));
        if (picture.form == PictureForm::png || ink.isEmpty()) {
            // PostScript knows nothing of what shines through, and a box of nothing is none.
            cairo_set_source_rgb(context.get(), 1, 1, 1);
            cairo_paint(context.get());
        }
        if (!drawOnCairo(context.get(), picture, order.width, order.height, reason)) return {};
        cairo_show_page(context.get());
    }
    cairo_surface_finish(surface.get());
    if (!isWell(cairo_surface_status(surface.get()), reason)) return {};
    dropLine(file, "%%CreationDate:");  // equal pictures, equal bytes
    return file;
}

/// With its fonts named; empty where that does not suit the picture.
std::string withFonts(const Picture& picture, const DrawingOrder& order, std::string& reason) {
    BitmapSource bitmaps(picture, order.width, order.height);
    PostScriptTarget target(order.height, bitmaps);
    if (!readVectors(picture, order.width, order.height, target, reason)) return {};
    VectorBox ink;
    if (!target.suits() || !bitmaps.isWell(reason) || !inkOf(picture, order, ink, reason)) return {};
    if (ink.isEmpty()) return {};
    return target.file(ink, order.width);
}

void append(std::string& bytes, std::size_t value) {
    for (unsigned int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8U * i) & 0xFFU);
}

/// A header that says where the PostScript and the TIFF are, and both.
std::string withPreview(const std::string& postScript, const std::string& tiff) {
    constexpr std::size_t headerLength = 30;
    std::string file = "\xC5\xD0\xD3\xC6";
    const std::array<std::size_t, 6> places{
        headerLength, postScript.size(), 0, 0, headerLength + postScript.size(), tiff.size()};
    for (const std::size_t each : places) append(file, each);
    file += "\xFF\xFF";  // no checksum
    return file + postScript + tiff;
}

}  // namespace

std::string epsFile(const Picture& picture, const DrawingOrder& order, std::string& reason) {
    if (!(order.width <= largestPage && order.height <= largestPage)) {
        reason = translated("It is larger than a page can be."_text);
        return {};
    }
    std::string file;
    if (picture.form == PictureForm::svg && !order.curves) file = withFonts(picture, order, reason);
    if (file.empty()) {
        reason.clear();
        file = postScript(picture, order, reason);
    }
    if (file.empty() || !order.preview) return file;
    Bitmap bitmap;
    if (!drawBitmap(picture, order.width, order.height, false, bitmap, reason)) return {};
    DrawingOrder tiff;
    tiff.form = DrawnForm::tif;
    return withPreview(file, bitmapFile(bitmap, tiff));
}

}  // namespace vexa::frontend
