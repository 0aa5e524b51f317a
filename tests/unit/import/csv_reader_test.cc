// Values with separators between them, read into tables.

#include "frontend/import/csv_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontend/import/grid_table.h"
#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

class CsvReader : public testing::Test {
  protected:
    tables::Table read(const std::string& text, bool isTabbed = false) {
        Item item;
        EXPECT_TRUE(readSeparated(text, isTabbed, options, surroundings.context, item, problem))
            << problem.shown();
        return std::get<TableContent>(item.content).table;
    }
    std::string refusal(const std::string& text) {
        Item item;
        return readSeparated(text, false, options, surroundings.context, item, problem) ? ""
                                                                                        : problem.shown();
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

TEST_F(CsvReader, MakesLabelsOfTheFirstRowAndColumn) {
    const tables::Table table = read("Region,Mean,N\nNorth,1.5,12\nSouth,2.25,14\n");
    EXPECT_EQ(table.data->dimensions()[0].label, "Region");
    EXPECT_EQ(table.data->dimensions()[1].label, "");
    EXPECT_THAT(rows(table), ElementsAre("North", "South"));
    EXPECT_THAT(columns(table), ElementsAre("Mean", "N"));
    EXPECT_THAT(cellsOf(*table.data), ElementsAre("1.5", "12", "2.25", "14"));
    EXPECT_EQ(table.data->dimensions()[1].categories[0].role, tables::StatisticRole::mean);
}

TEST_F(CsvReader, MakesGroupsOfSeveralHeaderRowsAndLabelColumns) {
    options.headerRows = 2;
    options.labelColumns = 2;
    const tables::Table table = read(
        "Region,,Female,,Male,Male\n"
        ",,Mean,N,Mean,N\n"
        "Europe,North,1,2,3,4\n"
        ",South,5,6,7,8\n"
        "Asia,East,9,10,11,12\n"
        "Asia,West,13,14,15,16\n");
    EXPECT_EQ(table.data->dimensions()[0].label, "Region");
    EXPECT_THAT(columns(table), ElementsAre("Female/Mean", "Female/N", "Male/Mean", "Male/N"));
    EXPECT_EQ(table.data->dimensions()[1].groups.size(), 2U);
    EXPECT_THAT(rows(table), ElementsAre("Europe/North", "Europe/South", "Asia/East", "Asia/West"));
    EXPECT_EQ(table.data->dimensions()[0].groups.size(), 2U);
    EXPECT_THAT(cellsOf(*table.data).back(), "16");
}

TEST_F(CsvReader, BeginsAnInnerGroupAnewUnderAnotherOne) {
    options.headerRows = 3;
    const tables::Table table = read("R,a,,b,\n,x,x,x,\n,1,2,3,4\nr,0,0,0,0\n");
    EXPECT_THAT(columns(table), ElementsAre("a/x/1", "a/x/2", "b/x/3", "b/x/4"));
    EXPECT_EQ(table.data->dimensions()[1].groups.size(), 4U);
}

TEST_F(CsvReader, LeavesColumnsWithoutAGroupOutsideOfOne) {
    options.headerRows = 2;
    EXPECT_THAT(columns(read("R,,g,\n,1,2,3\nr,0,0,0\n")), ElementsAre("1", "g/2", "g/3"));
}

TEST_F(CsvReader, NumbersRowsAndColumnsWithoutLabels) {
    options.headerRows = 0;
    options.labelColumns = 0;
    const tables::Table table = read("1,2,3\n4,5,6\n");
    EXPECT_THAT(rows(table), ElementsAre("1", "2"));
    EXPECT_THAT(columns(table), ElementsAre("1", "2", "3"));
}

TEST_F(CsvReader, TakesQuotedFields) {
    const tables::Table table = read("\"R\"\"x\",\"a,b\"\n\"line\none\",\"12\"\n");
    EXPECT_EQ(table.data->dimensions()[0].label, "R\"x");
    EXPECT_THAT(columns(table), ElementsAre("a,b"));
    EXPECT_THAT(rows(table), ElementsAre("line\none"));
    EXPECT_THAT(cellsOf(*table.data), ElementsAre("12"));
}

TEST_F(CsvReader, TakesOtherSeparatorsAndDecimalMarks) {
    EXPECT_THAT(cellsOf(*read("R\ta\nr\t1.5\n", true).data), ElementsAre("1.5"));
    options.separator = ';';
    options.decimal = ',';
    EXPECT_THAT(cellsOf(*read("R;a;b\nr;1,5;1.5\n").data), ElementsAre("1.5", "'1.5'"));
}

TEST_F(CsvReader, SaysWhereARowHasAnotherLength) {
    EXPECT_EQ(refusal("a,b\n1,2\n3\n"), "3:1: Fields found: 1. Fields in the first row: 2.");
    EXPECT_EQ(refusal("a,b\n1,\"2\n"), "2:3: The quotation mark that begins this field has no partner.");
    EXPECT_EQ(refusal("a,b\n1,\"2\"3\n"),
              "2:6: A separator or a line end must follow the quotation mark that ends a field.");
}

TEST_F(CsvReader, RefusesAFileWithoutData) {
    EXPECT_THAT(refusal(""), testing::HasSubstr("leave no data"));
    EXPECT_THAT(refusal("a,b,c\n"), testing::HasSubstr("Rows found: 1. Fields in a row: 3."));
    EXPECT_THAT(refusal("a\n1\n"), testing::HasSubstr("leave no data"));
}

struct NumberText {
    const char* text;
    std::optional<double> number;
};

class ReadNumber : public testing::TestWithParam<NumberText> {};

TEST_P(ReadNumber, TakesOnlyPlainNumbers) {
    double number = 0;
    const bool isNumber = readNumber(GetParam().text, '.', number);
    EXPECT_EQ(isNumber ? std::optional(number) : std::nullopt, GetParam().number) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Texts, ReadNumber,
                         testing::Values(NumberText{"12", 12.0}, NumberText{"-3", -3.0},
                                         NumberText{"+2.50", 2.5}, NumberText{".5", 0.5},
                                         NumberText{"5.", 5.0}, NumberText{"1e3", 1000.0},
                                         NumberText{"1.5E-2", 0.015}, NumberText{"2e+1", 20.0},
                                         NumberText{"007", 7.0}, NumberText{"", {}}, NumberText{"-", {}},
                                         NumberText{".", {}}, NumberText{"nan", {}}, NumberText{"inf", {}},
                                         NumberText{"1,000", {}}, NumberText{"12%", {}}, NumberText{"1e", {}},
                                         NumberText{"1e+", {}}, NumberText{"0x10", {}}, NumberText{"--1", {}},
                                         NumberText{"1 2", {}}, NumberText{"1.2.3", {}},
                                         NumberText{"1e999", {}}));

}  // namespace
}  // namespace vexa::frontend
