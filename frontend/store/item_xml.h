// The XML of one item's content. Headings have none: they stand in the manifest.
#pragma once

#include <string>

#include "frontend/document/viewer_item.h"
#include "frontend/store/store_result.h"

namespace vexa::frontend {

class XmlWriter;
class XmlReader;

/// Writes the XML of `content`, which is no heading's, or refuses what could not be read again.
StoreResult writeItemXml(const ItemContent& content, std::string& xml);

/// Reads the XML of an item of the kind `kind`, which is no heading. The text is taken over.
StoreResult readItemXml(ItemKind kind, std::string xml, ItemContent& content);

/// The word for a kind of item in files; the words are the names of the enumerators.
[[nodiscard]] const char* kindWord(ItemKind kind);

/// The tables' own part of the above.
void writeTable(const PivotTable& table, XmlWriter& xml);
void writeFlatTable(const FlatTable& table, XmlWriter& xml);
[[nodiscard]] bool readTable(const XmlReader& xml, PivotTable& table);
[[nodiscard]] bool readFlatTable(const XmlReader& xml, FlatTable& table);

}  // namespace vexa::frontend
