#include "frontend/export/office/office_pictures.h"

#include <algorithm>
#include <array>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/drawing/picture_style.h"
#include "frontend/export/picture_files.h"
#include "frontend/package/deflate.h"
#include "frontend/package/png_data.h"
#include "frontend/package/xml_check.h"

namespace vexa::frontend {

namespace {

constexpr double sharpness = 2;
/// Points; a bitmap drawn so has some 16 million pixels.
constexpr double largestSide = 3'000;
constexpr ItemSize usualSize{225, 112.5};

void appendNumber(std::string& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFFU);
}

void appendChunk(std::string& png, const std::string& chunk) {
    appendNumber(png, static_cast<std::uint32_t>(chunk.size() - 4));
    png += chunk;
    appendNumber(png, crcOf(chunk));
}

/// One pixel of a light gray, which fills whatever place it is given.
std::string emptyFrame() {
    using std::string_literals::operator""s;
    std::string png = "\x89PNG\r\n\x1A\n";
    appendChunk(png, "IHDR\x00\x00\x00\x01\x00\x00\x00\x01\x08\x00\x00\x00\x00"s);
    // One stored block of two bytes: no filter, and the gray; behind it the checksum of both.
    appendChunk(png, "IDAT\x78\x01\x01\x02\x00\xFD\xFF\x00\xF4\x00\xF6\x00\xF5"s);
    appendChunk(png, "IEND"s);
    return png;
}

/// Without its document type, which programs need not take; empty when it is no XML without that.
std::string plainSvg(std::string svg) {
    XmlSize size;
    XmlPolicy policy = foreignXml;
    policy.documentTypes = true;
    if (!checkXml(svg, XmlLimits{}, policy, size)) return {};
    return svg.erase(size.documentType, size.documentTypeEnd - size.documentType);
}

ItemSize sizeOf(const ExportedItem& item) {
    const ItemSize size = shownSize(item.item()).value_or(ItemSize{});
    return size.width > 0 && size.height > 0 ? size : usualSize;
}

}  // namespace

OfficePictures::OfficePictures(const ExportPlan& plan, std::vector<std::string> styleFolders,
                               ExportReport& report, Scale scale)
    : report_(report),
      styles_(std::move(styleFolders), report),
      scale_(std::move(scale)),
      drawings_(plan, [this](const ExportedItem& item) { return begin(item); }) {}

std::unique_ptr<PendingDrawing> OfficePictures::begin(const ExportedItem& item) {
    const ShownPicture& shown = *pictureOf(item);
    const bool isPng = shown.picture->form == PictureForm::png;
    if (!canDraw() || (isPng && hasAllPixels(shown.picture->bytes))) return nullptr;
    const ItemSize size = sizeOf(item);
    const double larger = std::max(size.width, size.height);
    const double scale = scale_ ? scale_(item) : 1;
    const double factor = std::min(scale * sharpness, std::max(1.0, largestSide / larger));
    DrawingOrder order;
    order.width = size.width * factor;
    order.height = size.height * factor;
    order.sharesLittle = drawings_.shareLittle();
    return beginDrawing(*shown.picture, appliedRules(shown, styles_.find(shown.styleSheet)),
                        alternativeOf(item), order);
}

OfficePicture OfficePictures::make(const ExportedItem& item) {
    const ShownPicture& shown = *pictureOf(item);
    OfficePicture made;
    made.size = sizeOf(item);
    made.alternative = alternativeOf(item);
    report_.countPicture();
    const std::unique_ptr<PendingDrawing> drawing = drawings_.take(item);
    if (shown.picture->form == PictureForm::png) {
        finishPng(drawing.get(), made, item);
        return made;
    }
    const std::string rules = appliedRules(shown, styles_.find(shown.styleSheet, item));
    made.svg = plainSvg(applyRules(shown.picture->bytes, rules));
    finish(drawing.get(), made, item);
    return made;
}

/// One that can be shown goes in as it is.
void OfficePictures::finishPng(PendingDrawing* drawing, OfficePicture& made, const ExportedItem& item) {
    const std::string& png = pictureOf(item)->picture->bytes;
    if (drawing != nullptr) {
        finish(drawing, made, item);
    } else if (canDraw() || hasAllPixels(png)) {
        made.png = png;
    } else {
        made.png = emptyFrame();
        noteUnreadable(item, translated("Its data are damaged."_text));
    }
}

void OfficePictures::noteUnreadable(const ExportedItem& item, const std::string& why) {
    report_.note(composed(
        "Item ^1 (^2): the picture cannot be read, and its alternative text takes its place. ^3"_text,
        {std::to_string(item.number), item.shortLabel(), why}));
}

void OfficePictures::finish(PendingDrawing* drawing, OfficePicture& made, const ExportedItem& item) {
    if (drawing == nullptr) {
        made.png = emptyFrame();
        report_.note(composed(
            "Item ^1 (^2): programs that show no SVG show an empty frame instead of the picture, because this build of the program cannot draw."_text,
            {std::to_string(item.number), item.shortLabel()}));
        return;
    }
    DrawnPicture drawn = drawing->finish();
    made.png = drawn.bytes.empty() ? emptyFrame() : std::move(drawn.bytes);
    if (drawn.reason.empty()) return;
    made.svg.clear();
    noteUnreadable(item, drawn.reason);
}

}  // namespace vexa::frontend
