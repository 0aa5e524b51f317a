// How the cells of a grid look.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/tables/table_sketch.h"

namespace vexa::tables {
namespace {

const GridCell& cellOf(const TableGrid& grid, std::string_view text) {
    for (const GridCell& cell : grid.cells) {
        if (grid.text(cell) == text) return cell;
    }
    ADD_FAILURE() << "no cell shows " << text;
    return grid.cells.front();
}

TableSketch grouped() {
    return {{{Axis::row, "R", {"g/a", "g/b", "h/c"}}, {Axis::column, "C", {"k/x", "k/y", "l/z"}}},
            {"1", "2", "3", "4", "5", "6", "7", "8", "9"}};
}

TEST(GridStyles, OverlayLookAreaAndCell) {
    TableSketch sketch = grouped();
    CellStyle area;
    area.italic = true;
    area.color = Color{0x111111};
    CellStyle cell;
    cell.bold = true;
    cell.color = Color{0x222222};
    sketch.style.setArea(Area::data, sketch.style.intern(area));
    sketch.style.setCell(4, sketch.style.intern(cell), 9);
    sketch.style.setCategory(0, 1, sketch.style.intern(cell));
    sketch.style.setGroup(1, 0, sketch.style.intern(cell));
    const TableGrid grid = layOut(sketch.table());
    const ShownStyle& plain = grid.style(cellOf(grid, "1"));
    EXPECT_TRUE(plain.look.italic && !plain.look.bold);
    EXPECT_EQ(plain.look.color, Color{0x111111});
    EXPECT_EQ(plain.own, area);
    const ShownStyle& own = grid.style(cellOf(grid, "5"));
    EXPECT_TRUE(own.look.italic && own.look.bold);
    EXPECT_EQ(own.look.color, Color{0x222222});
    EXPECT_EQ(own.own.bold, true);
    EXPECT_EQ(own.own.italic, true);
    for (const char* const label : {"b", "k"}) EXPECT_EQ(grid.style(cellOf(grid, label)).own, cell) << label;
    for (const char* const label : {"a", "l", "y", "C"}) {
        EXPECT_TRUE(grid.style(cellOf(grid, label)).own.isEmpty()) << label;
    }
}

TEST(GridStyles, OfTextsOutsideTheGrid) {
    TableSketch sketch = grouped();
    CellStyle red;
    red.color = Color{0xff0000};
    for (const Area area : {Area::title, Area::caption, Area::footnotes, Area::layers}) {
        sketch.style.setArea(area, sketch.style.intern(red));
    }
    const TableGrid grid = layOut(sketch.table());
    for (const ShownStyleId id :
         {grid.title.style, grid.caption.style, grid.footnoteStyle, grid.layer.style}) {
        EXPECT_EQ(grid.styles[id].look.color, Color{0xff0000});
    }
    EXPECT_TRUE(grid.styles[grid.title.style].look.bold);
}

TEST(GridStyles, BandEverySecondSetOfRows) {
    TableSketch sketch = grouped();
    TableLook look = *plainLook();
    look.banding = {2, Color{0xeeeeee}, std::nullopt, false};
    sketch.style.setLook(std::make_shared<const TableLook>(look));
    const std::shared_ptr<const TableData> data = sketch.data.finish();
    const auto background = [&](const TableGrid& grid, const char* text) {
        return grid.style(cellOf(grid, text)).look.background;
    };
    TableGrid grid = layOut(makeTable(data, sketch.view, sketch.style));
    EXPECT_EQ(background(grid, "1"), std::nullopt);
    EXPECT_EQ(background(grid, "4"), std::nullopt);
    EXPECT_EQ(background(grid, "9"), Color{0xeeeeee});
    EXPECT_EQ(background(grid, "c"), std::nullopt);
    look.banding.labels = true;
    sketch.style.setLook(std::make_shared<const TableLook>(look));
    grid = layOut(makeTable(data, sketch.view, sketch.style));
    EXPECT_EQ(background(grid, "c"), Color{0xeeeeee});
    EXPECT_EQ(background(grid, "b"), std::nullopt);
}

/// The borders of a cell as numbers: each line's colour is that of its border's number, 0 without a line.
std::string bordersOf(const TableGrid& grid, std::string_view text) {
    std::string shown;
    for (const BorderLine& line : grid.style(cellOf(grid, text)).borders) {
        shown += (shown.empty() ? "" : " ");
        shown += line.style == LineStyle::none ? "-" : std::to_string(line.color.rgb);
    }
    return shown;
}

TEST(GridStyles, DrawLinesWhereTheLookHasThem) {
    TableSketch sketch = grouped();
    TableLook look;
    for (std::size_t i = 0; i < borderCount; ++i) {
        look.borders[i] = {LineStyle::thin, Color{static_cast<std::uint32_t>(i)}};
    }
    sketch.view.corner = "corner";
    sketch.style.setLook(std::make_shared<const TableLook>(look));
    const TableGrid grid = layOut(sketch.table());
    // Top, right, bottom, left. 0 top 1 bottom 2 left 3 right 4 below the header 5 beside the labels 6 levels
    // of column labels 7 column labels 8 row labels 9 levels of row labels 10 rows 11 columns 12 groups of
    // rows 13 of columns
    const std::pair<const char*, const char*> expected[] = {
        {"corner", "0 5 - 2"}, {"R", "- 5 4 2"},   {"C", "0 3 6 5"},     {"k", "6 13 6 5"},
        {"l", "6 3 - 13"},     {"x", "6 7 4 5"},   {"y", "6 13 4 7"},    {"z", "- 3 4 13"},
        {"g", "4 9 12 2"},     {"a", "4 5 8 9"},   {"b", "8 5 12 9"},    {"h", "12 9 1 2"},
        {"c", "12 5 1 9"},     {"1", "4 11 10 5"}, {"5", "10 13 12 11"}, {"9", "12 3 1 13"},
    };
    for (const auto& [text, borders] : expected) EXPECT_EQ(bordersOf(grid, text), borders) << text;
}

TEST(GridStyles, LeaveGroupsToOtherLinesWhereTheLookDrawsNone) {
    TableSketch sketch = grouped();
    TableLook look;
    look.border(Border::dataRows) = {LineStyle::thin, Color{1}};
    look.border(Border::dataColumns) = {LineStyle::thin, Color{2}};
    sketch.style.setLook(std::make_shared<const TableLook>(look));
    const TableGrid grid = layOut(sketch.table());
    EXPECT_EQ(bordersOf(grid, "5"), "1 2 1 2");
    EXPECT_EQ(bordersOf(grid, "9"), "1 - - 2");
}

TEST(GridStyles, AreAHandfulForAnOrdinaryTable) {
    const std::vector<std::string> rows(40, "r");
    const std::vector<std::string> columns(8, "c");
    TableSketch sketch({{Axis::row, "R", rows}, {Axis::column, "C", columns}},
                       std::vector<std::string>(320, "1"));
    EXPECT_LE(layOut(sketch.table()).styles.size(), 20U);
}

}  // namespace
}  // namespace vexa::tables
