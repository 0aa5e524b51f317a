#include "backend/viewerxml/export_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>
#include <vector>

#include "backend/text/character_set.h"
#include "backend/viewerxml/export_names.h"
#include "backend/viewerxml/xml_form_reader.h"

namespace vexa {

/// Makes settings of any element by their names.
class ExportElementFiller {
  public:
    static void put(ExportElement& element, ExportSetting setting, ExportAttributePart part,
                    std::string_view text) {
        element.putText(setting, text, part);
    }
    static void putUrl(ExportElement& element, std::string_view address, std::string_view label) {
        element.putUrl(address, label);
    }
};

namespace {

constexpr std::string_view kRoot = "exportSpecification";
constexpr std::string_view kUrl = "url";

/// An attribute of an element's form.
struct Slot {
    ExportSetting setting;
    ExportAttributePart part;
};

/// `text` with entities for what XML has entities for, as texts are escaped that come escaped.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char each : text) {
        switch (each) {
            case '"':
                result += "&quot;";
                break;
            case '&':
                result += "&amp;";
                break;
            case '\'':
                result += "&apos;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += each;
        }
    }
    return result;
}

std::optional<Slot> findSlot(const ExportElementForm& element, std::string_view name) {
    for (const ExportSetting setting : element.settings) {
        const SettingForm& form = formOf(setting);
        if (!name.starts_with(form.name)) continue;
        for (const ExportAttributePart part : partsOf(form.kind)) {
            if (name.substr(form.name.size()) == endingOf(part)) return Slot{setting, part};
        }
    }
    return std::nullopt;
}

class ExportCollector final : public XmlFormCollector {
  public:
    explicit ExportCollector(ExportSpec& spec) : spec_(&spec) {}

  protected:
    void begin(std::size_t depth, const std::string& name,
               const std::vector<XmlAttribute>& attributes) override;
    void end(std::size_t depth) override;

  private:
    void beginElement(const std::string& name, const std::vector<XmlAttribute>& attributes);
    void beginUrl(const std::string& name, const std::vector<XmlAttribute>& attributes);
    [[nodiscard]] ExportElement& elementOf(std::size_t index);
    void set(ExportElement& element, const Slot& slot, const XmlAttribute& attribute);
    void checkNumber(const XmlAttribute& attribute);
    void checkChoice(const XmlAttribute& attribute, int choices);
    void checkWhole(const ExportElement& element, const ExportElementForm& form);

    ExportSpec* spec_;
    std::size_t next_ = 0;              // of `exportElements` that may stand here
    ExportElement* element_ = nullptr;  // that is open
};

void ExportCollector::begin(std::size_t depth, const std::string& name,
                            const std::vector<XmlAttribute>& attributes) {
    if (depth == 1) return beginElement(name, attributes);
    if (depth == 2 && exportElements().at(next_ - 1).hasUrls) return beginUrl(name, attributes);
    if (depth > 1) {
        refuse(
            "The element ^1 is not allowed in ^2"_text,
            {quoted(name), depth > 2 ? std::string(kUrl) : std::string(exportElements().at(next_ - 1).name)});
    }
    if (name != kRoot) refuse("The export is not an exportSpecification but ^1"_text, {quoted(name)});
    if (!attributes.empty()) {
        refuse("The element ^1 has no attribute ^2"_text, {name, quoted(attributes.front().name)});
    }
}

void ExportCollector::beginElement(const std::string& name, const std::vector<XmlAttribute>& attributes) {
    const auto& elements = exportElements();
    const auto* const first = elements.data() + next_;
    const auto* const found = std::find_if(first, elements.data() + elements.size(),
                                           [&name](const auto& each) { return each.name == name; });
    const bool required = next_ < elements.size() - kExportFormats;
    if (found == elements.data() + elements.size() || (required && found != first)) {
        refuse("The element ^1 is not allowed here"_text, {quoted(name)});
    }
    next_ = static_cast<std::size_t>(found - elements.data()) + 1;
    element_ = &elementOf(next_ - 1);
    for (const XmlAttribute& attribute : attributes) {
        const std::optional<Slot> slot = findSlot(*found, attribute.name);
        if (!slot) refuse("The element ^1 has no attribute ^2"_text, {name, quoted(attribute.name)});
        set(*element_, *slot, attribute);
    }
    checkWhole(*element_, *found);
}

void ExportCollector::beginUrl(const std::string& name, const std::vector<XmlAttribute>& attributes) {
    if (name != kUrl) {
        refuse("The element ^1 is not allowed in ^2"_text,
               {quoted(name), std::string(exportElements().at(next_ - 1).name)});
    }
    std::optional<std::string> address;
    std::optional<std::string> label;
    for (const XmlAttribute& attribute : attributes) {
        if (attribute.name != "address" && attribute.name != "label") {
            refuse("The element ^1 has no attribute ^2"_text, {name, quoted(attribute.name)});
        }
        (attribute.name == "address" ? address : label) = fromUtf8(attribute.value);
    }
    if (!address || !label) {
        refuse("The element ^1 lacks the attribute ^2"_text, {name, quoted(address ? "label" : "address")});
    }
    ExportElementFiller::putUrl(*element_, *address, *label);
}

void ExportCollector::end(std::size_t depth) {
    if (depth == 0 && next_ < exportElements().size() - kExportFormats) {
        refuse("The element ^1 lacks the element ^2"_text,
               {std::string(kRoot), quoted(exportElements().at(next_).name)});
    }
}

ExportElement& ExportCollector::elementOf(std::size_t index) {
    if (index == 0) return spec_->global();
    if (index == 1) return spec_->contents();
    ExportFormat& format = *exportFormatsOf(*spec_).at(index - 2);
    format.setOptionPresent(true);
    return format;
}

void ExportCollector::set(ExportElement& element, const Slot& slot, const XmlAttribute& attribute) {
    const SettingForm& form = formOf(slot.setting);
    const bool numbered = slot.part == ExportAttributePart::value;
    if (slot.part == ExportAttributePart::unit || form.kind == SettingKind::choice) {
        checkChoice(attribute, form.choices);
    } else if (slot.part == ExportAttributePart::autofit || form.kind == SettingKind::flag) {
        static_cast<void>(truthOf(attribute));
    } else if (numbered && form.kind == SettingKind::columnWidth) {
        static_cast<void>(countOf(attribute));
    } else if (numbered && (form.kind == SettingKind::measure || form.kind == SettingKind::percent)) {
        checkNumber(attribute);
    }
    if (slot.setting == ExportSetting::printOption) {
        spec_->global().setPrintOption(static_cast<ExportGlobalSpec::PRINT_OPTION>(numberOf(attribute)));
        return;
    }
    const bool isEscaped = form.kind == SettingKind::escapedText;
    ExportElementFiller::put(element, slot.setting, slot.part,
                             fromUtf8(isEscaped ? escaped(attribute.value) : attribute.value));
}

void ExportCollector::checkNumber(const XmlAttribute& attribute) {
    double number = 0.0;
    const char* const last = attribute.value.data() + attribute.value.size();
    const auto [end, error] = std::from_chars(attribute.value.data(), last, number);
    if (error != std::errc() || end != last || !std::isfinite(number) || number <= 0.0) {
        refuse("The attribute ^1 is not a number above 0 but ^2"_text,
               {quoted(attribute.name), quoted(attribute.value)});
    }
}

void ExportCollector::checkChoice(const XmlAttribute& attribute, int choices) {
    if (attribute.value.size() != 1 || numberOf(attribute) >= choices) {
        refuse("The attribute ^1 is not a whole number from 0 to ^2 but ^3"_text,
               {quoted(attribute.name), std::to_string(choices - 1), quoted(attribute.value)});
    }
}

/// Refuses a setting of which an attribute is missing.
void ExportCollector::checkWhole(const ExportElement& element, const ExportElementForm& form) {
    const std::vector<ExportAttribute>& attributes = element.attributes();
    for (const ExportAttribute& given : attributes) {
        for (const ExportAttributePart part : partsOf(formOf(given.setting).kind)) {
            const bool stands = std::any_of(attributes.begin(), attributes.end(), [&](const auto& each) {
                return each.setting == given.setting && each.part == part;
            });
            if (!stands) {
                refuse("The element ^1 lacks the attribute ^2"_text,
                       {std::string(form.name), quoted(ExportAttribute{given.setting, part, {}}.xmlName())});
            }
        }
    }
}

}  // namespace

ReadExportSpec readExportSpec(std::string_view text) {
    ReadExportSpec result{std::make_unique<ExportSpec>(), {}};
    ExportCollector collector(*result.spec);
    const std::string wrong = readXmlForm(
        text, collector, {"The export is longer than 16 MiB"_text, "The export cannot be read as XML"_text});
    if (!wrong.empty()) {
        result.spec.reset();
        result.error = fromUtf8(wrong);
    }
    return result;
}

}  // namespace vexa
