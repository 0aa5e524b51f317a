// Labels that stand in several rows above columns, or in several columns beside rows, as nested groups.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "backend/tables/model/table_data.h"

namespace vexa::frontend {

/// One place of the labels. Places with the same `span`, which is not 0, are one label.
struct SpannedLabel {
    std::string text;
    std::size_t span = 0;
};

/// The labels of each line (a column or row of data), outermost first; all have as many.
using LabelLines = std::vector<std::vector<SpannedLabel>>;

/// Gives one span to labels that repeat the one of the line before them, and to empty ones behind one, within
/// the same outer label. The innermost labels stay apart.
void spanRepetitions(LabelLines& lines);

/// A dimension with a category a line. The innermost label is the category's; the others are groups, shared
/// by lines beside each other that have the same span there. An empty label makes no group, and one that
/// spans down to the innermost label is the category's alone.
[[nodiscard]] tables::TableDimension makeDimension(std::string label, const LabelLines& lines);

}  // namespace vexa::frontend
