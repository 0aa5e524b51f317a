#include "frontend/package/zip_entry.h"

namespace vexa::frontend {
namespace {

bool isSafePart(std::string_view part) { return !part.empty() && part != "." && part != ".."; }

}  // namespace

bool isSafeEntryName(std::string_view name, const ZipLimits& limits) {
    constexpr std::string_view forbidden("\\:\0", 3);
    if (name.size() > limits.nameBytes || name.find_first_of(forbidden) != std::string_view::npos) {
        return false;
    }
    if (limits.folders && !name.empty() && name.back() == '/') {
        name.remove_suffix(1);
    }
    for (std::size_t slash = name.find('/'); slash != std::string_view::npos; slash = name.find('/')) {
        if (!isSafePart(name.substr(0, slash))) {
            return false;
        }
        name.remove_prefix(slash + 1);
    }
    return isSafePart(name);
}

}  // namespace vexa::frontend
