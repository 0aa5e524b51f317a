#include "backend/pivot/shown_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "backend/pivot/bp_procedure.h"
#include "tests/unit/pivot/collected_log.h"

namespace vexa {
namespace {

using testing::ElementsAre;

PivotTable sample() {
    PivotTable built;
    built.title = "Title";
    built.caption = "Caption";
    built.titleHidden = true;
    built.minDataColumnWidth = 150;
    PivotDimension inner{"inner", 2, {0, 2, 0, 0}, {{"g", -1}, {"", 0}}, {{"a", 0}, {"b", 1}}};
    PivotDimension columns{"columns", 2, {1, 1, 0, 0}, {}, {{"x", -1}, {"y", -1}}};
    PivotDimension outer{"outer", 2, {0, 1, 0, 0}, {}, {{"p", -1}}};
    built.dimensions = {inner, columns, outer};
    built.extras = {{{"note", "other"}, true, "darkGray", ""}, {{}, false, "", "#Abcdef"}};
    built.cells = {{3, "text", std::nullopt, 1}, {0, "7", 7, 0}, {1, "1.", 1, 2}};
    return built;
}

TEST(ShownTable, HasTheDimensionsOfAnAxisByTheirIndex) {
    const tables::Table shown = shownTable(sample());
    EXPECT_THAT(shown.view->rows, ElementsAre(2U, 0U));
    EXPECT_THAT(shown.view->columns, ElementsAre(1U));
    EXPECT_EQ(shown.view->title, "Title");
    EXPECT_EQ(shown.view->caption, "Caption");
    EXPECT_TRUE(shown.view->titleHidden);
    EXPECT_TRUE(shown.view->emptyLinesLeftOut);
    EXPECT_EQ(shown.view->minColumnWidth, 150);
    EXPECT_EQ(shown.view->maxColumnWidth, std::nullopt);
    const tables::TableDimension& inner = shown.data->dimensions()[0];
    EXPECT_EQ(inner.label, "inner");
    EXPECT_EQ(inner.groups[0].parent, tables::noGroup);
    EXPECT_EQ(inner.groups[1].parent, 0U);
    EXPECT_EQ(inner.categories[1].group, 1U);
}

TEST(ShownTable, HasNumbersTextsNotesAndStyles) {
    const tables::Table shown = shownTable(sample());
    const tables::TableData& data = *shown.data;
    EXPECT_EQ(data.filledCount(), 3U);
    EXPECT_EQ(data.find(0)->number, 7);
    EXPECT_EQ(data.find(0)->format, (tables::DisplayFormat{tables::FormatKind::plain, 8, 0}));
    EXPECT_EQ(data.extras(*data.find(0)).shown, std::nullopt);
    EXPECT_EQ(data.extras(*data.find(1)).shown, "1.");
    EXPECT_EQ(data.text(*data.find(3)), "text");
    EXPECT_THAT(data.footnotes(), ElementsAre("note", "other"));
    EXPECT_THAT(data.extras(*data.find(3)).footnotes, ElementsAre(0U, 1U));
    const tables::CellStyle& bold = shown.style->style(shown.style->cell(3));
    EXPECT_EQ(bold.bold, true);
    EXPECT_EQ(bold.color, tables::Color{0x404040});
    EXPECT_EQ(bold.background, std::nullopt);
    EXPECT_EQ(shown.style->style(shown.style->cell(1)).background, tables::Color{0xabcdef});
    EXPECT_EQ(shown.style->cell(0), 0U);
}

TEST(ShownTable, ReadsColours) {
    const std::pair<const char*, std::optional<tables::Color>> cases[] = {
        {"black", tables::Color{0}},
        {"LIGHT_GRAY", tables::Color{0xc0c0c0}},
        {"lightGray", tables::Color{0xc0c0c0}},
        {"ORANGE", tables::Color{0xffc800}},
        {"RED", tables::Color{0xff0000}},
        {"#0aF010", tables::Color{0x0af010}},
        {"#0aF01", std::nullopt},
        {"#ggggg1", std::nullopt},
        {"#-12345", std::nullopt},
        {"", std::nullopt},
        {"brown", std::nullopt},
    };
    for (const auto& [given, expected] : cases) EXPECT_EQ(colorOf(given), expected) << given;
}

TEST(ShownTable, IsEmptyWhereNoTableHoldsAll) {
    PivotTable built;
    built.title = "Huge";
    for (int i = 0; i < 8; ++i) {
        PivotDimension& dimension = built.dimensions.emplace_back();
        dimension.position = {i % 3, i, 0, 0};
        dimension.categories.resize(1000);
    }
    built.cells = {{5, "x", std::nullopt, 0}};
    const tables::Table shown = shownTable(built);
    EXPECT_EQ(shown.data->placeCount(), 0U);
    EXPECT_EQ(shown.view->title, "Huge");
}

TEST(ShownTable, GoesIntoTheLogBesideWhatTheTraceTells) {
    const CollectedLog log;
    {
        BpProcedure procedure("Output Display", 2);
        BpPivotTable table = procedure.PivotTable(BpString("Title", 0), BpString("Subtype", 0), true);
        table.Dimension(BpString("Name", 0), 2)
            .Category(BpNumber(0, BpProcedure::Count))
            .Cell(BpString("a", 0));
    }
    const std::vector<TableFinished> events = log.all<TableFinished>();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].subtype, "Subtype");
    EXPECT_EQ(events[0].shown, shownTable(*events[0].table));
    EXPECT_EQ(events[0].shown.data->text(*events[0].shown.data->find(0)), "a");
}

}  // namespace
}  // namespace vexa
