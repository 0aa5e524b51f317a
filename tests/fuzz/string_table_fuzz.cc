// Reads any bytes as a string table, twice.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "backend/strings/xliff_reader.h"
#include "backend/text/utf8.h"

namespace {

/// Stops the program when something that always holds does not.
void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

bool isUtf8(const std::string& text) { return vexa::validUtf8(text) == text; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::vector<vexa::keyValueGloss> entries = {{"from", "before", ""}};
    const vexa::FileResult result = vexa::readXliff(bytes, entries);
    require(result ? result.reason.empty() : !result.reason.empty() && entries.empty());
    for (const vexa::keyValueGloss& entry : entries) {
        require(!entry.key.empty());
        require(isUtf8(entry.key) && isUtf8(entry.value) && isUtf8(entry.gloss));
    }
    std::vector<vexa::keyValueGloss> again;
    require(vexa::readXliff(bytes, again).ok == result.ok && again == entries);
    return 0;
}
