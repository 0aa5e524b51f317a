#include "frontend/document/viewer_document.h"

#include <cassert>
#include <utility>

namespace vexa::frontend {
namespace {

// From the end, because the item that is looked for is mostly the one that was added last.
const ViewerItem* findItem(const std::vector<ViewerItem>& items, ItemId id) {
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        if (item->id == id) {
            return &*item;
        }
        if (const auto* heading = std::get_if<HeadingContent>(&item->content)) {
            if (const ViewerItem* found = findItem(heading->children, id)) {
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
    const ViewerItem* item = find(id);
    modified_ = modified_ || item != nullptr;
    return const_cast<ViewerItem*>(item);
}

}  // namespace vexa::frontend
