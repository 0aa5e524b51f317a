#include "backend/viewerxml/response_reader.h"

#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "backend/viewerxml/xml_library.h"

namespace vexa {

namespace {

namespace xml = xercesc;

constexpr std::size_t kLongestAnswer = std::size_t{16} << 20;
/// Characters of the answer that a message repeats.
constexpr std::size_t kLongestQuotation = 60;

/// The parser's 16-bit text, zero-terminated, as UTF-8.
std::string utf8Of(const XMLCh* text) {
    static_assert(sizeof(XMLCh) == sizeof(char16_t));
    return text == nullptr ? std::string() : VEXAMBU16ToU8(reinterpret_cast<const char16_t*>(text));
}

/// A text of the answer for a message: between quotes, its end left out when it is long.
std::string quoted(const std::string& text) {
    std::size_t end = 0;
    for (std::size_t count = 0; count < kLongestQuotation && end < text.size(); ++count) {
        ++end;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) ++end;
    }
    return '"' + text.substr(0, end) + (end < text.size() ? "..." : "") + '"';
}

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
std::optional<int> wholeNumber(std::string_view text) {
    while (!text.empty() && isBlank(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && isBlank(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// Collects what the answer says. What it cannot accept it throws as a `SAXException`, after saying why in
/// `refusal`.
class ResponseCollector final : public xml::DefaultHandler {
  public:
    explicit ResponseCollector(ExportResponse& response) : response_(&response) {}

    /// UTF-8.
    [[nodiscard]] const std::string& refusal() const { return refusal_; }

    void setDocumentLocator(const xml::Locator* locator) override { locator_ = locator; }
    void startElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName,
                      const xml::Attributes& attributes) override;
    void endElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName) override;
    void characters(const XMLCh* text, XMLSize_t length) override;
    void fatalError(const xml::SAXParseException& error) override;
    [[noreturn]] void refuse(SystemText text, const std::vector<std::string>& arguments = {});

  private:
    /// One attribute of the element that begins; `value` is UTF-8. False when the element has no such
    /// attribute.
    using Setter = bool (ResponseCollector::*)(std::string_view name, const std::string& value);

    /// An element of the answer, by its depth.
    struct Element {
        const char* name;
        Setter set;
        const char* required;  ///< an attribute, or null
    };
    static const std::array<Element, 3> kElements;

    bool setOfResponse(std::string_view name, const std::string& value);
    bool setOfWarnings(std::string_view name, const std::string& value);
    bool setOfWarning(std::string_view name, const std::string& value);
    void setAttributes(const Element& element, const xml::Attributes& attributes);
    bool truthOf(std::string_view name, const std::string& value);
    int numberOf(std::string_view name, const std::string& value);

    ExportResponse* response_;
    const xml::Locator* locator_ = nullptr;
    std::size_t depth_ = 0;
    std::vector<ExportResponse::Warning>* list_ = nullptr;  // that the open element `warnings` stands for
    std::string refusal_;
};

const std::array<ResponseCollector::Element, 3> ResponseCollector::kElements = {
    {{"exportResponse", &ResponseCollector::setOfResponse, "success"},
     {"warnings", &ResponseCollector::setOfWarnings, "code"},
     {"warning", &ResponseCollector::setOfWarning, nullptr}}};

void ResponseCollector::refuse(SystemText text, const std::vector<std::string>& arguments) {
    const std::string reason = composed(text, arguments);
    refusal_ = locator_ == nullptr
                   ? reason
                   : withPlace(locator_->getLineNumber(), locator_->getColumnNumber(), reason);
    throw xml::SAXException();
}

void ResponseCollector::startElement(const XMLCh* /*uri*/, const XMLCh* /*localName*/,
                                     const XMLCh* qualifiedName, const xml::Attributes& attributes) {
    const std::string name = utf8Of(qualifiedName);
    if (depth_ == 0 && name != kElements[0].name) {
        refuse("The answer is no exportResponse but ^1"_text, {quoted(name)});
    }
    if (depth_ == kElements.size() || name != kElements.at(depth_).name) {
        refuse("The element ^1 may not stand in ^2"_text, {quoted(name), kElements.at(depth_ - 1).name});
    }
    if (depth_ == 2) list_->emplace_back();
    setAttributes(kElements.at(depth_), attributes);
    ++depth_;
}

void ResponseCollector::setAttributes(const Element& element, const xml::Attributes& attributes) {
    bool complete = element.required == nullptr;
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
        const std::string name = utf8Of(attributes.getQName(i));
        if (!(this->*element.set)(name, utf8Of(attributes.getValue(i)))) {
            refuse("The element ^1 has no attribute ^2"_text, {element.name, quoted(name)});
        }
        complete = complete || name == element.required;
    }
    if (!complete) {
        refuse("The element ^1 lacks the attribute ^2"_text, {element.name, quoted(element.required)});
    }
}

bool ResponseCollector::setOfResponse(std::string_view name, const std::string& value) {
    if (name == "success") {
        response_->success = truthOf(name, value);
    } else if (name == "errorCode") {
        response_->errorCode = numberOf(name, value);
    } else if (name == "imageCount") {
        response_->imageCount = numberOf(name, value);
        response_->imageCountPresent = true;
        if (response_->imageCount < 0) refuse("The attribute ^1 is below 0"_text, {quoted("imageCount")});
    } else if (name == "name") {
        response_->name = fromUtf8(value);
    } else if (name == "documentFile") {
        response_->documentFile = fromUtf8(value);
    } else if (name == "imageRoot") {
        response_->imageRoot = fromUtf8(value);
    } else if (name == "imageFormat") {
        response_->imageFormat = fromUtf8(value);
    } else {
        return false;
    }
    return true;
}

bool ResponseCollector::setOfWarnings(std::string_view name, const std::string& value) {
    if (name != "code") return false;
    const int code = numberOf(name, value);
    if (code < 0 || static_cast<std::size_t>(code) >= ExportResponse::kWarningCodes) {
        refuse("There are no warnings with the code ^1"_text, {quoted(value)});
    }
    list_ = &response_->warnings.at(static_cast<std::size_t>(code));
    return true;
}

bool ResponseCollector::setOfWarning(std::string_view name, const std::string& value) {
    if (name != "first" && name != "second") return false;
    (name == "first" ? list_->back().first : list_->back().second) = fromUtf8(value);
    return true;
}

bool ResponseCollector::truthOf(std::string_view name, const std::string& value) {
    if (value != "true" && value != "false") {
        refuse("The attribute ^1 is neither true nor false but ^2"_text,
               {quoted(std::string(name)), quoted(value)});
    }
    return value == "true";
}

int ResponseCollector::numberOf(std::string_view name, const std::string& value) {
    const std::optional<int> number = wholeNumber(value);
    if (!number) {
        refuse("The attribute ^1 is no whole number but ^2"_text, {quoted(std::string(name)), quoted(value)});
    }
    return *number;
}

void ResponseCollector::endElement(const XMLCh* /*uri*/, const XMLCh* /*localName*/,
                                   const XMLCh* /*qualifiedName*/) {
    --depth_;
}

void ResponseCollector::characters(const XMLCh* text, XMLSize_t length) {
    for (XMLSize_t i = 0; i < length; ++i) {
        if (!isBlank(text[i])) refuse("There is text between the elements"_text);
    }
}

void ResponseCollector::fatalError(const xml::SAXParseException& error) {
    refusal_ = withPlace(error.getLineNumber(), error.getColumnNumber(), utf8Of(error.getMessage()));
    throw xml::SAXException();
}

/// Refuses every document type declaration where it begins; a lexical handler hears of none that is only a
/// name.
class AnswerParser final : public xml::SAX2XMLReaderImpl {
  public:
    explicit AnswerParser(ResponseCollector& collector) : collector_(&collector) {
        setContentHandler(&collector);
        setLexicalHandler(&collector);
        setErrorHandler(&collector);
        setFeature(xml::XMLUni::fgSAX2CoreValidation, false);
        setFeature(xml::XMLUni::fgXercesSchema, false);
        // No name of an answer has a colon; without namespaces one that has is refused as any other.
        setFeature(xml::XMLUni::fgSAX2CoreNameSpaces, false);
        setFeature(xml::XMLUni::fgXercesLoadExternalDTD, false);
        setFeature(xml::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    }

    void doctypeDecl(const xml::DTDElementDecl& /*element*/, const XMLCh* /*publicId*/,
                     const XMLCh* /*systemId*/, bool /*internal*/, bool /*external*/) override {
        collector_->refuse("There is a document type declaration"_text);
    }

  private:
    ResponseCollector* collector_;
};

void parse(std::string_view answer, ResponseCollector& collector) {
    AnswerParser parser(collector);
    const auto* const first = reinterpret_cast<const XMLByte*>(answer.data());
    xml::MemBufInputSource source(first, answer.size(), "answer");
    source.setEncoding(xml::XMLUni::fgUTF8EncodingString);
    parser.parse(source);
}

/// Why the answer is none, in UTF-8; empty when it was read.
std::string read(std::string_view answer, ExportResponse& response) {
    if (!xmlLibraryWorks()) return translated("The XML parser could not be started"_text);
    if (answer.size() > kLongestAnswer) return translated("The answer is longer than 16 MiB"_text);
    // The parser takes a zero behind the document for its end, whatever follows.
    const std::size_t zero = answer.find('\0');
    if (zero != std::string_view::npos)
        return withPlaceBehind(answer.substr(0, zero), translated("There is a zero byte"_text));
    ResponseCollector collector(response);
    try {
        parse(answer, collector);
        return {};
    } catch (...) {
        // The XML library throws objects of several unrelated classes; each means that this is no answer.
        response = {};
    }
    return collector.refusal().empty() ? translated("The answer cannot be read as XML"_text)
                                       : collector.refusal();
}

}  // namespace

std::string readExportResponse(std::string_view answer, ExportResponse& response) {
    return fromUtf8(read(answer, response));
}

}  // namespace vexa
