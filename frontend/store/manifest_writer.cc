#include <array>
#include <cstdio>

#include "frontend/package/xml_writer.h"
#include "frontend/store/item_xml.h"
#include "frontend/store/manifest.h"

namespace vexa::frontend {
namespace {

void writeItems(const std::vector<ManifestItem>& items, XmlWriter& xml) {
    for (const ManifestItem& item : items) {
        xml.begin("item").attribute("kind", kindWord(item.item.kind())).optional("entry", item.entry);
        xml.optional("label", item.item.label).flag("hidden", !item.item.visible);
        xml.optional("command", item.item.command).optional("subtype", item.item.subtype);
        writeItems(item.children, xml);
        xml.end();
    }
}

}  // namespace

std::string itemEntry(std::size_t index) {
    std::array<char, 32> name{};
    std::snprintf(name.data(), name.size(), "items/%06zu.xml", index + 1);
    return name.data();
}

std::string writeManifest(const Manifest& manifest) {
    XmlWriter xml(documentFileXml);
    xml.begin("vexaDocument").attribute("format", currentFormat);
    xml.attribute("type", manifest.type == DocumentFileType::document ? "VXV" : "VXW");
    xml.flag("locked", manifest.locked).flag("dataModel", manifest.dataModel).optional("name", manifest.name);
    writeItems(manifest.items, xml);
    xml.end();
    return xml.take();
}

std::string writeProtectedManifest(const Protection& protection) {
    XmlWriter xml(documentFileXml);
    xml.begin("vexaDocument").attribute("format", currentFormat).flag("protected", true);
    xml.begin("protection").attribute("scheme", protectionScheme);
    xml.attribute("operations", std::to_string(protection.cost.operations));
    xml.attribute("memory", std::to_string(protection.cost.memory));
    xml.attribute("salt", toBase64(protection.salt)).end();
    xml.end();
    return xml.take();
}

}  // namespace vexa::frontend
