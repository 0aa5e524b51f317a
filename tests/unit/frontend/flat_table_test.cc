#include "frontend/document/flat_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

std::vector<std::string> textsOf(const PivotTable& table) {
    std::vector<std::string> texts;
    const std::optional<FlatTable> flat = flatten(table);
    EXPECT_TRUE(flat.has_value());
    for (std::size_t row = 0; flat && row < flat->rows(); ++row) {
        std::string& line = texts.emplace_back();
        for (std::size_t column = 0; column < flat->columns; ++column) {
            line += (column > 0 ? "|" : "") + flat->cells[row * flat->columns + column].text;
        }
    }
    return texts;
}

PivotDimension dimension(const std::string& label, int axis, int index,
                         const std::vector<std::string>& labels) {
    PivotDimension made{label, 0, {axis, index, 0, 0}, {}, {}};
    for (const std::string& each : labels) {
        made.categories.push_back({each, -1});
    }
    return made;
}

TEST(FlatTable, OneDimensionOfRows) {
    PivotTable table;
    table.dimensions = {dimension("Name", 0, 1, {"0", "1"})};
    table.cells = {{0, "a", {}, 0}, {1, "b", {}, 0}};
    EXPECT_THAT(textsOf(table), ElementsAre("Name|", "0|a", "1|b"));
}

TEST(FlatTable, GroupsSpanAndGapsStayEmpty) {
    PivotTable table;
    PivotDimension columns = dimension("", 1, 0, {"x", "y", "z"});
    columns.groups = {{"group", -1}};
    columns.categories[0].group = 0;
    columns.categories[1].group = 0;
    table.dimensions = {dimension("", 0, 0, {"r", "s"}), columns};
    table.cells = {{0, "1", {}, 0}, {5, "6", {}, 0}};
    EXPECT_THAT(textsOf(table), ElementsAre("|group||", "|x|y|z", "r|1||", "s|||6"));
}

TEST(FlatTable, DimensionsOfOneAxisStandByTheirIndex) {
    PivotTable table;
    table.dimensions = {dimension("inner", 0, 2, {"a", "b"}), dimension("outer", 0, 1, {"p", "q"})};
    table.cells = {{0, "pa", {}, 0}, {1, "qa", {}, 0}, {2, "pb", {}, 0}, {3, "qb", {}, 0}};
    EXPECT_THAT(textsOf(table), ElementsAre("outer|inner|", "p|a|pa", "|b|pb", "q|a|qa", "|b|qb"));
}

TEST(FlatTable, LayersStandBelowEachOther) {
    PivotTable table;
    table.dimensions = {dimension("Layer", 2, 0, {"one", "two"}), dimension("", 0, 0, {"r"})};
    table.cells = {{0, "first", {}, 0}, {1, "second", {}, 0}};
    EXPECT_THAT(textsOf(table), ElementsAre("Layer: one|", "r|first", "Layer: two|", "r|second"));
}

TEST(FlatTable, TablesWithoutDimensionsOrCategories) {
    PivotTable table;
    table.cells = {{0, "only", {}, 0}};
    EXPECT_THAT(textsOf(table), ElementsAre("only"));
    table.cells.clear();
    table.dimensions = {dimension("empty", 0, 0, {}), dimension("", 1, 0, {"c"})};
    EXPECT_THAT(textsOf(table), ElementsAre("c"));
}

TEST(FlatTable, RefusesWhatNoGridHolds) {
    PivotTable table;
    for (int i = 0; i < 8; ++i) {
        table.dimensions.push_back(dimension("", i % 3, i, std::vector<std::string>(1000, "x")));
    }
    EXPECT_FALSE(flatten(table).has_value());
    PivotDimension deep = dimension("", 0, 0, {"x"});
    for (int i = 0; i < 100; ++i) {
        deep.groups.push_back({"g", i - 1});
    }
    deep.categories[0].group = 99;
    table.dimensions = {deep};
    EXPECT_FALSE(flatten(table).has_value());
}

}  // namespace
}  // namespace vexa::frontend
