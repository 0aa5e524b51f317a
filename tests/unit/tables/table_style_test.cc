#include "backend/tables/model/table_style.h"

#include <gtest/gtest.h>

#include "backend/tables/model/table.h"

namespace vexa::tables {
namespace {

CellStyle boldOf(bool bold) {
    CellStyle style;
    style.bold = bold;
    return style;
}

CellStyle sizeOf(double size) {
    CellStyle style;
    style.size = size;
    return style;
}

TEST(CellStyle, OverlaySetsOnlyWhatIsSet) {
    CellStyle style = boldOf(true);
    style.font = "Serif";
    CellStyle over = sizeOf(12);
    over.color = Color{0x112233};
    style.overlay(over);
    EXPECT_EQ(style.bold, true);
    EXPECT_EQ(style.font, "Serif");
    EXPECT_EQ(style.size, 12);
    EXPECT_EQ(style.color, Color{0x112233});
    style.overlay(boldOf(false));
    EXPECT_EQ(style.bold, false);
}

TEST(TableStyle, EqualStylesHaveOneId) {
    TableStyle style;
    EXPECT_EQ(style.intern({}), 0U);
    const StyleId bold = style.intern(boldOf(true));
    EXPECT_NE(bold, 0U);
    EXPECT_EQ(style.intern(boldOf(true)), bold);
    EXPECT_NE(style.intern(boldOf(false)), bold);
}

TEST(TableStyle, ManyStylesKeepTheirIds) {
    TableStyle style;
    std::vector<StyleId> ids;
    for (int i = 0; i < 500; ++i) ids.push_back(style.intern(sizeOf(i + 1)));
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(style.intern(sizeOf(i + 1)), ids[static_cast<std::size_t>(i)]);
        EXPECT_EQ(style.style(ids[static_cast<std::size_t>(i)]).size, i + 1);
    }
    EXPECT_EQ(style.intern({}), 0U);
}

TEST(TableStyle, CellsOfSmallAndVeryLargeTables) {
    for (const Place count : {Place{100}, Place{1} << 40}) {
        TableStyle style;
        const StyleId bold = style.intern(boldOf(true));
        style.setCell(7, bold, count);
        style.setCell(count - 1, bold, count);
        EXPECT_EQ(style.cell(7), bold);
        EXPECT_EQ(style.cell(8), 0U);
        EXPECT_EQ(style.cell(count - 1), bold);
        style.setCell(7, 0, count);
        EXPECT_EQ(style.cell(7), 0U);
    }
}

TEST(TableStyle, AFormatOfTheTableReplacesThoseOfItsCells) {
    TableStyle style;
    style.setCellFormat(3, {FormatKind::plain, 8, 1}, 10);
    style.setFormat({FormatKind::plain, 8, 2});
    EXPECT_EQ(style.cellFormat(3), DisplayFormat{});
    style.setCellFormat(3, {FormatKind::plain, 8, 3}, 10);
    EXPECT_EQ(style.cellFormat(3), (DisplayFormat{FormatKind::plain, 8, 3}));
    EXPECT_EQ(style.format(), (DisplayFormat{FormatKind::plain, 8, 2}));
}

TEST(TableStyle, IsEqualWhateverItsIds) {
    TableStyle left;
    TableStyle right;
    right.intern(sizeOf(99));
    EXPECT_TRUE(left == right);
    left.setCell(2, left.intern(boldOf(true)), 10);
    EXPECT_FALSE(left == right);
    right.setCell(2, right.intern(boldOf(true)), 10);
    EXPECT_TRUE(left == right);
    right.setWidth(1, 0, 30);
    EXPECT_FALSE(left == right);
    right.setWidth(1, 0, std::nullopt);
    EXPECT_TRUE(left == right);
    left.setGroup(0, 0, left.intern(boldOf(false)));
    EXPECT_FALSE(right == left);
}

TEST(TableStyle, HasThePlainLookFromTheStart) {
    EXPECT_EQ(TableStyle().look(), plainLook());
    EXPECT_EQ(plainLook()->name, "plain");
}

TEST(TableView, FormatsCountFromTheInnermostColumnOutwards) {
    TableView view;
    view.rows = {0, 1};
    view.columns = {2, 3};
    view.layers = {4};
    EXPECT_EQ(view.formatOrder(), (std::vector<DimensionId>{3, 2, 1, 0, 4}));
}

TEST(TableView, ShowsCategoriesInItsOrderWithoutTheHiddenOnes) {
    TableDimension dimension;
    dimension.categories.resize(4);
    DimensionView view;
    EXPECT_EQ(shownCategories(dimension, view), (std::vector<CategoryId>{0, 1, 2, 3}));
    view.order = {3, 1, 0, 2};
    view.hidden = {false, true};
    EXPECT_EQ(shownCategories(dimension, view), (std::vector<CategoryId>{3, 0, 2}));
}

}  // namespace
}  // namespace vexa::tables
