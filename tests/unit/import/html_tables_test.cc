// The tables of HTML pages.

#include "frontend/import/html_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HtmlTables : public testing::Test {
  protected:
    std::vector<tables::Table> read(const std::string& page) {
        std::vector<Item> items;
        EXPECT_TRUE(readHtmlTables(page, options, surroundings.context, items, problem)) << problem.shown();
        std::vector<tables::Table> read;
        for (const Item& item : items) read.push_back(std::get<TableContent>(item.content).table);
        return read;
    }
    static std::vector<std::string> rows(const tables::Table& table) {
        return labelsOf(table.data->dimensions()[0]);
    }
    static std::vector<std::string> columns(const tables::Table& table) {
        return labelsOf(table.data->dimensions()[1]);
    }

    ImportSurroundings surroundings;
    ImportOptions options;
    ImportProblem problem;
};

TEST_F(HtmlTables, AreReadWithCaptionsAndHeaders) {
    const auto tables = read(
        "<!DOCTYPE "
        "html><title>x</title><p>before<table><caption>Income</caption><thead><tr><th>Region<th>Mean<th>N"
        "<tbody><tr><th>North<td>1.5<td>12<tr><th>South<td> 2.25 "
        "<td>14</table><table><tr><td>a<td>b<tr><td>c<td>d</table>");
    ASSERT_EQ(tables.size(), 2U);
    EXPECT_EQ(tables[0].view->title, "Income");
    EXPECT_EQ(tables[0].data->dimensions()[0].label, "Region");
    EXPECT_THAT(rows(tables[0]), ElementsAre("North", "South"));
    EXPECT_THAT(columns(tables[0]), ElementsAre("Mean", "N"));
    EXPECT_THAT(cellsOf(*tables[0].data), ElementsAre("1.5", "12", "2.25", "14"));
    EXPECT_THAT(cellsOf(*tables[1].data), ElementsAre("'d'"));
}

TEST_F(HtmlTables, MakeGroupsOfSpans) {
    const auto tables = read(
        "<table><thead><tr><th rowspan=2 colspan=2></th><th colspan=2>Female</th><th rowspan=2>All</th></tr>"
        "<tr><th>Mean</th><th>N</th></tr></thead><tbody>"
        "<tr><th rowspan=2>Europe</th><th>North</th><td>1</td><td>2</td><td>3</td></tr>"
        "<tr><th>South</th><td>4</td><td>5</td><td>6</td></tr>"
        "<tr><th colspan=2>Total</th><td>7</td><td>8</td><td>9</td></tr></tbody></table>");
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_THAT(columns(tables[0]), ElementsAre("Female/Mean", "Female/N", "All"));
    EXPECT_THAT(rows(tables[0]), ElementsAre("Europe/North", "Europe/South", "Total"));
    EXPECT_THAT(cellsOf(*tables[0].data), ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9"));
}

TEST_F(HtmlTables, TakeARowWithTheLabelsOwnLabelForNoLevel) {
    const auto tables = read(
        "<table><thead><tr><th></th><th>Mean</th></tr><tr><th>Region</th><th></th></tr></thead>"
        "<tbody><tr><th>North</th><td>1</td></tr></tbody></table>");
    EXPECT_EQ(tables[0].data->dimensions()[0].label, "Region");
    EXPECT_THAT(columns(tables[0]), ElementsAre("Mean"));
}

TEST_F(HtmlTables, ShowTextAsABrowserDoes) {
    const auto tables = read(
        "<table><tr><th>x<th>y<tr><td>a  <b>b</b>\n "
        "c<br>d<script>no</script>&amp;&eacute;<td><p>one<p>two</table>");
    EXPECT_THAT(rows(tables[0]), ElementsAre("a b c\nd&\xC3\xA9"));
    EXPECT_THAT(cellsOf(*tables[0].data), ElementsAre("'one\ntwo'"));
}

TEST_F(HtmlTables, FindThoseInsideOthers) {
    const auto tables =
        read("<table><tr><th>x<th>y<tr><td>a<td>b<table><tr><td>p<td>q<tr><td>r<td>5</table></table>");
    ASSERT_EQ(tables.size(), 2U);
    EXPECT_THAT(cellsOf(*tables[0].data), ElementsAre("'b'"));
    EXPECT_THAT(cellsOf(*tables[1].data), ElementsAre("5"));
}

TEST_F(HtmlTables, KeepWithinTheirOwnSpans) {
    const auto tables = read("<table><tr><th>x<th>y<tr><td rowspan=65000>a<td colspan=2>5<tr><td>6</table>");
    EXPECT_THAT(columns(tables[0]), ElementsAre("y", ""));
    EXPECT_THAT(rows(tables[0]), ElementsAre("a", "a"));
    EXPECT_THAT(cellsOf(*tables[0].data), ElementsAre("5", "", "6", ""));
}

TEST_F(HtmlTables, AreReadInTheEncodingOfThePage) {
    EXPECT_THAT(columns(read("<table><tr><th>x<th>\xE4<tr><td>a<td>1</table>")[0]), ElementsAre("\xC3\xA4"));
    EXPECT_THAT(columns(read("<table><tr><th>x<th>\xC3\xA4<tr><td>a<td>1</table>")[0]),
                ElementsAre("\xC3\xA4"));
    EXPECT_THAT(columns(read("<meta charset='iso-8859-1'><table><tr><th>x<th>\xE4<tr><td>a<td>1</table>")[0]),
                ElementsAre("\xC3\xA4"));
}

TEST_F(HtmlTables, TakeWhatThePageSaysOfItsEncodingAsFarAsItFits) {
    const std::string header = "<table><tr><th>x<th>";
    const std::string rest = "<tr><td>a<td>1</table>";
    const struct {
        std::string page, column;
    } cases[] = {
        {"<meta http-equiv=Content-Type content='text/html; charset=Shift_JIS'>" + header + "\x93\xFA" + rest,
         "\u65E5"},
        {"<META CHARSET=\"windows-1251\">" + header + "\xC4" + rest, "\u0414"},
        {"<meta charset=utf-8>" + header + "a\xFF" + rest, "a\uFFFD"},
        {"<meta charset=no-such-set>" + header + "\u00E4" + rest, "\u00E4"},
        {"<meta charset=utf-16>" + header + "\u00E4" + rest, "\u00E4"},
        {"\xEF\xBB\xBF" + header + "\u00E4" + rest, "\u00E4"},
        {"<meta charset=>" + header + "\u00E4" + rest, "\u00E4"},
    };
    for (const auto& one : cases) {
        const auto tables = read(one.page);
        ASSERT_FALSE(tables.empty()) << one.page;
        EXPECT_THAT(columns(tables[0]), ElementsAre(one.column)) << one.page;
    }
}

TEST_F(HtmlTables, AGivenEncodingCountsAndMustFit) {
    std::vector<Item> items;
    const std::string page = "<meta charset=utf-8><table><tr><th>x<th>\xC4<tr><td>a<td>1</table>";
    options.encoding = "windows-1251";
    EXPECT_THAT(columns(read(page)[0]), ElementsAre("\u0414"));
    options.encoding = "UTF-8";
    EXPECT_FALSE(readHtmlTables(page, options, surroundings.context, items, problem));
    EXPECT_THAT(problem.message, testing::HasSubstr("The byte C4 (at offset"));
    options.encoding = "no-such-set";
    EXPECT_FALSE(readHtmlTables(page, options, surroundings.context, items, problem));
    EXPECT_THAT(problem.message, testing::HasSubstr("no-such-set is not known"));
    EXPECT_THAT(items, IsEmpty());
}

TEST_F(HtmlTables, HaveDataInASingleRowOrColumnWithoutMarkedLabels) {
    const auto read = this->read(
        "<table><tr><td>1<td>2</table><table><tr><td>3<tr><td>4</table><table><td>5</table>"
        "<table><tr><th>Mean<tr><td>6</table>");
    ASSERT_EQ(read.size(), 4U);
    EXPECT_THAT(rows(read[0]), ElementsAre("1"));
    EXPECT_THAT(columns(read[0]), ElementsAre("1"));
    EXPECT_THAT(rows(read[1]), ElementsAre("1"));
    EXPECT_THAT(columns(read[1]), ElementsAre("3"));
    EXPECT_THAT(rows(read[2]), ElementsAre("1"));
    EXPECT_THAT(columns(read[2]), ElementsAre("1"));
    EXPECT_THAT(rows(read[3]), ElementsAre("1"));
    EXPECT_THAT(columns(read[3]), ElementsAre("Mean"));
}

TEST_F(HtmlTables, HaveNoRowOfColumnLabelsWhereOnlyRowLabelsAreMarked) {
    const auto read = this->read(
        "<table><tr><th>North<td>1<td>2<tr><th>South<td>3<td>4</table>"
        "<table><tr><th rowspan=2>Europe<th>North<td>1<tr><th>South<td>2</table>"
        "<table><tr><td>Region<td>Mean<tr><th>North<td>1</table>");
    ASSERT_EQ(read.size(), 3U);
    EXPECT_THAT(rows(read[0]), ElementsAre("North", "South"));
    EXPECT_THAT(columns(read[0]), ElementsAre("1", "2"));
    EXPECT_THAT(cellsOf(*read[0].data), ElementsAre("1", "2", "3", "4"));
    EXPECT_THAT(rows(read[1]), ElementsAre("Europe/North", "Europe/South"));
    EXPECT_THAT(cellsOf(*read[1].data), ElementsAre("1", "2"));
    EXPECT_THAT(columns(read[2]), ElementsAre("Mean"));
    EXPECT_THAT(rows(read[2]), ElementsAre("North"));
}

TEST_F(HtmlTables, PassOverTheHardBlanksThatPadData) {
    const auto read = this->read(
        "<table><tr><th>&nbsp;<th>x<tr><th>a<td>&nbsp;<tr><th>b<td>&nbsp;&nbsp;1.5 &nbsp;"
        "<tr><th>c<td>&nbsp;so&nbsp;it&nbsp;is</table>");
    ASSERT_EQ(read.size(), 1U);
    EXPECT_THAT(cellsOf(*read[0].data), ElementsAre("", "1.5", "'\u00A0so\u00A0it\u00A0is'"));
}

TEST_F(HtmlTables, AreGridsWhereTheyHoldLabelsAlone) {
    std::vector<Item> items;
    ASSERT_TRUE(readHtmlTables(
        "<table></table><table><caption>T</caption><tr><th>R<th colspan=2>Male<tr><th>S<th>Mean<th>N"
        "</table>",
        options, surroundings.context, items, problem));
    ASSERT_EQ(items.size(), 1U);
    const tables::FlatTable& grid = *std::get<GridContent>(items[0].content).grid;
    EXPECT_EQ(grid.title, "T");
    EXPECT_EQ(grid.columns, 3U);
    EXPECT_EQ(grid.headerRows, 2U);
    std::vector<std::string> texts;
    for (const tables::FlatCell& cell : grid.cells) texts.push_back(cell.text);
    EXPECT_THAT(texts, ElementsAre("R", "Male", "", "S", "Mean", "N"));
}

TEST_F(HtmlTables, AreRefusedWithoutCells) {
    std::vector<Item> items;
    EXPECT_FALSE(readHtmlTables("<p>no table", options, surroundings.context, items, problem));
    EXPECT_EQ(problem.message, "The page has no table.");
    EXPECT_FALSE(readHtmlTables("<table></table>", options, surroundings.context, items, problem));
    EXPECT_EQ(problem.message, "The page has no table.");
    std::string wide = "<table>";
    for (int i = 0; i < 2000; ++i) wide += "<tr><td colspan=1000>";
    EXPECT_FALSE(readHtmlTables(wide, options, surroundings.context, items, problem));
    EXPECT_EQ(problem.message, "Table 1 of the page has more cells than a table may have.");
    EXPECT_THAT(items, IsEmpty());
}

}  // namespace
}  // namespace vexa::frontend
