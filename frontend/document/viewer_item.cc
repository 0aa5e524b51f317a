#include "frontend/document/viewer_item.h"

namespace vexa::frontend {
// Set apart from the types of the same names in item.h until everything uses those.
inline namespace former {

ItemContent emptyContent(ItemKind kind) {
    switch (kind) {
        case ItemKind::heading:
            return HeadingContent{};
        case ItemKind::message:
            return MessageContent{};
        case ItemKind::notes:
            return NotesContent{};
        case ItemKind::table:
            return TableContent{};
        case ItemKind::flatTable:
            return FlatTableContent{};
        case ItemKind::text:
            break;
    }
    return TextContent{};
}

bool operator==(const HeadingContent& left, const HeadingContent& right) {
    return left.children == right.children;
}

bool operator==(const TableContent& left, const TableContent& right) {
    return left.table == right.table || *left.table == *right.table;
}

bool operator==(const FlatTableContent& left, const FlatTableContent& right) {
    return left.table == right.table || *left.table == *right.table;
}

bool operator==(const ViewerItem& left, const ViewerItem& right) {
    return left.label == right.label && left.visible == right.visible && left.command == right.command &&
           left.subtype == right.subtype && left.content == right.content;
}

}  // namespace former
}  // namespace vexa::frontend
