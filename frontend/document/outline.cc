#include "frontend/document/outline.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace vexa::frontend {

const OutlineNode* Outline::find(ItemId id) const {
    return id == 0 || id > nodes_.size() ? nullptr : nodes_[id - 1].get();
}

OutlineNode& Outline::own(ItemId id) {
    assert(find(id) != nullptr);
    std::shared_ptr<OutlineNode>& node = nodes_[id - 1];
    // Shared with a copy of the outline, which keeps it as it is.
    if (node.use_count() > 1) node = std::make_shared<OutlineNode>(*node);
    return *node;
}

ItemId Outline::add(Item item, ItemId under) {
    assert(under == 0 || (find(under) != nullptr && holdsItems(find(under)->item.type())));
    const ItemId id = nodes_.size() + 1;
    nodes_.push_back(std::make_shared<OutlineNode>(OutlineNode{id, under, {}, std::move(item)}));
    (under == 0 ? roots_ : own(under).children).push_back(id);
    ++size_;
    return id;
}

void Outline::remove(ItemId id) {
    assert(find(id) != nullptr);
    const ItemId parent = nodes_[id - 1]->parent;
    std::vector<ItemId>& siblings = parent == 0 ? roots_ : own(parent).children;
    siblings.erase(std::find(siblings.begin(), siblings.end(), id));
    forget(id);
}

void Outline::forget(ItemId id) {
    std::vector<ItemId> left{id};
    while (!left.empty()) {
        std::shared_ptr<OutlineNode>& node = nodes_[left.back() - 1];
        left.pop_back();
        left.insert(left.end(), node->children.begin(), node->children.end());
        node.reset();
        --size_;
    }
}

Item& Outline::change(ItemId id) { return own(id).item; }

bool Outline::operator==(const Outline& other) const {
    if (size_ != other.size_ || roots_.size() != other.roots_.size()) return false;
    std::vector<std::pair<ItemId, ItemId>> left;
    const auto addPairs = [&](const std::vector<ItemId>& here, const std::vector<ItemId>& there) {
        for (std::size_t i = 0; i < here.size(); ++i) left.emplace_back(here[i], there[i]);
    };
    addPairs(roots_, other.roots_);
    while (!left.empty()) {
        const OutlineNode& here = *nodes_[left.back().first - 1];
        const OutlineNode& there = *other.nodes_[left.back().second - 1];
        left.pop_back();
        if (&here == &there && &nodes_ == &other.nodes_) continue;
        if (here.children.size() != there.children.size() || !(here.item == there.item)) return false;
        addPairs(here.children, there.children);
    }
    return true;
}

}  // namespace vexa::frontend
