// Results in JSON, read into items.

#include "frontend/import/results_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontend/package/base64.h"
#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

using tables::StatisticRole;
using testing::ElementsAre;

constexpr char kExample[] = R"json({"vexaResults": 1, "name": "march", "items": [
  {"type": "header", "label": "Means", "command": "Means", "items": [
    {"type": "table", "label": "Report", "subtype": "Report", "title": "Income by region", "caption": "Weighted.",
     "corner": "",
     "rows": [{"label": "Region", "categories": [
        {"group": "Europe", "categories": ["North", "South"]}, {"label": "Total", "footnotes": [1]}]}],
     "columns": [{"label": "Statistics", "categories": [
        {"label": "Mean", "format": "F8.2"}, {"label": "N", "role": "count", "format": "F8.0"}]}],
     "layers": [{"label": "Sex", "categories": ["Female", "Male"], "shown": 2}],
     "cells": [1.5, 12, 2.25, 14, 1.9, 26,  1.4, 10, {"value": 2.5, "bold": true}, 9, null, 19],
     "footnotes": ["Without abroad."]},
    {"type": "text", "text": "Two lines\nof text."}]}]})json";

class ExampleResults : public testing::Test {
  protected:
    const Outline outline = resultsOf(kExample);
    const OutlineNode& header = *outline.find(outline.roots().at(0));
    const Item& item = outline.find(header.children.at(0))->item;
    const tables::Table& table = std::get<TableContent>(item.content).table;
};

TEST_F(ExampleResults, StandUnderTheirHeader) {
    EXPECT_EQ(outline.size(), 3U);
    EXPECT_EQ(header.item.type(), ItemType::header);
    EXPECT_EQ(header.item.command, "Means");
    EXPECT_EQ(item.label, "Report");
    EXPECT_EQ(item.subtype, "Report");
    const auto& text = std::get<TextContent>(outline.find(header.children.at(1))->item.content);
    EXPECT_EQ(text.text, "Two lines\nof text.");
}

TEST_F(ExampleResults, HaveTheirDimensionsOnTheirAxes) {
    EXPECT_THAT(table.view->layers, ElementsAre(0));
    EXPECT_THAT(table.view->rows, ElementsAre(1));
    EXPECT_THAT(table.view->columns, ElementsAre(2));
    EXPECT_THAT(labelsOf(table.data->dimensions()[1]), ElementsAre("Europe/North", "Europe/South", "Total"));
    EXPECT_EQ(table.view->dimensions[0].shown, 1U);
    EXPECT_EQ(table.view->title, "Income by region");
    EXPECT_EQ(table.view->caption, "Weighted.");
}

TEST_F(ExampleResults, KeepCellsInTheOrderOfLayersRowsAndColumns) {
    EXPECT_THAT(cellsOf(*table.data),
                ElementsAre("1.5", "12", "2.25", "14", "1.9", "26", "1.4", "10", "2.5", "9", "", "19"));
    EXPECT_EQ(table.style->style(table.style->cell(8)).bold, true);
    EXPECT_EQ(table.style->cell(7), 0U);
}

TEST_F(ExampleResults, HaveRolesFormatsAndFootnotes) {
    const auto& rows = table.data->dimensions()[1].categories;
    const auto& columns = table.data->dimensions()[2].categories;
    EXPECT_EQ(rows[2].role, StatisticRole::total);
    EXPECT_THAT(rows[2].footnotes, ElementsAre(0));
    EXPECT_EQ(columns[0].role, StatisticRole::mean);
    EXPECT_EQ(columns[1].role, StatisticRole::count);
    EXPECT_EQ(tables::formatText(columns[0].format), "F8.2");
    EXPECT_THAT(table.data->footnotes(), ElementsAre("Without abroad."));
}

TEST(Results, TakeTheNameOfTheFirstFileThatHasOne) {
    ImportSurroundings surroundings;
    Imported imported;
    ImportProblem problem;
    for (const char* const text :
         {R"({"vexaResults":1})", R"({"name":"a","items":[]})", R"({"name":"b","items":[]})"}) {
        EXPECT_TRUE(readResults(text, "a.json", surroundings.context, imported, problem)) << problem.shown();
    }
    EXPECT_EQ(imported.name, "a");
}

TEST(Results, TakeKeysInAnyOrder) {
    const Outline outline = resultsOf(R"({"items":[
        {"cells":[1,2],"rows":[{"categories":["a","b"]}],"type":"table"},
        {"items":[{"text":"x","type":"text"}],"label":"H","type":"header"},
        {"views":[{"type":"text"},{"type":"log"}],"shown":2,"type":"model"}]})");
    EXPECT_THAT(cellsOf(*tableAt(outline, 0).data), ElementsAre("1", "2"));
    EXPECT_EQ(itemAt(outline, 1).label, "H");
    EXPECT_EQ(outline.find(outline.roots()[1])->children.size(), 1U);
    EXPECT_EQ(std::get<ModelContent>(itemAt(outline, 2).content).shown, 1U);
}

TEST(Results, TakeSparseCells) {
    const Outline outline = resultsOf(R"({"items":[{"type":"table",
        "layers":[{"categories":["x","y"]}],"rows":[{"categories":["a","b"]}],"columns":[{"categories":["c","d","e"]}],
        "sparse":[{"at":[1,0,2],"value":"text"},{"at":[0,1,0],"value":7,"italic":true}]}]})");
    const tables::Table& table = tableAt(outline, 0);
    EXPECT_THAT(cellsOf(*table.data), ElementsAre("", "", "", "7", "", "", "", "", "'text'", "", "", ""));
    EXPECT_TRUE(table.view->emptyLinesLeftOut);
    EXPECT_EQ(table.style->style(table.style->cell(3)).italic, true);
}

TEST(Results, TakeEveryKeyOfACell) {
    const Outline outline = resultsOf(R"({"items":[{"type":"table","footnotes":["a","b"],
        "cells":[{"value":0.5,"format":"PCT5.1","footnotes":[2,1],"text":"half","underline":false,"font":"Serif",
                  "size":12.5,"color":"#010203","background":"#fFaA00"}]}]})");
    const tables::Table& table = tableAt(outline, 0);
    const tables::TableCell& cell = *table.data->find(0);
    EXPECT_EQ(tables::formatText(cell.format), "PCT5.1");
    EXPECT_EQ(table.data->extras(cell).shown, "half");
    EXPECT_THAT(table.data->extras(cell).footnotes, ElementsAre(1, 0));
    const tables::CellStyle& style = table.style->style(table.style->cell(0));
    EXPECT_EQ(style.underline, false);
    EXPECT_EQ(style.bold, std::nullopt);
    EXPECT_EQ(style.font, "Serif");
    EXPECT_EQ(style.size, 12.5);
    EXPECT_EQ(style.color, tables::Color{0x010203});
    EXPECT_EQ(style.background, tables::Color{0xFFAA00});
}

TEST(Results, GiveACellThatOnlyShowsSomethingAText) {
    const Outline outline =
        resultsOf(R"({"items":[{"type":"table","footnotes":["a"],"rows":[{"categories":["a","b","c"]}],
        "cells":[{"text":"n.a."},{"footnotes":[1]},{"bold":true}]}]})");
    EXPECT_THAT(cellsOf(*tableAt(outline, 0).data), ElementsAre("'n.a.'", "''", ""));
}

TEST(Results, TakeEveryKeyOfATable) {
    const Outline outline =
        resultsOf(R"({"items":[{"type":"table","look":"Banded","titleHidden":true,"corner":"c",
        "minColumnWidth":30,"maxColumnWidth":90.5,"printLayers":"all","titleStyle":{"bold":false},
        "captionStyle":{"size":7},"footnoteStyle":{"color":"#0000ff"},
        "columns":[{"label":"L","labelHidden":true,"categories":[{"label":"x","width":50,"hidden":true,"italic":true},
           {"group":"g","bold":true,"categories":["y"]},{"group":"empty","categories":[]}]}]}]})");
    const tables::Table& table = tableAt(outline, 0);
    EXPECT_EQ(table.style->look()->name, "banded");
    EXPECT_TRUE(table.view->titleHidden);
    EXPECT_EQ(table.view->corner, "c");
    EXPECT_EQ(table.view->minColumnWidth, 30);
    EXPECT_EQ(table.view->maxColumnWidth, 90.5);
    EXPECT_EQ(table.view->layerPrinting, tables::LayerPrinting::all);
    EXPECT_EQ(table.style->style(table.style->area(tables::Area::title)).bold, false);
    EXPECT_EQ(table.style->style(table.style->area(tables::Area::caption)).size, 7);
    EXPECT_EQ(table.style->style(table.style->area(tables::Area::footnotes)).color, tables::Color{0xFF});
    EXPECT_TRUE(table.view->dimensions[0].labelHidden);
    EXPECT_TRUE(table.view->dimensions[0].isHidden(0));
    EXPECT_FALSE(table.view->dimensions[0].isHidden(1));
    EXPECT_EQ(table.style->width(0, 0), 50);
    EXPECT_EQ(table.style->style(table.style->category(0, 0)).italic, true);
    EXPECT_EQ(table.style->style(table.style->group(0, 0)).bold, true);
    EXPECT_THAT(labelsOf(table.data->dimensions()[0]), ElementsAre("x", "g/y"));
    EXPECT_EQ(table.data->dimensions()[0].groups.size(), 1U);
}

TEST(Results, TakeAnyLevelThatModulesReport) {
    const Outline outline = resultsOf(R"({"items":[{"type":"warning","level":120},
        {"type":"notes","lines":[{"level":-2},{"level":2147483647}]}]})");
    EXPECT_EQ(std::get<WarningContent>(itemAt(outline, 0).content).level, 120);
    EXPECT_THAT(std::get<NotesContent>(itemAt(outline, 1).content).lines,
                ElementsAre(NoteLine{-2, "", ""}, NoteLine{2147483647, "", ""}));
}

TEST(Results, TakeEveryTypeOfItem) {
    const Outline outline = resultsOf(R"({"items":[
        {"type":"heading","text":"h","style":{"size":20}},{"type":"pageTitle","text":"p"},
        {"type":"log","text":"l","visible":false},{"type":"warning","text":"w","level":4},{"type":"warning","text":"v"},
        {"type":"notes","lines":[{"level":1,"label":"a","value":"b"},{}]},
        {"type":"grid","title":"t","rows":[["","x"],["y",{"text":"1","bold":true}]],"headerRows":1,"headerColumns":1},
        {"type":"text","text":"t","command":"C","pageBreakBefore":true,"width":10,"height":20.5}]})");
    EXPECT_EQ(std::get<HeadingContent>(itemAt(outline, 0).content).style.size, 20);
    EXPECT_EQ(std::get<PageTitleContent>(itemAt(outline, 1).content).text, "p");
    EXPECT_FALSE(itemAt(outline, 2).visible);
    EXPECT_EQ(std::get<WarningContent>(itemAt(outline, 3).content).level, 4);
    EXPECT_EQ(std::get<WarningContent>(itemAt(outline, 4).content).level, 2);
    const auto& notes = std::get<NotesContent>(itemAt(outline, 5).content).lines;
    EXPECT_THAT(notes, ElementsAre(NoteLine{1, "a", "b"}, NoteLine{}));
    const tables::FlatTable& grid = *std::get<GridContent>(itemAt(outline, 6).content).grid;
    EXPECT_EQ(grid.rows(), 2U);
    EXPECT_EQ(grid.headerColumns, 1U);
    EXPECT_EQ(grid.styles[grid.cells[3].style].bold, true);
    EXPECT_EQ(itemAt(outline, 7).height, 20.5);
    EXPECT_TRUE(itemAt(outline, 7).pageBreakBefore);
}

TEST(Results, TakePicturesInTheText) {
    const std::string json =
        R"({"items":[{"type":"chart","svg":"<svg viewBox='0 0 40 20'/>","alternativeText":"a",
        "templates":["<template/>"],"styleSheet":"s.css"},{"type":"tree","png":")" +
        encodeBase64(samplePng(8, 4)) + R"("}]})";
    const Outline outline = resultsOf(json);
    const auto& chart = std::get<ChartContent>(itemAt(outline, 0).content);
    EXPECT_EQ(chart.picture->width, 30);
    EXPECT_EQ(chart.picture->height, 15);
    EXPECT_EQ(chart.alternativeText, "a");
    EXPECT_THAT(chart.templates, ElementsAre("<template/>"));
    EXPECT_EQ(chart.styleSheet, "s.css");
    const auto& tree = std::get<TreeContent>(itemAt(outline, 1).content);
    EXPECT_EQ(tree.picture->form, PictureForm::png);
    EXPECT_EQ(tree.picture->width, 6);
}

TEST(Results, KeepItemsOfUnknownTypes) {
    ImportSurroundings surroundings;
    Imported imported;
    ImportProblem problem;
    const std::string json =
        R"({"items":[{"type":"tabel","label":"L","items":[1,{"x-a":2}],"cells":{"x":[true]}},
      {"cells":[1],"x-a":3,"items":[{"type":"text"}],"type":"map"}]})";
    ASSERT_TRUE(readResults(json, "a.json", surroundings.context, imported, problem)) << problem.shown();
    ASSERT_EQ(imported.outline.size(), 2U);
    const Item& first = itemAt(imported.outline, 0);
    EXPECT_EQ(first.label, "L");
    EXPECT_EQ(std::get<UnknownContent>(first.content).type, "tabel");
    EXPECT_EQ(*std::get<UnknownContent>(first.content).raw,
              R"({"cells":{"x":[true]},"items":[1,{"x-a":2}]})");
    EXPECT_EQ(*std::get<UnknownContent>(itemAt(imported.outline, 1).content).raw,
              R"({"cells":[1],"items":[{"type":"text"}],"x-a":3})");
    std::vector<std::string> warnings;
    for (const ImportProblem& warning : imported.warnings) warnings.push_back(warning.shown());
    EXPECT_THAT(
        warnings,
        ElementsAre(
            "a.json:1:11: items[0]: The type 'tabel' is not known; the item is kept as it is. Did you "
            "mean 'table'?",
            "a.json:2:7: items[1]: The type 'map' is not known; the item is kept as it is."));
}

TEST(Results, PassOverKeysOfOthers) {
    const Outline outline =
        resultsOf(R"({"x-tool":{"a":[1,{}]},"items":[{"x-id":3,"type":"table","x-list":[[],{}],
        "rows":[{"x-source":"s","categories":[{"label":"a","x-b":1}]}],"cells":[{"value":1,"x-c":null}]}]})");
    EXPECT_THAT(cellsOf(*tableAt(outline, 0).data), ElementsAre("1"));
}

TEST(Results, TakeTablesWithoutCellsOrDimensions) {
    const Outline outline =
        resultsOf(R"({"items":[{"type":"table"},{"type":"table","rows":[{"categories":[]}],"cells":[]},
        {"type":"table","rows":[{"categories":["a","b"]}]}]})");
    EXPECT_EQ(tableAt(outline, 0).data->placeCount(), 1U);
    EXPECT_EQ(tableAt(outline, 1).data->placeCount(), 0U);
    EXPECT_EQ(tableAt(outline, 2).data->filledCount(), 0U);
}

}  // namespace
}  // namespace vexa::frontend
