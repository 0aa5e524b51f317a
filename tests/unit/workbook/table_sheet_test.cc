#include <gtest/gtest.h>

#include <set>
#include <string>

#include "frontend/export/workbook/sheet_styles.h"
#include "tests/unit/workbook/sheet_samples.h"

namespace vexa::frontend {
namespace {

using tables::Color;
using tables::HorizontalAlign;
using tables::LineStyle;

std::string tableWith(const std::string& cells, const std::string& more = {}) {
    return R"({"type": "table", "label": "T", "columns": [{"label": "", "labelHidden": true, "categories": [{"label": "c", "format": "F8.2"}]}], "cells": [)" +
           cells + "]" + more + "}";
}

/// The lines at the sides of a cell: top, right, bottom, left; '.' for none.
std::string linesOf(const SheetStyle& style) {
    constexpr std::string_view letters = ".tmkdao";
    std::string lines;
    for (const tables::BorderLine& line : style.borders)
        lines += letters[static_cast<std::size_t>(line.style)];
    return lines;
}

TEST(TableSheet, GivesNumbersWithMarksACodeWithTheMarks) {
    const BuiltSheet sheet(
        tableWith(R"({"value": 1.5, "footnotes": [1, 2]})", R"(, "footnotes": ["x", "y"])"));
    EXPECT_EQ(sheet.at("A2"), "1.5 0.00\" [a,b]\"");
    EXPECT_EQ(sheet.at("A3"), "[a] x");
}

TEST(TableSheet, KeepsTheNumberUnderAnotherText) {
    EXPECT_EQ(BuiltSheet(tableWith(R"({"value": 0.0004, "text": "<.001"})")).at("A2"),
              "0.0004 \"<.001\";\"<.001\"");
    EXPECT_EQ(BuiltSheet(tableWith(R"({"value": 0.5, "text": "0.50"})")).at("A2"), "0.5 0.00");
    EXPECT_EQ(
        BuiltSheet(tableWith(R"({"value": 0.5, "text": ".50", "footnotes": [1]})", R"(, "footnotes": ["x"])"))
            .at("A2"),
        "0.5 \".50 [a]\";\".50 [a]\"");
    EXPECT_EQ(BuiltSheet(tableWith(R"({"value": 0.5, "text": "two\nlines"})")).at("A2"), "two\nlines");
    EXPECT_EQ(BuiltSheet(tableWith(R"({"value": 0.5, "text": "a\u0001"})")).at("A2"), "a\xEF\xBF\xBD");
    const std::string longText(300, 'x');
    EXPECT_EQ(BuiltSheet(tableWith(R"({"value": 0.5, "text": ")" + longText + "\"}")).at("A2"), longText);
}

TEST(TableSheet, ShowsNumbersAsTextsWhereCodesRunOut) {
    std::string categories;
    std::string cells;
    for (int i = 0; i < 170; ++i) {
        categories += (i == 0 ? "\"r" : ",\"r") + std::to_string(i) + "\"";
        cells +=
            (i == 0 ? "" : ",") + std::string(R"({"value": 1, "text": "about )") + std::to_string(i) + "\"}";
    }
    const BuiltSheet sheet(R"({"type": "table", "label": "T", "rows": [{"label": "R", "categories": [)" +
                           categories + R"(]}], "cells": [)" + cells + "]}");
    std::set<std::string> codes;
    std::size_t texts = 0;
    for (const SheetCell& cell : sheet.content.cells) {
        codes.insert(sheet.content.styles[cell.style].numberFormat);
        if (cell.value == SheetValue::text && sheet.content.text(cell).starts_with("about")) ++texts;
    }
    EXPECT_EQ(codes.size(), mostFormatTexts + 1);
    EXPECT_EQ(texts, 170 - mostFormatTexts);
    EXPECT_EQ(sheet.report.losses().at(1).features, std::set{Feature::numbers});
}

TEST(TableSheet, ReportsSizesOfLettersThatNoWorkbookHolds) {
    const BuiltSheet large(tableWith(R"({"value": 1, "size": 500})"));
    EXPECT_EQ(large.styleAt("A2").size, largestFont);
    EXPECT_EQ(large.report.losses().at(1).features, std::set{Feature::fontSizes});
    const BuiltSheet small(tableWith("1", R"(, "title": "T", "titleStyle": {"size": 0.5})"));
    EXPECT_EQ(small.report.losses().at(1).features, std::set{Feature::fontSizes});
    const BuiltSheet text(R"({"type": "text", "label": "T", "text": "x", "style": {"size": 410}})");
    EXPECT_EQ(text.report.losses().at(1).features, std::set{Feature::fontSizes});
    const BuiltSheet largest(tableWith(R"({"value": 1, "size": 409})"));
    EXPECT_TRUE(largest.report.losses().empty());
    const BuiltSheet unseen(tableWith(R"({"value": null, "size": 500})"));
    EXPECT_TRUE(unseen.report.losses().empty());
}

TEST(TableSheet, TakesOverFontsColorsAndAlignment) {
    const BuiltSheet sheet(tableWith(
        R"({"value": 1, "bold": true, "italic": true, "underline": true, "font": "Georgia", "size": 12.5,
                     "color": "#aa0000", "background": "#ffee88"})",
        R"(, "look": "<tableProperties name='l'><area name='data' align='center'/></tableProperties>")"));
    const SheetStyle& style = sheet.styleAt("A2");
    EXPECT_TRUE(style.bold && style.italic && style.underline && !style.wraps);
    EXPECT_EQ(style.font, "Georgia");
    EXPECT_EQ(style.size, 12.5);
    EXPECT_EQ(style.color, Color{0xAA0000});
    EXPECT_EQ(style.background, Color{0xFFEE88});
    EXPECT_EQ(style.horizontal, HorizontalAlign::center);
    EXPECT_TRUE(sheet.styleAt("A1").wraps);
    EXPECT_EQ(sheet.styleAt("A1").size, 9);
}

TEST(TableSheet, KeepsFontsWithinWhatProgramsTake) {
    EXPECT_EQ(sheetFont("Georgia"), "Georgia");
    EXPECT_EQ(sheetFont("a\n\x01"), "a \xEF\xBF\xBD");
    EXPECT_EQ(sheetFont(std::string(32, 'x')), "sans-serif");
    EXPECT_EQ(sheetFont(""), "sans-serif");
    EXPECT_EQ(sheetFontSize(0.25), 1);
    EXPECT_EQ(sheetFontSize(1e9), 409);
}

TEST(TableSheet, DrawsLinesAroundWholeRanges) {
    const BuiltSheet sheet(
        R"({"type": "table", "label": "T", "rows": [{"label": "R", "categories": [{"group": "g", "categories": ["a", "b", "c"]}]}],
  "columns": [{"label": "C", "categories": ["x", "y", "z"]}], "cells": [1,2,3,4,5,6,7,8,9],
  "look": "<tableProperties name='l'><border place='top' style='thick'/><border place='left' style='medium'/><border place='right' style='thin'/><border place='bottom' style='double'/><border place='belowHeader' style='dashed'/><border place='besideLabels' style='dotted'/></tableProperties>"})");
    EXPECT_EQ(sheet.merged(), "A1:B1 C1:E1 A2:B2 A3:A5 ");
    EXPECT_EQ(linesOf(sheet.styleAt("A1")), "k..m");
    EXPECT_EQ(linesOf(sheet.styleAt("C1")), "k..o");
    EXPECT_EQ(linesOf(sheet.styleAt("D1")), "k...");
    EXPECT_EQ(linesOf(sheet.styleAt("E1")), "kt..");
    EXPECT_EQ(linesOf(sheet.styleAt("A3")), "a..m");
    EXPECT_EQ(linesOf(sheet.styleAt("A4")), "...m");
    EXPECT_EQ(linesOf(sheet.styleAt("A5")), "..dm");
    EXPECT_EQ(linesOf(sheet.styleAt("E5")), ".td.");
}

TEST(TableSheet, ColorsBandsOfRows) {
    const BuiltSheet sheet(
        R"({"type": "table", "label": "T", "rows": [{"label": "R", "categories": ["a", "b", "c"]}], "columns": [{"label": "C", "categories": ["x"]}],
  "cells": [1,2,3], "look": "<tableProperties name='l'><rowBanding rows='1' background='#edf2f7'/></tableProperties>"})");
    EXPECT_FALSE(sheet.styleAt("B3").background);
    EXPECT_EQ(sheet.styleAt("B4").background, Color{0xEDF2F7});
    EXPECT_FALSE(sheet.styleAt("B5").background);
}

}  // namespace
}  // namespace vexa::frontend
