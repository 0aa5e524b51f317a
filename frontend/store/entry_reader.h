// Reads the entries of a document file on all cores.
#pragma once

#include <vector>

#include "frontend/package/package_result.h"
#include "frontend/package/zip_reader.h"
#include "frontend/store/entry_context.h"
#include "frontend/store/manifest.h"

namespace vexa::frontend {

/// Fills the contents of `items` from their entries. The result is the failure of the first entry, in their
/// order, that could not be read.
PackageResult readEntries(const ZipReader& archive, const std::vector<SharedLook>& looks,
                          MemoryBudget& budget, std::vector<ManifestItem>& items);

/// One content from the text of its entry and, of a picture, its bytes.
PackageResult readContent(ItemType type, std::string xml, ReadingContext& context, ItemContent& content);

/// Unpacks an entry, which must be there.
PackageResult readEntry(const ZipReader& archive, const std::string& name, std::string& content);

}  // namespace vexa::frontend
