// Which items of a document a group of a modification selects.
#pragma once

#include <cstddef>
#include <vector>

#include "frontend/document/outline.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

struct SelectedItem {
    ItemId id = 0;
    std::size_t number = 0;  ///< in the outline, from 1

    bool operator==(const SelectedItem&) const = default;
};

/// The items that `group` selects, in the order of the outline. One pass over the outline.
[[nodiscard]] std::vector<SelectedItem> selectItems(const Outline& outline, const ModifyGroup& group);

}  // namespace vexa::frontend
