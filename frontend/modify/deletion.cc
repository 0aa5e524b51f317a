#include "frontend/modify/deletion.h"

#include <algorithm>
#include <cstddef>

namespace vexa::frontend {

namespace {

/// What a model shows once its view number `removed` is gone, of `left` views that stay.
std::size_t shownAfter(std::size_t shown, std::size_t removed, std::size_t left) {
    if (removed < shown) return shown - 1;
    return left == 0 ? 0 : std::min(shown, left - 1);
}

void removeItem(Outline& outline, ItemId id) {
    const OutlineNode& node = *outline.find(id);
    const OutlineNode* const parent = outline.find(node.parent);
    if (parent == nullptr || parent->item.type() != ItemType::model) {
        outline.remove(id);
        return;
    }
    const ItemId model = parent->id;
    const std::vector<ItemId>& views = parent->children;
    const auto removed = static_cast<std::size_t>(std::find(views.begin(), views.end(), id) - views.begin());
    const std::size_t left = views.size() - 1;
    const std::size_t before = std::get<ModelContent>(parent->item.content).shown;
    outline.remove(id);
    if (left == 0) {
        removeItem(outline, model);
        return;
    }
    const std::size_t shown = shownAfter(before, removed, left);
    if (shown != before) std::get<ModelContent>(outline.change(model).content).shown = shown;
}

}  // namespace

void removeItems(Outline& outline, const std::vector<SelectedItem>& items) {
    for (const SelectedItem& each : items) {
        // It may have gone with the item that it stood under.
        if (outline.find(each.id) != nullptr) removeItem(outline, each.id);
    }
}

}  // namespace vexa::frontend
