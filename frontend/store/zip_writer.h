// Writes a zip archive. The same entries always give the same bytes: every entry carries the same time and
// the same rights.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/store/store_result.h"

namespace vexa::frontend {

/// What an archive is made of. Contents are asked for one after the other, each once, and only one is held at
/// a time.
struct ZipPlan {
    std::vector<std::string> names;
    std::function<StoreResult(std::size_t index, std::string& content)> content;
    bool compressed = true;
};

/// Takes the archive's bytes block by block.
using ByteSink = std::function<StoreResult(std::string_view bytes)>;

/// The first failure of a content or of the sink ends the writing and is the result.
StoreResult writeZip(const ZipPlan& plan, const ByteSink& sink);

}  // namespace vexa::frontend
