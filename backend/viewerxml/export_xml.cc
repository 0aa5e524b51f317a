#include "backend/viewerxml/export_xml.h"

#include <array>
#include <string_view>
#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "backend/text/character_set.h"
#include "backend/viewerxml/xml_library.h"

namespace vexa {

namespace {

namespace xml = xercesc;

/// Collects what the formatter gives out.
class StringTarget final : public xml::XMLFormatTarget {
  public:
    void writeChars(const XMLByte* bytes, const XMLSize_t count, xml::XMLFormatter* /*formatter*/) override {
        text_.append(reinterpret_cast<const char*>(bytes), count);
    }
    [[nodiscard]] std::string& text() { return text_; }

  private:
    std::string text_;
};

/// Writes elements, an attribute at a time.
class XmlWriter {
  public:
    /// `markup` is ASCII.
    void writeMarkup(std::string_view markup) { target_.text().append(markup); }
    void writeAttribute(std::string_view name, std::string_view value, bool escaped);
    void writeElement(std::string_view name, const ExportElement& element);
    [[nodiscard]] std::string& text() { return target_.text(); }

  private:
    StringTarget target_;
    // Gives the target everything it is handed before it returns, so markup can go there directly.
    xml::XMLFormatter formatter_{"UTF-8", &target_};
};

void XmlWriter::writeAttribute(std::string_view name, std::string_view value, bool escaped) {
    writeMarkup(" ");
    writeMarkup(name);
    writeMarkup("=\"");
    const std::u16string units = xmlUnits(toUtf8(value));
    formatter_.formatBuf(reinterpret_cast<const XMLCh*>(units.data()), units.size(),
                         escaped ? xml::XMLFormatter::NoEscapes : xml::XMLFormatter::AttrEscapes);
    writeMarkup("\"");
}

void XmlWriter::writeElement(std::string_view name, const ExportElement& element) {
    writeMarkup("<");
    writeMarkup(name);
    for (const ExportAttribute& attribute : element.attributes()) {
        writeAttribute(attribute.xmlName(), attribute.text, attribute.isEscaped());
    }
    if (element.urls().empty()) return writeMarkup("/>");
    writeMarkup(">");
    for (const ExportUrl& url : element.urls()) {
        writeMarkup("<url");
        writeAttribute("address", url.address, false);
        writeAttribute("label", url.label, false);
        writeMarkup("/>");
    }
    writeMarkup("</");
    writeMarkup(name);
    writeMarkup(">");
}

struct NamedFormat {
    std::string_view name;
    const ExportFormat* format;
};

std::array<NamedFormat, 15> formatsOf(const ExportSpec& spec) {
    return {{{"doc", &spec.doc()},
             {"html", &spec.html()},
             {"report", &spec.report()},
             {"pdf", &spec.pdf()},
             {"ppt", &spec.ppt()},
             {"text", &spec.text()},
             {"xls", &spec.xls()},
             {"xlsx", &spec.xlsx()},
             {"xlsm", &spec.xlsm()},
             {"bmp", &spec.bmp()},
             {"emf", &spec.emf()},
             {"eps", &spec.eps()},
             {"jpg", &spec.jpg()},
             {"png", &spec.png()},
             {"tif", &spec.tif()}}};
}

std::string write(const ExportSpec& spec) {
    XmlWriter writer;
    writer.writeMarkup("<exportSpecification>");
    writer.writeElement("global", spec.global());
    writer.writeElement("contents", spec.contents());
    for (const NamedFormat& named : formatsOf(spec)) {
        if (named.format->isOptionPresent()) writer.writeElement(named.name, *named.format);
    }
    writer.writeMarkup("</exportSpecification>");
    return std::move(writer.text());
}

}  // namespace

std::string ExportXML::convertToXML(const ExportSpec& spec) {
    if (!xmlLibraryWorks()) return {};
    try {
        return write(spec);
    } catch (const xml::XMLException&) {
    } catch (const xml::OutOfMemoryException&) {
    }
    return {};
}

}  // namespace vexa
