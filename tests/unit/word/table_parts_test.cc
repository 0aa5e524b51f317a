// Tables cut by columns into parts that fit.
#include "frontend/export/office/table_parts.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "frontend/export/office/table_columns.h"
#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {
namespace {

using tables::layOut;
using tables::TableGrid;

/// A table with groups of two columns under `groups` labels, two rows and one level of row labels.
TableGrid gridOf(std::size_t groups, const std::string& rowLabel = "North") {
    std::string columns;
    std::string cells;
    for (std::size_t i = 0; i < groups; ++i) {
        columns += std::string(i == 0 ? "" : ",") + R"({"group":"Group )" + std::to_string(i) +
                   R"(","categories":["Mean","Count"]})";
        cells += std::string(i == 0 ? "" : ",") + "1234.5,20,3.5,40";
    }
    ViewerDocument document;
    fill(document, R"({"type":"table","title":"T","rows":[{"label":"Region","categories":[")" + rowLabel +
                       R"(","South"]}],"columns":[{"label":"Statistics","categories":[)" + columns +
                       R"(]}],"cells":[)" + cells + "]}");
    const OutlineNode& node = *document.outline().find(document.outline().roots().front());
    return layOut(std::get<TableContent>(node.item.content).table);
}

constexpr TableRoom page{450, 700, 520, 63};

double widthOf(const TablePart& part) { return std::accumulate(part.widths.begin(), part.widths.end(), 0.0); }

TEST(TableParts, LeavesWhatFits) {
    const TableGrid grid = gridOf(2);
    const TableFit fit = fitTable(grid, page, WideTables::wrap);
    ASSERT_EQ(fit.parts.size(), 1U);
    EXPECT_EQ(fit.parts.front().columns(), 5U);
    EXPECT_EQ(fit.parts.front().headerRows, grid.headerRows);
    EXPECT_EQ(fit.parts.front().scale, 1);
    EXPECT_EQ(fit.parts.front().heights.size(), grid.rows);
    EXPECT_FALSE(fit.longLabels || fit.columnsCut || fit.textsCut);
}

TEST(TableParts, CutsBetweenGroupsAndRepeatsLabels) {
    const TableGrid grid = gridOf(10);
    const TableFit fit = fitTable(grid, page, WideTables::wrap);
    ASSERT_GT(fit.parts.size(), 1U);
    std::uint32_t next = 1;
    for (const TablePart& part : fit.parts) {
        EXPECT_EQ(part.labelColumns, 1U);
        EXPECT_EQ(part.dataBegin, next);
        EXPECT_EQ((part.dataEnd - part.dataBegin) % 2, 0U);
        EXPECT_LE(widthOf(part), page.width + 0.1);
        EXPECT_EQ(part.widths.size(), part.columns());
        next = part.dataEnd;
    }
    EXPECT_EQ(next, grid.columns);
    EXPECT_FALSE(fit.columnsCut);
}

TEST(TableParts, ShrinksWhatDoesNotFit) {
    const TableGrid grid = gridOf(10);
    const TableFit fit = fitTable(grid, page, WideTables::shrink);
    ASSERT_EQ(fit.parts.size(), 1U);
    EXPECT_LT(fit.parts.front().scale, 1);
    EXPECT_NEAR(widthOf(fit.parts.front()), page.width, 0.1);
}

TEST(TableParts, LeavesWideTablesAndSaysSo) {
    const TableFit fit = fitTable(gridOf(10), page, WideTables::asIs);
    ASSERT_EQ(fit.parts.size(), 1U);
    EXPECT_GT(widthOf(fit.parts.front()), page.edge);
    EXPECT_TRUE(fit.columnsCut);
}

TEST(TableParts, HasNoMoreColumnsThanThereMayBe) {
    const TableGrid grid = gridOf(40);
    for (const WideTables wide : {WideTables::asIs, WideTables::shrink, WideTables::wrap}) {
        const TableFit fit = fitTable(grid, page, wide);
        std::uint32_t columns = 0;
        for (const TablePart& part : fit.parts) {
            EXPECT_LE(part.columns(), page.mostColumns);
            columns += part.dataEnd - part.dataBegin;
        }
        EXPECT_EQ(columns, 80U);
    }
}

TEST(TableParts, WarnsOfTextsThatBecomeSmallerThanFontsAre) {
    EXPECT_TRUE(fitTable(gridOf(31), {100, 700, 520, 63}, WideTables::shrink).textsCut);
    EXPECT_FALSE(fitTable(gridOf(10), page, WideTables::shrink).textsCut);
}

TEST(TableParts, HalvesThePageForLongLabels) {
    std::string label;
    for (int i = 0; i < 30; ++i) label += "longer and ";
    const TableGrid grid = gridOf(2, label);
    const TableFit fit = fitTable(grid, page, WideTables::wrap);
    EXPECT_TRUE(fit.longLabels);
    ASSERT_FALSE(fit.parts.empty());
    EXPECT_LE(fit.parts.front().widths.front(), page.width / 2 + 0.1);
    EXPECT_GT(fit.parts.front().heights.back() * 2, fit.parts.front().heights.back());
    EXPECT_GT(fit.parts.front().heights[grid.headerRows], 2 * fit.parts.front().heights.back());
}

TEST(TableParts, RowsHoldEveryPlaceOnce) {
    const TableGrid grid = gridOf(10);
    for (const TablePart& part : fitTable(grid, page, WideTables::wrap).parts) {
        PartRows rows(part);
        for (std::uint32_t row = 0; row < grid.rows; ++row) {
            std::uint32_t column = 0;
            for (const RowPiece& piece : rows.next()) {
                EXPECT_EQ(piece.column, column);
                EXPECT_LE(piece.cell->row, row);
                EXPECT_GT(piece.cell->row + piece.cell->rowSpan, row);
                EXPECT_EQ(piece.place == RowPlace::further, piece.cell->row < row);
                column += piece.span;
            }
            EXPECT_EQ(column, part.columns());
        }
    }
}

TEST(TableColumns, MarksOfNumbersHangIntoTheMarginAsFarAsItGoes) {
    ViewerDocument document;
    fill(document, R"({"type":"table","rows":[{"label":"R","categories":["a",{"label":"b","footnotes":[1]}]}],
                       "columns":[{"label":"C","categories":["x"]}],
                       "cells":[{"value":1.25,"footnotes":[1]},{"value":1.25,"footnotes":[1,2,3]}],
                       "footnotes":["1","2","3"]})");
    const OutlineNode& node = *document.outline().find(document.outline().roots().front());
    TableGrid grid = layOut(std::get<TableContent>(node.item.content).table);
    for (tables::ShownStyle& style : grid.styles) style.look.marginRight = 6;
    std::vector<double> hanging;
    for (const tables::GridCell& cell : grid.cells) {
        if (cell.role == tables::GridRole::data) {
            hanging.push_back(hangingMarks(grid, cell));
        } else {
            EXPECT_EQ(hangingMarks(grid, cell), 0);
        }
    }
    ASSERT_EQ(hanging.size(), 2U);
    EXPECT_GT(hanging[0], 2);
    EXPECT_LT(hanging[0], 6);
    EXPECT_EQ(hanging[1], 6);
}

}  // namespace
}  // namespace vexa::frontend
