#include "tests/unit/workbook/sheet_invariants.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "backend/text/utf8.h"
#include "frontend/export/workbook/sheet_draft.h"
#include "frontend/export/workbook/sheet_styles.h"

namespace vexa::frontend {

namespace {

using PlaceKey = std::pair<std::uint32_t, std::uint32_t>;

void expectCells(const SheetContent& content, const SheetLimits& limits) {
    std::optional<PlaceKey> last;
    for (const SheetCell& cell : content.cells) {
        const PlaceKey place{cell.row, cell.column};
        ASSERT_TRUE(!last || *last < place) << cell.row << " " << cell.column;
        last = place;
        ASSERT_LT(cell.row, content.rows);
        ASSERT_LT(cell.column, content.columns);
        ASSERT_LT(cell.style, content.styles.size());
        ASSERT_LE(cell.textBegin + std::size_t{cell.textLength}, content.texts.size());
        ASSERT_LE(cell.raised, cell.textLength);
        ASSERT_EQ(cell.value == SheetValue::text, cell.textLength > 0);
        ASSERT_LE(textUnits(content.text(cell)), limits.textUnits);
        ASSERT_TRUE(std::isfinite(cell.number));
    }
    ASSERT_LE(content.rows, limits.rows);
    ASSERT_LE(content.columns, limits.columns);
}

/// Ranges do not overlap, each of their places has a cell, and only the first one a value.
void expectRanges(const SheetContent& content) {
    std::map<PlaceKey, const SheetCell*> cells;
    for (const SheetCell& cell : content.cells) cells[{cell.row, cell.column}] = &cell;
    std::set<PlaceKey> covered;
    std::optional<PlaceKey> last;
    for (const SheetRange& range : content.merged) {
        const PlaceKey first{range.row, range.column};
        ASSERT_TRUE(!last || *last < first);
        last = first;
        ASSERT_GT(std::uint64_t{range.rows} * range.columns, 1U);
        for (std::uint32_t row = 0; row < range.rows; ++row) {
            for (std::uint32_t column = 0; column < range.columns; ++column) {
                const PlaceKey place{range.row + row, range.column + column};
                ASSERT_TRUE(covered.insert(place).second) << place.first << " " << place.second;
                const auto cell = cells.find(place);
                ASSERT_NE(cell, cells.end()) << place.first << " " << place.second;
                const bool isFirst = place == first;
                ASSERT_TRUE(isFirst || cell->second->value == SheetValue::blank);
            }
        }
    }
}

void expectStyles(const SheetContent& content) {
    std::set<std::string> codes;
    for (std::size_t i = 0; i < content.styles.size(); ++i) {
        codes.insert(content.styles[i].numberFormat);
        for (std::size_t j = 0; j < i; ++j) ASSERT_NE(content.styles[i], content.styles[j]);
    }
    EXPECT_LE(codes.size(), mostFormatCodes + 1);
}

}  // namespace

void expectInvariants(const SheetContent& content, const SheetLimits& limits) {
    expectCells(content, limits);
    expectRanges(content);
    expectStyles(content);
    EXPECT_EQ(validUtf8(content.texts), content.texts);
    for (const auto& [column, width] : content.widths) EXPECT_GT(width, 0) << column;
    for (const auto& [row, height] : content.heights) {
        EXPECT_LT(row, content.rows);
        EXPECT_GT(height, usualRowHeight);
        EXPECT_LE(height, 409);
    }
    for (const SheetPicture& picture : content.pictures) {
        EXPECT_LE(picture.row + picture.rows, content.rows);
        EXPECT_FALSE(picture.png.empty());
        EXPECT_GE(picture.rows * usualRowHeight, picture.height);
    }
}

}  // namespace vexa::frontend
