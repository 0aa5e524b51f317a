#include "frontend/drawing/cairo_drawing.h"

#include <librsvg/rsvg.h>

#include <algorithm>
#include <cstdint>
#include <pugixml.hpp>
#include <string_view>

#include "backend/strings/dictionary.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

namespace {

constexpr int deepestElement = 256;

struct GLibRelease {
    void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
    void operator()(GError* error) const { g_error_free(error); }
};
using SvgHandle = std::unique_ptr<RsvgHandle, GLibRelease>;

/// What the library says, as a part of a sentence: it ends lines, and names a file that there is none of.
std::string textOf(GError* error) {
    constexpr std::string_view noFile = "(null):";
    const std::unique_ptr<GError, GLibRelease> owned(error);
    std::string text = error == nullptr ? std::string() : error->message;
    text.erase(text.find_last_not_of(" \n") + 1);
    std::replace(text.begin(), text.end(), '\n', ' ');
    if (const std::size_t at = text.find(noFile); at != std::string::npos) {
        text.replace(at, noFile.size(), "line ");
    }
    return text;
}

/// The library draws an element within another one by recursion.
bool isShallow(const std::string& svg) {
    struct DepthWalker : pugi::xml_tree_walker {
        bool for_each(pugi::xml_node& /*node*/) override { return depth() < deepestElement; }
    };
    pugi::xml_document document;
    DepthWalker walker;
    // What is no XML is refused by the library, which says why.
    return !document.load_buffer(svg.data(), svg.size(), pugi::parse_minimal, pugi::encoding_utf8) ||
           document.traverse(walker);
}

SvgHandle openSvg(const std::string& svg, std::string& reason) {
    if (!isShallow(svg)) {
        reason =
            composed("Its elements are nested more than ^1 deep."_text, {std::to_string(deepestElement)});
        return nullptr;
    }
    GError* error = nullptr;
    // Without an address of its own a picture can refer to nothing but itself and data within it.
    SvgHandle handle(
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(svg.data()), svg.size(), &error));
    if (handle == nullptr) {
        reason = textOf(error);
        return nullptr;
    }
    rsvg_handle_set_dpi(handle.get(), 96);
    return handle;
}

/// Where an SVG without a view box is drawn: like one whose view box is its natural size.
RsvgRectangle placeWithin(cairo_t* target, const Picture& picture, double width, double height) {
    const double naturalWidth = picture.width * pixelsPerPoint;
    const double naturalHeight = picture.height * pixelsPerPoint;
    const double scale = std::min(width / naturalWidth, height / naturalHeight);
    cairo_translate(target, (width - naturalWidth * scale) / 2, (height - naturalHeight * scale) / 2);
    cairo_scale(target, scale, scale);
    return {0, 0, naturalWidth, naturalHeight};
}

bool drawSvg(cairo_t* target, const Picture& picture, double width, double height, std::string& reason) {
    const SvgHandle handle = openSvg(picture.bytes, reason);
    if (handle == nullptr) return false;
    gboolean hasBox = FALSE;
    rsvg_handle_get_intrinsic_dimensions(handle.get(), nullptr, nullptr, nullptr, nullptr, &hasBox, nullptr);
    cairo_save(target);
    const RsvgRectangle viewport =
        hasBox != FALSE ? RsvgRectangle{0, 0, width, height} : placeWithin(target, picture, width, height);
    GError* error = nullptr;
    const bool drawn = rsvg_handle_render_document(handle.get(), target, &viewport, &error) != FALSE;
    cairo_restore(target);
    if (!drawn) reason = textOf(error);
    return drawn;
}

cairo_status_t readBytes(void* from, unsigned char* to, unsigned int length) {
    auto& rest = *static_cast<std::string_view*>(from);
    if (rest.size() < length) return CAIRO_STATUS_READ_ERROR;
    rest.copy(reinterpret_cast<char*>(to), length);
    rest.remove_prefix(length);
    return CAIRO_STATUS_SUCCESS;
}

/// Of a PNG, as it says itself: what is said of a picture beside it need not be true.
double pixelCount(std::string_view png) {
    constexpr std::size_t sideBytes = 4;
    constexpr std::size_t sidesAt = 16;
    double count = png.size() < sidesAt + 2 * sideBytes ? 0 : 1;
    for (std::size_t side = 0; side < 2 && count > 0; ++side) {
        std::uint32_t length = 0;
        for (const char byte : png.substr(sidesAt + side * sideBytes, sideBytes)) {
            length = length << 8U | static_cast<unsigned char>(byte);
        }
        count *= length;
    }
    return count;
}

bool drawPng(cairo_t* target, const Picture& picture, double width, double height, std::string& reason) {
    if (pixelCount(picture.bytes) > maximalPixels) {
        reason = translated("It has too many pixels."_text);
        return false;
    }
    std::string_view bytes = picture.bytes;
    const CairoSurface image(cairo_image_surface_create_from_png_stream(readBytes, &bytes));
    if (cairo_surface_status(image.get()) != CAIRO_STATUS_SUCCESS) {
        reason = translated("Its data are damaged."_text);  // the library's own words are of memory
        return false;
    }
    cairo_save(target);
    cairo_scale(target, width / cairo_image_surface_get_width(image.get()),
                height / cairo_image_surface_get_height(image.get()));
    cairo_set_source_surface(target, image.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(target), CAIRO_FILTER_GOOD);
    // The edge is that of the picture, not half faded into what lies beyond.
    cairo_pattern_set_extend(cairo_get_source(target), CAIRO_EXTEND_PAD);
    cairo_rectangle(target, 0, 0, cairo_image_surface_get_width(image.get()),
                    cairo_image_surface_get_height(image.get()));
    cairo_fill(target);
    cairo_restore(target);
    return isWell(cairo_status(target), reason);
}

}  // namespace

bool isWell(cairo_status_t status, std::string& reason) {
    if (status == CAIRO_STATUS_SUCCESS) return true;
    reason = cairo_status_to_string(status);
    return false;
}

bool drawOnCairo(cairo_t* target, const Picture& picture, double width, double height, std::string& reason) {
    const bool drawn = picture.form == PictureForm::png ? drawPng(target, picture, width, height, reason)
                                                        : drawSvg(target, picture, width, height, reason);
    return drawn && isWell(cairo_status(target), reason);
}

}  // namespace vexa::frontend
