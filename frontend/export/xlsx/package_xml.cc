#include "frontend/export/xlsx/package_xml.h"

#include <charconv>
#include <sstream>
#include <utility>

#include "frontend/package/xml_writer.h"

namespace vexa::frontend {
namespace {

std::string_view withoutPrefix(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

class TextOfXml : public pugi::xml_writer {
  public:
    explicit TextOfXml(std::string& out) : out_(out) {}
    void write(const void* data, std::size_t size) override {
        out_.append(static_cast<const char*>(data), size);
    }

  private:
    std::string& out_;
};

void appendNode(std::string& out, const pugi::xml_node& node) {
    TextOfXml writer(out);
    node.print(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
}

}  // namespace

PackageResult PackageXml::parse(std::string xml, std::string_view root) {
    if (PackageResult result = reader_.parse(std::move(xml), "", XmlLimits{}, foreignXml); !result) {
        return result;
    }
    return localName(reader_.root()) == root
               ? PackageResult()
               : PackageResult{PackageProblem::damaged, "a different root element than expected"_text};
}

std::string PackageXml::named(std::string_view name) const {
    const std::string_view root = this->root().name();
    const std::size_t colon = root.find(':');
    std::string full(colon == std::string_view::npos ? "" : root.substr(0, colon + 1));
    return full.append(name);
}

std::string_view PackageXml::space() const {
    const std::string prefix = named("");
    const std::string name = prefix.empty() ? "xmlns" : "xmlns:" + prefix.substr(0, prefix.size() - 1);
    return root().attribute(name.c_str()).value();
}

std::string PackageXml::text() const {
    std::string text = XmlWriter(officeXml).take();
    appendNode(text, root());
    return text;
}

std::string_view localName(const pugi::xml_node& node) { return withoutPrefix(node.name()); }

pugi::xml_node childOf(const pugi::xml_node& node, std::string_view name) {
    for (const pugi::xml_node child : node.children()) {
        if (localName(child) == name) {
            return child;
        }
    }
    return {};
}

pugi::xml_node nextOf(const pugi::xml_node& node) {
    pugi::xml_node next = node.next_sibling();
    while (next && localName(next) != localName(node)) {
        next = next.next_sibling();
    }
    return next;
}

std::string_view attributeOf(const pugi::xml_node& node, std::string_view name) {
    for (const pugi::xml_attribute attribute : node.attributes()) {
        if (withoutPrefix(attribute.name()) == name) {
            return attribute.value();
        }
    }
    return {};
}

void setAttribute(pugi::xml_node node, const char* name, std::string_view value) {
    pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute) {
        attribute = node.append_attribute(name);
    }
    attribute.set_value(std::string(value).c_str());
}

std::string nodeText(const pugi::xml_node& node) {
    std::string text;
    if (node.type() == pugi::node_element) {
        text = "<" + std::string(localName(node));
        for (const pugi::xml_attribute attribute : node.attributes()) {
            text += std::string(" ") + attribute.name() + "=\"" + attribute.value() + "\"";
        }
        text += ">";
        for (const pugi::xml_node child : node.children()) {
            text += nodeText(child);
        }
        return text + "</>";
    }
    const std::string_view value = node.value();
    return value.find_first_not_of(" \t\r\n") == std::string_view::npos ? "" : std::string(value);
}

std::size_t numberOr(std::string_view text, std::size_t fallback) {
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return !text.empty() && read.ec == std::errc() && read.ptr == end ? number : fallback;
}

}  // namespace vexa::frontend
