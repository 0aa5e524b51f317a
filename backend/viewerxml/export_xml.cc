#include "backend/viewerxml/export_xml.h"

#include <cstddef>
#include <string_view>

#include "backend/viewerxml/export_names.h"
#include "backend/viewerxml/xml_writer.h"

namespace vexa {

namespace {

void writeElement(XmlWriter& writer, std::string_view name, const ExportElement& element) {
    writer.writeMarkup("<");
    writer.writeMarkup(name);
    for (const ExportAttribute& attribute : element.attributes()) {
        writer.writeAttribute(attribute.xmlName(), attribute.text, attribute.isEscaped());
    }
    if (element.urls().empty()) return writer.writeMarkup("/>");
    writer.writeMarkup(">");
    for (const ExportUrl& url : element.urls()) {
        writer.writeMarkup("<url");
        writer.writeAttribute("address", url.address, false);
        writer.writeAttribute("label", url.label, false);
        writer.writeMarkup("/>");
    }
    writer.writeMarkup("</");
    writer.writeMarkup(name);
    writer.writeMarkup(">");
}

void write(const ExportSpec& spec, XmlWriter& writer) {
    const auto& elements = exportElements();
    writer.writeMarkup("<exportSpecification>");
    writeElement(writer, elements[0].name, spec.global());
    writeElement(writer, elements[1].name, spec.contents());
    const auto formats = exportFormatsOf(spec);
    for (std::size_t i = 0; i < formats.size(); ++i) {
        if (formats.at(i)->isOptionPresent()) writeElement(writer, elements.at(i + 2).name, *formats.at(i));
    }
    writer.writeMarkup("</exportSpecification>");
}

}  // namespace

std::string ExportXML::convertToXML(const ExportSpec& spec) {
    return writtenXml([&spec](XmlWriter& writer) { write(spec, writer); });
}

}  // namespace vexa
