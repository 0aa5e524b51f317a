#include "frontend/export/workbook/sheet_place.h"

#include <gtest/gtest.h>

#include <string>

namespace vexa::frontend {
namespace {

TEST(SheetPlace, IsReadAsItIsUsuallyTyped) {
    for (const char* const text : {"B3", "b3", "$B$3", "B$3", "$b3", "  B3\t", "B003"}) {
        EXPECT_EQ(parseSheetPlace(text), (SheetPlace{2, 1})) << text;
    }
    EXPECT_EQ(parseSheetPlace("A1"), (SheetPlace{0, 0}));
    EXPECT_EQ(parseSheetPlace("XFD1048576"), (SheetPlace{1'048'575, 16'383}));
}

TEST(SheetPlace, IsNothingElse) {
    for (const char* const text :
         {"", " ", "B", "3", "3B", "B0", "B-1", "B3.5", "B 3", "$$B3", "B3:C4", "Sheet!B3",
          "\xC3\x84"
          "1",
          "B3$", "R1C1", "@1", "`1", "[1"}) {
        EXPECT_FALSE(parseSheetPlace(text)) << text;
    }
}

TEST(SheetPlace, HasANameAgain) {
    for (const char* const text : {"A1", "Z9", "AA10", "AZ1", "BA1", "ZZ1", "AAA1", "XFD1048576"}) {
        EXPECT_EQ(sheetPlaceName(*parseSheetPlace(text)), text);
    }
}

TEST(SheetPlace, StaysWithinTheSheet) {
    ExportReport report;
    EXPECT_EQ(startPlace("IV65536", binarySheetLimits, report), (SheetPlace{65'535, 255}));
    EXPECT_FALSE(report.failed());
    for (const char* const text :
         {"IW1", "A65537", "ZZZZZZZZZZZZZZZZZZZZZZZZZZ1", "A99999999999999999999999999"}) {
        ExportReport refused;
        EXPECT_FALSE(startPlace(text, binarySheetLimits, refused)) << text;
        EXPECT_EQ(refused.error(), ExportError::other);
        EXPECT_NE(refused.reason().find("IV65536"), std::string::npos) << refused.reason();
    }
    ExportReport noCell;
    EXPECT_FALSE(startPlace("3B", binarySheetLimits, noCell));
    EXPECT_NE(noCell.reason().find("3B"), std::string::npos);
}

TEST(SheetPlace, LeavesRoomForWhatBeginsThere) {
    ExportReport report;
    EXPECT_TRUE(fitsFrom({65'535, 255}, 1, 1, binarySheetLimits, report));
    EXPECT_TRUE(fitsFrom({0, 0}, 65'536, 256, binarySheetLimits, report));
    EXPECT_FALSE(fitsFrom({0, 1}, 1, 256, binarySheetLimits, report));
    EXPECT_EQ(report.error(), ExportError::tooManyColumns);
    ExportReport rows;
    EXPECT_FALSE(fitsFrom({1, 0}, 65'536, 1, binarySheetLimits, rows));
    EXPECT_EQ(rows.error(), ExportError::other);
    EXPECT_NE(rows.reason().find("65535"), std::string::npos);
}

}  // namespace
}  // namespace vexa::frontend
