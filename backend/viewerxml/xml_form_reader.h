// Reads XML of a fixed form. For the viewer XML library's own files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>

#include "backend/text/system_text.h"

namespace vexa {

/// The parser's 16-bit text, zero-terminated, as UTF-8.
[[nodiscard]] std::string utf8Of(const XMLCh* text);
/// A text that was read for a message: between quotes, its end left out when it is long.
[[nodiscard]] std::string quoted(std::string_view text);

/// An attribute as it was read; both in UTF-8.
struct XmlAttribute {
    std::string name;
    std::string value;
};

/// Collects what a text says, element by element. What it cannot accept it refuses, with the place and the
/// reason.
class XmlFormCollector : public xercesc::DefaultHandler {
  public:
    /// Why the text was refused, in UTF-8; empty until then.
    [[nodiscard]] const std::string& refusal() const { return refusal_; }

    void setDocumentLocator(const xercesc::Locator* locator) override { locator_ = locator; }
    void startElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName,
                      const xercesc::Attributes& attributes) override;
    void endElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName) override;
    void characters(const XMLCh* text, XMLSize_t length) override;
    void fatalError(const xercesc::SAXParseException& error) override;

    /// Ends the reading, by an exception of the XML library.
    [[noreturn]] void refuse(SystemText text, const std::vector<std::string>& arguments = {});

  protected:
    /// An element begins; `depth` is 0 for the root.
    virtual void begin(std::size_t depth, const std::string& name,
                       const std::vector<XmlAttribute>& attributes) = 0;
    /// The element of that depth ends.
    virtual void end(std::size_t depth) = 0;

    /// The values of attributes; what is none is refused.
    [[nodiscard]] bool truthOf(const XmlAttribute& attribute);
    [[nodiscard]] int numberOf(const XmlAttribute& attribute);
    /// A whole number of 64 bits that is not below 0.
    [[nodiscard]] std::int64_t countOf(const XmlAttribute& attribute);
    void refuseBelow0(const XmlAttribute& attribute, std::int64_t number);

  private:
    [[noreturn]] void refuseWhole(const XmlAttribute& attribute);

    const xercesc::Locator* locator_ = nullptr;
    std::size_t depth_ = 0;
    std::string refusal_;
};

/// What is said of a whole text that cannot be read.
struct XmlFormTexts {
    SystemText tooLong;  ///< longer than 16 MiB
    SystemText noXml;
};

/// Reads `text`, which is UTF-8, whatever its declaration says; nothing else is read, no file and no address.
/// Document types are refused. Returns an empty text, or what is wrong and where, in UTF-8.
[[nodiscard]] std::string readXmlForm(std::string_view text, XmlFormCollector& collector,
                                      const XmlFormTexts& texts);

}  // namespace vexa
