#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/tables/table_sketch.h"

namespace vexa::tables {
namespace {

using testing::ElementsAre;

std::vector<std::string> textsOf(const std::optional<FlatTable>& flat) {
    std::vector<std::string> texts;
    EXPECT_TRUE(flat.has_value());
    for (std::size_t row = 0; flat && row < flat->rows(); ++row) {
        std::string& line = texts.emplace_back();
        for (std::size_t column = 0; column < flat->columns; ++column) {
            line += (column > 0 ? "|" : "") + flat->cells[row * flat->columns + column].text;
        }
    }
    return texts;
}

TEST(FlatTable, OneDimensionOfRows) {
    TableSketch sketch({{Axis::row, "Name", {"0", "1"}}}, {"a", "b"});
    const std::optional<FlatTable> flat = flatten(sketch.table());
    EXPECT_THAT(textsOf(flat), ElementsAre("Name|", "0|a", "1|b"));
    EXPECT_EQ(flat->headerRows, 1U);
    EXPECT_EQ(flat->headerColumns, 1U);
}

TEST(FlatTable, GroupsSpanAndGapsStayEmpty) {
    TableSketch sketch({{Axis::row, "", {"r", "s"}}, {Axis::column, "", {"group/x", "group/y", "z"}}},
                       {"1", "", "", "", "", "6"});
    EXPECT_THAT(textsOf(flatten(sketch.table())), ElementsAre("|group||z", "|x|y|", "r|1||", "s|||6"));
}

TEST(FlatTable, LayersStandBelowEachOther) {
    TableSketch sketch({{Axis::layer, "Layer", {"one", "two"}}, {Axis::row, "", {"r"}}}, {"first", "second"},
                       {"note", "other", "none"});
    sketch.data.setFootnotes(0, {1});
    sketch.data.setFootnotes(1, {1, 0});
    sketch.view.caption = "Caption";
    const std::optional<FlatTable> flat = flatten(sketch.table());
    EXPECT_THAT(textsOf(flat), ElementsAre("Layer: one|", "r|first [a]", "Layer: two|", "r|second [a,b]"));
    EXPECT_EQ(flat->caption, "Caption\n[a] other\n[b] note\nnone");
}

TEST(FlatTable, KeepsTheStylesOfItsCells) {
    TableSketch sketch({{Axis::row, "", {"r", "s", "t"}}}, {"1", "2", "3"});
    CellStyle bold;
    bold.bold = true;
    sketch.style.setCell(1, sketch.style.intern(bold), 3);
    sketch.style.setCategory(0, 2, sketch.style.intern(bold));
    const std::optional<FlatTable> flat = flatten(sketch.table());
    ASSERT_TRUE(flat.has_value());
    EXPECT_THAT(flat->styles, ElementsAre(CellStyle(), bold));
    std::string styles;
    for (const FlatCell& cell : flat->cells) styles += std::to_string(cell.style);
    EXPECT_EQ(styles, "000110");
}

TEST(FlatTable, RefusesWhatNoGridHolds) {
    const std::vector<std::string> thousand(1000, "x");
    TableSketch wide({{Axis::row, "", thousand}, {Axis::column, "", thousand}}, {"1"});
    EXPECT_FALSE(flatten(wide.table()).has_value());
    // One long label that a thousand layers say.
    TableSketch layers({{Axis::layer, "", thousand}, {Axis::layer, "", {std::string(100'000, 'l')}}}, {"1"});
    EXPECT_FALSE(flatten(layers.table()).has_value());
}

TEST(FlatTable, IsLaidOutAsItStands) {
    FlatTable flat;
    flat.title = "T";
    flat.caption = "C";
    flat.columns = 2;
    flat.headerRows = 1;
    flat.headerColumns = 1;
    CellStyle red;
    red.color = Color{0xff0000};
    flat.styles = {{}, red};
    flat.cells = {{"", 0}, {"x", 0}, {"r", 0}, {"1", 1}, {"s", 0}, {"", 7}};
    const TableGrid grid = layOut(flat);
    EXPECT_TRUE(grid.isFlat);
    EXPECT_EQ(picture(grid), "\nc|kx\nrr|d1\nrs|d\n");
    EXPECT_EQ(grid.title.text + grid.caption.text, "TC");
    EXPECT_EQ(grid.style(grid.cells[3]).own, red);
    EXPECT_EQ(grid.cells[3].kind, CellKind::text);
    EXPECT_EQ(grid.cells[5].kind, CellKind::empty);
    EXPECT_EQ(layOut(FlatTable()).rows, 0U);
}

}  // namespace
}  // namespace vexa::tables
