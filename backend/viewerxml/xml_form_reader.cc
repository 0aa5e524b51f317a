#include "backend/viewerxml/xml_form_reader.h"

#include <charconv>
#include <optional>
#include <system_error>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "backend/viewerxml/xml_library.h"

namespace vexa {

namespace {

namespace xml = xercesc;

constexpr std::size_t kLongestText = std::size_t{16} << 20;
/// Characters of a text that a message repeats.
constexpr std::size_t kLongestQuotation = 60;

std::string withPlace(XMLFileLoc line, XMLFileLoc column, const std::string& text) {
    return composed("Line ^1, column ^2: ^3"_text, {std::to_string(line), std::to_string(column), text});
}

/// The place of the byte behind `before`, as the parser counts: characters, from 1.
std::string withPlaceBehind(std::string_view before, const std::string& text) {
    XMLFileLoc line = 1;
    XMLFileLoc column = 1;
    for (const char byte : before) {
        if (byte == '\n') {
            ++line;
            column = 1;
        } else if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U) {
            ++column;
        }
    }
    return withPlace(line, column, text);
}

bool isBlank(char16_t unit) { return unit == ' ' || unit == '\t' || unit == '\n' || unit == '\r'; }

/// A whole number in decimal digits, blanks around it.
template <class Number>
std::optional<Number> wholeNumber(std::string_view text) {
    while (!text.empty() && isBlank(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && isBlank(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// Refuses every document type declaration where it begins; a lexical handler hears of none that is only a
/// name.
class FormParser final : public xml::SAX2XMLReaderImpl {
  public:
    explicit FormParser(XmlFormCollector& collector) : collector_(&collector) {
        setContentHandler(&collector);
        setLexicalHandler(&collector);
        setErrorHandler(&collector);
        setFeature(xml::XMLUni::fgSAX2CoreValidation, false);
        setFeature(xml::XMLUni::fgXercesSchema, false);
        // No name of the forms has a colon; without namespaces one that has is refused as any other.
        setFeature(xml::XMLUni::fgSAX2CoreNameSpaces, false);
        setFeature(xml::XMLUni::fgXercesLoadExternalDTD, false);
        setFeature(xml::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    }

    void doctypeDecl(const xml::DTDElementDecl& /*element*/, const XMLCh* /*publicId*/,
                     const XMLCh* /*systemId*/, bool /*internal*/, bool /*external*/) override {
        collector_->refuse("There is a document type declaration"_text);
    }

  private:
    XmlFormCollector* collector_;
};

void parse(std::string_view text, XmlFormCollector& collector) {
    FormParser parser(collector);
    const auto* const first = reinterpret_cast<const XMLByte*>(text.data());
    xml::MemBufInputSource source(first, text.size(), "answer");
    source.setEncoding(xml::XMLUni::fgUTF8EncodingString);
    parser.parse(source);
}

}  // namespace

std::string utf8Of(const XMLCh* text) {
    static_assert(sizeof(XMLCh) == sizeof(char16_t));
    return text == nullptr ? std::string() : VEXAMBU16ToU8(reinterpret_cast<const char16_t*>(text));
}

std::string quoted(std::string_view text) {
    std::size_t end = 0;
    for (std::size_t count = 0; count < kLongestQuotation && end < text.size(); ++count) {
        ++end;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) ++end;
    }
    return '"' + std::string(text.substr(0, end)) + (end < text.size() ? "..." : "") + '"';
}

void XmlFormCollector::refuse(SystemText text, const std::vector<std::string>& arguments) {
    const std::string reason = composed(text, arguments);
    refusal_ = locator_ == nullptr
                   ? reason
                   : withPlace(locator_->getLineNumber(), locator_->getColumnNumber(), reason);
    throw xml::SAXException();
}

void XmlFormCollector::startElement(const XMLCh* /*uri*/, const XMLCh* /*localName*/,
                                    const XMLCh* qualifiedName, const xml::Attributes& attributes) {
    std::vector<XmlAttribute> given;
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
        given.push_back({utf8Of(attributes.getQName(i)), utf8Of(attributes.getValue(i))});
    }
    begin(depth_, utf8Of(qualifiedName), given);
    ++depth_;
}

void XmlFormCollector::endElement(const XMLCh* /*uri*/, const XMLCh* /*localName*/,
                                  const XMLCh* /*qualifiedName*/) {
    end(--depth_);
}

void XmlFormCollector::characters(const XMLCh* text, XMLSize_t length) {
    for (XMLSize_t i = 0; i < length; ++i) {
        if (!isBlank(text[i])) refuse("There is text between the elements"_text);
    }
}

void XmlFormCollector::fatalError(const xml::SAXParseException& error) {
    refusal_ = withPlace(error.getLineNumber(), error.getColumnNumber(), utf8Of(error.getMessage()));
    throw xml::SAXException();
}

bool XmlFormCollector::truthOf(const XmlAttribute& attribute) {
    if (attribute.value != "true" && attribute.value != "false") {
        refuse("The attribute ^1 is neither true nor false but ^2"_text,
               {quoted(attribute.name), quoted(attribute.value)});
    }
    return attribute.value == "true";
}

void XmlFormCollector::refuseWhole(const XmlAttribute& attribute) {
    refuse("The attribute ^1 is not a whole number but ^2"_text,
           {quoted(attribute.name), quoted(attribute.value)});
}

int XmlFormCollector::numberOf(const XmlAttribute& attribute) {
    const auto number = wholeNumber<int>(attribute.value);
    if (!number) refuseWhole(attribute);
    return *number;
}

std::int64_t XmlFormCollector::countOf(const XmlAttribute& attribute) {
    const auto count = wholeNumber<std::int64_t>(attribute.value);
    if (!count) refuseWhole(attribute);
    refuseBelow0(attribute, *count);
    return *count;
}

void XmlFormCollector::refuseBelow0(const XmlAttribute& attribute, std::int64_t number) {
    if (number < 0) refuse("The attribute ^1 is below 0"_text, {quoted(attribute.name)});
}

std::string readXmlForm(std::string_view text, XmlFormCollector& collector, const XmlFormTexts& texts) {
    if (!xmlLibraryWorks()) return translated("The XML parser could not be started"_text);
    if (text.size() > kLongestText) return translated(texts.tooLong);
    // The parser takes a zero behind the document for its end, whatever follows.
    const std::size_t zero = text.find('\0');
    if (zero != std::string_view::npos)
        return withPlaceBehind(text.substr(0, zero), translated("There is a zero byte"_text));
    try {
        parse(text, collector);
        return {};
    } catch (...) {
        // The XML library throws objects of several unrelated classes; each means that this cannot be read.
        return collector.refusal().empty() ? translated(texts.noXml) : collector.refusal();
    }
}

}  // namespace vexa
