#include "backend/pivot/pivot_table.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

PivotDimension dimensionOf(std::size_t categories) {
    PivotDimension dimension;
    dimension.categories.resize(categories);
    return dimension;
}

TEST(PivotTable, CountsPlacesWithTheLastDimensionVaryingFastest) {
    PivotTable table;
    table.dimensions = {dimensionOf(2), dimensionOf(3), dimensionOf(4)};
    EXPECT_EQ(table.placeOf({0, 0, 0}), 0U);
    EXPECT_EQ(table.placeOf({0, 0, 1}), 1U);
    EXPECT_EQ(table.placeOf({0, 1, 0}), 4U);
    EXPECT_EQ(table.placeOf({1, 2, 3}), 23U);
    for (std::uint64_t place = 0; place < 24; ++place)
        EXPECT_EQ(table.placeOf(table.coordinates(place)), place);
}

TEST(PivotTable, WithoutDimensionsHasTheOnePlace) {
    const PivotTable table;
    EXPECT_EQ(table.placeOf({}), 0U);
    EXPECT_TRUE(table.coordinates(0).empty());
}

TEST(PivotTable, GivesACellWithoutExtrasAnEmptySet) {
    PivotTable table;
    table.extras = {{{"note"}, true, "", ""}};
    EXPECT_EQ(table.extrasOf({0, "x", {}, 0}), PivotCellExtras());
    EXPECT_EQ(table.extrasOf({0, "x", {}, 1}).notes.at(0), "note");
}

TEST(PivotDimension, StandsOnTheAxisOfItsFirstNumber) {
    const std::pair<int, PivotAxis> cases[] = {{0, PivotAxis::row},
                                               {1, PivotAxis::column},
                                               {2, PivotAxis::layer},
                                               {3, PivotAxis::row},
                                               {-1, PivotAxis::row}};
    for (const auto& [number, axis] : cases) {
        PivotDimension dimension;
        dimension.position[0] = number;
        EXPECT_EQ(dimension.axis(), axis) << number;
    }
}

}  // namespace
}  // namespace vexa
