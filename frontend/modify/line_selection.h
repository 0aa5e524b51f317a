// Rows and columns that are named by a label or a position.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "backend/tables/layout/axis_lines.h"
#include "frontend/modify/cell_selection.h"

namespace vexa::frontend {

struct SelectedLines {
    std::vector<char> rows;  ///< one a row, in the order shown
    std::vector<char> columns;
    std::vector<SelectedLabel>
        labels;  ///< of the lines, and of groups that were named; each once, in their order
};

/// Lines whose innermost label, or the label of a group or an outer category over them, is one of
/// `change.labels`. A label that stands over several lines, as that of a category beside several outer ones
/// does, is selected when all of them are.
[[nodiscard]] SelectedLines linesOfLabels(const tables::Table& table, const CellsChange& change,
                                          const tables::AxisLines& rows, const tables::AxisLines& columns);

/// Lines whose position, from 1, is one of `change.positions`.
[[nodiscard]] SelectedLines linesOfPositions(const tables::Table& table, const CellsChange& change,
                                             const tables::AxisLines& rows, const tables::AxisLines& columns);

/// The labels in their order, each once.
[[nodiscard]] std::vector<SelectedLabel> inOrder(std::vector<SelectedLabel> labels);

/// The labels that stand on an axis: of categories, and of groups that have one.
[[nodiscard]] std::vector<SelectedLabel> shownLabels(const tables::TableData& data,
                                                     const tables::AxisLines& lines);

/// Cuts labels that are joined by `;` into the longest pieces that are in `known`; pieces that are in none of
/// them are left out. Texts are compared ones, see `comparedText`.
[[nodiscard]] std::unordered_set<std::string> cutLabels(std::string_view joined,
                                                        const std::unordered_set<std::string>& known);

}  // namespace vexa::frontend
