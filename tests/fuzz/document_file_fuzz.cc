// Any bytes as a document file: opened whole or refused, and what was opened can be saved and opened again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "frontend/store/document_file.h"

using namespace vexa::frontend;

namespace {

std::string save(const ViewerDocument& document) {
    std::string bytes;
    const StoreResult result = writeDocument(document, {}, gatherInto(bytes));
    return result ? bytes : std::string();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::unique_ptr<ViewerDocument> document;
    if (!readDocument(bytes, "", document)) {
        return document == nullptr ? 0 : (std::abort(), 0);
    }
    const std::string again = save(*document);
    // Bytes are compared, not items: a number that is none is not equal to itself.
    std::unique_ptr<ViewerDocument> reopened;
    if (again.empty() || !readDocument(again, "", reopened) || save(*reopened) != again) {
        std::abort();
    }
    return 0;
}
