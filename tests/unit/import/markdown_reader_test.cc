// Markdown, read into items.

#include "frontend/import/markdown_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/frontend/memory_file_system.h"
#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

class MarkdownReader : public testing::Test {
  protected:
    std::vector<Item> read(const std::string& text) {
        std::vector<Item> items;
        EXPECT_TRUE(readMarkdown(text, "notes/a.md", options, surroundings.context, items, problem))
            << problem.shown();
        return items;
    }
    /// "heading: text", "text: text", "table", "chart: alternative text"
    std::vector<std::string> outline(const std::string& text) {
        std::vector<std::string> lines;
        for (const Item& item : read(text)) {
            if (const auto* const heading = std::get_if<HeadingContent>(&item.content)) {
                lines.push_back("heading: " + heading->text);
            } else if (const auto* const each = std::get_if<TextContent>(&item.content)) {
                lines.push_back("text: " + each->text);
            } else if (const auto* const chart = std::get_if<ChartContent>(&item.content)) {
                lines.push_back("chart: " + chart->alternativeText);
            } else {
                lines.push_back("table");
            }
        }
        return lines;
    }

    ImportSurroundings surroundings;
    ImportOptions options;
    ImportProblem problem;
};

TEST_F(MarkdownReader, MakesHeadingsAndTexts) {
    EXPECT_THAT(outline("# One #\n\nTwo *lines* of\na `paragraph`.\n### Three\nFour\n====\n#no\n"),
                ElementsAre("heading: One", "text: Two lines of a paragraph.", "heading: Three",
                            "heading: Four", "text: #no"));
}

TEST_F(MarkdownReader, KeepsLinesOfListsAndCode) {
    EXPECT_THAT(outline("- a\n- b\n\n```r\nx <- 1\n\n# y\n```\n***\n> quoted\n> on\n"),
                ElementsAre("text: - a\n- b", "text: x <- 1\n\n# y", "text: quoted on"));
}

TEST_F(MarkdownReader, MakesTables) {
    const std::vector<Item> items =
        read("Before\n\n| Region | Mean |\n|:--|--:|\n| **North** | 1.5 |\n| a \\| b | x |\nAfter");
    ASSERT_EQ(items.size(), 3U);
    const tables::Table& table = std::get<TableContent>(items[1].content).table;
    EXPECT_THAT(labelsOf(table.data->dimensions()[0]), ElementsAre("North", "a | b"));
    EXPECT_EQ(table.data->dimensions()[0].label, "Region");
    EXPECT_THAT(cellsOf(*table.data), ElementsAre("1.5", "'x'"));
}

TEST_F(MarkdownReader, MakesTablesOfASingleColumnAndGridsOfLabelsAlone) {
    const std::vector<Item> items = read("| Mean |\n|--|\n| 1.5 |\n\n| A | B |\n|--|--|\n\n");
    ASSERT_EQ(items.size(), 2U);
    const tables::Table& table = std::get<TableContent>(items[0].content).table;
    EXPECT_THAT(labelsOf(table.data->dimensions()[0]), ElementsAre("1"));
    EXPECT_THAT(labelsOf(table.data->dimensions()[1]), ElementsAre("Mean"));
    const tables::FlatTable& grid = *std::get<GridContent>(items[1].content).grid;
    ASSERT_EQ(grid.cells.size(), 2U);
    EXPECT_EQ(grid.cells[1].text, "B");
    EXPECT_EQ(grid.headerRows, 1U);
}

TEST_F(MarkdownReader, MakesChartsOfPicturesThatStandAlone) {
    MemoryFileSystem files;
    files.files["notes/b.svg"] = kSampleSvg;
    EXPECT_THAT(outline("![A *chart*](b.svg \"title\")\nText ![x](b.svg)"),
                ElementsAre("chart: A chart", "text: Text x"));
    std::vector<Item> items;
    EXPECT_FALSE(
        readMarkdown("a\n\n![x](none.svg)", "notes/a.md", options, surroundings.context, items, problem));
    EXPECT_EQ(problem.shown(), "3:1: The file notes/none.svg cannot be read: cannot be read.");
}

TEST_F(MarkdownReader, TakesMarksAway) {
    EXPECT_EQ(withoutMarks("a **b** _c_ snake_case 2 * 3 \\* `x*y*` [text](url) ~~d~~"),
              "a b c snake_case 2 * 3 * x*y* text d");
    EXPECT_EQ(withoutMarks("`` ` `` [x] ![y](z"), " `  [x] ![y](z");
}

}  // namespace
}  // namespace vexa::frontend
