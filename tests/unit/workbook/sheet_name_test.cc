#include "frontend/export/workbook/sheet_name.h"

#include <gtest/gtest.h>

#include <string>

namespace vexa::frontend {
namespace {

TEST(SheetName, MayHaveThirtyOneUnits) {
    EXPECT_EQ(sheetNameError(std::string(31, 'x')), ExportError::none);
    EXPECT_EQ(sheetNameError(std::string(32, 'x')), ExportError::sheetNameTooLong);
    std::string umlauts;
    for (int i = 0; i < 31; ++i) umlauts += "\xC3\xA4";
    EXPECT_EQ(sheetNameError(umlauts), ExportError::none);
    std::string beyondThePlane;
    for (int i = 0; i < 16; ++i) beyondThePlane += "\xF0\x9F\x98\x80";
    EXPECT_EQ(sheetNameError(beyondThePlane), ExportError::sheetNameTooLong);
}

TEST(SheetName, HoldsNoneOfTheForbiddenCharacters) {
    for (const char each : std::string(":\\/?*[]\n\x7F")) {
        EXPECT_EQ(sheetNameError(std::string("a") + each + "b"), ExportError::sheetNameForbidden) << each;
    }
    for (const char* const name : {"", "'a", "a'", "'"}) {
        EXPECT_EQ(sheetNameError(name), ExportError::sheetNameForbidden) << name;
    }
    for (const char* const name : {"Output", "it's", " a ", "a.b,c;d!e", "1", "\"x\"", "<&>", "(a|b)"}) {
        EXPECT_EQ(sheetNameError(name), ExportError::none) << name;
    }
}

TEST(SheetName, ThatIsTooLongIsSaidFirst) {
    EXPECT_EQ(sheetNameError(std::string(32, '*')), ExportError::sheetNameTooLong);
}

TEST(SheetName, FailsTheReportWithAReason) {
    ExportReport report;
    EXPECT_TRUE(checkSheetName("Output", report));
    EXPECT_FALSE(report.failed());
    EXPECT_FALSE(checkSheetName("a/b", report));
    EXPECT_EQ(report.error(), ExportError::sheetNameForbidden);
    EXPECT_NE(report.reason().find("\"a/b\""), std::string::npos);
    ExportReport other;
    EXPECT_FALSE(checkSheetName(std::string(40, 'x'), other));
    EXPECT_EQ(other.error(), ExportError::sheetNameTooLong);
    EXPECT_NE(other.reason().find("40"), std::string::npos);
}

TEST(SheetName, IsTheSameInAnyCase) {
    EXPECT_TRUE(isSameSheetName("Output", "oUTPUT"));
    EXPECT_TRUE(isSameSheetName("\xC3\x84pfel", "\xC3\xA4pfel"));
    EXPECT_FALSE(isSameSheetName("Output", "Output "));
}

}  // namespace
}  // namespace vexa::frontend
