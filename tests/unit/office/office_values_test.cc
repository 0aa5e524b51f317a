#include "frontend/export/office/office_values.h"

#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

TEST(OfficeValues, MeasuresAreInTheUnitsOfTheFormat) {
    EXPECT_EQ(12'700, emuOf(1));
    EXPECT_EQ(914'400, emuOf(72));
    EXPECT_EQ(1'440, twipsOf(72));
    EXPECT_EQ(21, halfPointsOf(10.5));
    EXPECT_EQ(1'050, hundredthsOf(10.5));
    EXPECT_EQ(100, hundredthsOf(0));
    EXPECT_EQ(2 * 1'638, halfPointsOf(1e30));
}

TEST(OfficeValues, ColorsAreSixDigits) {
    EXPECT_EQ("000000", officeColor({0}));
    EXPECT_EQ("1F6FB2", officeColor({0x1F6FB2}));
}

TEST(OfficeValues, GeneralFamiliesHaveFontsThatProgramsHave) {
    EXPECT_EQ("Arial", officeFont("sans-serif"));
    EXPECT_EQ("Arial", officeFont(""));
    EXPECT_EQ("Times New Roman", officeFont("serif"));
    EXPECT_EQ("Courier New", officeFont("monospace"));
    EXPECT_EQ("DejaVu Sans", officeFont("DejaVu Sans"));
}

TEST(OfficeValues, LanguagesHaveARegion) {
    EXPECT_EQ("en-US", officeLanguage(""));
    EXPECT_EQ("de-DE", officeLanguage("de"));
    EXPECT_EQ("pt-BR", officeLanguage("pt_BR"));
    EXPECT_EQ("zh-TW", officeLanguage("zh_TW"));
    EXPECT_EQ("sv", officeLanguage("sv"));
}

}  // namespace
}  // namespace vexa::frontend
