// One walk over an outline for everything that looks at all items: saving, selecting, showing, exporting.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "frontend/document/outline.h"

namespace vexa::frontend {

/// One run of a command: a header with a command.
struct Run {
    ItemId header = 0;
    std::string command;
    std::string title;  ///< the header's label
    std::size_t instance =
        0;  ///< from 1 among the runs of that command, which is compared without regard to case
};

/// The runs in the order of the outline.
[[nodiscard]] std::vector<Run> runsOf(const Outline& outline);

/// Where the walk stands.
struct WalkPlace {
    const OutlineNode& node;   // a place is only good during the call that it is given to
    std::size_t number = 0;    ///< the item's number in the outline, from 1, as `vexa show` prints it
    std::size_t depth = 0;     ///< 0 on the top level
    bool hidden = false;       ///< the item or a header above it is hidden
    const Run* run = nullptr;  ///< the innermost run around it; a header with a command stands in its own
    const OutlineNode* model = nullptr;  ///< of a view, and of what stands under one: the innermost model
    std::size_t view = 0;                ///< of the same: the view's index in the model

    [[nodiscard]] const Item& item() const { return node.item; }
    /// The item's own command, else its run's.
    [[nodiscard]] const std::string& command() const;
    /// Not (in) the view that its model shows. Such a view is not hidden.
    [[nodiscard]] bool isOtherView() const;
};

class OutlineVisitor {
  public:
    virtual ~OutlineVisitor() = default;
    /// Called for every item, before what stands under it; false passes over what stands under it, which
    /// keeps its numbers and counts as runs all the same.
    virtual bool enter(const WalkPlace& place) = 0;
    /// Called for every item behind what stands under it.
    virtual void leave(const WalkPlace& place) { static_cast<void>(place); }
};

/// Walks all items in the order of the outline. The outline must not change meanwhile.
void walk(const Outline& outline, OutlineVisitor& visitor);

}  // namespace vexa::frontend
