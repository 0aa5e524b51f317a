#include <gtest/gtest.h>

#include <string>

#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {
namespace {

ViewerDocument documentOf(const std::string& items) {
    ViewerDocument document;
    fill(document, items);
    return document;
}

std::string longText(std::size_t length) {
    return R"({"type": "text", "text": ")" + std::string(length, 'x') + "\"}";
}

std::string tableOf(std::size_t columns) {
    std::string categories;
    std::string cells;
    for (std::size_t i = 0; i < columns; ++i) {
        categories += (i == 0 ? "\"" : ",\"") + std::to_string(i) + "\"";
        cells += i == 0 ? "1" : ",1";
    }
    return R"({"type": "table", "columns": [{"label": "C", "categories": [)" + categories +
           R"(]}], "cells": [)" + cells + "]}";
}

/// The code of the answer, 0 for a success. What stands in the file's place must still be there after a
/// failure.
int errorOf(const ViewerDocument& document, bool isOld, const std::string& sheet = "Output") {
    const ExportFolder folder;
    ExportRequest request;
    auto& target = isOld ? request.xls : request.xlsx;
    target.emplace();
    target->file = folder.file("book");
    target->sheet = sheet;
    folder.write("book", "before");
    const ExportOutcome outcome = exportDocument(document, request, {});
    EXPECT_EQ(folder.read("book") == "before", !outcome.response.success);
    EXPECT_EQ(outcome.reason.empty(), outcome.response.success);
    EXPECT_EQ(folder.names(), "book ");
    return outcome.response.errorCode;
}

TEST(WorkbookErrors, SayThatATextIsTooLongForACell) {
    for (const bool isOld : {false, true}) {
        EXPECT_EQ(errorOf(documentOf(longText(32'767)), isOld), 0);
        EXPECT_EQ(errorOf(documentOf(longText(32'768)), isOld), 12);
    }
}

TEST(WorkbookErrors, SayThatATableHasTooManyColumns) {
    EXPECT_EQ(errorOf(documentOf(tableOf(256)), true), 0);
    EXPECT_EQ(errorOf(documentOf(tableOf(257)), true), 11);
    EXPECT_EQ(errorOf(documentOf(tableOf(257)), false), 0);
    EXPECT_EQ(errorOf(documentOf(tableOf(16'384)), false), 0);
    EXPECT_EQ(errorOf(documentOf(tableOf(16'385)), false), 11);
}

TEST(WorkbookErrors, SayThatASheetCannotHaveAName) {
    const ViewerDocument document = documentOf(longText(1));
    for (const bool isOld : {false, true}) {
        EXPECT_EQ(errorOf(document, isOld, std::string(31, 'x')), 0);
        EXPECT_EQ(errorOf(document, isOld, std::string(32, 'x')), 13);
        EXPECT_EQ(errorOf(document, isOld, "a:b"), 14);
        EXPECT_EQ(errorOf(document, isOld, "a'"), 14);
    }
}

TEST(WorkbookErrors, SayThatThereAreTooManyRows) {
    std::string lines;
    for (int i = 0; i < 65'536; ++i) lines += "x\\n";
    EXPECT_EQ(errorOf(documentOf(R"({"type": "log", "text": ")" + lines + "\"}"), true), 0);
    EXPECT_EQ(errorOf(documentOf(R"({"type": "log", "text": ")" + lines + "y\"}"), true), 15);
    EXPECT_EQ(errorOf(documentOf(R"({"type": "log", "text": ")" + lines + "y\"}"), false), 0);
}

}  // namespace
}  // namespace vexa::frontend
