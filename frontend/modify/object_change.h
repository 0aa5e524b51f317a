// Changes that any item can get: visibility, label, size, index.
#pragma once

#include <cstdint>
#include <optional>

#include "frontend/document/outline.h"
#include "frontend/modify/change_notes.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// Changes visibility, label and size as `change` says; sizes of charts, trees and models only. Percentages
/// are of the size that the item is shown in, of a model that of its shown view where it has none of its own.
void changeObject(Outline& outline, ItemId id, const ObjectChange& change, ItemPlan& plan);

/// Appends an index to the label as it is shown.
void appendIndex(Outline& outline, ItemId id, IndexNotation notation, std::int64_t number, ItemPlan& plan);

/// The size that an item is shown in, of a model that of its shown view where it has none of its own.
[[nodiscard]] std::optional<ItemSize> presentSize(const Outline& outline, const OutlineNode& node);

}  // namespace vexa::frontend
