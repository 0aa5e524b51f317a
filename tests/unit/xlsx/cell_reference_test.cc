#include "frontend/export/workbook/cell_reference.h"

#include <gtest/gtest.h>

#include "frontend/export/workbook/sheet_footprint.h"
#include "tests/unit/xlsx/workbook_samples.h"

namespace vexa::frontend {
namespace {

TEST(CellReference, GoesBothWays) {
    for (const char* text : {"A1", "Z9", "AA10", "AZ99", "BA100", "ZZ5", "AAA1", "XFD1048576"}) {
        const auto spot = readSpot(text);
        ASSERT_TRUE(spot) << text;
        std::string again;
        appendSpot(again, *spot);
        EXPECT_EQ(again, text);
    }
    EXPECT_EQ(readSpot("$b$12"), (SheetSpot{11, 1}));
    EXPECT_EQ(readColumn("XFD"), 16'383U);
}

TEST(CellReference, RefusesWhatIsNoCell) {
    for (const char* text :
         {"", "A", "1", "A0", "XFE1", "A1048577", "AAAA1", "A1B", "A-1", "A 1", "A99999999"}) {
        EXPECT_FALSE(readSpot(text)) << text;
    }
    EXPECT_FALSE(readRange("A1:"));
    EXPECT_FALSE(readRanges("A1 B"));
}

TEST(CellReference, RangesHaveTheirCornersInOrder) {
    EXPECT_EQ(readRange("C3:B2"), (SheetRange{1, 1, 2, 2}));
    EXPECT_EQ(rangeText(*readRange("$B$2:$C$3")), "B2:C3");
    EXPECT_EQ(rangeText(*readRange("B2")), "B2");
    EXPECT_EQ(readRanges("A1  B2:C3")->size(), 2U);
}

TEST(SheetFootprint, KnowsWhatItTakes) {
    ContentMaker maker;
    maker.number(0, 0, 1).number(0, 2, 1).number(2, 1, 1);
    const SheetFootprint footprint(maker.content, {4, 1});
    EXPECT_EQ(rangeText(footprint.box()), "B5:D7");
    EXPECT_TRUE(footprint.hasCell({4, 1}));
    EXPECT_FALSE(footprint.hasCell({4, 2}));
    EXPECT_FALSE(footprint.hasCell({0, 0}));
    EXPECT_TRUE(footprint.touches(*readRange("C5")));
    EXPECT_FALSE(footprint.touches(*readRange("A6:Z6")));
    EXPECT_TRUE(footprint.covers(*readRange("B5:D5")));
    EXPECT_FALSE(footprint.covers(*readRange("B5:D6")));
}

TEST(SheetFootprint, LeavesTheRestOfARange) {
    ContentMaker maker;
    maker.number(0, 0, 1).number(0, 1, 1).number(1, 0, 1).number(1, 1, 1);
    const SheetFootprint footprint(maker.content, {2, 2});
    std::string left;
    for (const SheetRange& range : footprint.without(*readRange("A1:F9"))) {
        left += rangeText(range) + " ";
    }
    EXPECT_EQ(left, "A1:F2 A3:B4 E3:F4 A5:F9 ");
    EXPECT_EQ(footprint.without(*readRange("C3:D4")).size(), 0U);
    EXPECT_EQ(rangeText(footprint.without(*readRange("A1:B2")).front()), "A1:B2");
}

}  // namespace
}  // namespace vexa::frontend
