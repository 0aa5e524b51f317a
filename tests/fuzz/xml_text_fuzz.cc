// Any text as XML. The first byte says what is taken. What is taken can be written again, and is then the
// same; what the check takes, the parser takes. Any text can be written as a value and comes back.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "frontend/package/xml_reader.h"
#include "frontend/package/xml_writer.h"

using namespace vexa::frontend;

namespace {

constexpr XmlLimits limits{20'000, 40'000, 100};

void require(bool ok) {
    if (!ok) {
        std::abort();
    }
}

void write(const pugi::xml_node& node, XmlWriter& xml) {
    if (node.type() != pugi::node_element) {
        xml.text(node.value());
        return;
    }
    xml.begin(node.name());
    for (const pugi::xml_attribute attribute : node.attributes()) {
        xml.attribute(attribute.name(), attribute.value());
    }
    xml.text(node.value());
    for (const pugi::xml_node child : node.children()) {
        write(child, xml);
    }
    xml.end();
}

std::string written(const XmlReader& reader) {
    XmlWriter xml(officeXml);
    write(reader.root(), xml);
    return xml.take();
}

void checkRoundTrip(const std::string& text, const XmlPolicy& policy) {
    XmlSize size;
    const PackageResult checked = checkXml(text, limits, policy, size);
    XmlReader reader;
    const PackageResult parsed = reader.parse(text, "", limits, policy);
    require(static_cast<bool>(checked) == static_cast<bool>(parsed));
    require(checked || checked.problem == PackageProblem::tooLarge || checked.arguments.size() == 2);
    if (!parsed) {
        return;
    }
    const std::string once = written(reader);
    XmlReader again;
    const XmlLimits more{limits.tags * 2, limits.quotes * 2, limits.depth};
    require(static_cast<bool>(again.parse(once, reader.root().name(), more, policy)));
    require(written(again) == once);
}

void checkValue(const std::string& text) {
    XmlWriter xml(documentFileXml);
    xml.begin("r").attribute("a", text).text(text).end();
    XmlReader reader;
    std::string value;
    std::string content;
    require(static_cast<bool>(reader.parse(xml.take(), "r")) && readText(reader.root(), "a", value) &&
            readContent(reader.root(), content) && value == text && content == text);
    XmlWriter office(officeXml);
    office.begin("r").attribute("a", text).text(text).end();
    require(static_cast<bool>(reader.parse(office.take(), "r", {}, foreignXml)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    // Printable in the corpus: '0' takes elements only, '?' everything.
    const unsigned taken = data[0];
    const XmlPolicy policy{(taken & 1U) != 0, (taken & 2U) != 0, (taken & 4U) != 0, (taken & 8U) != 0,
                           (taken & 8U) != 0};
    checkRoundTrip(text, policy);
    checkValue(text);
    return 0;
}
