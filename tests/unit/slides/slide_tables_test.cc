#include "frontend/export/slides/slide_tables.h"

#include <gtest/gtest.h>

#include "tests/unit/slides/slides_samples.h"

namespace vexa::frontend {
namespace {

using test::numbers;
using test::Presentation;

PptExport smallSlides(double width = 300, double height = 200) {
    PptExport request;
    request.slide = {width, height};
    request.margins = {10, 30, 10, 10};
    return request;
}

TEST(SlideTables, GoOnWithTheirColumnLabels) {
    const Presentation made(numbers("Long", 30, 2), smallSlides());
    ASSERT_GT(made.slides(), 2U);
    std::string rows;
    for (std::size_t i = 1; i <= made.slides(); ++i) {
        const std::string content = made.content(i);
        EXPECT_TRUE(content.starts_with("Row|c1|c2\n")) << content;
        rows += content.substr(10);
    }
    std::string expected;
    for (int i = 0; i < 30; ++i) {
        expected += "r" + std::to_string(i + 1) + "|" + std::to_string(2 * i + 1) + "|" +
                    std::to_string(2 * i + 2) + "\n";
    }
    EXPECT_EQ(expected, rows);
    EXPECT_EQ("Long (2/" + std::to_string(made.slides()) + ")", made.title(2));
}

TEST(SlideTables, RepeatLabelsThatCoverRowsOfSeveralSlides) {
    const Presentation made(
        R"({"type":"table","label":"T","rows":[{"label":"Row","categories":[{"group":"All","categories":[
            "a","b","c","d","e","f","g","h","i","j","k","l","m","n","o","p","q","r","s","t"]}]}],
            "columns":[{"label":"C","labelHidden":true,"categories":["x"]}],
            "cells":[1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20]})",
        smallSlides());
    ASSERT_EQ(3U, made.slides());
    EXPECT_EQ("Row|>|x\nAll|a|1\n^|b|2\n", made.content(1).substr(0, 22)) << made.content(1);
    EXPECT_NE(std::string::npos, made.content(2).find("\nAll|")) << made.content(2);
    int rows = 0;
    for (std::size_t i = 1; i <= 3; ++i) {
        rows += std::stoi(made.attribute(i, "//a:tc[@rowSpan]", "rowSpan"));
    }
    EXPECT_EQ(20, rows);
}

TEST(SlideTables, HaveTheFootnotesOfTheirOwnRows) {
    std::string table = numbers("T", 30, 1, R"("footnotes":["First.","Second."])");
    table.replace(table.find("\"r1\""), 4, R"({"label":"r1","footnotes":[1]})");
    table.replace(table.find("\"r30\""), 5, R"({"label":"r30","footnotes":[2]})");
    const Presentation made(table, smallSlides());
    const std::size_t last = made.slides();
    ASSERT_GT(last, 1U);
    EXPECT_NE(std::string::npos, made.content(1).find("\nr1a|1\n"));
    EXPECT_TRUE(made.content(1).ends_with("\na First.\n")) << made.content(1);
    EXPECT_TRUE(made.content(last).ends_with("\nr30b|30\nb Second.\n")) << made.content(last);
    EXPECT_EQ(std::string::npos, made.content(last).find("First"));
}

TEST(SlideTables, ThatAreTooWideGoOnWithFurtherColumns) {
    PptExport request = smallSlides();
    const Presentation wrapped(numbers("Wide", 2, 40), request);
    ASSERT_GT(wrapped.slides(), 1U);
    std::string heads;
    for (std::size_t i = 1; i <= wrapped.slides(); ++i) {
        const std::string content = wrapped.content(i);
        EXPECT_NE(std::string::npos, content.find("\nr1|")) << content;
        heads += content.substr(3, content.find('\n') - 3);
    }
    EXPECT_TRUE(heads.starts_with("|c1|c2|c3|")) << heads;
    EXPECT_TRUE(heads.ends_with("|c39|c40")) << heads;
    EXPECT_TRUE(wrapped.outcome().response.warnings[1].empty());
}

TEST(SlideTables, ThatAreTooWideShrinkOnWish) {
    PptExport request = smallSlides();
    request.wideTables = WideTables::shrink;
    const Presentation made(numbers("Wide", 2, 40), request);
    EXPECT_EQ(1U, made.slides());
    EXPECT_LT(std::stoi(made.attribute(1, "//a:tc//a:rPr", "sz")), 900);
    EXPECT_LE(std::stoi(made.attribute(1, "//p:xfrm/a:ext", "cx")), 280 * 12700);
}

TEST(SlideTables, ThatAreTooWideCanStayWithAWarning) {
    PptExport request = smallSlides();
    request.wideTables = WideTables::asIs;
    const Presentation made(numbers("Wide", 2, 40), request);
    EXPECT_EQ(1U, made.slides());
    EXPECT_EQ("900", made.attribute(1, "//a:tc//a:rPr", "sz"));
    ASSERT_EQ(1U, made.outcome().response.warnings[1].size());
    EXPECT_EQ("Wide", made.outcome().response.warnings[1].front().second);
}

TEST(SlideTables, WithARowThatIsHigherThanASlideAreCutWithAWarning) {
    std::string words;
    for (int i = 0; i < 400; ++i) words += "word ";
    std::string table = numbers("T", 1, 1);
    table.replace(table.find("\"r1\""), 4, "\"" + words + "\"");
    const Presentation made(table, smallSlides());
    ASSERT_EQ(1U, made.outcome().response.warnings[0].size());
    ASSERT_EQ(1U, made.outcome().response.warnings[2].size());
}

TEST(SlideTables, WithRoomToSpareBecomeLarger) {
    std::string table = numbers("T", 2, 2);
    const Presentation made(table);
    EXPECT_EQ("1600", made.attribute(1, "//a:tr[2]/a:tc[2]//a:rPr", "sz"));
    EXPECT_GT(std::stoi(made.attribute(1, "//a:tcPr", "marL")), 4 * 12700);
    // It grows only as far as it stays on its slide.
    const Presentation higher(numbers("T", 20, 2));
    EXPECT_EQ(1U, higher.slides());
    const int size = std::stoi(higher.attribute(1, "//a:tr[2]/a:tc[2]//a:rPr", "sz"));
    EXPECT_GT(size, 900);
    EXPECT_LT(size, 1600);
    const Presentation longer(numbers("T", 60, 2));
    EXPECT_GT(longer.slides(), 1U);
    EXPECT_EQ("900", longer.attribute(1, "//a:tr[2]/a:tc[2]//a:rPr", "sz"));
}

TEST(SlideTables, KeepTheSizesThatTheDocumentSets) {
    std::string sized = numbers("T", 2, 2);
    sized.replace(sized.find("[1,2"), 4, R"([{"value":1,"size":7},2)");
    const Presentation letters(sized);
    EXPECT_EQ("700", letters.attribute(1, "//a:tr[2]/a:tc[2]//a:rPr", "sz"));
    EXPECT_EQ("900", letters.attribute(1, "//a:tr[2]/a:tc[3]//a:rPr", "sz"));
    std::string wide = numbers("T", 2, 2);
    wide.replace(wide.find("\"c2\""), 4, R"({"label":"c2","width":100})");
    const Presentation widths(wide);
    EXPECT_EQ("900", widths.attribute(1, "//a:tr[2]/a:tc[2]//a:rPr", "sz"));
    EXPECT_EQ("1270000", widths.attribute(1, "//a:gridCol[3]", "w"));
    // That of the title does not keep the cells from growing.
    PptExport request;
    request.slideTitles = false;
    const Presentation titled(numbers("T", 2, 2, R"("titleStyle":{"size":13})"), request);
    EXPECT_EQ("1300", titled.attribute(1, "//p:sp//a:rPr", "sz"));
    EXPECT_EQ("1600", titled.attribute(1, "//a:tr[2]/a:tc[2]//a:rPr", "sz"));
}

TEST(SlideTables, WithoutVisibleRowsShowWhatStandsAroundThem) {
    const Presentation made(
        R"({"type":"table","label":"Empty","title":"All hidden","caption":"Weighted.",
            "rows":[{"label":"R","categories":[{"label":"a","hidden":true}]}],
            "columns":[{"label":"C","categories":["x"]}],"cells":[1]})");
    ASSERT_EQ(1U, made.slides());
    EXPECT_EQ("Empty", made.title(1));
    EXPECT_EQ("All hidden\nWeighted.\n", made.content(1));
}

TEST(SlideTables, HaveTheStylesOfTheirCells) {
    std::string table = numbers("T", 1, 2);
    table.replace(table.find("[1,2]"), 5,
                  R"([{"value":1.5,"bold":true,"italic":true,"underline":true,"size":20,"font":"Georgia",
                       "color":"#aa0000","background":"#ffee88"},2])");
    const Presentation made(table);
    const std::string cell = "//a:tr[2]/a:tc[2]";
    EXPECT_EQ("2000", made.attribute(1, (cell + "//a:rPr").c_str(), "sz"));
    EXPECT_EQ("1", made.attribute(1, (cell + "//a:rPr").c_str(), "b"));
    EXPECT_EQ("1", made.attribute(1, (cell + "//a:rPr").c_str(), "i"));
    EXPECT_EQ("sng", made.attribute(1, (cell + "//a:rPr").c_str(), "u"));
    EXPECT_EQ("AA0000", made.attribute(1, (cell + "//a:rPr/a:solidFill/a:srgbClr").c_str(), "val"));
    EXPECT_EQ("Georgia", made.attribute(1, (cell + "//a:latin").c_str(), "typeface"));
    EXPECT_EQ("r", made.attribute(1, (cell + "//a:pPr").c_str(), "algn"));
    EXPECT_EQ("FFEE88", made.attribute(1, (cell + "/a:tcPr/a:solidFill/a:srgbClr").c_str(), "val"));
    EXPECT_EQ("(none)", made.attribute(1, "//a:tr[2]/a:tc[3]/a:tcPr/a:solidFill/a:srgbClr", "val"));
}

}  // namespace
}  // namespace vexa::frontend
