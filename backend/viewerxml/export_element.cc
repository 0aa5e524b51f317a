#include "backend/viewerxml/export_element.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <tuple>

namespace vexa {

namespace {

/// The attributes of the settings, in their order.
constexpr std::array kNames = {"name",
                               "printOption",
                               "export",
                               "layers",
                               "modelViews",
                               "documentFile",
                               "notesAndCaptions",
                               "wideTables",
                               "pageSizeWidth",
                               "pageSizeHeight",
                               "slideSizeWidth",
                               "slideSizeHeight",
                               "topMargin",
                               "bottomMargin",
                               "leftMargin",
                               "rightMargin",
                               "pageBreaks",
                               "imageFormat",
                               "styling",
                               "interactiveLayers",
                               "title",
                               "mHT",
                               "excludeTexts",
                               "excludeLogs",
                               "excludeNotes",
                               "excludeWarnings",
                               "restyle",
                               "embedBookmarks",
                               "embedFonts",
                               "slideTitles",
                               "encoding",
                               "columnWidth",
                               "separator",
                               "rowBorder",
                               "columnBorder",
                               "operation",
                               "sheet",
                               "location",
                               "startCell",
                               "imageRoot",
                               "percentSize",
                               "compress",
                               "width",
                               "preview",
                               "fontHandling",
                               "grayscale",
                               "depth"};
static_assert(kNames.size() == static_cast<std::size_t>(ExportSetting::depth) + 1);

constexpr std::array kEndings = {"", "Unit", "Text", "Autofit"};
static_assert(kEndings.size() == static_cast<std::size_t>(ExportAttributePart::autofit) + 1);

bool comesBefore(const ExportAttribute& left, const ExportAttribute& right) {
    return std::tie(left.setting, left.part) < std::tie(right.setting, right.part);
}

std::string shortestForm(double number) {
    if (std::isnan(number)) return "NaN";
    if (std::isinf(number)) return number < 0 ? "-INF" : "INF";
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), result.ptr};
}

}  // namespace

std::string ExportAttribute::xmlName() const {
    return std::string(kNames.at(static_cast<std::size_t>(setting))) +
           kEndings.at(static_cast<std::size_t>(part));
}

bool ExportAttribute::isEscaped() const {
    return setting == ExportSetting::name || setting == ExportSetting::documentFile ||
           setting == ExportSetting::title;
}

void ExportElement::putText(ExportSetting setting, std::string_view text, ExportAttributePart part) {
    ExportAttribute attribute{setting, part, std::string(text)};
    const auto place = std::lower_bound(attributes_.begin(), attributes_.end(), attribute, comesBefore);
    if (place != attributes_.end() && !comesBefore(attribute, *place)) {
        *place = std::move(attribute);
    } else {
        attributes_.insert(place, std::move(attribute));
    }
}

void ExportElement::putFlag(ExportSetting setting, bool on, ExportAttributePart part) {
    putText(setting, on ? "true" : "false", part);
}

void ExportElement::putWhole(ExportSetting setting, std::int64_t number, ExportAttributePart part) {
    putText(setting, std::to_string(number), part);
}

void ExportElement::putNumber(ExportSetting setting, double number) {
    putText(setting, shortestForm(number));
}

void ExportElement::putUrl(std::string_view address, std::string_view label) {
    urls_.push_back({std::string(address), std::string(label)});
}

}  // namespace vexa
