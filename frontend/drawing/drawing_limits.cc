#include "frontend/drawing/drawing_limits.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace vexa::frontend {

namespace {

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;
/// Of one picture of a small document while others are drawn.
constexpr std::uint64_t besideOthers = 48 * mebibyte;

/// What may take so much that it is not drawn beside others. Of elements that draw into pictures of their own
/// nobody knows how large these are, and where memory lacks they are left out without a word.
bool isHeavy(const Picture& picture, double pixels) {
    constexpr double bytesOfPixel = 8;
    constexpr double bytesOfSvgByte = 128;
    double bytes = pixels * bytesOfPixel;
    if (picture.form == PictureForm::png) {
        bytes += picture.width * picture.height * bytesOfPixel / (0.75 * 0.75);
    } else {
        const std::string_view svg = picture.bytes;
        bytes += static_cast<double>(svg.size()) * bytesOfSvgByte;
        for (const std::string_view element : {"image", "filter", "mask", "pattern"}) {
            if (svg.find(element) != std::string_view::npos) return true;
        }
    }
    return bytes > static_cast<double>(besideOthers) / 2;
}

/// What the file of so many pixels may take: what it takes without packing, where that is not too much.
std::uint64_t resultOfSmallDocument(double pixels) {
    constexpr double bytesOfPixel = 3;
    constexpr double least = 32.0 * mebibyte;
    constexpr double most = 84.0 * mebibyte;
    return static_cast<std::uint64_t>(std::clamp(pixels * bytesOfPixel + mebibyte, least, most));
}

}  // namespace

WorkLimits limitsForPicture(const Picture& picture, double pixels, bool sharesLittle) {
    constexpr std::uint64_t smallFile = 1'000'000;
    constexpr std::uint64_t ofSmallFile = 268 * mebibyte;
    // With the file that is made of a picture, which the program holds beside what drew it.
    constexpr std::uint64_t ofSmallDocument = 284 * mebibyte;
    constexpr std::uint64_t ofEachByte = 256;
    const std::uint64_t fileBytes = picture.packedBytes > 0 ? picture.packedBytes : picture.bytes.size();
    WorkLimits limits;
    limits.wholeMemory = ofSmallFile + (std::max(fileBytes, smallFile) - smallFile) * ofEachByte;
    if (!sharesLittle) return limits;
    limits.resultBytes = resultOfSmallDocument(pixels);
    limits.wholeMemory = ofSmallDocument - limits.resultBytes;
    limits.besideOthers = besideOthers;
    limits.beginsAlone = isHeavy(picture, pixels);
    return limits;
}

}  // namespace vexa::frontend
