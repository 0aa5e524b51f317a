// The outline of a document: its items as a tree. Copying it is cheap, since nodes are shared until one is
// changed: an edit changes a copy, which then takes the place of the old outline or is dropped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "frontend/document/item.h"

namespace vexa::frontend {

/// Names an item as long as its document lives; 0 names none.
using ItemId = std::uint64_t;

struct OutlineNode {
    ItemId id = 0;
    ItemId parent = 0;             ///< 0 on the top level
    std::vector<ItemId> children;  ///< of what `holdsItems`; in their order
    Item item;
};

class Outline {
  public:
    /// The top level.
    [[nodiscard]] const std::vector<ItemId>& roots() const { return roots_; }
    /// The item, or null; in constant time. The pointer holds until the outline is changed.
    [[nodiscard]] const OutlineNode* find(ItemId id) const;
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] bool isEmpty() const { return size_ == 0; }

    /// Adds an item at the end of the header or model `under`, or of the top level for 0. `under` must be 0
    /// or hold items.
    ItemId add(Item item, ItemId under = 0);
    /// Takes away an item and what stands under it; it must be there.
    void remove(ItemId id);
    /// The item for changing; it must be there, and must not change between holding items and holding none.
    [[nodiscard]] Item& change(ItemId id);

    /// The same items in the same order, whatever their ids.
    [[nodiscard]] bool operator==(const Outline& other) const;

  private:
    OutlineNode& own(ItemId id);
    void forget(ItemId id);

    std::vector<ItemId> roots_;
    std::vector<std::shared_ptr<OutlineNode>> nodes_;  // by id - 1; null for one that was taken away
    std::size_t size_ = 0;
};

}  // namespace vexa::frontend
