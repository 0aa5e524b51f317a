// What holds for the grid of any table.
#include <gtest/gtest.h>

#include <random>

#include "tests/unit/tables/arbitrary_table.h"
#include "tests/unit/tables/table_sketch.h"

namespace vexa::tables {
namespace {

constexpr int kTables = 1000;

Table tableOf(unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::uint8_t> bytes(4096);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    Choices choices(bytes.data(), bytes.size());
    return arbitraryTable(choices);
}

/// The places of the data, by row or, when asked for, by column. (Texts may differ: formats of columns count
/// first.)
std::vector<Place> dataOf(const TableGrid& grid, bool byColumn) {
    const std::size_t rows = grid.rows - grid.headerRows;
    const std::size_t columns = grid.columns - grid.labelColumns;
    std::vector<Place> places(rows * columns);
    for (const GridCell& cell : grid.cells) {
        if (cell.role != GridRole::data) continue;
        const std::size_t row = cell.row - grid.headerRows;
        const std::size_t column = cell.column - grid.labelColumns;
        places[byColumn ? column * rows + row : row * columns + column] = cell.place;
    }
    return places;
}

std::string notesOf(const TableGrid& grid) {
    std::string notes = grid.layer.text;
    for (const GridFootnote& note : grid.footnotes) notes += '\n' + note.mark + ' ' + note.text;
    return notes;
}

TEST(ArbitraryLayout, HoldsEachPlaceOnceWithItsLabels) {
    std::size_t cells = 0;
    for (unsigned seed = 0; seed < kTables; ++seed) {
        const Table table = tableOf(seed);
        for (const Place layer : layersOf(table, LayerChoice::all)) {
            const TableGrid grid = layOut(table, layer);
            ASSERT_EQ(wrongWith(grid, table, layer), "") << seed << picture(grid);
            cells += grid.cells.size();
        }
    }
    EXPECT_GT(cells, 10U * kTables);
}

TEST(ArbitraryLayout, TransposingSwapsRowsAndColumns) {
    for (unsigned seed = 0; seed < kTables; ++seed) {
        const Table table = tableOf(seed);
        const TableGrid grid = layOut(table);
        EXPECT_EQ(dataOf(grid, false), dataOf(layOut(transposed(table)), true)) << seed << picture(grid);
    }
}

TEST(ArbitraryLayout, AnOrderIsAsIfTheDataWereInThatOrder) {
    for (unsigned seed = 0; seed < kTables; ++seed) {
        const Table table = tableOf(seed);
        const Table moved = inShownOrder(table);
        const std::vector<Place> layers = layersOf(table, LayerChoice::all);
        const std::vector<Place> movedLayers = layersOf(moved, LayerChoice::all);
        ASSERT_EQ(layers.size(), movedLayers.size());
        for (std::size_t i = 0; i < layers.size(); ++i) {
            const TableGrid grid = layOut(table, layers[i]);
            const TableGrid other = layOut(moved, movedLayers[i]);
            ASSERT_EQ(picture(grid), picture(other)) << seed;
            ASSERT_EQ(notesOf(grid), notesOf(other)) << seed;
        }
    }
}

TEST(ArbitraryLayout, FlatTablesShowTheTextsOfAllLayers) {
    for (unsigned seed = 0; seed < kTables; ++seed) {
        const Table table = tableOf(seed);
        const std::optional<FlatTable> flat = flatten(table);
        ASSERT_TRUE(flat.has_value());
        TableLayout layout(table);
        const std::size_t layers = layersOf(table, LayerChoice::all).size();
        const TableGrid grid = layOut(*flat);
        const std::size_t body = layout.rows() - (layout.columns() == 0 ? 0 : flat->headerRows);
        const std::size_t ofLayer = body + (table.view->layers.empty() || layout.columns() == 0 ? 0 : 1);
        EXPECT_EQ(grid.rows, layout.columns() == 0 ? 0 : flat->headerRows + layers * ofLayer) << seed;
        EXPECT_EQ(grid.columns, layout.columns()) << seed;
    }
}

}  // namespace
}  // namespace vexa::tables
