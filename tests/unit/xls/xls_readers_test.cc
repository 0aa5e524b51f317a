// What other programs show of the workbooks that exports make.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/xls/xls_samples.h"

namespace vexa::frontend {
namespace {

std::string programOutput(const ExportFolder& folder, const std::string& program,
                          const std::string& arguments) {
    const std::string command = "/usr/bin/env -i PATH=/usr/bin:/bin HOME=/tmp python3 \"" VEXA_SOURCE_FOLDER
                                "/tests/judges/" +
                                program + "\" " + arguments + " > \"" + folder.file("printed") + "\" 2>&1";
    static_cast<void>(std::system(command.c_str()));
    return folder.read("printed");
}

constexpr const char* styledTable =
    R"({"type": "table", "title": "Results", "caption": "Weighted.", "titleStyle": {"color": "#123456"},
        "rows": [{"label": "Region", "categories": [
            {"group": "Europe", "categories": ["North", {"label": "South", "footnotes": [1]}]}, "Total"]}],
        "columns": [{"label": "Statistic", "categories": [
            {"label": "Mean", "format": "F8.2"}, {"label": "Share", "format": "PCT8.1"},
            {"label": "Day", "format": "DATE11"}]}],
        "cells": [1.5, 12.25, 1583020800, {"value": -2.5, "bold": true, "color": "#C00000",
            "background": "#FFEE99", "font": "serif", "size": 12}, 30, 1583107200, 3, 100, 1583193600],
        "footnotes": ["Without abroad."]})";

class XlsReaders : public ::testing::Test {
  protected:
    void SetUp() override {
        document_.setName("March & April");
        fill(document_, styledTable);
    }

    ExportFolder folder_;
    ViewerDocument document_;
};

TEST_F(XlsReaders, AStrictReaderFindsStylesAndRanges) {
    folder_.write("a.xls", xlsOf(document_));
    const std::string shown =
        programOutput(folder_, "show_xls_styles.py", "\"" + folder_.file("a.xls") + "\"");
    if (shown.empty()) GTEST_SKIP() << "no reader of binary workbooks here";
    EXPECT_EQ(shown,
              "Output: 8 rows, 5 columns\n"
              "A1 Results | bold 123456\n"
              "C2 Statistic | \n"
              "A3 Region | \n"
              "C3 Mean | \n"
              "D3 Share | \n"
              "E3 Day | \n"
              "A4 Europe | \n"
              "B4 North | \n"
              "C4 1.5 0.00 | \n"
              "D4 12.25 0.0\"%\" | \n"
              "E4 43891.0 [$-409]dd\\-mmm\\-yyyy | \n"
              "B5 South [a] | raised from 6\n"
              "C5 -2.5 0.00 | bold C00000 on FFEE99 Times New Roman 12\n"
              "D5 30.0 0.0\"%\" | \n"
              "E5 43892.0 [$-409]dd\\-mmm\\-yyyy | \n"
              "A6 Total | \n"
              "C6 3.0 0.00 | \n"
              "D6 100.0 0.0\"%\" | \n"
              "E6 43893.0 [$-409]dd\\-mmm\\-yyyy | \n"
              "A7 Weighted. | italic\n"
              "A8 [a] Without abroad. | \n"
              "merged A1:E1\nmerged A2:B2\nmerged C2:E2\nmerged A3:B3\nmerged A4:A5\nmerged A6:B6\n"
              "merged A7:E7\nmerged A8:E8\n");
}

TEST_F(XlsReaders, AnotherProgramShowsWhatTheTableShows) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    folder_.write("a.xls", xlsOf(document_));
    const std::string shown = programOutput(folder_, "show_sheets.py",
                                            "\"" + folder_.file("") + "\" \"" + folder_.file("a.xls") + "\"");
    if (shown.empty()) GTEST_SKIP() << "no program here shows workbooks";
    EXPECT_EQ(shown,
              "== Output\n"
              "Results,,,,\n"
              ",,Statistic,,\n"
              "Region,,Mean,Share,Day\n"
              "Europe,North,1.50,12.3%,01-Mar-2020\n"
              ",South [a],-2.50,30.0%,02-Mar-2020\n"
              "Total,,3.00,100.0%,03-Mar-2020\n"
              "Weighted.,,,,\n"
              "[a] Without abroad.,,,,\n");
}

TEST_F(XlsReaders, OtherSheetsShowTheSameAfterwards) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    const std::string made = programOutput(folder_, "make_workbooks.py", "\"" + folder_.file("") + "\"");
    if (made.find("rich.xls") == std::string::npos) GTEST_SKIP() << "no program here makes workbooks";
    const auto othersOf = [this](const std::string& name) {
        return programOutput(folder_, "show_sheets.py",
                             "\"" + folder_.file("") + "\" \"" + folder_.file(name) + "\" --without Data");
    };
    const std::string before = othersOf("rich.xls");
    EXPECT_NE(before.find("2424.9"), std::string::npos) << before;
    WorkbookExport request;
    request.file = folder_.file("rich.xls");
    request.operation = SheetOperation::modifySheet;
    request.sheet = "Data";
    for (const SheetLocation location : {SheetLocation::lastRow, SheetLocation::lastColumn}) {
        request.location = location;
        const ExportOutcome outcome = exportXls(document_, request);
        ASSERT_TRUE(outcome.response.success) << outcome.reason;
        EXPECT_EQ(othersOf("rich.xls"), before);
    }
}

}  // namespace
}  // namespace vexa::frontend
