#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include "frontend/package/xml_reader.h"
#include "frontend/store/item_xml.h"
#include "frontend/store/limits.h"
#include "frontend/store/manifest.h"

namespace vexa::frontend {
namespace {

bool readKind(const pugi::xml_node& node, ItemContent& content) {
    constexpr std::array kinds{ItemKind::heading, ItemKind::message,   ItemKind::notes,
                               ItemKind::table,   ItemKind::flatTable, ItemKind::text};
    const char* word = node.attribute("kind").value();
    const auto* const kind = std::find_if(kinds.begin(), kinds.end(), [word](ItemKind candidate) {
        return std::strcmp(kindWord(candidate), word) == 0;
    });
    if (kind == kinds.end()) {
        return false;
    }
    content = emptyContent(*kind);
    return true;
}

bool readItems(const pugi::xml_node& parent, int depth, std::vector<ManifestItem>& items) {
    for (const pugi::xml_node node : parent.children()) {
        ManifestItem& item = items.emplace_back();
        bool hidden = false;
        if (depth > limits::outlineDepth || std::strcmp(node.name(), "item") != 0 ||
            !readKind(node, item.item.content) || !readText(node, "entry", item.entry) ||
            !readText(node, "label", item.item.label) || !readText(node, "command", item.item.command) ||
            !readText(node, "subtype", item.item.subtype) || !readFlag(node, "hidden", hidden)) {
            return false;
        }
        item.item.visible = !hidden;
        const bool isHeading = item.item.kind() == ItemKind::heading;
        if (isHeading != item.entry.empty() || (!isHeading && node.first_child()) ||
            !readItems(node, depth + 1, item.children)) {
            return false;
        }
    }
    return true;
}

bool readType(const pugi::xml_node& node, DocumentFileType& type) {
    const char* word = node.attribute("type").value();
    type = std::strcmp(word, "VXW") == 0 ? DocumentFileType::reader : DocumentFileType::document;
    return type == DocumentFileType::reader || std::strcmp(word, "VXV") == 0;
}

bool readPlain(const pugi::xml_node& root, Manifest& manifest) {
    manifest.dataModel = false;
    return readType(root, manifest.type) && readFlag(root, "locked", manifest.locked) &&
           readFlag(root, "dataModel", manifest.dataModel) && readText(root, "name", manifest.name) &&
           readItems(root, 1, manifest.items);
}

StoreResult readProtection(const pugi::xml_node& root, Protection& protection) {
    const pugi::xml_node node = root.child("protection");
    if (std::strcmp(node.attribute("scheme").value(), protectionScheme) != 0 || node.next_sibling() ||
        !readInteger(node, "operations", protection.cost.operations) ||
        !readInteger(node, "memory", protection.cost.memory) ||
        !fromBase64(node.attribute("salt").value(), protection.salt)) {
        return {StoreProblem::damaged, "the manifest's protection"_text};
    }
    if (protection.cost.operations > limits::keyOperations || protection.cost.memory > limits::keyMemory) {
        return {StoreProblem::tooLarge, "the cost of the password's key"_text};
    }
    return {};
}

// The format is looked at before anything else, because a newer one may differ in everything else.
StoreResult readFormat(const pugi::xml_node& root) {
    int format = 0;
    if (!readInteger(root, "format", format) || format < 1) {
        return {StoreProblem::damaged, "the manifest's format version"_text};
    }
    if (format > currentFormat) {
        return {StoreProblem::newerFormat, std::to_string(format)};
    }
    return {};
}

/// The name of the first element, empty when there is none; the text need not be XML that can be read.
std::string_view rootName(std::string_view xml) {
    std::size_t at = xml.find('<');
    while (at != std::string_view::npos && (xml.substr(at + 1, 1) == "?" || xml.substr(at + 1, 1) == "!")) {
        at = xml.find('<', at + 1);
    }
    if (at == std::string_view::npos) {
        return {};
    }
    xml.remove_prefix(at + 1);
    return xml.substr(0, xml.find_first_of(" \t\r\n/>"));
}

}  // namespace

StoreResult readManifest(std::string xml, ReadManifest& manifest) {
    constexpr std::string_view root = "vexaDocument";
    // Other programs put a manifest.xml into their archives too.
    if (const std::string_view name = rootName(xml); !name.empty() && name != root) {
        return StoreProblem::notADocument;
    }
    XmlReader reader;
    if (StoreResult result = fromPackage(reader.parse(std::move(xml), root, limits::xml)); !result) {
        return {result.problem, "the manifest"_text};
    }
    if (StoreResult result = readFormat(reader.root()); !result) {
        return result;
    }
    if (!readFlag(reader.root(), "protected", manifest.isProtected)) {
        return {StoreProblem::damaged, "the manifest"_text};
    }
    if (manifest.isProtected) {
        return readProtection(reader.root(), manifest.protection);
    }
    if (!readPlain(reader.root(), manifest.manifest)) {
        return {StoreProblem::damaged, "the manifest"_text};
    }
    return {};
}

}  // namespace vexa::frontend
