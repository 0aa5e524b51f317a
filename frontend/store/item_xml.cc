#include "frontend/store/item_xml.h"

#include <array>
#include <cassert>
#include <cstring>
#include <memory>
#include <utility>

#include "frontend/package/xml_reader.h"
#include "frontend/package/xml_writer.h"
#include "frontend/store/limits.h"

namespace vexa::frontend {
namespace {

constexpr std::array kindWords{"heading", "message", "notes", "table", "flatTable", "text"};

void write(const HeadingContent& /*heading*/, XmlWriter& /*xml*/) { assert(false); }

void write(const MessageContent& message, XmlWriter& xml) {
    xml.begin("message").attribute("level", message.level).text(message.text).end();
}

void write(const NotesContent& notes, XmlWriter& xml) {
    xml.begin("notes");
    for (const NoteLine& line : notes.lines) {
        xml.begin("line").attribute("level", line.level).optional("label", line.label).text(line.value).end();
    }
    xml.end();
}

void write(const TableContent& table, XmlWriter& xml) { writeTable(*table.table, xml); }
void write(const FlatTableContent& table, XmlWriter& xml) { writeFlatTable(*table.table, xml); }
void write(const TextContent& text, XmlWriter& xml) { xml.begin("text").text(text.text).end(); }

bool readMessage(const XmlReader& xml, ItemContent& content) {
    auto& message = content.emplace<MessageContent>();
    return readInteger(xml.root(), "level", message.level) && readContent(xml.root(), message.text);
}

bool readNotes(const XmlReader& xml, ItemContent& content) {
    auto& notes = content.emplace<NotesContent>();
    for (const pugi::xml_node node : xml.root().children()) {
        NoteLine& line = notes.lines.emplace_back();
        if (std::strcmp(node.name(), "line") != 0 || !readInteger(node, "level", line.level) ||
            !readText(node, "label", line.label) || !readContent(node, line.value)) {
            return false;
        }
    }
    return true;
}

bool readText(const XmlReader& xml, ItemContent& content) {
    return readContent(xml.root(), content.emplace<TextContent>().text);
}

bool readTableContent(const XmlReader& xml, ItemContent& content) {
    auto table = std::make_shared<PivotTable>();
    const bool ok = readTable(xml, *table);
    content = TableContent{std::move(table)};
    return ok;
}

bool readFlatTableContent(const XmlReader& xml, ItemContent& content) {
    auto table = std::make_shared<FlatTable>();
    const bool ok = readFlatTable(xml, *table);
    content = FlatTableContent{std::move(table)};
    return ok;
}

bool readContentOf(ItemKind kind, const XmlReader& xml, ItemContent& content) {
    switch (kind) {
        case ItemKind::message:
            return readMessage(xml, content);
        case ItemKind::notes:
            return readNotes(xml, content);
        case ItemKind::table:
            return readTableContent(xml, content);
        case ItemKind::flatTable:
            return readFlatTableContent(xml, content);
        case ItemKind::text:
            return readText(xml, content);
        case ItemKind::heading:
            break;
    }
    return false;
}

}  // namespace

const char* kindWord(ItemKind kind) { return kindWords[static_cast<std::size_t>(kind)]; }

StoreResult writeItemXml(const ItemContent& content, std::string& xml) {
    XmlWriter writer(documentFileXml);
    std::visit([&writer](const auto& item) { write(item, writer); }, content);
    const bool fits = writer.tags() <= limits::entryTags && writer.quotes() <= limits::entryQuotes;
    xml = writer.take();
    if (!fits || xml.size() > limits::entryBytes) {
        return {StoreProblem::beyondLimits, "the size of one item"_text};
    }
    return {};
}

StoreResult readItemXml(ItemKind kind, std::string xml, ItemContent& content) {
    XmlReader reader;
    if (StoreResult result = fromPackage(reader.parse(std::move(xml), kindWord(kind), limits::xml));
        !result) {
        return result;
    }
    if (!readContentOf(kind, reader, content)) {
        return {StoreProblem::damaged, kindWord(kind)};
    }
    return {};
}

}  // namespace vexa::frontend
