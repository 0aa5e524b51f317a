#include "frontend/export/workbook/sheet_fitting.h"

#include <gtest/gtest.h>

#include <string>

#include "frontend/export/font_widths.h"
#include "tests/unit/workbook/sheet_samples.h"

namespace vexa::frontend {
namespace {

std::string table(const std::string& column, const std::string& cell, const std::string& more = {}) {
    return R"({"type": "table", "label": "T", "columns": [{"label": "", "labelHidden": true, "categories": [)" +
           column + R"(]}], "cells": [)" + cell + "]" + more + "}";
}

double widthIn9(const std::string& text) { return FontWidths("sans-serif", 9, false).width(text); }

TEST(SheetFitting, ShowsNumbersWholeWhateverWidthIsAskedFor) {
    const BuiltSheet sheet(table(R"({"label": "c", "width": 20, "format": "F8.2"})", "123456789012"));
    EXPECT_GT(sheet.widthOf("A"), widthIn9("123456789012.00"));
    EXPECT_LT(sheet.widthOf("A"), widthIn9("123456789012.00") + 12);
    const BuiltSheet most(
        table(R"({"label": "c", "format": "F8.2"})", "123456789012", R"(, "maxColumnWidth": 30)"));
    EXPECT_GT(most.widthOf("A"), widthIn9("123456789012.00"));
}

TEST(SheetFitting, TakesTheWidthsThatAreAskedFor) {
    EXPECT_EQ(BuiltSheet(table(R"({"label": "c", "width": 90})", "1")).widthOf("A"), 90);
    EXPECT_EQ(BuiltSheet(table(R"("c")", "1", R"(, "minColumnWidth": 77)")).widthOf("A"), 77);
}

TEST(SheetFitting, WrapsLongLabelsInsteadOfWideningTheirColumn) {
    const std::string label = "A label of several words that nobody wants to see in one line over numbers";
    const BuiltSheet sheet(table("\"" + label + "\"", "1"));
    EXPECT_GT(widthIn9(label), 200);
    EXPECT_EQ(sheet.widthOf("A"), 100);
    EXPECT_TRUE(sheet.styleAt("A1").wraps);
    EXPECT_EQ(sheet.heightOf(1), 46.25);
}

TEST(SheetFitting, LeavesColumnsAsTheirWidestTableNeedsThem) {
    const BuiltSheet sheet(table(R"({"label": "c", "width": 50})", "1") + "," +
                           table(R"({"label": "c", "width": 70})", "1") + "," +
                           table(R"({"label": "c", "width": 60})", "1"));
    EXPECT_EQ(sheet.widthOf("A"), 70);
}

TEST(SheetFitting, DoesNotWidenColumnsForTitlesButTakesFurtherOnes) {
    const std::string title = "A title that is wider than the table of a single column";
    const BuiltSheet sheet(table(R"({"label": "c", "width": 50})", "1", R"(, "title": ")" + title + "\""));
    EXPECT_EQ(sheet.widthOf("A"), 50);
    EXPECT_EQ(sheet.at("A1"), title);
    EXPECT_EQ(sheet.merged(), "A1:F1 ");
    EXPECT_EQ(sheet.at("F1"), "(blank)");
    EXPECT_EQ(sheet.heightOf(1), 0);
}

TEST(SheetFitting, WrapsTitlesThatAreLongerThanALine) {
    std::string title;
    for (int i = 0; i < 40; ++i) title += "word and ";
    const BuiltSheet sheet(table(R"({"label": "c", "width": 100})", "1", R"(, "title": ")" + title + "\""));
    EXPECT_EQ(sheet.merged(), "A1:I1 ") << "480 points, and what the column has more";
    EXPECT_NEAR(sheet.heightOf(1), 5 * 10 * 1.2 + 3, 13);
}

TEST(SheetFitting, LetsShortTextsFlowOverAndWrapsLongOnes) {
    std::string longText;
    for (int i = 0; i < 60; ++i) longText += "word and ";
    const BuiltSheet sheet(
        R"({"type": "text", "text": "A line that is wider than the column but not long.\n)" + longText +
        "\"}");
    EXPECT_EQ(sheet.merged(), "A2:J2 ");
    EXPECT_FALSE(sheet.styleAt("A1").wraps);
    EXPECT_TRUE(sheet.styleAt("A2").wraps);
    EXPECT_EQ(sheet.heightOf(1), 0);
    EXPECT_GT(sheet.heightOf(2), 4 * 10);
}

TEST(SheetFitting, GivesTextsSeveralRowsThatNoRowIsHighEnoughFor) {
    std::string longText;
    for (int i = 0; i < 1'500; ++i) longText += "word and ";
    const BuiltSheet sheet(R"({"type": "text", "text": ")" + longText +
                           R"("}, {"type": "text", "text": "next"})");
    EXPECT_EQ(sheet.merged(), "A1:J6 ");
    EXPECT_EQ(sheet.at("A8"), "next");
    EXPECT_GT(sheet.heightOf(1), 250);
    EXPECT_EQ(sheet.heightOf(1), sheet.heightOf(6));
}

TEST(SheetFitting, RaisesRowsUnderLabelsOverSeveralOfThem) {
    const BuiltSheet sheet(
        R"({"type": "table", "label": "T", "rows": [{"label": "", "labelHidden": true, "categories": [
    {"group": "A group whose label goes on for so long that it does not fit in the two rows that it stands beside, whatever is done, since it has more than four lines in the widest column that labels get", "categories": ["a", "b"]}]}],
  "columns": [{"label": "C", "categories": ["x"]}], "cells": [1, 2]})");
    EXPECT_EQ(sheet.widthOf("A"), 220);
    EXPECT_EQ(sheet.heightOf(3), 0);
    EXPECT_GT(sheet.heightOf(4), 20);
}

TEST(SheetFitting, FillsTheBackgroundOfTextsOverTheirWholeWidth) {
    const BuiltSheet sheet(
        R"({"type": "text", "text": "plain"}, {"type": "text", "text": "A text with a background of its own", "style": {"background": "#ddeeff"}})");
    EXPECT_EQ(sheet.merged(), "A3:D3 ");
    for (const char* const cell : {"A3", "B3", "D3"}) {
        EXPECT_EQ(sheet.styleAt(cell).background, tables::Color{0xDDEEFF}) << cell;
    }
}

TEST(SheetFitting, RaisesRowsForLargeFontsAndLineEnds) {
    const BuiltSheet sheet(
        R"({"type": "heading", "text": "H"}, {"type": "text", "text": "t"}, {"type": "text", "text": "T", "style": {"size": 28}},)" +
        table(R"("c")", R"({"value": 1, "size": 20})") + "," + table(R"("c")", R"("two\nlines")"));
    EXPECT_EQ(sheet.heightOf(1), 18.75);
    EXPECT_EQ(sheet.heightOf(3), 0);
    EXPECT_EQ(sheet.heightOf(5), 36.75);
    EXPECT_EQ(sheet.heightOf(7), 0);
    EXPECT_EQ(sheet.heightOf(8), 27);
    EXPECT_EQ(sheet.heightOf(11), 24.75);
}

}  // namespace
}  // namespace vexa::frontend
