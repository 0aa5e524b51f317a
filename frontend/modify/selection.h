// Which items of a document a group of a modification selects.
#pragma once

#include <cstddef>
#include <vector>

#include "backend/text/system_text.h"
#include "frontend/document/outline.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

struct SelectedItem {
    ItemId id = 0;
    std::size_t number = 0;  ///< in the outline, from 1

    bool operator==(const SelectedItem&) const = default;
};

/// An item of a selected type that is not selected all the same.
struct MissedItem {
    SelectedItem item;
    SystemText reason;
};

/// The items that `group` selects, in the order of the outline. One pass over the outline. `missed`, where it
/// is not null, gets the others of the selected types.
[[nodiscard]] std::vector<SelectedItem> selectItems(const Outline& outline, const ModifyGroup& group,
                                                    std::vector<MissedItem>* missed = nullptr);

}  // namespace vexa::frontend
