#include "frontend/store/format1/format1_reader.h"

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "frontend/package/xml_reader.h"
#include "frontend/store/entry_reader.h"
#include "frontend/store/limits.h"

namespace vexa::frontend::format1 {
namespace {

StoreResult damaged(SystemText what) { return {StoreProblem::damaged, what}; }

bool readMessage(const pugi::xml_node& root, ItemContent& content) {
    WarningContent message{0, {}};
    ElementReader element(root);
    if (!element.whole("level", message.level).content(message.text).isRead()) return false;
    if (message.level >= 2) {
        content = std::move(message);
    } else {
        content = LogContent{std::move(message.text)};
    }
    return true;
}

bool readNotes(const pugi::xml_node& root, MemoryBudget& budget, ItemContent& content) {
    auto& notes = content.emplace<NotesContent>();
    for (const pugi::xml_node node : root.children()) {
        NoteLine& line = notes.lines.emplace_back();
        ElementReader element(node);
        element.whole("level", line.level).text("label", line.label).content(line.value);
        if (!isNamed(node, "line") || !element.isRead()) return false;
    }
    return ElementReader(root).isRead() && budget.keep(notes.lines.size() * sizeof(NoteLine));
}

bool readText(const pugi::xml_node& root, ItemContent& content) {
    return ElementReader(root).content(content.emplace<TextContent>().text).isRead();
}

class DocumentReader {
  public:
    DocumentReader(const ZipReader& archive, MemoryBudget& budget) : archive_(archive), budget_(budget) {}

    StoreResult read(const pugi::xml_node& root, ViewerDocument& document) {
        constexpr std::array<std::string_view, 2> types{"VXV", "VXW"};
        int format = 0;
        bool locked = false;
        bool dataModel = false;
        std::size_t type = types.size();
        std::string name;
        ElementReader element(root);
        element.whole("format", format).word("type", types, type).flag("locked", locked);
        element.flag("dataModel", dataModel).text("name", name).require(type < types.size());
        if (!element.isRead()) return damaged("the manifest"_text);
        if (StoreResult result = readItems(root, 0, 1); !result) return result;
        // The manifest is an entry too.
        if (entries_ + 1 != archive_.count()) return damaged("entries that the manifest does not name"_text);
        document.setName(std::move(name));
        document.edit(std::move(outline_));
        document.setLock({locked, {}});
        document.setModified(false);
        return {};
    }

  private:
    StoreResult readItems(const pugi::xml_node& parent, ItemId under, std::size_t depth) {
        for (const pugi::xml_node node : parent.children()) {
            if (depth > limits::outlineDepth || !isNamed(node, "item")) return damaged("the manifest"_text);
            if (StoreResult result = readItem(node, under, depth); !result) return result;
        }
        return {};
    }

    StoreResult readItem(const pugi::xml_node& node, ItemId under, std::size_t depth) {
        constexpr std::array<std::string_view, 6> kinds{"heading", "message",   "notes",
                                                        "table",   "flatTable", "text"};
        Item item;
        std::size_t kind = kinds.size();
        std::string entry;
        bool hidden = false;
        ElementReader element(node);
        element.word("kind", kinds, kind)
            .text("entry", entry)
            .text("label", item.label)
            .flag("hidden", hidden);
        element.text("command", item.command).text("subtype", item.subtype).require(kind < kinds.size());
        const bool isHeading = kind == 0;
        if (!element.isRead() || isHeading != entry.empty() || (!isHeading && node.first_child())) {
            return damaged("the manifest"_text);
        }
        item.visible = !hidden;
        if (!budget_.keep(memoryOfItem(0))) return {StoreProblem::tooLarge, "what it unpacks to"_text};
        if (isHeading) return readItems(node, outline_.add(std::move(item), under), depth + 1);
        if (StoreResult result = readEntryOf(entry, kinds[kind], item.content); !result) return result;
        outline_.add(std::move(item), under);
        return {};
    }

    StoreResult readEntryOf(const std::string& entry, std::string_view kind, ItemContent& content) {
        StoreResult bad(StoreProblem::damaged, composed("the entry ^1"_text, {entry}));
        StoreResult tooLarge(StoreProblem::tooLarge, "what it unpacks to"_text);
        // Entries are numbered in the order of the outline, so none is named twice.
        const std::size_t place = ++entries_;
        if (place >= archive_.count() || archive_.entry(place).name != entry ||
            entry != itemEntry(place - 1, ".xml")) {
            return bad;
        }
        std::string xml;
        if (!budget_.keep(memoryOfItem(archive_.entry(place).bytes))) return tooLarge;
        if (PackageResult result = readEntry(archive_, entry, xml); !result) return fromPackage(result);
        BorrowedMemory memory(budget_);
        if (!memory.borrow(memoryOfXml(xml))) return tooLarge;
        XmlReader reader;
        if (PackageResult result = reader.parse(std::move(xml), kind, limits::xml); !result) {
            if (result.problem == PackageProblem::damaged) result.entry = entry;
            return fromPackage(result);
        }
        if (readContent(reader.root(), kind, budget_, content)) return {};
        return budget_.wasExceeded() ? tooLarge : bad;
    }

    const ZipReader& archive_;
    MemoryBudget& budget_;
    Outline outline_;
    std::size_t entries_ = 0;
};

}  // namespace

bool readContent(const pugi::xml_node& root, std::string_view kind, MemoryBudget& budget,
                 ItemContent& content) {
    if (kind == "message") return readMessage(root, content);
    if (kind == "notes") return readNotes(root, budget, content);
    if (kind == "text") return readText(root, content);
    if (kind == "table") return readTable(root, budget, content.emplace<TableContent>().table);
    auto grid = std::make_shared<tables::FlatTable>();
    const bool ok = kind == "flatTable" && readFlatTable(root, budget, *grid);
    content = GridContent{std::move(grid)};
    return ok;
}

StoreResult readDocument(const ZipReader& archive, std::string manifestXml, MemoryBudget& budget,
                         ViewerDocument& document) {
    XmlReader reader;
    if (PackageResult result = reader.parse(std::move(manifestXml), "vexaDocument", limits::xml); !result) {
        const StoreResult why = fromPackage(result);
        return {why.problem, translated("the manifest"_text) + "; " + why.detail};
    }
    return DocumentReader(archive, budget).read(reader.root(), document);
}

}  // namespace vexa::frontend::format1
