#include "frontend/modify/cell_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kTable[] = R"({"items": [{"type": "table",
    "rows": [{"label": "R", "categories": [{"group": "G", "categories": ["a", {"label": "h", "hidden": true}]},
                                           {"group": "H", "categories": [{"label": "i", "hidden": true}]}, "b"]}],
    "columns": [{"label": "C", "categories": ["c", "d"]}],
    "cells": [1, 2,  3, 4,  5, 6,  7, 8]}]})";

SelectedCells selected(const tables::Table& table, const CellsChange& change) {
    SelectedCells cells;
    EXPECT_TRUE(selectCells(table, TableLines(table), change, cells));
    return cells;
}

CellsChange choosing(std::initializer_list<CellKind> kinds) {
    CellsChange change;
    for (const CellKind each : kinds) change.kinds.set(static_cast<std::size_t>(each));
    return change;
}

TEST(CellSelection, ListsPlacesAsShown) {
    const Outline outline = resultsOf(kTable);
    EXPECT_THAT(selected(tableAt(outline, 0), choosing({CellKind::body})).data, ElementsAre(0, 1, 6, 7));
}

TEST(CellSelection, NamesOnlyLabelsThatStandThere) {
    const Outline outline = resultsOf(kTable);
    const SelectedCells cells = selected(tableAt(outline, 0), choosing({CellKind::headers}));
    const SelectedLabel group{0, 0, true};
    EXPECT_THAT(cells.labels, ElementsAre(SelectedLabel{0, 0, false}, group, SelectedLabel{0, 3, false},
                                          SelectedLabel{1, 0, false}, SelectedLabel{1, 1, false}));
}

TEST(CellSelection, KnowsTheColumnsOfItsCells) {
    const Outline outline = resultsOf(kTable);
    CellsChange change;
    change.positions = {2};
    change.dimension = CellDimension::columns;
    change.columnWidth = 40;
    const SelectedCells cells = selected(tableAt(outline, 0), change);
    EXPECT_THAT(cells.columns, ElementsAre(SelectedLabel{1, 1, false}));
    EXPECT_TRUE(cells.hasColumns);
}

TEST(CellSelection, AsksForNothingWhenNothingIsChosen) {
    const Outline outline = resultsOf(kTable);
    CellsChange change;
    change.columnWidth = 40;
    const SelectedCells cells = selected(tableAt(outline, 0), change);
    EXPECT_TRUE(cells.isEmpty());
    EXPECT_FALSE(cells.hasColumns);
}

TEST(CellSelection, PassesOverWhatIsNoNumberInComparisons) {
    tables::TableDimension rows{"R", {}, {}};
    for (const char* const label : {"a", "b", "c"})
        rows.categories.push_back({label, tables::noGroup, {}, {}, {}});
    tables::TableDataBuilder builder({rows});
    builder.setNumber(0, std::numeric_limits<double>::quiet_NaN());
    builder.setNumber(1, 5);
    builder.setText(2, "7");
    tables::TableView view;
    view.rows = {0};
    const tables::Table table = tables::makeTable(builder.finish(), view);
    CellsChange change = choosing({CellKind::body});
    change.condition.kind = CellCondition::Kind::comparison;
    change.condition.comparison = Comparison::notEqual;
    EXPECT_THAT(selected(table, change).data, ElementsAre(1));
    change.condition.kind = CellCondition::Kind::bottom;
    change.condition.count = 3;
    EXPECT_THAT(selected(table, change).data, ElementsAre(1));
    change.condition.kind = CellCondition::Kind::missing;
    EXPECT_THAT(selected(table, change).data, IsEmpty());
}

TEST(CellSelection, RefusesTablesThatAreTooLarge) {
    tables::TableDimension dimension{"D", {}, {}};
    dimension.categories.resize(10000);
    tables::TableDataBuilder builder({dimension, dimension});
    tables::TableView view;
    view.rows = {0};
    view.columns = {1};
    const tables::Table table = tables::makeTable(builder.finish(), view);
    SelectedCells cells;
    EXPECT_FALSE(selectCells(table, TableLines(table), choosing({CellKind::body}), cells));
}

}  // namespace
}  // namespace vexa::frontend
