#include <gtest/gtest.h>

#include "frontend/export/xls/document_properties.h"
#include "tests/unit/export/export_samples.h"
#include "tests/unit/xls/xls_samples.h"

namespace vexa::frontend {
namespace {

const std::string smallTable =
    R"({"type": "table", "title": "T", "rows": [{"label": "R", "categories": ["a", "b"]}],
        "columns": [{"label": "C", "categories": [{"label": "m", "format": "F8.2"}]}], "cells": [1.5, 2]})";

ViewerDocument document(const std::string& items = smallTable) {
    ViewerDocument made;
    made.setName("March");
    fill(made, items);
    return made;
}

class XlsExport : public ::testing::Test {
  protected:
    /// Exports, and gives what the sheet holds then, or the error.
    std::string run(SheetOperation operation, const std::string& sheet,
                    SheetLocation location = SheetLocation::lastRow, const std::string& cell = {}) {
        WorkbookExport request;
        request.file = folder_.file("a.xls");
        request.operation = operation;
        request.sheet = sheet;
        request.location = location;
        request.startCell = cell;
        const ExportOutcome outcome = exportXls(document_, request);
        warnings_ = outcome.warnings;
        if (!outcome.response.success)
            return std::to_string(outcome.response.errorCode) + ": " + outcome.reason;
        return cellsIn(folder_.read("a.xls"), sheet);
    }

    ExportFolder folder_;
    ViewerDocument document_ = document();
    std::vector<std::string> warnings_;
};

constexpr const char* atTop = "A1=T B1= A2= B2=C A3=R B3=m A4=a B4=1.5 A5=b B5=2 A1:B1 ";

/// Of what is wrong, both kinds of workbooks say the same first: what was asked for, the content, the file.
TEST(WorkbookErrorOrder, IsThatOfBothKinds) {
    const ExportFolder folder;
    const ViewerDocument tooLong =
        document(R"({"type": "text", "text": ")" + std::string(32'768, 'x') + "\"}");
    for (const bool isOld : {false, true}) {
        const auto errorOf = [&](const ViewerDocument& exported, const std::string& sheet,
                                 const std::string& cell) {
            ExportRequest request;
            auto& target = isOld ? request.xls : request.xlsx;
            target.emplace();
            target->file = folder.file("none/book");
            target->sheet = sheet;
            target->location = SheetLocation::startCell;
            target->startCell = cell;
            return exportDocument(exported, request, {}).response.errorCode;
        };
        EXPECT_EQ(errorOf(tooLong, "a/b", "A1"), 14) << isOld;
        EXPECT_EQ(errorOf(tooLong, "S", "A"), 15) << isOld;
        EXPECT_EQ(errorOf(tooLong, "S", "A1"), 12) << isOld;
        EXPECT_EQ(errorOf(document(), "S", "A1"), 6) << isOld;
    }
}

TEST_F(XlsExport, EveryOperationWithEveryLocation) {
    EXPECT_EQ(run(SheetOperation::createFile, "S"), atTop);
    EXPECT_EQ(run(SheetOperation::createFile, "S", SheetLocation::lastColumn), atTop);
    EXPECT_EQ(run(SheetOperation::createFile, "S", SheetLocation::startCell, "C2"),
              "C2=T D2= C3= D3=C C4=R D4=m C5=a D5=1.5 C6=b D6=2 C2:D2 ");
    EXPECT_EQ(run(SheetOperation::createSheet, "N"), atTop);
    EXPECT_EQ(run(SheetOperation::createSheet, "N", SheetLocation::startCell, "b1"),
              "B1=T C1= B2= C2=C B3=R C3=m B4=a C4=1.5 B5=b C5=2 B1:C1 ");
    EXPECT_EQ(run(SheetOperation::modifySheet, "N", SheetLocation::lastColumn),
              "B1=T C1= E1=T F1= B2= C2=C E2= F2=C B3=R C3=m E3=R F3=m B4=a C4=1.5 E4=a F4=1.5 B5=b C5=2 "
              "E5=b F5=2 B1:C1 E1:F1 ");
    EXPECT_EQ(run(SheetOperation::createSheet, "N"), atTop);
    EXPECT_EQ(run(SheetOperation::modifySheet, "N"),
              "A1=T B1= A2= B2=C A3=R B3=m A4=a B4=1.5 A5=b B5=2 A7=T B7= A8= B8=C A9=R B9=m A10=a B10=1.5 "
              "A11=b B11=2 A1:B1 A7:B7 ");
    EXPECT_EQ(run(SheetOperation::modifySheet, "N", SheetLocation::startCell, "$A$3"),
              "A1=T B1= A2= B2=C A3=T B3= A4= B4=C A5=R B5=m A6=a B6=1.5 A7=b B7=2 A8= B8=C A9=R B9=m A10=a "
              "B10=1.5 A11=b B11=2 A1:B1 A3:B3 ");
    EXPECT_EQ(run(SheetOperation::modifySheet, "Third"), atTop);
}

TEST_F(XlsExport, SheetsKeepTheirPlaces) {
    EXPECT_EQ(run(SheetOperation::createFile, "One"), atTop);
    EXPECT_EQ(run(SheetOperation::createSheet, "Two"), atTop);
    EXPECT_EQ(run(SheetOperation::createSheet, "ONE", SheetLocation::startCell, "A3").substr(0, 3), "(no");
    biff::BinaryBook book;
    ASSERT_TRUE(book.read(folder_.read("a.xls")));
    EXPECT_EQ(book.findSheet("One"), 0U);
    EXPECT_EQ(book.findSheet("Two"), 1U);
    EXPECT_EQ(cellsIn(folder_.read("a.xls"), "One").substr(0, 4), "A3=T");
}

TEST_F(XlsExport, WithoutAFileOneIsMade) {
    EXPECT_EQ(run(SheetOperation::modifySheet, "S"), atTop);
    EXPECT_EQ(streamOf(folder_.read("a.xls"), biff::propertiesStream), biff::documentProperties("March"));
}

TEST_F(XlsExport, RefusesNamesAndPlaces) {
    EXPECT_EQ(run(SheetOperation::createFile, std::string(32, 'n')).substr(0, 3), "13:");
    EXPECT_EQ(run(SheetOperation::createFile, "a/b").substr(0, 3), "14:");
    EXPECT_EQ(run(SheetOperation::createFile, "S", SheetLocation::startCell, "here").substr(0, 3), "15:");
    EXPECT_EQ(run(SheetOperation::createFile, "S", SheetLocation::startCell, "IW1").substr(0, 3), "15:");
    EXPECT_EQ(run(SheetOperation::createFile, "S", SheetLocation::startCell, "IV1").substr(0, 3), "11:");
    EXPECT_EQ(run(SheetOperation::createFile, "S", SheetLocation::startCell, "A65533").substr(0, 3), "15:");
    EXPECT_EQ(folder_.names(), "");
    EXPECT_EQ(run(SheetOperation::createFile, "S", SheetLocation::startCell, "IU65532").substr(0, 9),
              "IU65532=T");
}

TEST_F(XlsExport, LeavesWhatItRefusesAsItIs) {
    folder_.write("a.xls", "no workbook");
    const std::string refused = run(SheetOperation::modifySheet, "S");
    EXPECT_TRUE(refused.starts_with("15: The workbook ")) << refused;
    EXPECT_TRUE(refused.ends_with("a.xls cannot be changed: it is no workbook.")) << refused;
    EXPECT_EQ(folder_.read("a.xls"), "no workbook");
    EXPECT_EQ(folder_.names(), "a.xls ");
    EXPECT_EQ(run(SheetOperation::createFile, "S"), atTop);
}

TEST_F(XlsExport, SameDocumentSameBytes) {
    EXPECT_EQ(xlsOf(document_), xlsOf(document_));
    run(SheetOperation::createFile, "S");
    run(SheetOperation::modifySheet, "S");
    const std::string once = folder_.read("a.xls");
    run(SheetOperation::createFile, "S");
    run(SheetOperation::modifySheet, "S");
    EXPECT_EQ(folder_.read("a.xls"), once);
}

TEST_F(XlsExport, StylesDoNotGrowWithEveryExport) {
    run(SheetOperation::createFile, "S");
    const auto formats = [this] {
        const std::string stream = streamOf(folder_.read("a.xls"));
        std::vector<biff::RecordView> records;
        EXPECT_TRUE(biff::splitRecords(stream, records));
        return std::count_if(records.begin(), records.end(), [](const auto& each) {
            return each.id == biff::id::xf || each.id == biff::id::font;
        });
    };
    const auto before = formats();
    for (int i = 0; i < 3; ++i) run(SheetOperation::modifySheet, "S");
    EXPECT_EQ(formats(), before);
}

TEST_F(XlsExport, NotesAndCaptionsAreLeftOut) {
    const ViewerDocument noted = document(
        R"({"type": "table", "title": "T", "caption": "Weighted.", "rows": [{"label": "R", "categories": ["a"]}],
            "columns": [{"label": "C", "categories": ["m"]}], "cells": [{"value": "x", "footnotes": [1]}],
            "footnotes": ["Note."]})");
    WorkbookExport request;
    const std::string with = cellsIn(xlsOf(noted, request), "Output");
    request.notesAndCaptions = false;
    const std::string without = cellsIn(xlsOf(noted, request), "Output");
    EXPECT_NE(with.find("Weighted."), std::string::npos);
    EXPECT_NE(with.find("Note."), std::string::npos);
    EXPECT_EQ(without.find("Weighted."), std::string::npos);
    EXPECT_EQ(without.find("Note."), std::string::npos);
}

TEST_F(XlsExport, TooManyColumnsAndTooLongTexts) {
    std::string categories;
    std::string cells;
    for (int i = 0; i < 257; ++i) {
        categories += (i == 0 ? "\"c" : ",\"c") + std::to_string(i) + "\"";
        cells += (i == 0 ? "" : ",") + std::to_string(i);
    }
    const std::string wide = R"({"type": "table", "rows": [], "columns": [{"label": "C", "categories": [)" +
                             categories + "]}], \"cells\": [" + cells + "]}";
    document_ = document(wide);
    EXPECT_EQ(run(SheetOperation::createFile, "S").substr(0, 3), "11:");
    document_ = document(R"({"type": "text", "text": ")" + std::string(32'768, 'x') + "\"}");
    EXPECT_EQ(run(SheetOperation::createFile, "S").substr(0, 3), "12:");
    document_ = document(R"({"type": "text", "text": ")" + std::string(32'767, 'x') + "\"}");
    EXPECT_EQ(run(SheetOperation::createFile, "S").substr(0, 5), "A1=xx");
}

}  // namespace
}  // namespace vexa::frontend
