#include "frontend/looks/look_reader.h"
#include "frontend/looks/look_words.h"
#include "frontend/package/xml_writer.h"

namespace vexa::frontend {

namespace {

using tables::areaCount;
using tables::AreaLook;
using tables::borderCount;
using tables::BorderLine;
using tables::Color;
using tables::RowBanding;
using tables::TableLook;

constexpr XmlStyle lookXml{XmlEscapes::replacing, true, false, true, false};

template <std::size_t count, typename Enumeration>
std::string_view wordOf(const LookWords<count>& words, Enumeration value) {
    return words[static_cast<std::size_t>(value)];
}

std::string colorOrNone(const std::optional<Color>& color) { return color ? colorText(*color) : "none"; }

void writeArea(XmlWriter& xml, std::string_view name, const AreaLook& area) {
    xml.begin("area").attribute("name", name).attribute("font", area.font).attribute("size", area.size);
    xml.attribute("bold", wordOf(kFlagWords, area.bold));
    xml.attribute("italic", wordOf(kFlagWords, area.italic));
    xml.attribute("underline", wordOf(kFlagWords, area.underline));
    xml.attribute("color", colorText(area.color)).attribute("background", colorOrNone(area.background));
    xml.attribute("align", wordOf(kHorizontalWords, area.horizontal));
    xml.attribute("verticalAlign", wordOf(kVerticalWords, area.vertical));
    xml.attribute("marginLeft", area.marginLeft).attribute("marginRight", area.marginRight);
    xml.attribute("marginTop", area.marginTop).attribute("marginBottom", area.marginBottom);
    xml.end();
}

void writeBorder(XmlWriter& xml, std::string_view place, const BorderLine& line) {
    if (line == BorderLine{}) return;
    xml.begin("border").attribute("place", place).attribute("style", wordOf(kLineWords, line.style));
    xml.attribute("color", colorText(line.color)).end();
}

void writeWidth(XmlWriter& xml, std::string_view name, const std::optional<double>& width) {
    if (width) xml.attribute(name, *width);
}

}  // namespace

std::string writeLook(const TableLook& look) {
    XmlWriter xml(lookXml);
    xml.begin("tableProperties").optional("name", look.name);
    for (std::size_t i = 0; i < areaCount; ++i) writeArea(xml, kAreaWords[i], look.areas[i]);
    for (std::size_t i = 0; i < borderCount; ++i) writeBorder(xml, kBorderWords[i], look.borders[i]);
    if (look.banding != RowBanding{}) {
        xml.begin("rowBanding").attribute("rows", std::size_t{look.banding.rows});
        xml.attribute("background", colorOrNone(look.banding.background));
        xml.attribute("color", colorOrNone(look.banding.color));
        xml.attribute("labels", wordOf(kFlagWords, look.banding.labels)).end();
    }
    if (look.minColumnWidth || look.maxColumnWidth || look.maxLabelWidth) {
        xml.begin("widths");
        writeWidth(xml, "minColumn", look.minColumnWidth);
        writeWidth(xml, "maxColumn", look.maxColumnWidth);
        writeWidth(xml, "maxLabel", look.maxLabelWidth);
        xml.end();
    }
    xml.end();
    return xml.take();
}

}  // namespace vexa::frontend
