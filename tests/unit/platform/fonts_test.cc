#include "backend/platform/fonts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "backend/platform/font_entry.h"
#include "backend/platform/system_fonts.h"

namespace vexa {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Fonts : public testing::Test {
  protected:
    ~Fonts() override { installFonts(std::nullopt); }
};

TEST_F(Fonts, AreThoseThatWereInstalled) {
    installFonts({{"Times", "Écriture", " Arial ", "", "arial", "Times"}});
    EXPECT_THAT(installedFonts(), ElementsAre(" Arial ", "Times", "Écriture"));
    for (const char* family : {"Arial", "ARIAL", "  arial\t", "times", "écriture", "ÉCRITURE"}) {
        EXPECT_TRUE(isFontInstalled(family)) << family;
    }
    for (const char* family : {"", " ", "Ari", "Arial Black", "Times, serif", "Ecriture", "A rial", "\xFF"}) {
        EXPECT_FALSE(isFontInstalled(family)) << family;
    }
}

TEST_F(Fonts, GenericFamiliesAlwaysAre) {
    installFonts({{}});
    EXPECT_THAT(installedFonts(), IsEmpty());
    for (const char* family : {"serif", "Sans-Serif", " MONOSPACE "})
        EXPECT_TRUE(isFontInstalled(family)) << family;
    EXPECT_FALSE(isFontInstalled("cursive"));
}

TEST_F(Fonts, OfTheSystemAreKnownByEachOfTheirNames) {
    const std::vector<std::string> families = installedFonts();
    EXPECT_TRUE(std::is_sorted(families.begin(), families.end()));
    EXPECT_EQ(std::adjacent_find(families.begin(), families.end()), families.end());
    for (const std::string& family : systemFonts()) EXPECT_TRUE(isFontInstalled(family)) << family;
    for (const std::string& family : families) {
        EXPECT_TRUE(isFontInstalled(' ' + family)) << family;
        EXPECT_FALSE(isFontInstalled(family + " that nobody has drawn")) << family;
    }
}

TEST(FontEntry, NamesFamilies) {
    EXPECT_THAT(familiesOfFontEntry("Arial (TrueType)"), ElementsAre("Arial"));
    EXPECT_THAT(familiesOfFontEntry("Arial Bold Italic (TrueType)"), ElementsAre("Arial"));
    EXPECT_THAT(familiesOfFontEntry("Arial Black (TrueType)"), ElementsAre("Arial Black"));
    EXPECT_THAT(familiesOfFontEntry("Times New Roman Italic"), ElementsAre("Times New Roman"));
    EXPECT_THAT(familiesOfFontEntry("Cambria & Cambria Math (TrueType)"),
                ElementsAre("Cambria", "Cambria Math"));
    EXPECT_THAT(familiesOfFontEntry("One Bold & One UI Bold & One P (TrueType)"),
                ElementsAre("One", "One UI", "One P"));
    EXPECT_THAT(familiesOfFontEntry("Small Fonts 8,10,12 (VGA res)"), ElementsAre("Small Fonts"));
    EXPECT_THAT(familiesOfFontEntry("Letters 2 (OpenType)"), ElementsAre("Letters 2"));
    EXPECT_THAT(familiesOfFontEntry("Bold"), ElementsAre("Bold"));
    EXPECT_THAT(familiesOfFontEntry("Bold Italic"), ElementsAre("Bold"));
    EXPECT_THAT(familiesOfFontEntry(" (TrueType)"), ElementsAre("(TrueType)"));
    EXPECT_THAT(familiesOfFontEntry("  "), IsEmpty());
    EXPECT_THAT(familiesOfFontEntry(""), IsEmpty());
    EXPECT_THAT(familiesOfFontEntry(" & "), ElementsAre("&"));
    EXPECT_THAT(familiesOfFontEntry("A & & B"), ElementsAre("A", "& B"));
}

}  // namespace
}  // namespace vexa
