#include <allheaders.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "frontend/drawing/bitmap.h"
#include "frontend/drawing/fewer_colors.h"

namespace vexa::frontend {

namespace {

constexpr int dotsPerInch = 96;
constexpr int jpegQuality = 92;

struct PixRelease {
    void operator()(PIX* pix) const { pixDestroy(&pix); }
};
using PixImage = std::unique_ptr<PIX, PixRelease>;

PixImage pixOf(const Bitmap& bitmap, bool transparent) {
    PixImage pix(pixCreate(bitmap.width, bitmap.height, 32));
    if (pix == nullptr) return nullptr;
    pixSetSpp(pix.get(), transparent ? 4 : 3);
    // The library's pixels are those of a bitmap, and rows of 32 bits have nothing between them.
    std::copy(bitmap.pixels.begin(), bitmap.pixels.end(), pixGetData(pix.get()));
    return pix;
}

/// Exactly the bitmap, of `depth` bits a pixel.
PixImage withPalette(const Bitmap& bitmap, const std::vector<std::uint32_t>& palette, int depth) {
    PixImage pix(pixCreate(bitmap.width, bitmap.height, depth));
    if (pix == nullptr) return nullptr;
    PIXCMAP* const map = pixcmapCreate(depth);
    for (const std::uint32_t each : palette) {
        pixcmapAddColor(map, static_cast<int>(each >> 24U), static_cast<int>(each >> 16U & 0xFFU),
                        static_cast<int>(each >> 8U & 0xFFU));
    }
    pixSetColormap(pix.get(), map);
    for (int y = 0; y < bitmap.height; ++y) {
        for (int x = 0; x < bitmap.width; ++x) {
            const auto place = std::lower_bound(palette.begin(), palette.end(), bitmap.row(y)[x]);
            pixSetPixel(pix.get(), x, y, static_cast<l_uint32>(place - palette.begin()));
        }
    }
    return pix;
}

PixImage withColors(const Bitmap& bitmap, int colors, int depth) {
    const std::vector<std::uint32_t> palette = paletteOf(bitmap, static_cast<std::size_t>(colors));
    if (!palette.empty()) return withPalette(bitmap, palette, depth);
    const Bitmap reduced = inFewerColors(bitmap, static_cast<std::size_t>(colors));
    return withPalette(reduced, paletteOf(reduced, static_cast<std::size_t>(colors)), depth);
}

PixImage inGrays(const Bitmap& bitmap) {
    constexpr float red = 0.299F;
    constexpr float green = 0.587F;
    constexpr float blue = 0.114F;
    return PixImage(pixConvertRGBToGray(pixOf(bitmap, false).get(), red, green, blue));
}

PixImage inDepth(const Bitmap& bitmap, DrawnDepth depth) {
    switch (depth) {
        case DrawnDepth::blackWhite:
            return PixImage(pixDitherToBinary(inGrays(bitmap).get()));
        case DrawnDepth::grays256:
            return inGrays(bitmap);
        case DrawnDepth::colors16:
            return withColors(bitmap, 16, 4);
        case DrawnDepth::colors256:
            return withColors(bitmap, 256, 8);
        case DrawnDepth::true32Bit:
            return pixOf(bitmap, true);
        case DrawnDepth::true24Bit:
            break;
    }
    return pixOf(bitmap, false);
}

}  // namespace

std::string bitmapFile(const Bitmap& bitmap, const DrawingOrder& order) {
    if (order.form == DrawnForm::bmp) return bmpFile(bitmap, order.compress);
    // What it refuses is told by what it returns; it would print as well.
    setMsgSeverity(L_SEVERITY_NONE);
    const PixImage pix = order.form == DrawnForm::png                      ? inDepth(bitmap, order.depth)
                         : order.form == DrawnForm::jpg && order.grayscale ? inGrays(bitmap)
                                                                           : pixOf(bitmap, false);
    if (pix == nullptr) return {};
    pixSetResolution(pix.get(), dotsPerInch, dotsPerInch);
    l_uint8* data = nullptr;
    std::size_t size = 0;
    if (order.form == DrawnForm::png) {
        static_cast<void>(pixWriteMemPng(&data, &size, pix.get(), 0));
    } else if (order.form == DrawnForm::jpg) {
        static_cast<void>(pixWriteMemJpeg(&data, &size, pix.get(), jpegQuality, 0));
    } else {
        static_cast<void>(pixWriteMemTiff(&data, &size, pix.get(), IFF_TIFF_LZW));
    }
    std::string file(reinterpret_cast<const char*>(data), data == nullptr ? 0 : size);
    lept_free(data);
    return file;
}

}  // namespace vexa::frontend
