#include "frontend/export/html/page_pictures.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "backend/strings/dictionary.h"
#include "backend/tables/formats/number_text.h"
#include "frontend/drawing/picture_drawing.h"
#include "frontend/export/html/html_text.h"
#include "frontend/export/html/svg_inline.h"
#include "frontend/export/picture_files.h"
#include "frontend/package/base64.h"
#include "frontend/package/png_data.h"

namespace vexa::frontend {

namespace {

/// A path as an address: bytes that an address cannot hold as a percent sign and two digits.
std::string addressOf(const std::string& path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string address;
    for (const char each : path) {
        const auto byte = static_cast<unsigned char>(each);
        if (plain.find(each) != std::string_view::npos) {
            address += each;
        } else {
            address += '%';
            address += digits[byte >> 4];
            address += digits[byte & 0xF];
        }
    }
    return address;
}

}  // namespace

PagePictures::PagePictures(const ExportTask& task, Address address)
    : task_(task),
      isPacked_(static_cast<bool>(address)),
      address_(std::move(address)),
      styles_(task.surroundings.styleFolders, task.report) {
    if (!address_) {
        address_ = [](const std::string& png) { return "data:image/png;base64," + encodeBase64(png); };
    }
}

void PagePictures::append(std::string& html, const ExportedItem& item, const std::string& id) {
    const ShownPicture& picture = *pictureOf(item);
    task_.report.countPicture();
    const std::string& beside = task_.pictures.add(item);
    if (!beside.empty()) {
        appendImage(html, item, isPacked_ ? beside : addressOf(beside), task_.pictures.shownScale());
        return;
    }
    if (picture.picture->form == PictureForm::png) {
        if (hasAllPixels(picture.picture->bytes)) {
            appendImage(html, item, address_(picture.picture->bytes), 1);
        } else {
            appendAlternative(html, item, translated("Its data are damaged."_text));
        }
        return;
    }
    InlineSvg svg{&picture, shownSize(item.item()).value_or(ItemSize{225, 112.5}),
                  styles_.find(picture.styleSheet, item), alternativeOf(item)};
    if (const PackageResult result = appendSvg(html, svg, {id}); !result) {
        appendAlternative(html, item, result.shownDetail());
    }
}

void PagePictures::appendAlternative(std::string& html, const ExportedItem& item, const std::string& why) {
    task_.report.note(composed(
        "Item ^1 (^2): the picture cannot be read, and its alternative text takes its place. ^3"_text,
        {std::to_string(item.number), item.shortLabel(), why}));
    html += "<p>";
    appendHtml(html, alternativeOf(item));
    html += "</p>";
}

void PagePictures::appendImage(std::string& html, const ExportedItem& item, const std::string& address,
                               double scale) {
    html += "<img src=\"";
    appendHtml(html, address);
    html += "\" alt=\"";
    appendHtml(html, alternativeOf(item));
    html += '"';
    if (const std::optional<ItemSize> size = shownSize(item.item())) {
        const auto pixels = [scale](double points) {
            return std::to_string(std::max(1L, std::lround(points * scale * pixelsPerPoint)));
        };
        html += " width=\"" + pixels(size->width) + "\" height=\"" + pixels(size->height) + "\"";
    }
    html += '>';
}

}  // namespace vexa::frontend
