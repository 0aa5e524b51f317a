#include <array>
#include <cstdio>

#include "frontend/package/xml_writer.h"
#include "frontend/store/item_kinds.h"
#include "frontend/store/manifest.h"
#include "frontend/store/style_xml.h"

namespace vexa::frontend {
namespace {

std::string numbered(const char* folder, std::size_t index, std::string_view extension) {
    std::array<char, 32> number{};
    std::snprintf(number.data(), number.size(), "%06zu", index + 1);
    return std::string(folder) + number.data() + std::string(extension);
}

void writeItem(const ManifestItem& described, XmlWriter& xml) {
    const Item& item = described.item;
    xml.begin("item").attribute("type", typeWord(item));
    xml.optional("entry", described.entry).optional("picture", described.picture);
    xml.optional("label", item.label).optional("command", item.command).optional("subtype", item.subtype);
    xml.flag("hidden", !item.visible).flag("pageBreakBefore", item.pageBreakBefore);
    writeNumber("width", item.width, xml);
    writeNumber("height", item.height, xml);
    const ItemKind& kind = kindOf(item.type());
    if (kind.storage == ItemStorage::manifest || kind.storage == ItemStorage::raw) {
        const LookNumbers none;
        WritingContext context{none};
        kind.write(item.content, xml, context);
    }
}

void writeItems(const std::vector<ManifestItem>& items, XmlWriter& xml) {
    std::size_t open = 0;
    for (const ManifestItem& item : items) {
        for (; open > item.depth; --open) xml.end();
        writeItem(item, xml);
        ++open;
    }
    for (; open > 0; --open) xml.end();
}

}  // namespace

std::string itemEntry(std::size_t index, std::string_view extension) {
    return numbered("items/", index, extension);
}

std::string lookEntry(std::size_t index) { return numbered("looks/", index, ".xml"); }

std::string_view pictureExtension(PictureForm form) { return form == PictureForm::svg ? ".svg" : ".png"; }

std::string_view rawExtension(std::string_view raw) { return raw.starts_with('<') ? ".xml" : ".bin"; }

std::string writeManifest(const Manifest& manifest) {
    XmlWriter xml(documentFileXml);
    xml.begin("vexaDocument").attribute("format", currentFormat);
    xml.attribute("type", manifest.type == DocumentFileType::document ? "VXV" : "VXW");
    xml.flag("locked", manifest.locked).flag("dataModel", manifest.dataModel).optional("name", manifest.name);
    for (const ManifestLook& look : manifest.looks) {
        xml.begin("look").attribute("entry", look.entry).flag("source", look.isSource).end();
    }
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
