#include "frontend/document/viewer_document.h"

#include <cassert>
#include <utility>

namespace vexa::frontend {
// Set apart from the types of the same names in item.h until everything uses those.
inline namespace former {
namespace {

/// The item of that id in `items`, which may be constant, or null.
template <typename Items>
auto findItem(Items& items, ItemId id) -> decltype(items.data()) {
    // From the end, because the item that is looked for is mostly the one that was added last.
    for (std::size_t behind = items.size(); behind > 0; --behind) {
        auto& item = items[behind - 1];
        if (item.id == id) {
            return &item;
        }
        if (auto* const heading = std::get_if<HeadingContent>(&item.content)) {
            if (auto* const found = findItem(heading->children, id)) {
                return found;
            }
        }
    }
    return nullptr;
}

}  // namespace

const ViewerItem* ViewerDocument::find(ItemId id) const { return id == 0 ? nullptr : findItem(items_, id); }

void ViewerDocument::setName(std::string name) {
    assert(!isLocked());
    name_ = std::move(name);
    modified_ = true;
}

void ViewerDocument::giveIds(ViewerItem& item) {
    item.id = ++lastId_;
    if (auto* heading = std::get_if<HeadingContent>(&item.content)) {
        for (ViewerItem& child : heading->children) {
            giveIds(child);
        }
    }
}

ItemId ViewerDocument::add(ViewerItem item, ItemId under) {
    ViewerItem* parent = change(under);
    auto* heading = parent == nullptr ? nullptr : std::get_if<HeadingContent>(&parent->content);
    giveIds(item);
    const ItemId id = item.id;
    (heading == nullptr ? items_ : heading->children).push_back(std::move(item));
    modified_ = true;
    return id;
}

ViewerItem* ViewerDocument::change(ItemId id) {
    assert(!isLocked());
    ViewerItem* const item = id == 0 ? nullptr : findItem(items_, id);
    modified_ = modified_ || item != nullptr;
    return item;
}

}  // namespace former
}  // namespace vexa::frontend
