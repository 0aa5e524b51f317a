#include "frontend/export/xlsx/style_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "frontend/export/office/office_values.h"
#include "frontend/package/xml_escapes.h"
#include "frontend/package/xml_writer.h"

namespace vexa::frontend {
namespace {

// What programs take: more formats of cells than this, and the workbook is broken for them.
constexpr std::size_t mostFormats = 64'000;
// Numbers of formats below are those that every program knows.
constexpr std::size_t firstOwnFormat = 164;

// As the lists have to follow each other.
constexpr std::array<const char*, 11> listOrder{"numFmts",      "fonts",   "fills",      "borders",
                                                "cellStyleXfs", "cellXfs", "cellStyles", "dxfs",
                                                "tableStyles",  "colors",  "extLst"};

std::string hundredths(double value) {
    // As programs write sizes: 9, 10.5.
    const long long number = std::llround(std::clamp(value, 1.0, 409.0) * 100);
    std::string text = std::to_string(number / 100);
    if (const long long rest = number % 100; rest != 0) {
        text += rest < 10 ? ".0" : ".";
        text += std::to_string(rest % 10 == 0 ? rest / 10 : rest);
    }
    return text;
}

std::string colorElement(std::string_view name, tables::Color color) {
    return "<" + std::string(name) + " rgb=\"FF" + officeColor(color) + "\"/>";
}

std::string fillElement(const SheetStyle& style) {
    if (!style.background) {
        return "<fill><patternFill patternType=\"none\"/></fill>";
    }
    return "<fill><patternFill patternType=\"solid\">" + colorElement("fgColor", *style.background) +
           "<bgColor indexed=\"64\"/></patternFill></fill>";
}

std::string_view lineName(tables::LineStyle style) {
    constexpr std::array<std::string_view, 7> names{"",       "thin",   "medium", "thick",
                                                    "double", "dashed", "dotted"};
    return names[static_cast<std::size_t>(style)];
}

std::string borderElement(const SheetStyle& style) {
    // Top, right, bottom, left, as the format lists them.
    constexpr std::array<std::pair<std::string_view, std::size_t>, 4> sides{
        {{"left", 3}, {"right", 1}, {"top", 0}, {"bottom", 2}}};
    std::string text = "<border>";
    for (const auto& [name, side] : sides) {
        const tables::BorderLine& line = style.borders[side];
        text += "<" + std::string(name);
        if (line.style == tables::LineStyle::none) {
            text += "/>";
        } else {
            text += " style=\"" + std::string(lineName(line.style)) + "\">";
            text += colorElement("color", line.color) + "</" + std::string(name) + ">";
        }
    }
    return text + "<diagonal/></border>";
}

std::string alignmentElement(const SheetStyle& style) {
    constexpr std::array<std::string_view, 4> horizontal{"", "left", "center", "right"};
    constexpr std::array<std::string_view, 3> vertical{"top", "center", "bottom"};
    std::string text = "<alignment";
    if (style.horizontal != tables::HorizontalAlign::mixed) {
        text += " horizontal=\"" + std::string(horizontal[static_cast<std::size_t>(style.horizontal)]) + "\"";
    }
    // The bottom is where cells stand that say nothing.
    if (style.vertical != tables::VerticalAlign::bottom) {
        text += " vertical=\"" + std::string(vertical[static_cast<std::size_t>(style.vertical)]) + "\"";
    }
    text += style.wraps ? " wrapText=\"1\"" : "";
    return text == "<alignment" ? std::string() : text + "/>";
}

/// An element whose names all have the prefix of the styles.
std::string withPrefix(const std::string& element, const std::string& prefix) {
    if (prefix.empty()) {
        return element;
    }
    std::string text;
    for (std::size_t i = 0; i < element.size(); ++i) {
        text += element[i];
        if (element[i] == '<') {
            if (i + 1 < element.size() && element[i + 1] == '/') {
                text += element[++i];
            }
            text += prefix;
        }
    }
    return text;
}

}  // namespace

std::string fontProperties(const SheetStyle& style, std::string_view nameElement, std::string_view extra) {
    std::string text;
    const auto name = [&] {
        text += "<" + std::string(nameElement) + " val=\"";
        appendXmlValue(text, officeFont(style.font), XmlEscapes::replacing);
        text += "\"/>";
    };
    text += style.bold ? "<b/>" : "";
    text += style.italic ? "<i/>" : "";
    text += style.underline ? "<u/>" : "";
    text += extra;
    text += "<sz val=\"" + hundredths(style.size) + "\"/>" + colorElement("color", style.color);
    name();
    return text;
}

std::string_view plainStyles() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
           "<fonts count=\"1\"><font><sz val=\"11\"/><color rgb=\"FF000000\"/><name val=\"Calibri\"/>"
           "<family val=\"2\"/></font></fonts>"
           "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
           "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
           "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
           "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>"
           "</cellStyleXfs>"
           "<cellXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
           "</cellXfs>"
           "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
           "<dxfs count=\"0\"/></styleSheet>";
}

PackageResult StyleTable::parse(std::string xml) {
    PackageResult result = xml_.parse(std::move(xml), "styleSheet");
    if (result && xml_.space() != spreadsheetSpace) {
        result = {PackageProblem::damaged, "a different root element than expected"_text};
    }
    if (result) {
        loadNumberFormats();
    }
    return result;
}

void StyleTable::loadNumberFormats() {
    nextFormat_ = firstOwnFormat;
    for (pugi::xml_node node = childOf(childOf(xml_.root(), "numFmts"), "numFmt"); node;
         node = nextOf(node)) {
        const std::size_t id = numberOr(attributeOf(node, "numFmtId"), 0);
        if (id < 1'000'000) {
            nextFormat_ = std::max(nextFormat_, id + 1);
        }
        formats_.emplace(attributeOf(node, "formatCode"), id);
    }
}

StyleTable::List& StyleTable::list(const char* name) {
    const auto [found, isNew] = lists_.try_emplace(name);
    List& list = found->second;
    if (!isNew) {
        return list;
    }
    list.node = childOf(xml_.root(), name);
    if (!list.node) {
        // Before the first of those that have to stand behind it.
        const auto own = std::find(listOrder.begin(), listOrder.end(), std::string_view(name));
        pugi::xml_node next;
        for (auto each = own; each != listOrder.end() && !next; ++each) {
            next = childOf(xml_.root(), *each);
        }
        const std::string full = xml_.named(name);
        list.node = next ? xml_.root().insert_child_before(full.c_str(), next)
                         : xml_.root().append_child(full.c_str());
    }
    for (const pugi::xml_node node : list.node.children()) {
        if (node.type() == pugi::node_element) {
            list.known.emplace(nodeText(node), list.count++);
        }
    }
    return list;
}

/// The number of an element in a list, to which it is added where it is not in it.
std::size_t StyleTable::intern(const char* name, const std::string& element) {
    List& list = this->list(name);
    const std::string full = withPrefix(element, xml_.named(""));
    pugi::xml_node(list.node).append_buffer(full.data(), full.size(), pugi::parse_escapes);
    const pugi::xml_node added = list.node.last_child();
    const auto [found, isNew] = list.known.try_emplace(nodeText(added), list.count);
    if (isNew) {
        ++list.count;
        setAttribute(list.node, "count", std::to_string(list.count));
    } else {
        list.node.remove_child(added);
    }
    return found->second;
}

std::size_t StyleTable::numberFormat(const std::string& code) {
    constexpr std::array<std::pair<std::string_view, std::size_t>, 5> known{
        {{"", 0}, {"0", 1}, {"0.00", 2}, {"#,##0", 3}, {"#,##0.00", 4}}};
    for (const auto& [knownCode, id] : known) {
        if (code == knownCode) {
            return id;
        }
    }
    const auto [found, isNew] = formats_.try_emplace(code, nextFormat_);
    if (isNew) {
        List& list = this->list("numFmts");
        pugi::xml_node node = list.node.append_child(xml_.named("numFmt").c_str());
        setAttribute(node, "numFmtId", std::to_string(nextFormat_++));
        setAttribute(node, "formatCode", code);
        setAttribute(list.node, "count", std::to_string(++list.count));
    }
    return found->second;
}

bool StyleTable::add(const std::vector<SheetStyle>& styles, std::vector<std::size_t>& numbers) {
    numbers.clear();
    for (const SheetStyle& style : styles) {
        const std::string alignment = alignmentElement(style);
        std::string xf = "<xf numFmtId=\"" + std::to_string(numberFormat(style.numberFormat)) + "\"";
        xf += " fontId=\"" +
              std::to_string(intern("fonts", "<font>" + fontProperties(style, "name") + "</font>")) + "\"";
        xf += " fillId=\"" + std::to_string(intern("fills", fillElement(style))) + "\"";
        xf += " borderId=\"" + std::to_string(intern("borders", borderElement(style))) + "\"";
        xf += " xfId=\"0\" applyNumberFormat=\"1\" applyFont=\"1\" applyFill=\"1\" applyBorder=\"1\"";
        xf += alignment.empty() ? "/>" : " applyAlignment=\"1\">" + alignment + "</xf>";
        numbers.push_back(intern("cellXfs", xf));
    }
    return list("cellXfs").count <= mostFormats;
}

}  // namespace vexa::frontend
