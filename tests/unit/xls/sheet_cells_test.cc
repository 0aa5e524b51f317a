#include "frontend/export/xls/sheet_cells.h"

#include <gtest/gtest.h>

#include "frontend/export/xls/sheet_columns.h"
#include "tests/unit/xls/xls_samples.h"

namespace vexa::frontend {
namespace {

using biff::Records;
using biff::RecordView;
using biff::SheetCells;

std::string cellRecord(std::uint16_t id, const std::vector<std::uint32_t>& twos) {
    std::string bytes;
    Records records(bytes);
    records.begin(id);
    for (const std::uint32_t two : twos) records.two(two);
    records.end();
    return bytes;
}

/// A formula that names the cell (row, column) whose formula it shares.
std::string sharing(std::uint32_t row, std::uint32_t column, std::uint32_t hostRow,
                    std::uint32_t hostColumn) {
    std::string bytes;
    Records records(bytes);
    records.begin(biff::id::formula).two(row).two(column).two(15).real(1).two(8).four(0).two(5);
    records.one(1).two(hostRow).two(hostColumn).end();
    return bytes;
}

std::string shared(std::uint32_t firstRow, std::uint32_t lastRow, std::uint32_t first, std::uint32_t last) {
    std::string bytes;
    Records(bytes)
        .begin(biff::id::sharedFormula)
        .two(firstRow)
        .two(lastRow)
        .one(first)
        .one(last)
        .two(0x300)
        .two(1)
        .one(0x1E)
        .end();
    return bytes;
}

struct Sheet {
    explicit Sheet(const std::vector<std::string>& all) {
        for (const std::string& each : all) records += each;
        std::size_t at = 0;
        for (const std::string& each : all) {
            EXPECT_TRUE(
                cells.read({biff::twoAt(each, 0), std::string_view(records).substr(at, each.size())}));
            at += each.size();
        }
        cells.finishReading();
    }

    void place(const std::vector<std::string>& what, std::uint32_t row, std::uint32_t column) {
        content = contentWith(what);
        formats.assign(content.styles.size(), {});
        cells.place({content, row, column, formats, strings});
    }

    [[nodiscard]] std::string written() {
        std::string out;
        std::vector<std::uint32_t> blocks;
        cells.append(out, 15, blocks);
        return out;
    }

    /// Places of the cells, and of those that share a formula the cell that they name.
    [[nodiscard]] std::string shown() {
        const std::string out = written();
        std::string text;
        for (std::size_t at = 0; at < out.size(); at += 4U + biff::twoAt(out, at + 2)) {
            const std::uint16_t id = biff::twoAt(out, at);
            const auto number = [&](std::size_t place) {
                return std::to_string(biff::twoAt(out, at + place));
            };
            if (biff::isCellRecord(id)) text += number(4) + "," + number(6);
            if (id == biff::id::formula) text += "->" + number(27) + "," + number(29);
            if (id == biff::id::sharedFormula) {
                text += "{" + number(4) + "-" + number(6) + " x" +
                        std::to_string(biff::numberAt(out, at + 11, 1)) + "}";
            }
            if (id != biff::id::row && id != biff::id::dbCell) text += " ";
        }
        return text;
    }

    std::string records;  ///< one behind the other, as in a file
    SheetCells cells;
    SheetContent content;
    std::vector<biff::CellFormat> formats;
    biff::BookStrings strings;
};

TEST(SheetCells, PutsCellsInTheirOrder) {
    Sheet sheet({cellRecord(biff::id::blank, {5, 3, 15}), cellRecord(biff::id::blank, {2, 9, 15}),
                 cellRecord(biff::id::blank, {2, 1, 15})});
    EXPECT_EQ(sheet.shown(), "2,1 2,9 5,3 ");
    EXPECT_EQ(sheet.cells.used().rows, 0U);
    EXPECT_EQ(sheet.cells.extent().rows, 6U);
    sheet.place({"A1=1", "B2=2"}, 2, 4);
    EXPECT_EQ(sheet.shown(), "2,1 2,4 2,9 3,5 5,3 ");
    EXPECT_FALSE(sheet.cells.overwrote());
}

TEST(SheetCells, AnotherCellTakesOverWhatIsShared) {
    Sheet sheet({sharing(0, 3, 0, 3), shared(0, 3, 3, 3), sharing(1, 3, 0, 3), sharing(2, 3, 0, 3),
                 sharing(3, 3, 0, 3), sharing(3, 4, 9, 9)});
    sheet.place({"A1=1"}, 0, 3);
    EXPECT_EQ(sheet.shown(), "0,3 1,3->1,3 {1-3 x3} 2,3->1,3 3,3->1,3 3,4->9,9 ");
    EXPECT_TRUE(sheet.cells.overwrote());
}

TEST(SheetCells, WhatIsSharedStaysWhereItsCellStays) {
    Sheet sheet({sharing(0, 3, 0, 3), shared(0, 1, 3, 3), sharing(1, 3, 0, 3)});
    sheet.place({"A1=1"}, 1, 3);
    EXPECT_EQ(sheet.shown(), "0,3->0,3 {0-1 x3} 1,3 ");
}

TEST(SheetCells, NothingIsLeftOfAFormulaThatNobodyShares) {
    Sheet sheet({sharing(0, 3, 0, 3), shared(0, 1, 3, 3), sharing(1, 3, 0, 3)});
    sheet.place({"A1=1", "A2=1"}, 0, 3);
    EXPECT_EQ(sheet.shown(), "0,3 1,3 ");
}

TEST(SheetCells, AFormulaOfSeveralCellsThatLosesOneLeavesItsValues) {
    std::string array;
    Records(array).begin(biff::id::array).two(0).two(4).one(3).one(3).two(0).end();
    std::string truth = sharing(4, 3, 0, 3);
    truth.replace(10, 8, std::string("\1\0\1\0\0\0\xFF\xFF", 8));
    std::string worded = sharing(3, 3, 0, 3);
    worded.replace(10, 8, std::string("\0\0\0\0\0\0\xFF\xFF", 8));
    std::string text;
    Records(text).begin(biff::id::formulaString).two(3).one(0).bytes("abc").end();
    const std::vector<std::string> records{
        sharing(0, 3, 0, 3), array, sharing(1, 3, 0, 3), sharing(2, 3, 0, 3), worded, text, truth};
    Sheet beside(records);
    beside.place({"A1=1"}, 5, 3);
    EXPECT_FALSE(beside.cells.cutsFormulas());
    Sheet cut(records);
    cut.place({"A1=9"}, 1, 3);
    EXPECT_TRUE(cut.cells.cutsFormulas());
    const std::string out = cut.written();
    std::string value;
    Records(value).begin(biff::id::number).two(0).two(3).two(15).real(1).end();
    EXPECT_NE(out.find(value), std::string::npos);
    EXPECT_NE(out.find(cellRecord(biff::id::labelSst, {3, 3, 15, 0, 0})), std::string::npos);
    EXPECT_NE(out.find(cellRecord(biff::id::boolErr, {4, 3, 15, 1})), std::string::npos);
    EXPECT_EQ(cut.shown().find("->"), std::string::npos);
    Sheet whole(records);
    whole.place({"A1=1", "A2=", "A3=2", "A4=1", "A5=1"}, 0, 3);
    EXPECT_EQ(whole.shown(), "0,3 1,3 2,3 3,3 4,3 ");
}

TEST(SheetCells, BlocksHoldTheirRows) {
    std::vector<std::string> cells;
    for (int row = 1; row <= 70; ++row)
        cells.push_back("B" + std::to_string(row) + "=" + std::to_string(row));
    Sheet sheet({});
    sheet.place(cells, 10, 0);
    std::string out = "before";
    std::vector<std::uint32_t> blocks;
    sheet.cells.append(out, 15, blocks);
    ASSERT_EQ(blocks.size(), 3U);
    const std::vector<std::size_t> rows{32, 32, 6};
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const std::size_t block = blocks[i];
        EXPECT_EQ(biff::twoAt(out, block), biff::id::dbCell);
        const std::size_t firstRow = block - biff::fourAt(out, block + 4);
        EXPECT_EQ(biff::twoAt(out, firstRow), biff::id::row);
        EXPECT_EQ(biff::twoAt(out, firstRow + 4), 10U + 32U * i);
        // The first cell is counted from the second row, each other from the first cell of the row before.
        std::size_t cell = firstRow + 20;
        for (std::size_t row = 0; row < rows[i]; ++row) {
            cell += biff::twoAt(out, block + 8 + 2 * row);
            EXPECT_EQ(biff::twoAt(out, cell), biff::id::rk);
            EXPECT_EQ(biff::twoAt(out, cell + 4), 10U + 32U * i + row);
        }
    }
}

TEST(SheetCells, RowsAreMadeHigherOnly) {
    Sheet sheet({cellRecord(biff::id::row, {4, 0, 0, 600, 0, 0, 0x140, 15}),
                 cellRecord(biff::id::row, {5, 0, 0, 600, 0, 0, 0x160, 15})});
    EXPECT_EQ(sheet.cells.height(4, 15), 30);
    EXPECT_EQ(sheet.cells.height(5, 15), 0);  // hidden
    EXPECT_EQ(sheet.cells.height(6, 15), 15);
    sheet.cells.setHeight(4, 20, true);
    sheet.cells.setHeight(5, 50, true);
    sheet.cells.setHeight(6, 20, true);
    EXPECT_EQ(sheet.cells.height(4, 15), 30);
    EXPECT_EQ(sheet.cells.height(5, 15), 0);
    EXPECT_EQ(sheet.cells.height(6, 15), 20);
    sheet.cells.setHeight(4, 20, false);
    EXPECT_EQ(sheet.cells.height(4, 15), 20);
}

TEST(SheetCells, RefusesBrokenRecords) {
    SheetCells cells;
    for (const std::string& each :
         {cellRecord(biff::id::rk, {1}), cellRecord(biff::id::row, {1, 2}),
          cellRecord(biff::id::mulRk, {1, 2, 3, 4}), cellRecord(biff::id::formulaString, {0}),
          cellRecord(biff::id::blank, {0, 256, 15})}) {
        EXPECT_FALSE(cells.read({biff::twoAt(each, 0), each}));
    }
}

TEST(SheetColumns, KeepWhatIsSaidOfThem) {
    biff::SheetColumns columns(7);
    const std::string narrow = cellRecord(biff::id::colInfo, {2, 3, 256 * 10, 20, 2, 0});
    const std::string hidden = cellRecord(biff::id::colInfo, {4, 4, 256 * 10, 15, 1, 0});
    columns.read({biff::id::colInfo, narrow});
    columns.read({biff::id::colInfo, hidden});
    EXPECT_EQ(columns.points(2), 52.5);
    EXPECT_EQ(columns.points(4), 0);
    EXPECT_EQ(columns.points(9), 48);
    columns.widen(2, 40, true);
    columns.widen(4, 90, true);
    EXPECT_FALSE(columns.changed());
    columns.widen(3, 90, true);
    columns.widen(9, 30, false);
    EXPECT_EQ(columns.points(2), 52.5);
    EXPECT_EQ(columns.points(3), 90);
    EXPECT_EQ(columns.points(4), 0);
    EXPECT_EQ(columns.points(9), 30);
    std::string out;
    columns.append(out);
    EXPECT_EQ(out.substr(0, 16), cellRecord(biff::id::colInfo, {2, 2, 256 * 10, 20, 2, 0}));
    EXPECT_EQ(out.size(), 4 * 16U);
}

}  // namespace
}  // namespace vexa::frontend
