#include <array>
#include <string_view>
#include <utility>

#include "frontend/package/xml_reader.h"
#include "frontend/store/item_kinds.h"
#include "frontend/store/limits.h"
#include "frontend/store/manifest.h"
#include "frontend/store/objection.h"

namespace vexa::frontend {
namespace {

class ItemsReader {
  public:
    ItemsReader(Manifest& manifest, ReadingContext& context) : manifest_(manifest), context_(context) {}

    bool readUnder(const pugi::xml_node& parent, std::size_t depth) {
        for (const pugi::xml_node node : parent.children()) {
            if (depth == 0 && isNamed(node, "look") && manifest_.items.empty()) {
                if (!readLook(node)) return false;
                continue;
            }
            if (depth >= limits::outlineDepth || !isNamed(node, "item")) {
                object(node.name(), "", "", "<item>");
                return false;
            }
            manifest_.items.emplace_back();
            manifest_.items.back().depth = depth;
            if (!readItem(node, manifest_.items.back())) return false;
            const bool holds = holdsItems(manifest_.items.back().item.type());
            if ((!holds && node.first_child()) || !readUnder(node, depth + 1)) return false;
        }
        return true;
    }

  private:
    bool readLook(const pugi::xml_node& node) {
        ManifestLook& look = manifest_.looks.emplace_back();
        ElementReader element(node);
        element.text("entry", look.entry).flag("source", look.isSource);
        // Entries are numbered in their order, so none is named twice.
        const std::string entry = lookEntry(manifest_.looks.size() - 1);
        element.require(look.entry == entry, "entry", entry);
        return element.isRead() && !node.first_child();
    }

    bool readItem(const pugi::xml_node& node, ManifestItem& described) {
        Item& item = described.item;
        bool hidden = false;
        ElementReader element(node);
        element.text("entry", described.entry).text("picture", described.picture);
        element.text("label", item.label).text("command", item.command).text("subtype", item.subtype);
        element.flag("hidden", hidden).flag("pageBreakBefore", item.pageBreakBefore);
        element.number("width", item.width).number("height", item.height);
        item.visible = !hidden;
        return readContent(node, element, described) && element.isRead() && checkEntries(described);
    }

    bool readContent(const pugi::xml_node& node, ElementReader& element, ManifestItem& described) {
        const char* const word = node.attribute("type").value();
        // What needs a later version is kept as it is, also where its type has a meaning here.
        const ItemType type = node.attribute("needs") ? ItemType::unknown : itemTypeOf(word);
        const ItemKind& kind = kindOf(type);
        element.require(*word != '\0', "type", "the type of an item"_text);
        if (type != ItemType::unknown) {
            std::string same;
            element.text("type", same);
        }
        described.item.content = emptyContent(type);
        return kind.storage == ItemStorage::entry || kind.storage == ItemStorage::picture ||
               kind.read(node, element, described.item.content, context_);
    }

    bool checkEntries(const ManifestItem& described) {
        const std::size_t index = entries_;
        const bool fits = hasItsEntries(described);
        if (!fits) object("item", "entry", described.entry, itemEntry(index, ".xml"));
        return fits;
    }

    bool hasItsEntries(const ManifestItem& described) {
        const ItemKind& kind = kindOf(described.item.type());
        if (kind.storage == ItemStorage::manifest)
            return described.entry.empty() && described.picture.empty();
        const std::size_t index = entries_++;
        const bool isXml = described.entry == itemEntry(index, ".xml");
        if (kind.storage != ItemStorage::picture && !described.picture.empty()) return false;
        if (kind.storage == ItemStorage::raw) return isXml || described.entry == itemEntry(index, ".bin");
        return isXml &&
               (kind.storage == ItemStorage::entry || described.picture == itemEntry(index, ".svg") ||
                described.picture == itemEntry(index, ".png"));
    }

    Manifest& manifest_;
    ReadingContext& context_;
    std::size_t entries_ = 0;
};

bool readPlain(const pugi::xml_node& root, ElementReader& element, Manifest& manifest) {
    constexpr std::array<std::string_view, 2> types{"VXV", "VXW"};
    manifest.dataModel = false;
    element.word("type", types, manifest.type).require(static_cast<bool>(root.attribute("type")));
    element.flag("locked", manifest.locked).flag("dataModel", manifest.dataModel).text("name", manifest.name);
    MemoryBudget none({});
    const std::vector<SharedLook> noLooks;
    ReadingContext context{noLooks, none, nullptr};
    return element.isRead() && ItemsReader(manifest, context).readUnder(root, 0);
}

constexpr std::uint64_t leastKeyMemory = 8192;  // what Argon2id takes

std::string rangeOf(std::uint64_t least, std::uint64_t most) {
    return std::to_string(least) + " - " + std::to_string(most);
}

StoreResult readProtection(const pugi::xml_node& root, ElementReader& ofRoot, const ObjectionScope& scope,
                           Protection& protection) {
    const pugi::xml_node node = root.child("protection");
    ElementReader element(node);
    std::string scheme;
    std::string salt;
    element.text("scheme", scheme).text("salt", salt);
    element.whole("operations", protection.cost.operations).whole("memory", protection.cost.memory);
    element.require(scheme == protectionScheme, "scheme", protectionScheme);
    element.require(protection.cost.operations > 0, "operations", rangeOf(1, limits::keyOperations));
    element.require(protection.cost.memory >= leastKeyMemory, "memory",
                    rangeOf(leastKeyMemory, limits::keyMemory));
    element.require(fromBase64(salt, protection.salt), "salt", "16 bytes as base64url without padding"_text);
    if (!ofRoot.isRead() || !element.isRead() || root.first_child() != node || node.next_sibling() ||
        node.first_child()) {
        return fromPackage(scope.explain({PackageProblem::damaged, "the manifest's protection"_text}));
    }
    element.require(protection.cost.operations <= limits::keyOperations, "operations",
                    rangeOf(1, limits::keyOperations));
    element.require(protection.cost.memory <= limits::keyMemory, "memory",
                    rangeOf(leastKeyMemory, limits::keyMemory));
    if (element.isRead()) return {};
    return fromPackage(scope.explain({PackageProblem::tooLarge, "the cost of the password's key"_text}));
}

/// The name of the first element, empty when there is none; the text need not be XML that can be read.
std::string_view rootName(std::string_view xml) {
    std::size_t at = xml.find('<');
    while (at != std::string_view::npos && (xml.substr(at + 1, 1) == "?" || xml.substr(at + 1, 1) == "!")) {
        at = xml.find('<', at + 1);
    }
    if (at == std::string_view::npos) return {};
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
    manifest.xml = xml;
    XmlReader reader;
    if (PackageResult result = reader.parse(std::move(xml), root, limits::xml); !result) {
        const StoreResult why = fromPackage(result);
        return {why.problem, translated("the manifest"_text) + "; " + why.detail};
    }
    const ObjectionScope scope;
    ElementReader element(reader.root());
    // The format is looked at before anything else, because a newer one may differ in everything else.
    int format = 0;
    element.whole("format", format).flag("protected", manifest.isProtected);
    element.require(manifest.isProtected || !reader.root().attribute("protected"), "protected", "true");
    element.require(format >= 1, "format", std::to_string(currentFormat));
    if (format < 1) {
        return fromPackage(scope.explain({PackageProblem::damaged, "the manifest's format version"_text}));
    }
    if (format > currentFormat) return {StoreProblem::newerFormat, std::to_string(format)};
    manifest.format = format;
    if (manifest.isProtected) return readProtection(reader.root(), element, scope, manifest.protection);
    if (format == currentFormat && !readPlain(reader.root(), element, manifest.manifest)) {
        return fromPackage(scope.explain({PackageProblem::damaged, "the manifest"_text}));
    }
    return {};
}

}  // namespace vexa::frontend
