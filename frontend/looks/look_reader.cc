#include "frontend/looks/look_reader.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <pugixml.hpp>
#include <set>
#include <utility>

#include "backend/strings/dictionary.h"
#include "backend/text/system_text.h"
#include "frontend/looks/look_words.h"
#include "frontend/package/xml_check.h"

namespace vexa::frontend {

namespace {

using tables::Area;
using tables::AreaLook;
using tables::Border;
using tables::BorderLine;
using tables::Color;
using tables::LineStyle;
using tables::plainLook;
using tables::TableLook;

constexpr char rootName[] = "tableProperties";
constexpr XmlLimits lookLimits{10'000, 100'000, 8};
constexpr XmlPolicy lookPolicy{false, true, false, false, false};
constexpr std::size_t largestLook = 1U << 20;

/// What was refused, without its place.
struct Refusal {
    SystemText text;
    std::vector<std::string> arguments;
};

/// Bounds of a number.
struct Bounds {
    double least;
    double most;
};
constexpr Bounds sizeBounds{1, 400};
constexpr Bounds marginBounds{0, 200};
constexpr Bounds widthBounds{1, 5000};
constexpr std::uint32_t mostBandRows = 1000;

/// Reads the attributes of one element. The first one that does not fit is kept as the refusal; what is asked
/// for afterwards is left as it is. Attributes that nobody asked for are refused by `finish`.
class AttributeReader {
  public:
    explicit AttributeReader(const pugi::xml_node& element) : element_(element) {}

    void text(const char* name, std::string& value) {
        if (const char* const found = find(name)) value = found;
    }

    template <std::size_t count, typename Enumeration>
    void word(const char* name, const LookWords<count>& words, Enumeration& value) {
        const char* const found = find(name);
        if (found == nullptr) return;
        if (const auto index = findWord(words, found)) {
            value = static_cast<Enumeration>(*index);
        } else {
            refuse("\"^1\" does not fit here. Possible: ^2."_text, {found, joinWords(words)});
        }
    }

    void number(const char* name, Bounds bounds, double& value) {
        const char* const found = find(name);
        if (found == nullptr) return;
        const std::string_view text = found;
        double number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc() && end == text.data() + text.size() && number >= bounds.least &&
            number <= bounds.most) {
            value = number;
        } else {
            refuse("\"^1\" is not a number from ^2 to ^3."_text,
                   {found, std::to_string(static_cast<int>(bounds.least)),
                    std::to_string(static_cast<int>(bounds.most))});
        }
    }

    void number(const char* name, Bounds bounds, std::optional<double>& value) {
        double number = value.value_or(bounds.least);
        if (element_.attribute(name).empty()) return;
        this->number(name, bounds, number);
        value = number;
    }

    void count(const char* name, std::uint32_t most, std::uint32_t& value) {
        const char* const found = find(name);
        if (found == nullptr) return;
        const std::string_view text = found;
        std::uint32_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc() && end == text.data() + text.size() && number <= most) {
            value = number;
        } else {
            refuse("\"^1\" is not a whole number from ^2 to ^3."_text, {found, "0", std::to_string(most)});
        }
    }

    void color(const char* name, Color& value) {
        const char* const found = find(name);
        if (found == nullptr) return;
        if (const auto color = parseColor(found)) {
            value = *color;
        } else {
            refuse("\"^1\" is not a color. Write it as \"#1f77b4\"."_text, {found});
        }
    }

    /// "none" stands for no colour.
    void color(const char* name, std::optional<Color>& value) {
        const std::string_view found = element_.attribute(name).value();
        if (found == "none") {
            find(name);
            value.reset();
            return;
        }
        Color color = value.value_or(Color{});
        this->color(name, color);
        if (!element_.attribute(name).empty()) value = color;
    }

    /// The first thing that did not fit, if any.
    std::optional<Refusal> finish() {
        for (const pugi::xml_attribute& each : element_.attributes()) {
            if (!asked_.contains(each.name())) {
                refuse("\"^1\" is not an attribute of \"^2\". Possible: ^3."_text,
                       {each.name(), element_.name(), possible()});
            }
        }
        return std::move(refusal_);
    }

  private:
    const char* find(const char* name) {
        asked_.insert(name);
        const pugi::xml_attribute attribute = element_.attribute(name);
        return attribute.empty() ? nullptr : attribute.value();
    }

    [[nodiscard]] std::string possible() const {
        std::string names;
        for (const std::string& name : asked_) names += (names.empty() ? "" : ", ") + name;
        return names;
    }

    void refuse(SystemText text, std::vector<std::string> arguments) {
        if (!refusal_) refusal_ = Refusal{text, std::move(arguments)};
    }

    const pugi::xml_node& element_;
    std::set<std::string> asked_;
    std::optional<Refusal> refusal_;
};

std::optional<Refusal> missing(const pugi::xml_node& element, const char* attribute, std::string possible) {
    return Refusal{"\"^1\" needs the attribute \"^2\". Possible: ^3."_text,
                   {element.name(), attribute, std::move(possible)}};
}

std::optional<Refusal> readArea(const pugi::xml_node& element, TableLook& look) {
    if (element.attribute("name").empty()) return missing(element, "name", joinWords(kAreaWords));
    AttributeReader reader(element);
    Area which = Area::data;
    reader.word("name", kAreaWords, which);
    AreaLook area = look.area(which);
    reader.text("font", area.font);
    reader.number("size", sizeBounds, area.size);
    reader.word("bold", kFlagWords, area.bold);
    reader.word("italic", kFlagWords, area.italic);
    reader.word("underline", kFlagWords, area.underline);
    reader.color("color", area.color);
    reader.color("background", area.background);
    reader.word("align", kHorizontalWords, area.horizontal);
    reader.word("verticalAlign", kVerticalWords, area.vertical);
    reader.number("marginLeft", marginBounds, area.marginLeft);
    reader.number("marginRight", marginBounds, area.marginRight);
    reader.number("marginTop", marginBounds, area.marginTop);
    reader.number("marginBottom", marginBounds, area.marginBottom);
    look.area(which) = std::move(area);
    return reader.finish();
}

std::optional<Refusal> readBorder(const pugi::xml_node& element, TableLook& look) {
    if (element.attribute("place").empty()) return missing(element, "place", joinWords(kBorderWords));
    AttributeReader reader(element);
    Border which = Border::top;
    BorderLine line{LineStyle::thin, {}};
    reader.word("place", kBorderWords, which);
    reader.word("style", kLineWords, line.style);
    reader.color("color", line.color);
    look.border(which) = line;
    return reader.finish();
}

std::optional<Refusal> readBanding(const pugi::xml_node& element, TableLook& look) {
    AttributeReader reader(element);
    look.banding.rows = 1;
    reader.count("rows", mostBandRows, look.banding.rows);
    reader.color("background", look.banding.background);
    reader.color("color", look.banding.color);
    reader.word("labels", kFlagWords, look.banding.labels);
    return reader.finish();
}

std::optional<Refusal> readWidths(const pugi::xml_node& element, TableLook& look) {
    AttributeReader reader(element);
    reader.number("minColumn", widthBounds, look.minColumnWidth);
    reader.number("maxColumn", widthBounds, look.maxColumnWidth);
    reader.number("maxLabel", widthBounds, look.maxLabelWidth);
    return reader.finish();
}

struct ElementReader {
    std::string_view name;
    std::optional<Refusal> (*read)(const pugi::xml_node&, TableLook&);
};
constexpr std::array<ElementReader, 4> elementReaders{{{kElementWords[0], readArea},
                                                       {kElementWords[1], readBorder},
                                                       {kElementWords[2], readBanding},
                                                       {kElementWords[3], readWidths}}};

std::optional<Refusal> readElement(const pugi::xml_node& element, TableLook& look) {
    for (const ElementReader& each : elementReaders) {
        if (each.name != element.name()) continue;
        if (!element.first_child().empty()) {
            return Refusal{"\"^1\" holds nothing but attributes."_text, {element.name()}};
        }
        return each.read(element, look);
    }
    const std::string found = element.type() == pugi::node_element ? element.name() : element.value();
    return Refusal{"\"^1\" does not fit here. Possible: ^2."_text, {found, joinWords(kElementWords)}};
}

/// Line and column of a byte, from 1; columns count bytes.
std::string placeOf(std::string_view xml, std::ptrdiff_t offset) {
    const std::string_view before = xml.substr(0, offset < 0 ? 0 : static_cast<std::size_t>(offset));
    std::size_t line = 1;
    for (const char each : before) line += each == '\n' ? 1 : 0;
    const std::size_t lineBegin = before.rfind('\n');
    const std::size_t column = before.size() - (lineBegin == std::string_view::npos ? 0 : lineBegin + 1) + 1;
    return composed("line ^1, column ^2"_text, {std::to_string(line), std::to_string(column)});
}

ReadLook refused(std::string_view xml, const pugi::xml_node& node, const Refusal& refusal) {
    return {nullptr, composed("Table look, ^1: ^2"_text, {placeOf(xml, node.offset_debug()),
                                                          composed(refusal.text, refusal.arguments)})};
}

ReadLook refusedAsXml(const std::string& detail) {
    return {nullptr, composed("The table look cannot be read as XML: ^1"_text, {detail})};
}

}  // namespace

ReadLook readLook(std::string_view xml) {
    if (xml.size() > largestLook) return refusedAsXml(std::to_string(xml.size()));
    XmlSize size;
    if (const PackageResult checked = checkXml(xml, lookLimits, lookPolicy, size); !checked) {
        return refusedAsXml(checked.shownDetail());
    }
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size());
    if (!parsed) return refusedAsXml(placeOf(xml, parsed.offset));
    const pugi::xml_node root = document.document_element();
    if (std::string_view(root.name()) != rootName) {
        return refused(xml, root, {"\"^1\" does not fit here. Possible: ^2."_text, {root.name(), rootName}});
    }
    TableLook look = *plainLook();
    look.name.clear();
    look.source = xml;
    look.borders = {};
    AttributeReader reader(root);
    reader.text("name", look.name);
    if (const auto refusal = reader.finish()) return refused(xml, root, *refusal);
    for (const pugi::xml_node& element : root.children()) {
        if (const auto refusal = readElement(element, look)) return refused(xml, element, *refusal);
    }
    return {std::make_shared<const TableLook>(std::move(look)), {}};
}

}  // namespace vexa::frontend
