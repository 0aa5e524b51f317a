// Any bytes as a document file: opened whole or refused, and what was opened can be saved and opened again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "frontend/store/document_file.h"

using namespace vexa::frontend;

namespace {

/// Nothing when the document is too near to the limits to be saved.
std::optional<std::string> save(const ViewerDocument& document) {
    std::string bytes;
    const StoreResult result = writeDocument(document, {}, gatherInto(bytes));
    if (result.problem == StoreProblem::beyondLimits) return std::nullopt;
    return result ? bytes : (std::abort(), bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::unique_ptr<ViewerDocument> document;
    if (!readDocument(bytes, "", document)) {
        return document == nullptr ? 0 : (std::abort(), 0);
    }
    const std::optional<std::string> again = save(*document);
    if (!again) return 0;
    std::unique_ptr<ViewerDocument> reopened;
    if (!readDocument(*again, "", reopened) || !(reopened->outline() == document->outline()) ||
        save(*reopened) != again) {
        std::abort();
    }
    return 0;
}
