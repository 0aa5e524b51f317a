// One item of a viewer document: what stands in the outline and what it shows. Every text is UTF-8.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "backend/pivot/pivot_table.h"
#include "frontend/document/flat_table.h"

namespace vexa::frontend {
// Set apart from the types of the same names in item.h until everything uses those.
inline namespace former {

struct ViewerItem;

/// Names an item as long as its document lives; 0 names none.
using ItemId = std::uint64_t;

/// The items of one procedure run, or of another heading.
struct HeadingContent {
    std::vector<ViewerItem> children;
};

/// A message of the log.
struct MessageContent {
    int level = 0;  ///< 1 a note, 2 a warning, 3 and above an error
    std::string text;

    bool operator==(const MessageContent&) const = default;
};

struct NoteLine {
    int level = 0;
    std::string label;
    std::string value;

    bool operator==(const NoteLine&) const = default;
};

/// The notes of one procedure run.
struct NotesContent {
    std::vector<NoteLine> lines;

    bool operator==(const NotesContent&) const = default;
};

/// A table with its data model. Never null; shared with whoever else keeps the finished table, so it is
/// replaced and never changed.
struct TableContent {
    std::shared_ptr<const PivotTable> table;
};

/// A table without its data model. Never null.
struct FlatTableContent {
    std::shared_ptr<const FlatTable> table;
};

/// Text that a command printed.
struct TextContent {
    std::string text;

    bool operator==(const TextContent&) const = default;
};

/// The enumerators stand in the order of the alternatives of `ItemContent`.
enum class ItemKind { heading, message, notes, table, flatTable, text };
using ItemContent =
    std::variant<HeadingContent, MessageContent, NotesContent, TableContent, FlatTableContent, TextContent>;

struct ViewerItem {
    ItemId id = 0;        ///< given by the document that takes the item
    std::string label;    ///< in the outline
    bool visible = true;  ///< a hidden heading hides what stands under it
    std::string command;  ///< the command that produced the item, "OUTPUT DISPLAY"; empty when there was none
    std::string subtype;  ///< of a table; empty otherwise
    ItemContent content;

    [[nodiscard]] ItemKind kind() const { return static_cast<ItemKind>(content.index()); }
};

/// The content of a kind with nothing in it; a table's pointer is null, which no item of a document may have.
[[nodiscard]] ItemContent emptyContent(ItemKind kind);

/// Whether two items look the same to a user: everything but the ids is compared, tables by value.
[[nodiscard]] bool operator==(const ViewerItem& left, const ViewerItem& right);
[[nodiscard]] bool operator==(const HeadingContent& left, const HeadingContent& right);
[[nodiscard]] bool operator==(const TableContent& left, const TableContent& right);
[[nodiscard]] bool operator==(const FlatTableContent& left, const FlatTableContent& right);

}  // namespace former
}  // namespace vexa::frontend
