#include "frontend/drawing/bitmap_source.h"

#include <algorithm>
#include <cmath>

#include "backend/strings/dictionary.h"
#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend {

namespace {

constexpr double sharpness = 2;
/// A picture that is larger is not drawn sharper.
constexpr double largestSharp = 12e6;
/// How many times the picture its pieces may be, together.
constexpr double mostPieces = 20;

}  // namespace

bool BitmapSource::draw() {
    if (failed_) return false;
    if (whole_.width > 0) return true;
    const double pixels = width_ * height_ * pixelsPerPoint * pixelsPerPoint;
    const bool sharp = picture_.form == PictureForm::svg && pixels * sharpness * sharpness <= largestSharp;
    const double factor = sharp ? sharpness : 1;
    failed_ = !drawBitmap(picture_, width_ * factor, height_ * factor, false, whole_, reason_);
    return !failed_;
}

bool BitmapSource::cut(VectorBox& place, Bitmap& piece) {
    if (!draw()) return false;
    const double wide = whole_.width / width_;
    const double high = whole_.height / height_;
    const int left = std::clamp(static_cast<int>(std::floor(place.left * wide)), 0, whole_.width - 1);
    const int top = std::clamp(static_cast<int>(std::floor(place.top * high)), 0, whole_.height - 1);
    piece.width = std::clamp(static_cast<int>(std::ceil(place.right * wide)), left + 1, whole_.width) - left;
    piece.height = std::clamp(static_cast<int>(std::ceil(place.bottom * high)), top + 1, whole_.height) - top;
    pixels_ += static_cast<double>(piece.width) * piece.height;
    if (pixels_ > mostPieces * static_cast<double>(whole_.pixels.size())) {
        failed_ = true;
        reason_ = translated("It has too many pixels."_text);
        return false;
    }
    piece.pixels.clear();
    for (int y = top; y < top + piece.height; ++y) {
        piece.pixels.insert(piece.pixels.end(), whole_.row(y) + left, whole_.row(y) + left + piece.width);
    }
    place = {left / wide, top / high, (left + piece.width) / wide, (top + piece.height) / high};
    return true;
}

bool BitmapSource::isWell(std::string& reason) const {
    if (failed_) reason = reason_;
    return !failed_;
}

}  // namespace vexa::frontend
