#include "frontend/export/slides/slides_export.h"

#include <gtest/gtest.h>

#include "frontend/drawing/picture_drawing.h"
#include "tests/unit/export/export_samples.h"
#include "tests/unit/slides/slides_samples.h"

namespace vexa::frontend {
namespace {

using test::numbers;
using test::Presentation;

TEST(Slides, AreOneAnItemWithItsLabelAsTitle) {
    const Presentation made(everything());
    ASSERT_EQ(11U, made.slides());
    EXPECT_EQ("Income & growth", made.title(1));
    EXPECT_EQ("text", made.title(2));
    EXPECT_EQ("Two lines\nof text with </p><script>alert(1)</script>.\n", made.content(2));
    EXPECT_EQ("notes", made.title(3));
    EXPECT_EQ("Input: income.csv\n", made.content(3));
    EXPECT_EQ("Report", made.title(4));
    EXPECT_EQ("Income chart", made.title(5));
    EXPECT_EQ("[Income rises to the \"north\".]\n", made.content(5));
    EXPECT_EQ("MEANS income\n\tBY region.\n", made.content(7));
    EXPECT_EQ("There are empty cells.\n", made.content(8));
    EXPECT_EQ("[A dot]\n", made.content(9));
    EXPECT_EQ("Plain grid", made.title(10));
    EXPECT_EQ("|a|b\nx|1|2\n", made.content(10));
    EXPECT_EQ("first view\n", made.content(11));
}

TEST(Slides, HaveTablesWithMergedCellsAndMarks) {
    const Presentation made(everything());
    EXPECT_EQ(
        "Income by region\nSex: Male\n"
        "|>|Statistics|>\nRegion|>|Mean|N\nEurope|North|1.40|10\n^|South|2.50|9\nTotala|>||19\n"
        "Weighted.\na Without abroad.\n",
        made.content(4));
}

TEST(Slides, WithoutTitlesHaveOnlyThoseOfHeadings) {
    PptExport request;
    request.slideTitles = false;
    const Presentation made(R"({"type":"heading","text":"Part"},{"type":"text","label":"L","text":"a"},)" +
                                numbers("Report", 1, 1),
                            request);
    EXPECT_EQ("Part", made.title(1));
    EXPECT_EQ("(none)", made.title(2));
    EXPECT_EQ("a\n", made.content(2));
    EXPECT_EQ("(none)", made.title(3));
    EXPECT_EQ("Report\nRow|c1\nr1|1\n", made.content(3));
}

TEST(Slides, ShowATitleOnceWhereItIsTheLabelToo) {
    const Presentation same(numbers("Report", 1, 1));
    EXPECT_EQ("Report", same.title(1));
    EXPECT_EQ("Row|c1\nr1|1\n", same.content(1));
}

TEST(Slides, HavePageTitlesAtTheFootFromTheirPlaceOn) {
    const Presentation made(
        R"({"type":"text","text":"a"},{"type":"pageTitle","text":"One"},{"type":"pageTitle","text":"Two"},
           {"type":"text","text":"b"},{"type":"pageTitle","text":"Three"},{"type":"text","text":"c"})");
    ASSERT_EQ(3U, made.slides());
    EXPECT_EQ("(none)", made.footer(1));
    EXPECT_EQ("One\nTwo", made.footer(2));
    EXPECT_EQ("Three", made.footer(3));
    // The number beside it is there before a program counts.
    EXPECT_NE(std::string::npos, made.part("ppt/slides/slide2.xml").find("<a:t>2</a:t></a:fld>"));
}

TEST(Slides, OfPageTitlesAloneAreOne) {
    const Presentation made(R"({"type":"pageTitle","text":"One"})");
    ASSERT_EQ(1U, made.slides());
    EXPECT_EQ("One", made.footer(1));
}

TEST(Slides, HaveTheCaptionOnTheNotesPage) {
    const std::string table =
        numbers("Report", 1, 1, R"("caption":"Weighted.\nTwice.","footnotes":["Unmarked."])");
    const Presentation made(table);
    EXPECT_EQ("Row|c1\nr1|1\nWeighted.\nTwice.\nUnmarked.\n", made.content(1));
    EXPECT_EQ("Weighted.\nTwice.", made.notes(1));
    PptExport request;
    request.notesAndCaptions = false;
    const Presentation bare(table, request);
    EXPECT_EQ("Row|c1\nr1|1\n", bare.content(1));
    EXPECT_EQ("(none)", bare.notes(1));
}

TEST(Slides, OfALongTextGoOn) {
    std::string text;
    for (int i = 1; i <= 60; ++i) text += (i == 1 ? "line " : "\\nline ") + std::to_string(i);
    const Presentation made(R"({"type":"text","label":"Long","text":")" + text + "\"}");
    ASSERT_EQ(4U, made.slides());
    EXPECT_EQ("Long", made.title(1));
    EXPECT_EQ("Long (4/4)", made.title(4));
    std::string all;
    for (std::size_t i = 1; i <= 4; ++i) all += made.content(i);
    std::string expected;
    for (int i = 1; i <= 60; ++i) expected += "line " + std::to_string(i) + "\n";
    EXPECT_EQ(expected, all);
}

TEST(Slides, OfUnknownItemsShowTheLabelWithAWarning) {
    const Presentation made(R"({"type":"hologram","label":"Later"})");
    EXPECT_EQ("Later", made.title(1));
    ASSERT_EQ(1U, made.outcome().warnings.size());
    PptExport request;
    request.slideTitles = false;
    const Presentation bare(R"({"type":"hologram","label":"Later"})", request);
    EXPECT_EQ("Later\n", bare.content(1));
}

TEST(Slides, HavePicturesAsLargeAsTheyFit) {
    const std::string svg =
        R"({"type":"chart","svg":"<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'/>"})";
    PptExport request;
    request.slide = {400, 300};
    request.margins = {50, 50, 50, 50};
    request.slideTitles = false;
    const Presentation made(svg, request);
    EXPECT_EQ(std::to_string(300 * 12700), made.attribute(1, "//p:pic//a:ext[@cx]", "cx"));
    EXPECT_EQ(std::to_string(150 * 12700), made.attribute(1, "//p:pic//a:ext[@cx]", "cy"));
    EXPECT_EQ(std::to_string(75 * 12700), made.attribute(1, "//p:pic//a:off", "y"));
    EXPECT_EQ("rId2", made.attribute(1, "//a:blip", "r:embed"));
    EXPECT_EQ("rId3", made.attribute(1, "//asvg:svgBlip", "r:embed"));
    EXPECT_NE("(none)", made.part("ppt/media/image1.png"));
    EXPECT_NE("(none)", made.part("ppt/media/image2.svg"));
}

TEST(Slides, StoreEqualPicturesOnce) {
    const std::string dot =
        R"({"type":"chart","png":"iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg=="})";
    const Presentation made(dot + "," + dot);
    EXPECT_EQ("(none)", made.part("ppt/media/image2.png"));
    EXPECT_EQ("rId2", made.attribute(2, "//a:blip", "r:embed"));
}

TEST(Slides, OfTheSameDocumentAreTheSameBytes) {
    EXPECT_EQ(Presentation(everything()).bytes(), Presentation(everything()).bytes());
}

TEST(Slides, SayHowFarTheyAreAndCanBeStopped) {
    ViewerDocument document;
    fill(document, R"({"type":"text","text":"a"},{"type":"text","text":"b"})");
    const ExportFolder folder;
    ExportRequest request;
    request.ppt = PptExport{};
    request.ppt->file = folder.file("a.pptx");
    ExportSurroundings surroundings;
    surroundings.progress = [](std::size_t done, std::size_t) { return done < 1; };
    EXPECT_FALSE(exportDocument(document, request, surroundings).response.success);
    EXPECT_EQ("", folder.names());
}

}  // namespace
}  // namespace vexa::frontend
