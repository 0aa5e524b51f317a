#include "frontend/document/viewer_document.h"

#include <cassert>

namespace vexa::frontend {

void ViewerDocument::setName(std::string name) {
    assert(!isLocked());
    name_ = std::move(name);
    modified_ = true;
}

ItemId ViewerDocument::add(Item item, ItemId under) {
    assert(!isLocked());
    modified_ = true;
    return outline_.add(std::move(item), under);
}

Item& ViewerDocument::change(ItemId id) {
    assert(!isLocked());
    modified_ = true;
    return outline_.change(id);
}

void ViewerDocument::edit(Outline outline) {
    assert(!isLocked());
    modified_ = true;
    outline_ = std::move(outline);
}

}  // namespace vexa::frontend
