#include "backend/tables/model/table_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <vector>

namespace vexa::tables {
namespace {

TableDimension dimensionOf(std::size_t categories) {
    TableDimension dimension;
    for (std::size_t i = 0; i < categories; ++i)
        dimension.categories.push_back({"c" + std::to_string(i), noGroup, {}, {}, {}});
    return dimension;
}

TEST(TableData, CountsPlacesOfAllDimensions) {
    EXPECT_EQ(placeCountOf({}), 1U);
    EXPECT_EQ(placeCountOf({dimensionOf(3), dimensionOf(4)}), 12U);
    EXPECT_EQ(placeCountOf({dimensionOf(3), dimensionOf(0)}), 0U);
}

TEST(TableData, RefusesMorePlacesThanATableMayHave) {
    const std::vector<TableDimension> many(5, dimensionOf(1024));
    EXPECT_EQ(placeCountOf(many), std::nullopt);
    EXPECT_EQ(placeCountOf({many.begin(), many.begin() + 4}), Place{1} << 40);
}

TEST(TableData, PlacesAreRowMajorAndBack) {
    TableDataBuilder builder({dimensionOf(2), dimensionOf(3), dimensionOf(4)});
    const auto data = builder.finish();
    const std::vector<CategoryId> ids{1, 2, 3};
    EXPECT_EQ(data->placeOf(ids), 23U);
    std::vector<CategoryId> back;
    data->coordinates(23, back);
    EXPECT_EQ(back, ids);
    EXPECT_EQ(data->stride(0), 12U);
}

TEST(TableData, KeepsNumbersTextsAndNothing) {
    TableDataBuilder builder({dimensionOf(4)});
    builder.setNumber(0, 1.5);
    builder.setText(2, "text");
    const auto data = builder.finish();
    ASSERT_NE(data->find(0), nullptr);
    EXPECT_EQ(data->find(0)->number, 1.5);
    EXPECT_EQ(data->find(1), nullptr);
    EXPECT_EQ(data->text(*data->find(2)), "text");
    EXPECT_EQ(data->find(4), nullptr);
    EXPECT_EQ(data->filledCount(), 2U);
}

TEST(TableData, ANewValueTakesThePlaceOfTheOldOne) {
    TableDataBuilder builder({dimensionOf(1)});
    builder.setText(0, "old");
    builder.setNumber(0, 2);
    const auto data = builder.finish();
    EXPECT_EQ(data->find(0)->kind, CellKind::number);
    EXPECT_EQ(data->filledCount(), 1U);
}

TEST(TableData, ClearingTakesTheFootnotesAway) {
    TableDataBuilder builder({dimensionOf(1)}, {"note"});
    builder.setNumber(0, 2);
    builder.setFootnotes(0, {0});
    builder.clear(0);
    builder.setNumber(0, 3);
    const auto data = builder.finish();
    EXPECT_TRUE(data->extras(*data->find(0)).footnotes.empty());
}

TEST(TableData, AFootnoteOfTheSameTextIsTheSameFootnote) {
    TableDataBuilder builder({dimensionOf(1)}, {"first"});
    EXPECT_EQ(builder.footnote("second"), 1U);
    EXPECT_EQ(builder.footnote("first"), 0U);
    EXPECT_EQ(builder.footnote("second"), 1U);
    EXPECT_EQ(builder.finish()->footnotes().size(), 2U);
}

// Dense and sparse tables answer alike, in whatever order their cells come.
TEST(TableData, HoldsWhatWasSetInAnyOrderAndSize) {
    std::mt19937 random(1);
    for (const std::size_t width : {3U, 40U, 90U}) {
        for (const std::size_t filled : {5U, 200U, 3000U}) {
            TableDataBuilder builder({dimensionOf(width), dimensionOf(width)});
            std::map<Place, double> expected;
            for (std::size_t i = 0; i < filled; ++i) {
                const Place place = random() % (width * width);
                expected[place] = static_cast<double>(i);
                builder.setNumber(place, static_cast<double>(i));
            }
            const auto data = builder.finish();
            EXPECT_EQ(data->filledCount(), expected.size());
            std::map<Place, double> found;
            data->forEachCell([&](Place place, const TableCell& cell) { found[place] = cell.number; });
            EXPECT_EQ(found, expected);
            for (Place place = 0; place < width * width; ++place) {
                EXPECT_EQ(data->find(place) != nullptr, expected.contains(place));
            }
        }
    }
}

TEST(TableData, EqualTablesAreEqualHoweverTheyWereMade) {
    const auto make = [](bool backwards) {
        TableDataBuilder builder({dimensionOf(50), dimensionOf(50)});
        for (Place i = 0; i < 40; ++i) {
            const Place place = (backwards ? 39 - i : i) * 60;
            builder.setText(place, "t" + std::to_string(place));
        }
        return builder.finish();
    };
    EXPECT_TRUE(*make(false) == *make(true));
}

TEST(TableData, DiffersByValueFormatFootnoteShownTextAndPlace) {
    const auto make = [](const auto& change) {
        TableDataBuilder builder({dimensionOf(3)}, {"a", "b"});
        builder.setNumber(0, 1);
        change(builder);
        return builder.finish();
    };
    const auto plain = make([](TableDataBuilder&) {});
    EXPECT_TRUE(*plain == *make([](TableDataBuilder&) {}));
    EXPECT_FALSE(*plain == *make([](TableDataBuilder& b) { b.setNumber(0, 2); }));
    EXPECT_FALSE(*plain == *make([](TableDataBuilder& b) { b.setFootnotes(0, {1}); }));
    EXPECT_FALSE(*plain == *make([](TableDataBuilder& b) { b.setShown(0, "one"); }));
    EXPECT_FALSE(*plain == *make([](TableDataBuilder& b) { b.setNumber(1, 1); }));
    EXPECT_FALSE(*plain == *make([](TableDataBuilder& b) { b.dimension(0).categories[2].label = "other"; }));
}

TEST(TableData, NotANumberEqualsItself) {
    const auto make = [] {
        TableDataBuilder builder({dimensionOf(1)});
        builder.setNumber(0, std::numeric_limits<double>::quiet_NaN());
        return builder.finish();
    };
    EXPECT_TRUE(*make() == *make());
}

TEST(TableData, ABuilderBeginsWithWhatATableSays) {
    TableDataBuilder first({dimensionOf(60), dimensionOf(60)}, {"note"});
    first.setText(7, "seven");
    first.setNumber(3000, 1);
    first.setFootnotes(3000, {0});
    const auto old = first.finish();
    TableDataBuilder second(*old);
    EXPECT_TRUE(*TableDataBuilder(*old).finish() == *old);
    second.setText(7, "eight");
    second.setText(9, "seven");
    const auto changed = second.finish();
    EXPECT_EQ(changed->text(*changed->find(7)), "eight");
    EXPECT_EQ(changed->text(*changed->find(9)), "seven");
    EXPECT_EQ(changed->extras(*changed->find(3000)).footnotes, std::vector<FootnoteId>{0});
    EXPECT_EQ(old->text(*old->find(7)), "seven");
}

TEST(TableData, ACellTakesTwentyFourBytesAtMost) { EXPECT_LE(sizeof(TableCell), 24U); }

TEST(TableData, AFormatIsTheCellsOwnElseTheFirstOfItsCategories) {
    const DisplayFormat one{FormatKind::plain, 8, 1};
    const DisplayFormat two{FormatKind::plain, 8, 2};
    const DisplayFormat three{FormatKind::plain, 8, 3};
    TableDataBuilder builder({dimensionOf(1), dimensionOf(2)});
    builder.dimension(0).categories[0].format = one;
    builder.dimension(1).categories[1].format = two;
    builder.setNumber(0, 1);
    builder.setNumber(1, 1);
    const auto data = builder.finish();
    const std::vector<DimensionId> order{1, 0};
    EXPECT_EQ(data->formatOf(0, *data->find(0), order), one);
    EXPECT_EQ(data->formatOf(1, *data->find(1), order), two);
    TableCell own = *data->find(1);
    own.format = three;
    EXPECT_EQ(data->formatOf(1, own, order), three);
}

}  // namespace
}  // namespace vexa::tables
