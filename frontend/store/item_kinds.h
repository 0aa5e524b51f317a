// One row for every type of item: where it is kept in a document file, and who writes and reads it.
#pragma once

#include <array>
#include <cstdint>

#include "frontend/document/item.h"
#include "frontend/package/xml_writer.h"
#include "frontend/store/element_reader.h"
#include "frontend/store/entry_context.h"

namespace vexa::frontend {

enum class ItemStorage : std::uint8_t {
    manifest,  ///< nothing but attributes of the item's element in the manifest
    entry,     ///< an XML entry
    picture,   ///< an XML entry, and one with the picture's bytes
    raw        ///< attributes in the manifest, and an entry that is passed on as it is
};

struct ItemKind {
    ItemType type{};
    ItemStorage storage{};
    /// Writes attributes of the element of the manifest that is open, or the entry.
    void (*write)(const ItemContent& content, XmlWriter& xml, WritingContext& context) = nullptr;
    /// Reads the same. `element` is that of `node`; the caller looks whether everything of it was read.
    bool (*read)(const pugi::xml_node& node, ElementReader& element, ItemContent& content,
                 ReadingContext& context) = nullptr;
};

/// The row of a type. The table is checked when it is compiled: a type without a row, or with another's, is
/// none.
[[nodiscard]] const ItemKind& kindOf(ItemType type);

/// The content of a type with nothing in it; pointers are null, which no item of a document may have.
[[nodiscard]] ItemContent emptyContent(ItemType type);

/// The picture of a chart or tree, else null.
[[nodiscard]] const ShownPicture* pictureOf(const ItemContent& content);

}  // namespace vexa::frontend
