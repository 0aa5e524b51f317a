#include "backend/viewerxml/export_element.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <tuple>

#include "backend/viewerxml/export_names.h"

namespace vexa {

namespace {

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
    return std::string(formOf(setting).name).append(endingOf(part));
}

bool ExportAttribute::isEscaped() const { return formOf(setting).kind == SettingKind::escapedText; }

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
