#include "backend/viewerxml/xml_writer.h"

#include <utility>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "backend/text/character_set.h"
#include "backend/viewerxml/xml_library.h"

namespace vexa {

void XmlWriter::writeAttribute(std::string_view name, std::string_view value, bool escaped) {
    writeMarkup(" ");
    writeMarkup(name);
    writeMarkup("=\"");
    const std::u16string units = xmlUnits(toUtf8(value));
    formatter_.formatBuf(reinterpret_cast<const XMLCh*>(units.data()), units.size(),
                         escaped ? xercesc::XMLFormatter::NoEscapes : xercesc::XMLFormatter::AttrEscapes);
    writeMarkup("\"");
}

std::string writtenXml(const std::function<void(XmlWriter&)>& write) {
    if (!xmlLibraryWorks()) return {};
    try {
        XmlWriter writer;
        write(writer);
        return std::move(writer.text());
    } catch (const xercesc::XMLException&) {
    } catch (const xercesc::OutOfMemoryException&) {
    }
    return {};
}

}  // namespace vexa
