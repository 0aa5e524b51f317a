#include "tests/unit/frontend/sample_documents.h"

#include <gtest/gtest.h>

#include <utility>

#include "backend/tables/layout/table_grid.h"
#include "frontend/document/walk.h"

namespace vexa::frontend {

Item makeItem(const std::string& label, ItemContent content) {
    Item item;
    item.label = label;
    item.content = std::move(content);
    return item;
}

TextContent plainText(const std::string& text) { return {{text, {}}}; }

tables::Table makeTable(std::size_t rows, std::size_t columns) {
    tables::TableDimension row{"Rows", {{"Outer", tables::noGroup}, {"Inner", 0}}, {}};
    for (std::size_t i = 0; i < rows; ++i) {
        row.categories.push_back({"row " + std::to_string(i), i % 2 == 0 ? 1 : tables::noGroup, {}, {}, {}});
    }
    tables::TableDimension column{"", {}, {}};
    for (std::size_t i = 0; i < columns; ++i) {
        column.categories.push_back({"column " + std::to_string(i), tables::noGroup, {}, {}, {}});
    }
    tables::TableDataBuilder data({row, column}, {"a note", "another"});
    tables::TableStyle style;
    tables::CellStyle bold;
    bold.bold = true;
    for (std::size_t i = 0; i < rows * columns; ++i) {
        data.setNumber(i, static_cast<double>(i) / 3, {tables::FormatKind::plain, 8, 2});
        if (i % 7 != 3) continue;
        data.setFootnotes(i, {0, 1});
        style.setCell(i, style.intern(bold), data.placeCount());
    }
    tables::TableView view;
    view.title = "Table";
    view.rows = {0};
    view.columns = {1};
    view.minColumnWidth = 150;
    return tables::makeTable(data.finish(), std::move(view), std::move(style));
}

std::shared_ptr<const Picture> makePicture() {
    return std::make_shared<const Picture>(Picture{
        PictureForm::svg, R"(<svg xmlns="http://www.w3.org/2000/svg" width="80" height="40"/>)", 60, 30});
}

namespace {

void addTexts(ViewerDocument& document, ItemId run, ItemId inner) {
    document.add(makeItem("Warning", WarningContent{2, std::string("nul \0 bell \a del \x7f", 19)}), run);
    document.add(makeItem("Log", LogContent{"echo\n  two "}), run);
    document.add(makeItem("Notes", NotesContent{{{1, "Label", " "}, {-2, "", "line\r\n\tend "}}}), inner);
    Item hidden = makeItem("hidden \\ \\41 \xff\xc0\x80 \xed\xa0\x80 \xef\xbf\xbf", plainText("   "));
    hidden.visible = false;
    document.add(hidden, inner);
    TextContent text = plainText("emoji \xf0\x9f\x98\x80 ]]> <!-- &amp; \xef\xbb\xbf");
    text.style.bold = false;
    text.style.font = "Serif <&>";
    text.style.size = 10.5;
    text.style.color = tables::Color{0x12abef};
    Item broken = makeItem("Text", text);
    broken.pageBreakBefore = true;
    document.add(broken);
    document.add(makeItem("Empty", TextContent{}));
    document.add(makeItem("Heading", HeadingContent{{"A heading", {}}}));
    document.add(makeItem("Page title", PageTitleContent{{"At the top", text.style}}));
}

void addViews(ViewerDocument& document) {
    ChartContent chart;
    chart.picture = makePicture();
    chart.alternativeText = "Rises to the north";
    chart.templates = {"<template/>", "<template name=\"b\"/>"};
    chart.styleSheet = "plain";
    Item shown = makeItem("Chart", chart);
    shown.width = 120;
    document.add(shown);
    const ItemId model = document.add(makeItem("Model", ModelContent{1, tables::LayerPrinting::all}));
    TreeContent tree;
    tree.picture =
        std::make_shared<const Picture>(Picture{PictureForm::png, "\x89PNG\r\n\x1a\n no more", 12, 7.5});
    document.add(makeItem("Tree", tree), model);
    document.add(makeItem("Table", TableContent{makeTable(2, 2)}), model);
    document.add(makeItem(
        "Grid", GridContent{std::make_shared<const tables::FlatTable>(*tables::flatten(makeTable(2, 2)))}));
    document.add(
        makeItem("Later", UnknownContent{"hologram", std::make_shared<const std::string>("{\"a\": 1}"), 0}));
    const ItemId later = document.add(
        makeItem("", UnknownContent{"table", std::make_shared<const std::string>("<table9/>"), 3}));
    document.add(makeItem("Under", plainText("kept")), later);
}

}  // namespace

std::unique_ptr<ViewerDocument> makeEveryKind() {
    auto document = std::make_unique<ViewerDocument>();
    document->setName("Ärger <&>\"'");
    Item run = makeItem("Output Display", HeaderContent{});
    run.command = "OUTPUT DISPLAY";
    const ItemId outer = document->add(run);
    const ItemId inner = document->add(makeItem("Inner", HeaderContent{}), outer);
    Item table = makeItem("Table", TableContent{makeTable(5, 4)});
    table.subtype = "Sample";
    document->add(table, inner);
    addTexts(*document, outer, inner);
    addViews(*document);
    document->setModified(false);
    return document;
}

const Item& itemAt(const ViewerDocument& document, std::size_t number) {
    struct Finder : OutlineVisitor {
        bool enter(const WalkPlace& place) override {
            if (place.number == wanted) found = &place.item();
            return true;
        }
        std::size_t wanted = 0;
        const Item* found = nullptr;
    } finder;
    finder.wanted = number;
    walk(document.outline(), finder);
    static const Item none;
    EXPECT_NE(finder.found, nullptr) << "no item " << number;
    return finder.found == nullptr ? none : *finder.found;
}

std::string saved(const ViewerDocument& document, const SaveOptions& options) {
    std::string bytes;
    const StoreResult result = writeDocument(document, options, gatherInto(bytes));
    EXPECT_EQ(result.problem, StoreProblem::none) << result.detail;
    return result ? bytes : std::string();
}

std::unique_ptr<ViewerDocument> opened(const std::string& bytes, const std::string& password) {
    std::unique_ptr<ViewerDocument> document;
    const StoreResult result = readDocument(bytes, password, document);
    EXPECT_EQ(result.problem, StoreProblem::none) << result.detail;
    return document;
}

StoreResult problemOf(const std::string& bytes, const std::string& password) {
    auto document = std::make_unique<ViewerDocument>();
    StoreResult result = readDocument(bytes, password, document);
    EXPECT_EQ(document == nullptr, !result) << "a document and a problem";
    return result;
}

}  // namespace vexa::frontend
