// Documents printed as JSON, and what is read again.

#include "frontend/import/results_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontend/import/results_reader.h"
#include "tests/unit/import/import_samples.h"
#include "tests/unit/import/random_documents.h"

namespace vexa::frontend {
namespace {

/// Prints what a JSON text says; a text in the printed form comes back as it is.
std::string again(const std::string& json) {
    ImportSurroundings surroundings;
    Imported imported;
    ImportProblem problem;
    EXPECT_TRUE(readResults(json, "a.json", surroundings.context, imported, problem))
        << problem.shown() << '\n'
        << json;
    return printed(imported.outline, imported.name);
}

constexpr char kPrinted[] = R"json({"vexaResults": 1, "name": "march", "items": [
  {"type": "header", "label": "Means", "command": "Means", "items": [
    {"type": "table", "label": "Report", "subtype": "Report", "title": "Income by region", "caption": "Weighted.",
     "rows": [{"label": "Region", "categories": [{"group": "Europe", "categories": ["North", "South"]},
        {"label": "Total", "footnotes": [1]}]}],
     "columns": [{"label": "Statistics", "categories": [{"label": "Mean", "format": "F8.2"}, {"label": "N", "format": "F8.0"}]}],
     "layers": [{"label": "Sex", "categories": ["Female", "Male"], "shown": 2}],
     "cells": [1.5, 12,
      2.25, 14,
      1.9, 26,
      1.4, 10,
      {"value": 2.5, "bold": true}, 9,
      null, 19],
     "footnotes": ["Without abroad."]},
    {"type": "text", "text": "Two lines\nof text."}]}]}
)json";

TEST(ResultsWriter, PrintsTheFormThatPeopleRead) { EXPECT_EQ(again(kPrinted), kPrinted); }

TEST(ResultsWriter, PrintsNothingThatIsDefault) {
    EXPECT_EQ(
        again(R"({"items":[{"type":"table","label":"","visible":true,"title":"","titleHidden":false,"rows":[],
        "footnotes":[],"cells":[null]},{"type":"header","items":[]},{"type":"warning","level":2}]})"),
        "{\"vexaResults\": 1, \"items\": [\n"
        "  {\"type\": \"table\"},\n"
        "  {\"type\": \"header\"},\n"
        "  {\"type\": \"warning\"}]}\n");
}

TEST(ResultsWriter, PrintsNoValueOfCellsThatOnlyCarryFootnotes) {
    const std::string json = again(
        R"({"items":[{"type":"table","rows":[{"categories":["a","b","c"]}],"footnotes":["f"],
        "cells":[{"footnotes":[1]},{"value":"","footnotes":[1],"bold":true},""]}]})");
    EXPECT_THAT(json, testing::HasSubstr(R"("cells": [{"footnotes": [1]},)"));
    EXPECT_THAT(json, testing::HasSubstr(R"({"footnotes": [1], "bold": true},)"));
    EXPECT_THAT(json, testing::HasSubstr(R"( ""],)"));
}

TEST(ResultsWriter, PrintsRolesOnlyWhereTheLabelDoesNotSayThem) {
    const std::string json =
        again(R"({"items":[{"type":"table","rows":[{"categories":[{"label":"Mean","role":"mean"},
        {"label":"Mean","role":"none"},{"label":"x","role":"total"}]}]}]})");
    EXPECT_THAT(
        json,
        testing::HasSubstr(
            R"("categories": ["Mean", {"label": "Mean", "role": "none"}, {"label": "x", "role": "total"}])"));
}

TEST(ResultsWriter, PrintsATableAsItIsArranged) {
    tables::TableDimension rows{"R", {}, {}};
    rows.categories.resize(2);
    rows.categories[0].label = "a";
    rows.categories[1].label = "b";
    tables::TableDimension columns{"C", {}, {}};
    columns.categories.resize(2);
    columns.categories[0].label = "c";
    columns.categories[1].label = "d";
    columns.categories[1].format = *tables::parseFormat("F8.2");
    tables::TableDataBuilder builder({rows, columns});
    for (tables::Place place = 0; place < 4; ++place)
        builder.setNumber(place, static_cast<double>(place + 1));
    tables::TableView view;
    view.rows = {1};
    view.columns = {0};
    view.dimensions.resize(2);
    view.dimensions[0].order = {1, 0};
    tables::TableStyle style;
    style.setFormat(*tables::parseFormat("PCT5.1"));
    style.setCellFormat(0, *tables::parseFormat("F8.0"), 4);
    Outline outline;
    Item item;
    item.content = TableContent{tables::makeTable(builder.finish(), view, style)};
    outline.add(item);
    EXPECT_EQ(printed(outline),
              "{\"vexaResults\": 1, \"items\": [\n"
              "  {\"type\": \"table\",\n"
              "   \"rows\": [{\"label\": \"C\", \"categories\": [\"c\", \"d\"]}],\n"
              "   \"columns\": [{\"label\": \"R\", \"categories\": [{\"label\": \"b\", \"format\": "
              "\"PCT5.1\"}, {\"label\": \"a\", "
              "\"format\": \"PCT5.1\"}]}],\n"
              "   \"cells\": [3, {\"value\": 1, \"format\": \"F8.0\"},\n"
              "    4, 2]}]}\n");
}

TEST(ResultsWriter, KeepsTheSignOfZero) {
    const std::string json = again(R"({"items":[{"type":"table","cells":[-0.0]}]})");
    EXPECT_THAT(json, testing::HasSubstr("\"cells\": [-0.0]"));
    EXPECT_EQ(again(json), json);
}

TEST(ResultsWriter, EscapesWhatJsonCannotHold) {
    Outline outline;
    Item item;
    item.content = LogContent{"a\"\\\n\t\x01\x7F\xC3\xA4\xFF"};
    outline.add(item);
    EXPECT_THAT(printed(outline),
                testing::HasSubstr("\"a\\\"\\\\\\n\\t\\u0001\\u007f\xC3\xA4\xEF\xBF\xBD\""));
}

class RandomResults : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RandomResults, AreEqualWhenTheyAreReadAgain) {
    ImportSurroundings surroundings;
    const Outline outline = RandomDocuments(GetParam()).document(4);
    const std::string json = printed(outline, "name");
    Imported imported;
    ImportProblem problem;
    ASSERT_TRUE(readResults(json, "a.json", surroundings.context, imported, problem))
        << problem.shown() << '\n'
        << json;
    EXPECT_TRUE(imported.outline == outline) << json << '\n' << printed(imported.outline);
    EXPECT_EQ(imported.name, "name");
}

TEST_P(RandomResults, PrintTheSameAgainHoweverTheyAreArranged) {
    const std::string json = printed(RandomDocuments(GetParam()).document(4, true), "name");
    EXPECT_EQ(again(json), json);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomResults, testing::Range(std::uint32_t{0}, std::uint32_t{150}));

}  // namespace
}  // namespace vexa::frontend
