// Tables as commands build them, seen as their listeners see them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "backend/pivot/bp_procedure.h"
#include "backend/strings/dictionary.h"
#include "tests/unit/pivot/collected_log.h"
#include "tests/unit/strings/installed_texts.h"

namespace vexa {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

BpString plain(std::string_view text) { return {text, 0}; }

/// A cell as "labels of its categories=text".
std::vector<std::string> described(const PivotTable& table) {
    std::vector<std::string> result;
    for (const PivotCell& cell : table.cells) {
        std::string text;
        const std::vector<std::size_t> indexes = table.coordinates(cell.place);
        for (std::size_t i = 0; i < indexes.size(); ++i) {
            text += (i == 0 ? "" : "/") + table.dimensions[i].categories[indexes[i]].label;
        }
        result.push_back(text + "=" + cell.text);
    }
    return result;
}

std::vector<std::string> labelsOf(const PivotDimension& dimension) {
    std::vector<std::string> labels;
    for (const PivotCategory& category : dimension.categories) labels.push_back(category.label);
    return labels;
}

class TableBuilder : public testing::Test {
  protected:
    BpPivotTable table() { return procedure_.PivotTable(plain("Title"), plain("Subtype"), true); }
    PivotTable only() {
        const std::vector<PivotTable> tables = log_.tables();
        EXPECT_EQ(tables.size(), 1U);
        return tables.empty() ? PivotTable() : tables.front();
    }

    CollectedLog log_;
    BpProcedure procedure_{"Output Display", 2};
};

TEST_F(TableBuilder, CarriesWhatWasSetIntoTheFinishedTable) {
    {
        BpPivotTable table = this->table();
        table.Caption(plain("Caption"));
        table.HideTitle();
        table.MinDataColumnWidth(150);
        table.MaxDataColumnWidth(300);
        BpDimension name = table.Dimension(plain("Name"), 2).Position(0, 1, 1, 1);
        name.Category(BpNumber(0, BpProcedure::Count)).Cell(plain("a"));
        name.Category(BpNumber(1, BpProcedure::Count))
            .Cell(plain("b"))
            .Note(plain("Active"))
            .Bold()
            .Color("RED")
            .Background("#ffffff");
        EXPECT_TRUE(log_.tables().empty());
    }
    const PivotTable finished = only();
    EXPECT_EQ(finished.title, "Title");
    EXPECT_EQ(finished.subtype, "Subtype");
    EXPECT_TRUE(finished.flag);
    EXPECT_EQ(finished.caption, "Caption");
    EXPECT_TRUE(finished.titleHidden);
    EXPECT_EQ(finished.minDataColumnWidth, 150);
    EXPECT_EQ(finished.maxDataColumnWidth, 300);
    ASSERT_EQ(finished.dimensions.size(), 1U);
    EXPECT_EQ(finished.dimensions[0].kind, 2);
    EXPECT_EQ(finished.dimensions[0].position, (std::array<int, 4>{0, 1, 1, 1}));
    EXPECT_THAT(described(finished), ElementsAre("0=a", "1=b"));
    EXPECT_EQ(finished.extrasOf(finished.cells[0]), PivotCellExtras());
    EXPECT_EQ(finished.extrasOf(finished.cells[1]), (PivotCellExtras{{"Active"}, true, "RED", "#ffffff"}));
}

TEST_F(TableBuilder, FinishesATableOnceAndATableThatWasMovedWithItsNewOwner) {
    {
        BpPivotTable first = table();
        BpPivotTable second(std::move(first));
        second.Finish();
        second.Finish();
    }
    EXPECT_EQ(log_.tables().size(), 1U);
}

TEST_F(TableBuilder, FinishesATableWithoutDimensionsOrCells) {
    table().Finish();
    EXPECT_THAT(only().dimensions, IsEmpty());
    EXPECT_THAT(only().cells, IsEmpty());
}

TEST_F(TableBuilder, FinishesATableWhoseDimensionsLackCategories) {
    {
        BpPivotTable table = this->table();
        table.Dimension(plain("Key"), 2).Position(0, 1, 0, 0);
        table.Dimension(plain("Language"), 2).Position(1, 1, 0, 0).Category(plain("de"));
    }
    EXPECT_THAT(only().cells, IsEmpty());
    EXPECT_THAT(labelsOf(only().dimensions.at(1)), ElementsAre("de"));
}

TEST_F(TableBuilder, MergesDimensionsAndCategoriesOfTheSameLabel) {
    {
        BpPivotTable table = this->table();
        BpDimension key = table.Dimension(plain("Key"), 2).Position(0, 1, 0, 0);
        for (const std::string language : {"de", "en"}) {
            table.Dimension(plain("Language"), 2).Position(1, 1, 0, 0).Category(plain(language));
            for (const std::string each : {"open", "save"})
                key.Category(plain(each)).Cell(plain(language + each));
        }
    }
    const PivotTable finished = only();
    ASSERT_EQ(finished.dimensions.size(), 2U);
    EXPECT_THAT(labelsOf(finished.dimensions[0]), ElementsAre("open", "save"));
    EXPECT_THAT(labelsOf(finished.dimensions[1]), ElementsAre("de", "en"));
    EXPECT_THAT(described(finished),
                ElementsAre("open/de=deopen", "save/de=desave", "open/en=enopen", "save/en=ensave"));
}

TEST_F(TableBuilder, ReplacesACellThatIsFilledAgainWithItsLooks) {
    {
        BpPivotTable table = this->table();
        BpDimension name = table.Dimension(plain("Name"), 2);
        name.Category(plain("a")).Cell(plain("old")).Note(plain("note")).Bold();
        name.Category(plain("a")).Cell(BpNumber(7, BpProcedure::Count));
    }
    const PivotTable finished = only();
    EXPECT_THAT(described(finished), ElementsAre("a=7"));
    EXPECT_EQ(finished.cells[0].number, 7);
    EXPECT_EQ(finished.extrasOf(finished.cells[0]), PivotCellExtras());
}

TEST_F(TableBuilder, TellsCategoriesApartByTheirGroups) {
    {
        BpPivotTable table = this->table();
        BpDimension contents = table.Dimension(plain("Contents"), 2);
        contents.Category(plain("Format")).Cell(plain("outside"));
        BpGroup images = contents.Group(plain("Images"), true, 2);
        images.Category(plain("Format")).Cell(plain("png"));
        BpGroup inner = images.Group(plain("Inner"), true, 2);
        inner.Category(plain("Format")).Cell(plain("deep"));
        contents.Group(plain("Images"), true, 2).Category(plain("Format")).Cell(plain("jpg"));
        contents.Group(plain("Silent"), false, 2).Category(plain("Count")).Cell(plain("2"));
    }
    const PivotDimension contents = only().dimensions.at(0);
    EXPECT_THAT(contents.groups,
                ElementsAre(PivotGroup{"Images", -1}, PivotGroup{"Inner", 0}, PivotGroup{"", -1}));
    EXPECT_THAT(contents.categories, ElementsAre(PivotCategory{"Format", -1}, PivotCategory{"Format", 0},
                                                 PivotCategory{"Format", 1}, PivotCategory{"Count", 2}));
    EXPECT_THAT(described(only()), ElementsAre("Format=outside", "Format=jpg", "Format=deep", "Count=2"));
}

TEST_F(TableBuilder, FillsACellOfThreeDimensionsAtTheirCurrentCategories) {
    {
        BpPivotTable table = this->table();
        BpDimension layer = table.Dimension(plain("L"), 2).Position(2, 1, 0, 0);
        BpDimension column = table.Dimension(plain("C"), 2).Position(1, 1, 0, 0);
        BpDimension row = table.Dimension(plain("R"), 2).Position(0, 1, 0, 0);
        for (const std::string l : {"l1", "l2"}) {
            layer.Category(plain(l));
            for (const std::string c : {"c1", "c2"}) {
                column.Category(plain(c));
                row.Category(plain("r1")).Cell(plain(l + c));
            }
        }
        row.Category(plain("r2"));
        column.Category(plain("c1")).Cell(plain("last"));
    }
    EXPECT_THAT(described(only()), ElementsAre("l1/c1/r1=l1c1", "l1/c2/r1=l1c2", "l2/c1/r1=l2c1",
                                               "l2/c2/r1=l2c2", "l2/c1/r2=last"));
}

TEST_F(TableBuilder, GivesACellToTheFirstCategoryOfADimensionThatHadNone) {
    {
        BpPivotTable table = this->table();
        BpDimension row = table.Dimension(plain("R"), 2);
        BpDimension column = table.Dimension(plain("C"), 2).Position(1, 1, 0, 0);
        row.Category(plain("r1")).Cell(plain("early"));
        column.Category(plain("c1"));
        column.Category(plain("c2"));
        row.Category(plain("r2")).Cell(plain("late"));
        table.Dimension(plain("L"), 2).Position(2, 1, 0, 0).Category(plain("l1"));
    }
    EXPECT_THAT(described(only()), ElementsAre("r1/c1/l1=early", "r2/c2/l1=late"));
}

TEST_F(TableBuilder, KeepsTextsApartThatAreTranslatedAlike) {
    const InstalledTexts installed{{"outdisp.xlf", "List", "Liste"}, {"outdisp.xlf", "Listing", "Liste"}};
    {
        BpPivotTable table = this->table();
        BpDimension dimension = table.Dimension(plain("D"), 2);
        dimension.Category(BpString("List", 1)).Cell(plain("1"));
        dimension.Category(BpString("Listing", 1)).Cell(plain("2"));
    }
    EXPECT_THAT(described(only()), ElementsAre("Liste=1", "Liste=2"));
}

TEST(TableBuilderWithoutListeners, BuildsNothing) {
    BpProcedure procedure("Output Display", 2);
    BpPivotTable table = procedure.PivotTable(plain("Title"), plain(""), false);
    table.Dimension(plain("Name"), 2).Category(plain("a")).Cell(plain("b"));
    table.Finish();
    const CollectedLog log;
    EXPECT_TRUE(log.events.empty());
}

// Looking labels up one by one would take minutes here, and the test program's time limit would end it.
TEST(TableBuilderWithManyRows, FindsEveryRowAgain) {
    constexpr std::size_t kRows = 200'000;
    const CollectedLog log;
    {
        BpProcedure procedure("Stb Print", 2);
        BpPivotTable table = procedure.PivotTable(plain("Title"), plain(""), false);
        BpDimension key = table.Dimension(plain("Key"), 2);
        for (const char* const text : {"first", "second"}) {
            for (std::size_t row = 0; row < kRows; ++row) {
                key.Category(plain(std::to_string(row))).Cell(plain(text));
            }
        }
    }
    const PivotTable built = log.tables().back();
    ASSERT_EQ(built.cells.size(), kRows);
    EXPECT_EQ(built.cells.back().text, "second");
}

}  // namespace
}  // namespace vexa
