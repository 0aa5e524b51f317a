#include "tests/unit/export/export_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <utility>
#include <vector>

#include "frontend/import/results_reader.h"
#include "frontend/import/statistic_words.h"

namespace vexa::frontend {

namespace {

class NoLooks : public LookSource {
  public:
    ReadLook find(std::string_view /*name*/) override { return {}; }
    bool hasStyleSheet(const std::string& /*name*/) const override { return false; }
};

}  // namespace

void fill(ViewerDocument& document, const std::string& items) {
    NoLooks looks;
    StatisticWords words;
    ImportContext context{looks, words};
    Imported imported;
    ImportProblem problem;
    ASSERT_TRUE(
        readResults("{\"vexaResults\":1,\"items\":[" + items + "]}", "a.json", context, imported, problem));
    document.edit(std::move(imported.outline));
}

const std::string& everything() {
    static const std::string items = R"json(
  {"type": "pageTitle", "text": "Annual <figures>"},
  {"type": "header", "label": "Means & more", "command": "Means", "items": [
    {"type": "heading", "text": "Income & growth", "style": {"color": "#aa0000"}},
    {"type": "text", "text": "Two lines\nof text with </p><script>alert(1)</script>.", "style": {"italic": true, "font": "A\"B</style>"}},
    {"type": "notes", "lines": [{"level": 1, "label": "Input", "value": "income.csv"}]},
    {"type": "table", "label": "Report", "title": "Income by region", "caption": "Weighted.",
     "rows": [{"label": "Region", "categories": [
        {"group": "Europe", "categories": ["North", "South"]}, {"label": "Total", "footnotes": [1]}]}],
     "columns": [{"label": "Statistics", "categories": [
        {"label": "Mean", "format": "F8.2", "width": 60}, {"label": "N", "role": "count", "format": "F8.0"}]}],
     "layers": [{"label": "Sex", "categories": ["Female", "Male"], "shown": 2}],
     "cells": [1.5, 12, 2.25, 14, 1.9, 26,  1.4, 10, {"value": 2.5, "bold": true, "background": "#ffee88"}, 9, null, 19],
     "footnotes": ["Without abroad."]},
    {"type": "chart", "label": "Income chart", "width": 120, "svg": "<?xml version='1.0'?><!DOCTYPE svg><svg xmlns='http://www.w3.org/2000/svg' xmlns:o='urn:o' width='320' height='160' onload='alert(1)'><style>.bar{fill:#4a7} @import 'x.css'; body{display:none} text{background:url(http://a.b/)}</style><script>alert(2)</script><o:meta/><foreignObject><p>x</p></foreignObject><defs><linearGradient id='g'><stop offset='0' stop-color='#fff'/></linearGradient></defs><rect class='bar' x='20' y='40' width='60' height='100'/><rect fill='url(#g)' x='100' y='20' width='60' height='120'/><text class='title' x='20' y='15'>Income &amp; more</text><a href='javascript:alert(3)'><text x='1' y='5'>link</text></a><image href='http://a.b/c.png'/></svg>", "alternativeText": "Income rises to the \"north\".", "templates": ["<template><style>.title{fill:red}</style></template>"]},
    {"type": "chart", "label": "Again", "svg": "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'><g id='g'/><use href='#g'/></svg>"},
    {"type": "log", "text": "MEANS income\n\tBY region."},
    {"type": "warning", "level": 2, "text": "There are empty cells."}]},
  {"type": "chart", "label": "Pixel", "pageBreakBefore": true, "png": "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==", "alternativeText": "A dot"},
  {"type": "grid", "title": "Plain grid", "headerRows": 1, "headerColumns": 1, "rows": [["", "a", "b"], ["x", "1", "2"]]},
  {"type": "model", "label": "Model", "shown": 1, "views": [{"type": "text", "text": "first view"}, {"type": "text", "text": "second view"}]},
  {"type": "text", "text": "hidden text", "visible": false})json";
    return items;
}

ExportFolder::ExportFolder() {
    std::random_device random;
    path_ = (std::filesystem::temp_directory_path() / ("vexa-export-" + std::to_string(random()))).string();
    std::filesystem::create_directory(path_);
}

ExportFolder::~ExportFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string ExportFolder::read(const std::string& name) const {
    std::ifstream file(std::filesystem::path(path_) / name, std::ios::binary);
    if (!file) return "(none)";
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void ExportFolder::write(const std::string& name, const std::string& content) const {
    std::ofstream(std::filesystem::path(path_) / name, std::ios::binary) << content;
}

std::string ExportFolder::names() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        found.push_back(entry.path().filename().string());
    std::sort(found.begin(), found.end());
    std::string text;
    for (const std::string& name : found) text += name + " ";
    return text;
}

namespace {

std::string exported(const ViewerDocument& document, const ExportRequest& request,
                     const ExportFolder& folder) {
    const ExportOutcome outcome = exportDocument(document, request, {});
    EXPECT_TRUE(outcome.response.success) << outcome.response.errorCode << outcome.reason;
    return folder.read("page");
}

}  // namespace

std::string htmlOf(const ViewerDocument& document, HtmlExport request) {
    const ExportFolder folder;
    ExportRequest whole;
    request.file = folder.file("page");
    whole.html = std::move(request);
    return exported(document, whole, folder);
}

std::string reportOf(const ViewerDocument& document, ReportExport request) {
    const ExportFolder folder;
    ExportRequest whole;
    request.file = folder.file("page");
    whole.report = std::move(request);
    return exported(document, whole, folder);
}

std::string textOf(const ViewerDocument& document, TextExport request) {
    const ExportFolder folder;
    ExportRequest whole;
    request.file = folder.file("page");
    whole.text = std::move(request);
    return exported(document, whole, folder);
}

}  // namespace vexa::frontend
