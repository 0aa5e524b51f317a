// What of a document is exported: its items in their order, with the layers and views that are asked for.
// Every exporter writes this list and never walks the outline itself.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "backend/tables/layout/axis_lines.h"
#include "frontend/document/walk.h"

namespace vexa::frontend {

/// Which of several layers or views are exported. `printSetting`: what the item itself says, `visible` where
/// it says nothing.
enum class ExportedParts { printSetting, all, visible };

struct ExportSelection {
    bool hiddenItems = false;  ///< what is hidden too
    ExportedParts layers = ExportedParts::printSetting;
    ExportedParts views = ExportedParts::printSetting;
    std::vector<ItemType> excluded;  ///< types that are left out
};

/// One item to be exported. The outline that it stands in must live as long.
struct ExportedItem {
    const OutlineNode* node = nullptr;
    std::size_t number = 0;  ///< in the outline, from 1, as `vexa show` prints it
    std::size_t depth = 0;   ///< of headers, and models, around it; a header on the top level has 0
    std::string label;       ///< as shown
    std::vector<tables::Place> layers;  ///< of a table: what `layOut` takes, in their order; at least one

    [[nodiscard]] const Item& item() const { return node->item; }
    /// The label as messages name it: the beginning of a very long one.
    [[nodiscard]] std::string shortLabel() const;
};

struct ExportPlan {
    std::vector<ExportedItem> items;  ///< headers and models among them, before what stands under them
    bool documentIsEmpty = true;      ///< there is no item but headers and models
    std::size_t pictures = 0;         ///< charts and trees in `items`

    /// There are items, but none of them is exported; headers and models alone are nothing.
    [[nodiscard]] bool everythingIsHidden() const;
};

/// How many bytes of what a plan becomes may be held unpacked: some megabytes and, beyond that, about as many
/// as the exported tables take themselves, so that a table of a large document costs what one of a small one
/// does.
[[nodiscard]] std::size_t bytesHeldUnpacked(const ExportPlan& plan);

/// A header is not in the plan where all that stands under it is left out. `outline` must live as long as the
/// plan.
[[nodiscard]] ExportPlan planExport(const Outline& outline, const ExportSelection& selection);

}  // namespace vexa::frontend
