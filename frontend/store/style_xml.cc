#include "frontend/store/style_xml.h"

#include <cmath>

#include "frontend/looks/look_words.h"

namespace vexa::frontend {
namespace {

void writeColor(std::string_view name, const std::optional<tables::Color>& color, XmlWriter& xml) {
    if (color) xml.attribute(name, colorText(*color));
}

void writeFlag(std::string_view name, const std::optional<bool>& flag, XmlWriter& xml) {
    if (flag) xml.attribute(name, *flag ? "true" : "false");
}

}  // namespace

void writeNumber(std::string_view name, const std::optional<double>& number, XmlWriter& xml) {
    if (number && std::isfinite(*number)) xml.attribute(name, *number);
}

void writeStyle(const tables::CellStyle& style, XmlWriter& xml) {
    writeFlag("bold", style.bold, xml);
    writeFlag("italic", style.italic, xml);
    writeFlag("underline", style.underline, xml);
    xml.optional("font", style.font);
    writeNumber("size", style.size, xml);
    writeColor("color", style.color, xml);
    writeColor("background", style.background, xml);
}

void readStyle(ElementReader& element, tables::CellStyle& style) {
    element.flag("bold", style.bold).flag("italic", style.italic).flag("underline", style.underline);
    element.text("font", style.font).number("size", style.size);
    element.color("color", style.color).color("background", style.background);
}

}  // namespace vexa::frontend
