// A pivot table while it is built: the table itself, and what finds its dimensions, categories and cells
// quickly.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "backend/pivot/bp_text.h"
#include "backend/pivot/pivot_table.h"

namespace vexa {

/// What a category or a group is known by within its dimension.
struct DraftLabel {
    int group = -1;  ///< the group that it stands in
    std::string identity;

    bool operator==(const DraftLabel&) const = default;
};

struct DraftLabelHash {
    std::size_t operator()(const DraftLabel& label) const;
};

/// Category indexes of a cell, one a dimension.
using DraftIndexes = std::vector<std::uint32_t>;

struct DraftIndexesHash {
    std::size_t operator()(const DraftIndexes& indexes) const;
};

/// What is known of one dimension besides its finished value.
struct DraftDimension {
    std::unordered_map<DraftLabel, std::size_t, DraftLabelHash> categories;
    std::unordered_map<DraftLabel, int, DraftLabelHash> groups;
    std::uint32_t current = 0;  ///< the category added or named last
};

/// All indexes given to its operations are ones that it returned before.
struct PivotTableDraft {
    PivotTable table;  ///< places of cells are set by `finish`

    /// The index of the dimension of that label, which is added when it is new.
    std::size_t dimension(const BpCellText& label, int kind);
    /// The index of the category of that label in the group (-1 for none), which is added when it is new; it
    /// becomes the dimension's current one.
    std::size_t category(std::size_t dimension, int group, const BpCellText& label);
    /// The index of the group of that label within the group `parent` (-1 for none), which is added when it
    /// is new.
    int group(std::size_t dimension, int parent, const BpCellText& label, bool shown);
    /// Fills the cell at the category and the current categories of the other dimensions; its index.
    std::size_t fill(std::size_t dimension, std::size_t category, const BpCellText& value);
    /// The notes and looks of a cell.
    PivotCellExtras& extras(std::size_t cell);
    /// Sets the places of the cells; nothing may be added afterwards.
    void finish();

  private:
    void giveCellsOneMoreDimension();

    std::vector<DraftDimension> dimensions_;
    std::unordered_map<std::string, std::size_t> dimensionByLabel_;
    std::unordered_map<DraftIndexes, std::size_t, DraftIndexesHash> cellByIndexes_;
};

}  // namespace vexa
