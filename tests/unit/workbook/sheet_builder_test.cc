#include <gtest/gtest.h>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/workbook/sheet_samples.h"

namespace vexa::frontend {
namespace {

constexpr const char* incomeReport =
    R"({"type": "table", "title": "Income", "caption": "Weighted.",
  "rows": [{"label": "Region", "categories": [{"group": "Europe", "categories": ["North", "South"]}, {"label": "Total", "footnotes": [1]}]}],
  "columns": [{"label": "Statistics", "categories": [{"label": "Mean", "format": "F8.2"}, {"label": "N", "format": "COMMA8.0"}]}],
  "cells": [1.5, 1200, {"value": 2.25, "footnotes": [1]}, 14, null, "none"],
  "footnotes": ["Without abroad."]})";

TEST(SheetBuilder, PutsATableWithItsTextsAroundItOnTheSheet) {
    const BuiltSheet sheet(incomeReport);
    EXPECT_EQ(sheet.firstColumn(),
              "Income\n(blank)\nRegion\nEurope\n(blank)\nTotal ([a])\nWeighted.\n[a] Without abroad.\n");
    EXPECT_EQ(sheet.at("C2"), "Statistics");
    EXPECT_EQ(sheet.at("C3"), "Mean");
    EXPECT_EQ(sheet.at("C4"), "1.5 0.00");
    EXPECT_EQ(sheet.at("D4"), "1200 #,##0");
    EXPECT_EQ(sheet.at("C5"), "2.25 0.00\" [a]\"");
    EXPECT_EQ(sheet.at("C6"), "(blank)");
    EXPECT_EQ(sheet.at("D6"), "none");
    EXPECT_EQ(sheet.merged(), "A1:D1 A2:B2 C2:D2 A3:B3 A4:A5 A6:B6 A7:D7 A8:D8 ");
    EXPECT_EQ(sheet.content.rows, 8U);
    EXPECT_EQ(sheet.content.columns, 4U);
}

TEST(SheetBuilder, PutsABlankRowBetweenItems) {
    const BuiltSheet sheet(
        R"({"type": "heading", "text": "a"}, {"type": "log", "text": "b\n c\n"}, {"type": "header", "label": "no", "items": [{"type": "warning", "text": "d"}]})");
    EXPECT_EQ(sheet.firstColumn(), "a\n(none)\nb\n c\n(none)\nd\n");
}

TEST(SheetBuilder, FailsWhereATableIsTooWide) {
    const BuiltSheet sheet(incomeReport, {100, 3, 32'767});
    EXPECT_EQ(sheet.report.error(), ExportError::tooManyColumns);
}

TEST(SheetBuilder, FailsWhereATextIsTooLong) {
    const BuiltSheet fits(R"({"type": "text", "text": "ab\u00e4\ud83d\ude00"})", {100, 3, 5});
    EXPECT_FALSE(fits.report.failed());
    const BuiltSheet tooLong(R"({"type": "text", "text": "ab\u00e4\ud83d\ude00"})", {100, 3, 4});
    EXPECT_EQ(tooLong.report.error(), ExportError::textTooLong);
}

}  // namespace
}  // namespace vexa::frontend
