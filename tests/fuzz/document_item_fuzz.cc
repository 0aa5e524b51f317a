// Any text as an entry of a document file, past the archive around it. The first byte says what it is to be:
// '0' a manifest, a small letter from 'a' on the type of an item, a capital from 'A' on a kind of item of
// format 1.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "backend/tables/layout/table_grid.h"
#include "frontend/package/xml_reader.h"
#include "frontend/store/entry_reader.h"
#include "frontend/store/format1/format1_reader.h"
#include "frontend/store/item_kinds.h"
#include "frontend/store/limits.h"
#include "frontend/store/manifest.h"

using namespace vexa::frontend;

namespace {

const std::vector<SharedLook> noLooks;

void checkManifest(const std::string& xml) {
    ReadManifest read;
    if (!readManifest(xml, read) || read.isProtected || read.format != currentFormat) return;
    const std::string written = writeManifest(read.manifest);
    ReadManifest again;
    if (!readManifest(written, again) || writeManifest(again.manifest) != written) std::abort();
}

std::string write(const ItemContent& content) {
    XmlWriter xml(documentFileXml);
    LookNumbers ofTable;
    if (const auto* const table = std::get_if<TableContent>(&content))
        ofTable.add(table->table.style->look());
    WritingContext context{ofTable};
    kindOf(static_cast<ItemType>(content.index())).write(content, xml, context);
    return xml.take();
}

bool read(ItemType type, const std::string& xml, ItemContent& content) {
    MemoryBudget budget(memoryFor(xml.size()));
    ReadingContext context{noLooks, budget, nullptr};
    if (pictureOf(emptyContent(type)) != nullptr) context.picture = std::make_shared<Picture>();
    BorrowedMemory memory(budget);
    return memory.borrow(memoryOfXml(xml)) && readContent(type, xml, context, content);
}

void checkContent(const ItemContent& content) {
    if (const auto* const table = std::get_if<TableContent>(&content)) {
        static_cast<void>(vexa::tables::flatten(table->table));
    }
    const auto type = static_cast<ItemType>(content.index());
    const std::string written = write(content);
    ItemContent again;
    if (!read(type, written, again) || write(again) != written) std::abort();
}

void checkItem(ItemType type, const std::string& xml) {
    const ItemStorage storage = kindOf(type).storage;
    ItemContent content = emptyContent(type);
    if (storage == ItemStorage::manifest || storage == ItemStorage::raw) return;
    if (read(type, xml, content)) checkContent(content);
}

void checkFormat1(std::string_view kind, const std::string& xml) {
    MemoryBudget budget(memoryFor(xml.size()));
    BorrowedMemory memory(budget);
    XmlReader reader;
    ItemContent content;
    if (memory.borrow(memoryOfXml(xml)) && reader.parse(xml, kind, limits::xml) &&
        format1::readContent(reader.root(), kind, budget, content)) {
        checkContent(content);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::array<std::string_view, 5> kinds{"message", "notes", "table", "flatTable", "text"};
    if (size == 0) return 0;
    const std::string xml(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] >= 'a') {
        checkItem(static_cast<ItemType>((data[0] - 'a') % itemTypeCount), xml);
    } else if (data[0] >= 'A') {
        checkFormat1(kinds[(data[0] - 'A') % kinds.size()], xml);
    } else {
        checkManifest(xml);
    }
    return 0;
}
