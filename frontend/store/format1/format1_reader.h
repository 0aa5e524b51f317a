// Opens documents of format 1, which earlier versions have written: docs/formats/document-file-1.md describes
// it.
//
// Headings become headers, messages of level 1 logs, all others warnings, flat tables grids. Tables become
// what the same command would make today.
#pragma once

#include <string>

#include "backend/tables/model/flat_table.h"
#include "backend/tables/model/table.h"
#include "frontend/document/viewer_document.h"
#include "frontend/package/zip_reader.h"
#include "frontend/store/element_reader.h"
#include "frontend/store/memory_budget.h"
#include "frontend/store/store_result.h"

namespace vexa::frontend::format1 {

/// Reads the document whose manifest is `manifestXml`, which says that it is of format 1.
StoreResult readDocument(const ZipReader& archive, std::string manifestXml, MemoryBudget& budget,
                         ViewerDocument& document);

/// The content of an entry whose root is of that kind.
[[nodiscard]] bool readContent(const pugi::xml_node& root, std::string_view kind, MemoryBudget& budget,
                               ItemContent& content);

[[nodiscard]] bool readTable(const pugi::xml_node& root, MemoryBudget& budget, tables::Table& table);
[[nodiscard]] bool readFlatTable(const pugi::xml_node& root, MemoryBudget& budget, tables::FlatTable& grid);

}  // namespace vexa::frontend::format1
