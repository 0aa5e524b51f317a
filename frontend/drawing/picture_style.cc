#include "frontend/drawing/picture_style.h"

#include <pugixml.hpp>

#include "frontend/package/xml_reader.h"

namespace vexa::frontend {

namespace {

std::string_view localName(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

void appendTemplateRules(std::string& rules, const std::string& text) {
    XmlReader reader;
    if (!reader.parse(text, {}, XmlLimits{}, foreignXml)) return;
    for (const pugi::xml_node child : reader.root().children()) {
        if (localName(child.name()) != "style") continue;
        for (const pugi::xml_node piece : child.children()) rules += piece.value();
        rules += '\n';
    }
}

/// A section cannot hold its own end; CSS reads the blank in between as it reads nothing at all there.
std::string forSection(std::string_view rules) {
    std::string text(rules);
    for (std::size_t at = text.find("]]>"); at != std::string::npos; at = text.find("]]>", at)) {
        text.insert(at + 2, " ");
    }
    return text;
}

struct StringWriter : pugi::xml_writer {
    std::string text;
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
};

}  // namespace

std::string appliedRules(const ShownPicture& picture, std::string_view styleSheet) {
    std::string rules;
    for (const std::string& each : picture.templates) appendTemplateRules(rules, each);
    return rules.append(styleSheet);
}

std::string applyRules(std::string_view svg, std::string_view rules) {
    if (rules.find_first_not_of(" \t\r\n") == std::string_view::npos) return std::string(svg);
    // Neither reading nor writing touches escapes, so that entities of the picture's own stay what they are.
    constexpr unsigned int asItIs =
        pugi::parse_declaration | pugi::parse_doctype | pugi::parse_cdata | pugi::parse_ws_pcdata;
    pugi::xml_document document;
    if (!document.load_buffer(svg.data(), svg.size(), asItIs, pugi::encoding_utf8)) return std::string(svg);
    pugi::xml_node style = document.document_element().append_child("style");
    style.append_attribute("xmlns").set_value("http://www.w3.org/2000/svg");
    style.append_child(pugi::node_cdata).set_value(forSection(rules).c_str());
    StringWriter writer;
    document.save(writer, "", pugi::format_raw | pugi::format_no_escapes | pugi::format_no_declaration,
                  pugi::encoding_utf8);
    return writer.text;
}

}  // namespace vexa::frontend
