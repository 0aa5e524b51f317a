// On which side texts among numbers stand.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/unit/tables/table_sketch.h"

namespace vexa::tables {
namespace {

/// The texts of the data cells that stand on the right where the look leaves it to them, with blanks between.
std::string onTheRight(const TableGrid& grid) {
    std::string texts;
    for (const GridCell& cell : grid.cells) {
        if (!cell.alignsRight) continue;
        EXPECT_EQ(cell.role, GridRole::data);
        texts += (texts.empty() ? "" : " ") + std::string(grid.text(cell));
    }
    return texts;
}

TableSketch columns(std::vector<std::string> cells) {
    return {{{Axis::row, "R", {"1", "2", "3"}}, {Axis::column, "C", {"a", "b"}}}, std::move(cells)};
}

TEST(ColumnContents, TextsFollowTheNumbersOfTheirColumn) {
    EXPECT_EQ(onTheRight(layOut(columns({"1", "x", "few", "7", "3", "y"}).table())), "1 few 7 3");
}

TEST(ColumnContents, AsManyWordsAsNumbersStayOnTheirSides) {
    EXPECT_EQ(onTheRight(layOut(columns({"1", "", "few", "", "", ""}).table())), "1");
}

TEST(ColumnContents, SignsOfMissingValuesAreNoWords) {
    EXPECT_EQ(onTheRight(layOut(columns({"1", "\xE2\x80\x93", "-", "\xE2\x80\x93", "*", "..."}).table())),
              "1 \xE2\x80\x93 - \xE2\x80\x93 * ...");
    EXPECT_EQ(onTheRight(layOut(columns({"x", "-", "y", "-", "z", "-"}).table())), "");
}

TEST(ColumnContents, AColumnWithAFormatIsOneOfNumbers) {
    TableSketch sketch = columns({"n.s.", "n.s.", "", "", "n.s.", ""});
    sketch.data.dimension(1).categories[0].format = *parseFormat("F8.3");
    EXPECT_EQ(onTheRight(layOut(sketch.table())), "n.s. n.s.");
}

TEST(ColumnContents, WrittenNumbersOfATableWithoutItsDataModelStandOnTheRight) {
    FlatTable flat;
    flat.columns = 5;
    flat.headerRows = 1;
    for (const char* const text : {"Order", "Sum", "Share", "Remark", "Empty",  //
                                   "007", "$1,234.50", "12%", "80", "",         //
                                   "12", "-3.2E-05", "-", "none", ""}) {
        flat.cells.push_back({text, 0});
    }
    EXPECT_EQ(onTheRight(layOut(flat)), "$1,234.50 12% -3.2E-05 -");
}

}  // namespace
}  // namespace vexa::tables
