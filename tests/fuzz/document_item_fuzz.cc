// Any text as an entry of a document file, past the archive around it. The first byte says which kind of item
// it is to be, or a manifest.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "frontend/store/item_xml.h"
#include "frontend/store/manifest.h"

using namespace vexa::frontend;

namespace {

constexpr unsigned manifestChoice = 0;
constexpr unsigned choices = 6;

void checkManifest(const std::string& xml) {
    ReadManifest read;
    if (!readManifest(xml, read) || read.isProtected) {
        return;
    }
    const std::string written = writeManifest(read.manifest);
    ReadManifest again;
    if (!readManifest(written, again) || writeManifest(again.manifest) != written) {
        std::abort();
    }
}

void checkItem(ItemKind kind, const std::string& xml) {
    ItemContent content;
    if (!readItemXml(kind, xml, content)) {
        return;
    }
    if (const auto* table = std::get_if<TableContent>(&content)) {
        static_cast<void>(flatten(*table->table));
    }
    std::string written;
    std::string twice;
    ItemContent again;
    if (!writeItemXml(content, written) || !readItemXml(kind, written, again) ||
        !writeItemXml(again, twice) || twice != written) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    // Printable digits in the corpus: '0' is the manifest, '1' to '5' are the kinds after the heading.
    const unsigned choice = data[0] % choices;
    const std::string xml(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (choice == manifestChoice) {
        checkManifest(xml);
    } else {
        checkItem(static_cast<ItemKind>(choice), xml);
    }
    return 0;
}
