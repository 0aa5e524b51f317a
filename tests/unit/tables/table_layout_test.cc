// What stands where in a table's grid.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/tables/table_sketch.h"

namespace vexa::tables {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct LayoutCase {
    const char* name;
    std::vector<DimensionSketch> dimensions;
    std::vector<std::string> cells;
    const char* corner;
    const char* picture;
};

const LayoutCase kCases[] = {
    {"one row dimension has its label over the row labels",
     {{Axis::row, "Name", {"0", "1"}}},
     {"a", "b"},
     "",
     R"(
cName|k
r0|da
r1|db
)"},
    {"no header where there is nothing to say",
     {{Axis::row, "", {"0", "1"}}},
     {"a", "b"},
     "",
     R"(
r0|da
r1|db
)"},
    {"the label of a column dimension spans its categories",
     {{Axis::row, "", {"r"}}, {Axis::column, "Statistics", {"Mean", "N"}}},
     {"1.5", "12"},
     "",
     R"(
c|kStatistics|<
^|kMean|kN
rr|d1.5|d12
)"},
    {"a category that stands less deep spans the remaining levels",
     {{Axis::row, "R", {"Europe/North", "Europe/South", "Total"}},
      {Axis::column, "", {"2025/Q1", "2025/Q2", "2026"}}},
     {"1", "2", "3", "4", "5", "6", "7", "8", "9"},
     "",
     R"(
c|<|k2025|<|k2026
cR|<|kQ1|kQ2|^
rEurope|rNorth|d1|d2|d3
^|rSouth|d4|d5|d6
rTotal|<|d7|d8|d9
)"},
    {"groups that are not shown take no room, and runs of one group are one label",
     {{Axis::row, "", {"-/a", "G/-/b", "G/c", "d", "G/e"}}},
     {"1", "2", "3", "4", "5"},
     "",
     R"(
ra|<|d1
rG|rb|d2
^|rc|d3
rd|<|d4
rG|re|d5
)"},
    {"inner labels begin anew under each outer category",
     {{Axis::row, "Region", {"N", "S"}}, {Axis::row, "Sex", {"f", "m"}}, {Axis::column, "T", {"x"}}},
     {"1", "2", "3", "4"},
     "",
     R"(
c|<|kT
cRegion|cSex|kx
rN|rf|d1
^|rm|d2
rS|rf|d3
^|rm|d4
)"},
    {"labels of inner column dimensions stand under each outer category",
     {{Axis::column, "A", {"p", "q"}}, {Axis::column, "B", {"x", "y"}}},
     {"1", "2", "3", "4"},
     "",
     R"(
kA|<|<|<
kp|<|kq|<
kB|<|kB|<
kx|ky|kx|ky
d1|d2|d3|d4
)"},
    {"the corner stands above the labels of row dimensions",
     {{Axis::row, "R", {"r"}}, {Axis::column, "C", {"x"}}},
     {"1"},
     "corner",
     R"(
ccorner|kC
cR|kx
rr|d1
)"},
    {"the corner has a row of its own where there is no room",
     {{Axis::row, "R", {"r"}}, {Axis::column, "", {"x", "y"}}},
     {"1", "2"},
     "corner",
     R"(
ccorner|kx|ky
cR|^|^
rr|d1|d2
)"},
    {"the corner has all rows where the row dimension has no label",
     {{Axis::row, "", {"r"}}, {Axis::column, "C", {"x"}}},
     {"1"},
     "corner",
     R"(
ccorner|kC
^|kx
rr|d1
)"},
    {"a corner makes a header",
     {{Axis::row, "", {"r"}}},
     {"1"},
     "corner",
     R"(
ccorner|k
rr|d1
)"},
    {"corner and label of rows alone take two rows",
     {{Axis::row, "R", {"r"}}},
     {"1"},
     "corner",
     R"(
ccorner|k
cR|^
rr|d1
)"},
    {"rows without anything are left out of several dimensions",
     {{Axis::row, "", {"a", "b"}}, {Axis::row, "", {"x", "y"}}},
     {"1", "", "", "4"},
     "",
     R"(
ra|rx|d1
rb|ry|d4
)"},
    {"rows without anything stay in one dimension",
     {{Axis::row, "", {"a", "b"}}, {Axis::column, "", {"x", "y"}}},
     {"1", "", "", ""},
     "",
     R"(
c|kx|ky
ra|d1|d
rb|d|d
)"},
    {"a dimension without categories is an empty table",
     {{Axis::row, "R", {}}, {Axis::column, "C", {"x"}}},
     {},
     "",
     "\n"},
    {"a table without dimensions has one place", {}, {"only"}, "corner", "\ndonly\n"},
    {"or none when that is empty", {}, {}, "corner", "\n"},
};

TEST(TableLayout, PutsEachCellInItsPlace) {
    for (const LayoutCase& each : kCases) {
        TableSketch sketch(each.dimensions, each.cells);
        sketch.view.corner = each.corner;
        sketch.view.emptyLinesLeftOut = true;
        const TableGrid grid = layOut(sketch.table());
        EXPECT_EQ(picture(grid), each.picture) << each.name;
    }
}

TableSketch twoByThree() {
    return {{{Axis::row, "R", {"a", "b"}}, {Axis::column, "C", {"x", "y", "z"}}},
            {"1", "2", "3", "4", "5", "6"}};
}

TEST(TableLayout, FollowsOrderAndLeavesHiddenCategoriesOut) {
    TableSketch sketch = twoByThree();
    sketch.view.dimensions[0].order = {1, 0};
    sketch.view.dimensions[0].labelHidden = true;
    sketch.view.dimensions[1].order = {2, 1, 0};
    sketch.view.dimensions[1].hidden = {false, true, false};
    EXPECT_EQ(picture(layOut(sketch.table())), R"(
c|kC|<
^|kz|kx
rb|d6|d4
ra|d3|d1
)");
}

TEST(TableLayout, KeepsTitleAndCaptionOfATableWithoutShownCategories) {
    TableSketch sketch = twoByThree();
    sketch.view.title = "Title";
    sketch.view.caption = "Caption";
    sketch.view.dimensions[1].hidden = {true, true, true};
    const TableGrid grid = layOut(sketch.table());
    EXPECT_EQ(grid.rows + grid.columns, 0U);
    EXPECT_THAT(grid.rowBegin, ElementsAre(0U));
    EXPECT_EQ(grid.title.text, "Title");
    EXPECT_EQ(grid.caption.text, "Caption");
}

TEST(TableLayout, SaysTitleAndCaptionOnlyWhereTheyAreToBeSaid) {
    TableSketch sketch = twoByThree();
    sketch.view.title = sketch.view.caption = "Same";
    sketch.view.titleHidden = true;
    const Table table = sketch.table();
    EXPECT_EQ(layOut(table).title.text, "");
    EXPECT_EQ(layOut(table).caption.text, "");
    TableSketch other = twoByThree();
    other.view.caption = "Caption";
    LayoutOptions options;
    options.notesAndCaptions = false;
    EXPECT_EQ(layOut(other.table(), options).caption.text, "");
}

TEST(TableLayout, ShowsNumbersInTheFormatThatIsNearest) {
    const DisplayFormat whole{FormatKind::plain, 8, 0};
    const DisplayFormat one{FormatKind::plain, 8, 1};
    const DisplayFormat two{FormatKind::plain, 8, 2};
    const DisplayFormat percent{FormatKind::percent, 8, 0};
    const DisplayFormat three{FormatKind::plain, 8, 3};
    TableSketch sketch(
        {{Axis::layer, "", {"l"}}, {Axis::row, "", {"a", "b"}}, {Axis::column, "", {"x", "y"}}},
        {"1.25", "2.25", "3.25", "4.25"});
    sketch.data.dimension(2).categories[0].format = two;
    sketch.data.dimension(1).categories[1].format = whole;
    sketch.data.dimension(0).categories[0].format = percent;
    sketch.data.setNumber(0, 1.25, one);
    const std::shared_ptr<const TableData> data = sketch.data.finish();
    const auto shown = [&] { return picture(layOut(makeTable(data, sketch.view, sketch.style))); };
    EXPECT_EQ(shown(), "\nc|kx|ky\nra|d1.3|d2%\nrb|d3.25|d4\n");
    sketch.style.setFormat(three);
    EXPECT_EQ(shown(), "\nc|kx|ky\nra|d1.250|d2.250\nrb|d3.250|d4.250\n");
    sketch.style.setCellFormat(3, two, 4);
    const TableGrid grid = layOut(makeTable(data, sketch.view, sketch.style));
    EXPECT_EQ(picture(grid), "\nc|kx|ky\nra|d1.250|d2.250\nrb|d3.250|d4.25\n");
    EXPECT_EQ(grid.cells.back().format, two);
    EXPECT_EQ(grid.cells.back().number, 4.25);
    EXPECT_EQ(grid.cells.back().kind, CellKind::number);
    EXPECT_EQ(grid.cells.back().place, 3U);
}

TEST(TableLayout, ShowsAGivenTextInThePlaceOfANumber) {
    TableSketch sketch({{Axis::row, "", {"a", "b"}}},
                       {"1.25", "long enough to stand in the texts only once"});
    sketch.data.setShown(0, "about one");
    EXPECT_EQ(picture(layOut(sketch.table())),
              "\nra|dabout one\nrb|dlong enough to stand in the texts only once\n");
}

TEST(TableLayout, KeepsOneCopyOfALongText) {
    const std::string text(1000, 'x');
    TableSketch sketch({{Axis::row, "", {"a", "b"}}, {Axis::row, "", {text, "c"}}}, {text, text, text, text});
    const TableGrid grid = layOut(sketch.table());
    EXPECT_LT(grid.texts.size(), 3 * text.size());
    EXPECT_EQ(grid.text(grid.cells.back()), text);
}

TEST(TableLayout, LettersFootnotesInReadingOrder) {
    TableSketch sketch({{Axis::row, "", {"a", "b"}}, {Axis::column, "", {"x", "y"}}}, {"1", "2", "3", "4"},
                       {"of b", "never", "of x", "of 4", "of hidden", "of 1"});
    sketch.data.dimension(0).categories[1].footnotes = {0};
    sketch.data.dimension(1).categories[0].footnotes = {2};
    sketch.data.setFootnotes(3, {3, 2});
    sketch.data.setFootnotes(0, {5});
    sketch.data.setFootnotes(2, {4});
    sketch.data.setShown(2, "3!");
    const std::shared_ptr<const TableData> data = sketch.data.finish();
    const TableGrid grid = layOut(makeTable(data, sketch.view, sketch.style));
    EXPECT_EQ(picture(grid), "\nc|kx [a]|ky\nra|d1 [b]|d2\nrb [c]|d3! [d]|d4 [e,a]\n");
    std::string notes;
    for (const GridFootnote& note : grid.footnotes) notes += note.mark + ':' + note.text + ';';
    EXPECT_EQ(notes, "a:of x;b:of 1;c:of b;d:of hidden;e:of 4;:never;");

    sketch.view.dimensions[1].hidden = {true, false};
    const TableGrid less = layOut(makeTable(data, sketch.view, sketch.style));
    EXPECT_EQ(picture(less), "\nc|ky\nra|d2\nrb [a]|d4 [b,c]\n");
    notes.clear();
    for (const GridFootnote& note : less.footnotes) notes += note.mark + ':' + note.text + ';';
    EXPECT_EQ(notes, "a:of b;b:of 4;c:of x;:never;");

    LayoutOptions options;
    options.notesAndCaptions = false;
    const TableGrid none = layOut(makeTable(data, sketch.view, sketch.style), options);
    EXPECT_EQ(picture(none), "\nc|ky\nra|d2\nrb|d4\n");
    EXPECT_THAT(none.footnotes, IsEmpty());
}

TEST(TableLayout, LettersLikeColumnsOfASpreadsheet) {
    const std::pair<std::size_t, const char*> cases[] = {{0, "a"},   {25, "z"},  {26, "aa"},  {27, "ab"},
                                                         {51, "az"}, {52, "ba"}, {701, "zz"}, {702, "aaa"}};
    for (const auto& [number, letters] : cases) EXPECT_EQ(footnoteLetters(number), letters);
}

TableSketch layered() {
    return {{{Axis::layer, "Sex", {"Female", "Male", "None"}},
             {Axis::layer, "", {"2025", "2026"}},
             {Axis::row, "", {"r"}}},
            {"1", "2", "3", "", "", ""}};
}

std::vector<std::string> layerTexts(const Table& table, LayerChoice choice) {
    std::vector<std::string> texts;
    for (const Place layer : layersOf(table, choice)) {
        const TableGrid grid = layOut(table, layer);
        texts.push_back(grid.layer.text + '=' + std::string(grid.text(grid.cells.back())));
    }
    return texts;
}

TEST(TableLayout, SaysTheLayers) {
    TableSketch sketch = layered();
    const std::shared_ptr<const TableData> data = sketch.data.finish();
    EXPECT_THAT(layerTexts(makeTable(data, sketch.view), LayerChoice::all),
                ElementsAre("Sex: Female, 2025=1", "Sex: Female, 2026=2", "Sex: Male, 2025=3",
                            "Sex: Male, 2026=", "Sex: None, 2025=", "Sex: None, 2026="));
    sketch.view.emptyLinesLeftOut = true;
    EXPECT_THAT(layerTexts(makeTable(data, sketch.view), LayerChoice::all),
                ElementsAre("Sex: Female, 2025=1", "Sex: Female, 2026=2", "Sex: Male, 2025=3"));
    sketch.view.dimensions[0].hidden = {true, false, false};
    sketch.view.dimensions[0].labelHidden = true;
    sketch.view.dimensions[1].shown = 1;
    EXPECT_THAT(layerTexts(makeTable(data, sketch.view), LayerChoice::all), ElementsAre("Male, 2025=3"));
    EXPECT_THAT(layerTexts(makeTable(data, sketch.view), LayerChoice::shown), ElementsAre("Male, 2026="));
}

TEST(TableLayout, LetsLettersGoOnOverLayers) {
    TableSketch sketch({{Axis::layer, "", {"one", "two"}}, {Axis::row, "", {"r"}}}, {"1", "2"},
                       {"second", "first", "never"});
    sketch.data.setFootnotes(0, {1});
    sketch.data.setFootnotes(1, {1, 0});
    LayoutOptions options;
    options.lettersGoOn = true;
    TableLayout layout(sketch.table(), options);
    const TableGrid one = layout.grid(0);
    const TableGrid two = layout.grid(1);
    EXPECT_EQ(picture(one) + picture(two), "\nrr|d1 [a]\n\nrr|d2 [a,b]\n");
    ASSERT_EQ(one.footnotes.size(), 2U);
    EXPECT_EQ(one.footnotes[1].text, "never");
    ASSERT_EQ(two.footnotes.size(), 1U);
    EXPECT_EQ(two.footnotes[0].mark, "b");
}

TEST(TableLayout, TakesWidthsFromTheInnermostColumnDimension) {
    TableSketch sketch(
        {{Axis::row, "", {"r"}}, {Axis::column, "", {"p", "q"}}, {Axis::column, "", {"x", "y"}}},
        {"1", "2", "3", "4"});
    sketch.style.setWidth(2, 1, 70);
    sketch.style.setWidth(1, 0, 10);
    sketch.view.maxColumnWidth = 100;
    const TableGrid grid = layOut(sketch.table());
    EXPECT_THAT(grid.widths, ElementsAre(std::nullopt, std::nullopt, 70, std::nullopt, 70));
    EXPECT_EQ(grid.maxColumnWidth, 100);
    EXPECT_EQ(grid.minColumnWidth, std::nullopt);
}

TEST(TableLayout, NamesWhatALabelBelongsTo) {
    TableSketch sketch({{Axis::row, "R", {"g/a", "b"}}, {Axis::column, "C", {"x"}}}, {"1", "2"});
    const TableGrid grid = layOut(sketch.table());
    std::string ids;
    for (const GridCell& cell : grid.cells) {
        if (cell.role == GridRole::data) continue;
        ids.append(grid.text(cell)) += ':';
        ids += cell.dimension == noDimension ? "-" : std::to_string(cell.dimension);
        ids += cell.category == noGroup ? "-" : std::to_string(cell.category);
        ids += cell.group == noGroup ? "- " : std::to_string(cell.group) + ' ';
    }
    EXPECT_EQ(ids, ":--- C:1-- R:0-- x:10- g:0-0 a:00- b:01- ");
}

TEST(TableLayout, ShowsTheFirstRowsOfATableBeyondAllLimits) {
    const std::vector<std::string> many(3000, "c");
    TableSketch sketch({{Axis::row, "", many}, {Axis::column, "", many}}, {"1"});
    const Table table = sketch.table();
    EXPECT_FALSE(fitsGrid(table));
    const TableGrid grid = layOut(table);
    EXPECT_EQ(grid.columns, 3001U);
    EXPECT_LT(grid.cells.size(), maximalEmptyPlaces + 4);
    EXPECT_GT(grid.cells.size(), maximalEmptyPlaces - 3001 - 4);
    EXPECT_TRUE(fitsGrid(twoByThree().table()));
}

TEST(TableLayout, ShowsOnlySomeOfGroupsThatNestTooDeep) {
    TableSketch sketch({{Axis::row, "", {"x"}}}, {"1"});
    for (GroupId i = 0; i < 1000; ++i) {
        sketch.data.dimension(0).groups.push_back({"g", i == 0 ? noGroup : i - 1});
    }
    sketch.data.dimension(0).categories[0].group = 999;
    EXPECT_EQ(layOut(sketch.table()).columns, 65U);
}

}  // namespace
}  // namespace vexa::tables
