#include "backend/strings/xliff_reader.h"

#include <cassert>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "backend/text/character_set.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace {

namespace xml = xercesc;

constexpr std::size_t kDeepestNesting = 64;
constexpr std::u16string_view kNamespace = u"urn:oasis:names:tc:xliff:document:1.2";

/// The parser's 16-bit text, as it hands it over: zero-terminated.
std::string utf8Of(const XMLCh* text) {
    static_assert(sizeof(XMLCh) == sizeof(char16_t));
    std::u16string units;
    if (text != nullptr) {
        units.assign(text, text + xml::XMLString::stringLen(text));
    }
    return VEXAMBU16ToU8(units.c_str());
}

/// True for the very text `wanted`. Names are compared as they come: making UTF-8 of them would take a third
/// of the time of reading.
bool equals(const XMLCh* text, std::u16string_view wanted) {
    for (const char16_t each : wanted) {
        if (static_cast<char16_t>(*text++) != each) {
            return false;
        }
    }
    return *text == 0;
}

/// What an element is to the reader.
enum class Part {
    container,  ///< may hold units: xliff, file, body, group
    unit,
    source,
    target,
    note,
    inlineText,  ///< anything within source, target or note
    ignored      ///< anything else, with all that it holds
};

bool isText(Part part) {
    return part == Part::source || part == Part::target || part == Part::note || part == Part::inlineText;
}

Part partWithin(Part parent, const XMLCh* name) {
    if (isText(parent)) {
        return Part::inlineText;
    }
    if (parent == Part::container &&
        (equals(name, u"file") || equals(name, u"body") || equals(name, u"group"))) {
        return Part::container;
    }
    if (parent == Part::container && equals(name, u"trans-unit")) {
        return Part::unit;
    }
    if (parent != Part::unit) {
        return Part::ignored;
    }
    if (equals(name, u"source")) {
        return Part::source;
    }
    if (equals(name, u"target")) {
        return Part::target;
    }
    return equals(name, u"note") ? Part::note : Part::ignored;
}

/// Collects units. What it cannot accept it throws as a `SAXException`, after saying why in `refusal`.
class UnitCollector final : public xml::DefaultHandler {
  public:
    explicit UnitCollector(std::vector<keyValueGloss>& entries) : entries_(&entries) {}

    /// Not translated: it may be a table of texts that is being read.
    [[nodiscard]] const FileResult& refusal() const { return refusal_; }

    void startElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName,
                      const xml::Attributes& attributes) override;
    void endElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName) override;
    void characters(const XMLCh* text, XMLSize_t length) override;
    void startDTD(const XMLCh* name, const XMLCh* publicId, const XMLCh* systemId) override;
    void fatalError(const xml::SAXParseException& error) override;

  private:
    [[nodiscard]] Part partOf(const XMLCh* uri, const XMLCh* localName);
    void beginUnit(const xml::Attributes& attributes);
    void endUnit();
    void endText(Part part);
    [[noreturn]] void refuse(SystemText reason, std::vector<std::string> arguments = {});

    std::vector<keyValueGloss>* entries_;
    std::vector<Part> open_;
    keyValueGloss unit_;
    std::optional<std::string> target_;
    std::u16string text_;  // of the source, target or note that is open
    FileResult refusal_;
};

void UnitCollector::refuse(SystemText reason, std::vector<std::string> arguments) {
    refusal_ = {false, std::string(reason), std::move(arguments)};
    throw xml::SAXException();
}

Part UnitCollector::partOf(const XMLCh* uri, const XMLCh* localName) {
    const bool own = uri == nullptr || *uri == 0 || equals(uri, kNamespace);
    const XMLCh* const name = own ? localName : xml::XMLUni::fgZeroLenString;
    if (!open_.empty()) {
        return partWithin(open_.back(), name);
    }
    if (!equals(name, u"xliff")) {
        refuse("It is not an XLIFF file"_text);
    }
    return Part::container;
}

void UnitCollector::startElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* /*qualifiedName*/,
                                 const xml::Attributes& attributes) {
    if (open_.size() == kDeepestNesting) {
        refuse("Its elements are nested too deeply"_text);
    }
    const Part part = partOf(uri, localName);
    if (part == Part::unit) {
        beginUnit(attributes);
    }
    if (part != Part::inlineText) {
        text_.clear();
    }
    open_.push_back(part);
}

void UnitCollector::beginUnit(const xml::Attributes& attributes) {
    static constexpr XMLCh kId[] = {'i', 'd', 0};
    unit_ = {utf8Of(attributes.getValue(kId)), "", ""};
    target_.reset();
}

void UnitCollector::characters(const XMLCh* text, XMLSize_t length) {
    if (open_.empty() || !isText(open_.back())) {
        return;
    }
    text_.append(text, text + length);
}

void UnitCollector::endText(Part part) {
    const std::string text = VEXAMBU16ToU8(text_.c_str());
    if (part == Part::source) {
        unit_.value = text;
    }
    if (part == Part::target) {
        target_ = text;
    }
    if (part != Part::note) {
        return;
    }
    if (!unit_.gloss.empty()) {
        unit_.gloss.push_back('\n');
    }
    unit_.gloss += text;
}

void UnitCollector::endUnit() {
    if (unit_.key.empty()) {
        return;
    }
    if (target_) {
        unit_.value = std::move(*target_);
    }
    entries_->push_back(std::move(unit_));
}

void UnitCollector::endElement(const XMLCh* /*uri*/, const XMLCh* /*localName*/,
                               const XMLCh* /*qualifiedName*/) {
    assert(!open_.empty());
    const Part part = open_.back();
    open_.pop_back();
    if (part == Part::unit) {
        endUnit();
    }
    if (part == Part::source || part == Part::target || part == Part::note) {
        endText(part);
    }
}

void UnitCollector::startDTD(const XMLCh* /*name*/, const XMLCh* /*publicId*/, const XMLCh* /*systemId*/) {
    refuse("It contains a document type declaration"_text);
}

void UnitCollector::fatalError(const xml::SAXParseException& error) {
    refuse("Line ^1: ^2"_text, {std::to_string(error.getLineNumber()), utf8Of(error.getMessage())});
}

/// False when the parser library cannot work in this process.
bool initialiseParser() {
    try {
        xml::XMLPlatformUtils::Initialize();
    } catch (...) {
        return false;
    }
    return true;
}

void parse(std::string_view bytes, UnitCollector& collector) {
    const std::unique_ptr<xml::SAX2XMLReader> reader(xml::XMLReaderFactory::createXMLReader());
    reader->setFeature(xml::XMLUni::fgSAX2CoreValidation, false);
    reader->setFeature(xml::XMLUni::fgXercesSchema, false);
    // A declaration of a document type is refused where it begins; these hold for what it might get read.
    reader->setFeature(xml::XMLUni::fgXercesLoadExternalDTD, false);
    reader->setFeature(xml::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    reader->setContentHandler(&collector);
    reader->setLexicalHandler(&collector);
    reader->setErrorHandler(&collector);
    const auto* const first = reinterpret_cast<const XMLByte*>(bytes.data());
    reader->parse(xml::MemBufInputSource(first, bytes.size(), "string table"));
}

}  // namespace

FileResult readXliff(std::string_view bytes, std::vector<keyValueGloss>& entries) {
    static const bool usable = initialiseParser();
    entries.clear();
    if (!usable) {
        return {false, std::string("The XML parser could not be started"_text)};
    }
    UnitCollector collector(entries);
    try {
        parse(bytes, collector);
        return {};
    } catch (...) {
        // The parser library throws objects of several unrelated classes; each means that this file is
        // broken.
        entries.clear();
    }
    return collector.refusal() ? FileResult{false, std::string("It cannot be read as XML"_text)}
                               : collector.refusal();
}

}  // namespace vexa
