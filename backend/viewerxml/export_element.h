// What every part of an export specification is made of: settings that were made, each an attribute or more.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace vexa {

/// Everything that can be set, in the order in which attributes are written.
enum class ExportSetting {
    name,
    printOption,
    exportType,
    layers,
    modelViews,
    documentFile,
    notesAndCaptions,
    wideTables,
    pageSizeWidth,
    pageSizeHeight,
    slideSizeWidth,
    slideSizeHeight,
    topMargin,
    bottomMargin,
    leftMargin,
    rightMargin,
    pageBreaks,
    imageFormat,
    styling,
    interactiveLayers,
    title,
    mht,
    excludeTexts,
    excludeLogs,
    excludeNotes,
    excludeWarnings,
    restyle,
    embedBookmarks,
    embedFonts,
    slideTitles,
    encoding,
    columnWidth,
    separator,
    rowBorder,
    columnBorder,
    operation,
    sheet,
    location,
    startCell,
    imageRoot,
    percentSize,
    compress,
    width,
    preview,
    fontHandling,
    grayscale,
    depth
};

/// Which attribute of a setting: most have only the value.
enum class ExportAttributePart { value, unit, text, autofit };

/// An attribute that a setting wrote. `text` is in the back end's character set.
struct ExportAttribute {
    ExportSetting setting = ExportSetting::name;
    ExportAttributePart part = ExportAttributePart::value;
    std::string text;

    /// The attribute's name in the XML: pageSizeWidth, pageSizeWidthUnit, columnWidthAutofit.
    [[nodiscard]] std::string xmlName() const;
    /// True when whoever made the setting has escaped the text for XML already.
    [[nodiscard]] bool isEscaped() const;
};

/// A place and the text shown for it; both in the back end's character set, not escaped.
struct ExportUrl {
    std::string address;
    std::string label;
};

/// The settings of one element. A setting that is made again replaces the earlier one; the order of the
/// attributes does not depend on the order of the calls.
class ExportElement {
  public:
    ExportElement(const ExportElement&) = delete;
    ExportElement& operator=(const ExportElement&) = delete;

    /// In the order in which they are written.
    [[nodiscard]] const std::vector<ExportAttribute>& attributes() const { return attributes_; }
    /// In the order in which they were added.
    [[nodiscard]] const std::vector<ExportUrl>& urls() const { return urls_; }

  protected:
    ExportElement() = default;
    ~ExportElement() = default;

    void putText(ExportSetting setting, std::string_view text,
                 ExportAttributePart part = ExportAttributePart::value);
    void putFlag(ExportSetting setting, bool on, ExportAttributePart part = ExportAttributePart::value);
    void putWhole(ExportSetting setting, std::int64_t number,
                  ExportAttributePart part = ExportAttributePart::value);
    /// The shortest form that reads back as the same number: 210, 0.01, 1e+20; INF, -INF and NaN for the
    /// rest.
    void putNumber(ExportSetting setting, double number);

    template <class Enumeration>
    void putChoice(ExportSetting setting, Enumeration choice,
                   ExportAttributePart part = ExportAttributePart::value) {
        static_assert(std::is_enum_v<Enumeration>);
        putWhole(setting, static_cast<int>(choice), part);
    }
    template <class Unit>
    void putMeasure(ExportSetting setting, Unit unit, double number, std::string_view text) {
        putNumber(setting, number);
        putChoice(setting, unit, ExportAttributePart::unit);
        putText(setting, text, ExportAttributePart::text);
    }
    void putUrl(std::string_view address, std::string_view label);

  private:
    friend class ExportElementFiller;

    std::vector<ExportAttribute> attributes_;  // sorted by setting and part, each once
    std::vector<ExportUrl> urls_;
};

/// What is common to all formats.
class ExportFormat : public ExportElement {
  public:
    /// A format takes part in the export only when its option-present flag is true; it is false at first.
    void setOptionPresent(bool present) { present_ = present; }
    [[nodiscard]] bool isOptionPresent() const { return present_; }

  protected:
    ExportFormat() = default;
    ~ExportFormat() = default;

  private:
    bool present_ = false;
};

}  // namespace vexa
