#include "tests/unit/viewerxml/xml_judge.h"

#include <memory>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/common/Grammar.hpp>

#include "backend/text/character_set.h"

namespace vexa::testing {

namespace {

namespace xml = xercesc;

std::string utf8Of(const XMLCh* text) { return VEXAMBU16ToU8(reinterpret_cast<const char16_t*>(text)); }

class Judge final : public xml::DefaultHandler {
  public:
    explicit Judge(std::string_view attribute) : attribute_(attribute) {}

    std::string complaints;
    std::string found = "(none)";

    void startElement(const XMLCh* /*uri*/, const XMLCh* /*localName*/, const XMLCh* /*qualifiedName*/,
                      const xml::Attributes& attributes) override {
        for (XMLSize_t i = 0; i < attributes.getLength() && found == "(none)"; ++i) {
            if (utf8Of(attributes.getQName(i)) == attribute_) found = utf8Of(attributes.getValue(i));
        }
    }
    void error(const xml::SAXParseException& error) override { note(error); }
    void warning(const xml::SAXParseException& error) override { note(error); }
    void fatalError(const xml::SAXParseException& error) override { note(error); }

  private:
    void note(const xml::SAXParseException& error) { complaints += utf8Of(error.getMessage()) + "\n"; }

    std::string attribute_;
};

std::unique_ptr<xml::SAX2XMLReader> makeReader(const std::string& schema) {
    xml::XMLPlatformUtils::Initialize();  // it counts; the parser lives as long as the process
    std::unique_ptr<xml::SAX2XMLReader> reader(xml::XMLReaderFactory::createXMLReader());
    reader->setFeature(xml::XMLUni::fgSAX2CoreValidation, true);
    reader->setFeature(xml::XMLUni::fgXercesDynamic, false);
    reader->setFeature(xml::XMLUni::fgXercesSchema, true);
    reader->setFeature(xml::XMLUni::fgXercesUseCachedGrammarInParse, true);
    reader->setFeature(xml::XMLUni::fgXercesContinueAfterFatalError, false);
    const std::string path = VEXA_SOURCE_FOLDER "/schemas/" + schema;
    if (reader->loadGrammar(path.c_str(), xml::Grammar::SchemaGrammarType, true) == nullptr) return nullptr;
    return reader;
}

xml::SAX2XMLReader* readerFor(Schema schema) {
    static const auto specification = makeReader("export-specification.xsd");
    static const auto response = makeReader("export-response.xsd");
    return schema == Schema::exportSpecification ? specification.get() : response.get();
}

/// Has `judge` look at all of `text`.
void hear(Judge& judge, std::string_view text, Schema schema) {
    xml::SAX2XMLReader* const reader = readerFor(schema);
    if (reader == nullptr) {
        judge.complaints = "the schema cannot be read";
        return;
    }
    reader->setContentHandler(&judge);
    reader->setErrorHandler(&judge);
    const auto* const first = reinterpret_cast<const XMLByte*>(text.data());
    reader->parse(xml::MemBufInputSource(first, text.size(), "judged"));
}

}  // namespace

std::string complaintsAbout(std::string_view xml, Schema schema) {
    Judge judge("");
    hear(judge, xml, schema);
    return judge.complaints;
}

std::string attributeIn(std::string_view xml, std::string_view attribute) {
    Judge judge(attribute);
    hear(judge, xml, Schema::exportSpecification);
    return judge.found;
}

}  // namespace vexa::testing
