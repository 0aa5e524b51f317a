// Documents made by chance, with every kind of item and every feature of tables, for tests that must hold for
// all.
#pragma once

#include <cstdint>
#include <memory>

#include "frontend/document/viewer_document.h"

namespace vexa::frontend {

/// The same document for the same seed, on every system.
std::unique_ptr<ViewerDocument> randomDocument(std::uint32_t seed);
/// One table alone.
tables::Table randomTable(std::uint32_t seed);

}  // namespace vexa::frontend
