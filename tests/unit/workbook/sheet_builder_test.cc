#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/import/random_documents.h"
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

TEST(SheetBuilder, LeavesOutNotesAndCaptionsWhereAsked) {
    const BuiltSheet sheet(incomeReport, officeSheetLimits, false);
    EXPECT_EQ(sheet.firstColumn(), "Income\n(blank)\nRegion\nEurope\n(blank)\nTotal\n");
    EXPECT_EQ(sheet.at("C5"), "2.25 0.00");
}

TEST(SheetBuilder, ShowsItemsOfEveryType) {
    const BuiltSheet sheet(everything());
    EXPECT_EQ(sheet.firstColumn(), R"(Annual <figures>
(none)
Income & growth
(none)
Two lines
of text with </p><script>alert(1)</script>.
(none)
Input: income.csv
(none)
Income by region
Sex: Male
(blank)
Region
Europe
(blank)
Total ([a])
Weighted.
[a] Without abroad.
(none)
(none)
(none)
(none)
(none)
(none)
(none)
(none)
MEANS income
        BY region.
(none)
There are empty cells.
(none)
(none)
(none)
Plain grid
(blank)
x
(none)
first view
)");
    ASSERT_EQ(sheet.content.pictures.size(), 3U);
    const SheetPicture& chart = sheet.content.pictures[0];
    EXPECT_EQ(chart.row, 19U);
    EXPECT_EQ(chart.rows, 4U);
    EXPECT_EQ(chart.width, 120);
    EXPECT_EQ(chart.height, 60);
    EXPECT_EQ(chart.alternative, "Income rises to the \"north\".");
    EXPECT_NE(sheet.content.pictures[1].svg.find("<svg"), std::string::npos);
    EXPECT_EQ(sheet.content.pictures[2].svg, "");
    EXPECT_EQ(sheet.content.pictures[2].png.substr(1, 3), "PNG");
    EXPECT_EQ(sheet.content.pageBreaks, (std::vector<std::uint32_t>{31}));
    EXPECT_EQ(sheet.report.pictures(), 3U);
}

TEST(SheetBuilder, ShowsHiddenItemsLayersAndViewsWhereAsked) {
    ExportRequest request;
    request.items = ExportedItems::all;
    request.layers = ExportedLayers::all;
    request.modelViews = ExportedLayers::all;
    const BuiltSheet sheet(everything(), officeSheetLimits, true, request);
    const std::string shown = sheet.firstColumn();
    for (const char* const text : {"hidden text", "first view", "second view", "Sex: Female", "Sex: Male"}) {
        EXPECT_NE(shown.find(text), std::string::npos) << text;
    }
}

TEST(SheetBuilder, WarnsOfWhatAWorkbookCannotShow) {
    const BuiltSheet sheet(R"({"type": "hologram", "label": "U"},
      {"type": "table", "label": "D", "columns": [{"label": "C", "categories": [{"label": "d", "format": "DOT8.1"}]}], "cells": [1234.5]},
      {"type": "table", "label": "O", "columns": [{"label": "C", "categories": [{"label": "d", "format": "DATE"}]}], "cells": [-5000000000]},
      {"type": "table", "label": "N", "columns": [{"label": "C", "categories": [{"label": "d", "format": "DATE"}]}], "cells": [0]})");
    EXPECT_EQ(sheet.at("A5"), "1234.5 #,##0.0");
    EXPECT_EQ(sheet.at("A9"), "23-Jul-1811");
    EXPECT_EQ(sheet.styleAt("A9").horizontal, tables::HorizontalAlign::right);
    EXPECT_EQ(sheet.at("A13"), R"(25569 [$-409]dd\-mmm\-yyyy)");
    const std::vector<std::string> warnings = sheet.report.logTexts();
    ASSERT_EQ(warnings.size(), 3U);
    EXPECT_NE(warnings[0].find("Item 2 (D): the format DOT is shown as COMMA"), std::string::npos);
    EXPECT_NE(warnings[1].find("Item 3 (O): dates before March 1900"), std::string::npos);
    EXPECT_EQ(sheet.report.losses().at(1).features, std::set{Feature::unknownItems});
}

TEST(SheetBuilder, KeepsTextsAsTheyAre) {
    const BuiltSheet sheet(
        R"({"type": "table", "columns": [{"label": "C", "categories": ["2024", "=1+1"]}], "cells": ["007", " a\r\nb\u0001\u0085"]})");
    EXPECT_EQ(sheet.at("A2"), "2024");
    EXPECT_EQ(sheet.at("B2"), "=1+1");
    EXPECT_EQ(sheet.at("A3"), "007");
    EXPECT_EQ(sheet.at("B3"), " a\nb\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(SheetBuilder, HoldsWhatItPromisesOfAnyDocument) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        ViewerDocument document;
        document.edit(RandomDocuments(seed).document(20, true));
        ExportRequest request;
        request.items = ExportedItems::all;
        request.layers = ExportedLayers::all;
        const BuiltSheet sheet(document, officeSheetLimits, seed % 2 == 0, request);
        EXPECT_FALSE(sheet.report.failed()) << sheet.report.reason();
    }
}

TEST(SheetBuilder, FailsWhereATableIsTooWide) {
    const BuiltSheet sheet(incomeReport, {100, 3, 32'767});
    EXPECT_EQ(sheet.report.error(), ExportError::tooManyColumns);
}

TEST(SheetBuilder, FailsWhereRowsAreTooMany) {
    const BuiltSheet fits(R"({"type": "log", "text": "a\nb"}, {"type": "log", "text": "c"})", {4, 3, 100});
    EXPECT_FALSE(fits.report.failed());
    const BuiltSheet tooMany(R"({"type": "log", "text": "a\nb"}, {"type": "log", "text": "c"})", {3, 3, 100});
    EXPECT_EQ(tooMany.report.error(), ExportError::other);
    EXPECT_NE(tooMany.report.reason().find("3 rows"), std::string::npos);
    EXPECT_EQ(BuiltSheet(incomeReport, {5, 10, 1000}).report.error(), ExportError::other);
}

TEST(SheetBuilder, FailsWhereATextIsTooLong) {
    const BuiltSheet fits(R"({"type": "text", "text": "ab\u00e4\ud83d\ude00"})", {100, 3, 5});
    EXPECT_FALSE(fits.report.failed());
    const BuiltSheet tooLong(R"({"type": "text", "text": "ab\u00e4\ud83d\ude00"})", {100, 3, 4});
    EXPECT_EQ(tooLong.report.error(), ExportError::textTooLong);
}

}  // namespace
}  // namespace vexa::frontend
