#include "frontend/export/word/docx/docx_text.h"

#include <algorithm>
#include <array>

#include "frontend/export/office/office_values.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

namespace {

using tables::CellStyle;
using tables::Color;
using tables::HorizontalAlign;

/// Blanks that a reader would drop.
bool needsPreserving(std::string_view text) {
    return text.starts_with(' ') || text.ends_with(' ') || text.find("  ") != std::string_view::npos;
}

void appendText(std::string& xml, std::string_view text) {
    if (text.empty()) return;
    xml += needsPreserving(text) ? "<w:t xml:space=\"preserve\">" : "<w:t>";
    appendXmlText(xml, text, XmlEscapes::replacing);
    xml += "</w:t>";
}

void appendFonts(std::string& xml, std::string_view family) {
    std::string name;
    appendXmlValue(name, wordFont(family), XmlEscapes::replacing);
    xml.append("<w:rFonts w:ascii=\"").append(name).append("\" w:hAnsi=\"").append(name);
    xml.append("\" w:cs=\"").append(name).append("\"/>");
}

void appendSwitch(std::string& xml, std::string_view name, bool on) {
    xml.append("<w:").append(name).append(on ? "/>" : " w:val=\"0\"/>");
}

void appendColor(std::string& xml, Color color) {
    xml.append("<w:color w:val=\"").append(officeColor(color)).append("\"/>");
}

void appendSize(std::string& xml, std::int64_t halfPoints) {
    const std::string size = std::to_string(halfPoints);
    xml.append("<w:sz w:val=\"").append(size).append("\"/><w:szCs w:val=\"").append(size).append("\"/>");
}

}  // namespace

void appendRunContent(std::string& xml, std::string_view text) {
    for (;;) {
        const std::size_t end = std::min(text.find_first_of("\r\n\t"), text.size());
        appendText(xml, text.substr(0, end));
        text.remove_prefix(end);
        if (text.empty()) return;
        xml += text.front() == '\t' ? "<w:tab/>" : "<w:br/>";
        text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    }
}

void appendRun(std::string& xml, std::string_view text, std::string_view properties) {
    if (text.empty()) return;
    xml += "<w:r>";
    if (!properties.empty()) xml.append("<w:rPr>").append(properties).append("</w:rPr>");
    appendRunContent(xml, text);
    xml += "</w:r>";
}

std::string runProperties(const CellStyle& own, bool bold, bool raised, bool rightToLeft) {
    std::string xml;
    if (!own.font.empty()) appendFonts(xml, own.font);
    if (bold || own.bold) {
        appendSwitch(xml, "b", bold || *own.bold);
        appendSwitch(xml, "bCs", bold || *own.bold);
    }
    if (own.italic) {
        appendSwitch(xml, "i", *own.italic);
        appendSwitch(xml, "iCs", *own.italic);
    }
    if (own.color) appendColor(xml, *own.color);
    if (own.size) appendSize(xml, halfPointsOf(*own.size));
    if (own.underline) xml += *own.underline ? "<w:u w:val=\"single\"/>" : "<w:u w:val=\"none\"/>";
    if (raised) xml += "<w:vertAlign w:val=\"superscript\"/>";
    if (rightToLeft) xml += "<w:rtl/>";
    return xml;
}

std::string runProperties(const WordTextStyle& style) {
    std::string xml;
    appendFonts(xml, style.font);
    if (style.bold) xml += "<w:b/><w:bCs/>";
    if (style.italic) xml += "<w:i/><w:iCs/>";
    appendColor(xml, style.color);
    appendSize(xml, style.halfPoints);
    if (style.underline) xml += "<w:u w:val=\"single\"/>";
    return xml;
}

std::string_view justification(HorizontalAlign align) {
    constexpr std::array<std::string_view, 4> words{"", "left", "center", "right"};
    return words[static_cast<std::size_t>(align)];
}

void appendShading(std::string& xml, Color color) {
    xml.append("<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"").append(officeColor(color)).append("\"/>");
}

std::string styleIdOf(WordRole role, std::size_t level) {
    constexpr std::array<std::string_view, 13> ids{
        "Normal",     "Heading", "Log",           "Warning", "Notes",    "Normal", "TableTitle",
        "TableLayer", "Caption", "TableFootnote", "Header",  "TableGap", "Picture"};
    const std::string id(ids[static_cast<std::size_t>(role)]);
    return role == WordRole::heading ? id + std::to_string(level) : id;
}

std::string tableStyleId(std::size_t number) { return "TableText" + std::to_string(number + 1); }

}  // namespace vexa::frontend
