// The names of an export specification, and what stands behind each: the one table from which it is written
// and read. For the viewer XML library's own files, and for who reads a specification's settings.
#pragma once

#include <array>
#include <span>
#include <string_view>
#include <type_traits>

#include "backend/viewerxml/export_spec.h"

namespace vexa {

/// What a setting says, and so which attributes it has.
enum class SettingKind {
    text,
    escapedText,  ///< whoever makes the setting has escaped it
    flag,
    choice,
    measure,     ///< number, unit, and the number as typed
    percent,     ///< number, and as typed
    columnWidth  ///< whole number, as typed, and a flag for a width that fits
};

struct SettingForm {
    std::string_view name;
    SettingKind kind = SettingKind::text;
    int choices = 0;  ///< the values of a choice, or the units of a measure, are the numbers below it
};

[[nodiscard]] const SettingForm& formOf(ExportSetting setting);
/// What a setting's name ends in for one of its attributes.
[[nodiscard]] std::string_view endingOf(ExportAttributePart part);
/// The attributes of a setting, all of which stand where one does.
[[nodiscard]] std::span<const ExportAttributePart> partsOf(SettingKind kind);

struct ExportElementForm {
    std::string_view name;
    std::span<const ExportSetting> settings;
    bool hasUrls = false;
};

/// `global` and `contents`, then the formats, in the order in which they are written.
inline constexpr std::size_t kExportFormats = 15;
inline constexpr std::size_t kExportElements = kExportFormats + 2;
[[nodiscard]] const std::array<ExportElementForm, kExportElements>& exportElements();

/// The formats of `spec` in that order.
template <class Spec>
[[nodiscard]] auto exportFormatsOf(Spec& spec) {
    using Format = std::conditional_t<std::is_const_v<Spec>, const ExportFormat, ExportFormat>;
    return std::array<Format*, kExportFormats>{&spec.doc(),  &spec.html(), &spec.report(), &spec.pdf(),
                                               &spec.ppt(),  &spec.text(), &spec.xls(),    &spec.xlsx(),
                                               &spec.xlsm(), &spec.bmp(),  &spec.emf(),    &spec.eps(),
                                               &spec.jpg(),  &spec.png(),  &spec.tif()};
}

}  // namespace vexa
