// Workbooks that other programs made, changed by exports: what is not ours stays, record by record, and other
// readers take what comes out. The makers and the judges are programs of this system; the files are the same
// bytes on Windows.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/xls/xls_samples.h"

namespace vexa::frontend {
namespace {

constexpr const char* python = "/usr/bin/env -i PATH=/usr/bin:/bin HOME=/tmp python3 ";

/// What a program of the folder of judges prints.
std::string judged(const ExportFolder& folder, const std::string& program, const std::string& arguments) {
    const std::string command = std::string(python) + "\"" VEXA_SOURCE_FOLDER "/tests/judges/" + program +
                                "\" " + arguments + " > \"" + folder.file("judged") + "\" 2>&1";
    static_cast<void>(std::system(command.c_str()));
    return folder.read("judged");
}

std::string inQuotes(const std::string& text) { return "\"" + text + "\""; }

ViewerDocument sampleDocument() {
    ViewerDocument document;
    document.setName("March & April");
    fill(document, everything());
    return document;
}

struct Change {
    SheetOperation operation;
    std::string sheet;
    SheetLocation location = SheetLocation::lastRow;
    std::string startCell;
    std::string judgedAs;  ///< the place, as the judge takes it; empty where the sheet is ours alone
};

const std::vector<Change>& changes() {
    static const std::vector<Change> all{
        {SheetOperation::modifySheet, "Data", SheetLocation::lastRow, "", "LASTROW"},
        {SheetOperation::modifySheet, "data", SheetLocation::lastColumn, "", "LASTCOLUMN"},
        {SheetOperation::modifySheet, "Data", SheetLocation::startCell, "C1", "0,2"},
        {SheetOperation::modifySheet, "Data", SheetLocation::startCell, "b34", "33,1"},
        {SheetOperation::modifySheet, "Data", SheetLocation::startCell, "$K$1", "0,10"},
        {SheetOperation::modifySheet, "Missing", SheetLocation::lastRow, "", ""},
        {SheetOperation::createSheet, "New \xE2\x82\xAC", SheetLocation::lastRow, "", ""},
        {SheetOperation::createSheet, "New", SheetLocation::startCell, "D5", ""},
        {SheetOperation::createSheet, "Data", SheetLocation::lastColumn, "", ""}};
    return all;
}

class OthersWorkbooks : public ::testing::Test {
  protected:
    void SetUp() override {
        if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
        std::istringstream names(judged(folder_, "make_workbooks.py", inQuotes(folder_.file(""))));
        for (std::string name; std::getline(names, name);) names_.push_back(name);
        if (names_.empty()) GTEST_SKIP() << "no program here makes workbooks";
        folder_.write("ours.xls", xlsOf(document_));
        WorkbookExport own;
        own.sheet = "Data";
        folder_.write("own.xls", xlsOf(document_, own));
        names_.emplace_back("own.xls");
    }

    /// Changes a copy of a workbook, and gives what the judge complains of.
    std::string complaints(const std::string& name, const Change& change) {
        folder_.write("changed.xls", folder_.read(name));
        WorkbookExport request;
        request.file = folder_.file("changed.xls");
        request.operation = change.operation;
        request.sheet = change.sheet;
        request.location = change.location;
        request.startCell = change.startCell;
        const ExportOutcome outcome = exportXls(document_, request);
        if (!outcome.response.success) {
            EXPECT_EQ(folder_.read("changed.xls"), folder_.read(name));
            return outcome.reason;
        }
        // Names are found in any case and stay as they are.
        const std::string sheet = change.sheet == "data" ? "Data" : change.sheet;
        std::string arguments = "--before " + inQuotes(folder_.file(name)) + " --sheet " + inQuotes(sheet);
        if (!change.judgedAs.empty()) {
            arguments += " --placed " + inQuotes(folder_.file("ours.xls")) + " --location " + change.judgedAs;
        }
        return judged(folder_, "check_xls.py", arguments + " " + inQuotes(request.file));
    }

    ExportFolder folder_;
    std::vector<std::string> names_;
    ViewerDocument document_ = sampleDocument();
};

TEST_F(OthersWorkbooks, KeepWhatIsNotOurs) {
    for (const std::string& name : names_) {
        for (const Change& change : changes()) {
            const std::string found = complaints(name, change);
            SCOPED_TRACE(name + ", " + change.sheet + " " + change.startCell);
            EXPECT_EQ(found, "");
        }
    }
}

TEST_F(OthersWorkbooks, GrowAgainAndAgain) {
    for (const std::string& name : names_) {
        folder_.write("grown.xls", folder_.read(name));
        for (int i = 0; i < 4; ++i) {
            folder_.write("step.xls", folder_.read("grown.xls"));
            const Change& change = changes().at(static_cast<std::size_t>(i % 2));
            EXPECT_EQ(complaints("step.xls", change), "") << name << ", step " << i;
            folder_.write("grown.xls", folder_.read("changed.xls"));
        }
    }
}

}  // namespace
}  // namespace vexa::frontend
