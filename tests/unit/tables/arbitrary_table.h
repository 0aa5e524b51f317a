// Tables of any shape, made of bytes: random ones in a test, and those that a fuzzer finds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "backend/tables/model/table.h"

namespace vexa::tables {

/// Choices that are read from bytes; behind their end every choice is the first one.
class Choices {
  public:
    Choices(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    /// A number below `count`, which is at most 256.
    std::size_t below(std::size_t count) { return at_ < size_ ? data_[at_++] % count : 0; }
    bool yes() { return below(2) == 1; }

  private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

/// Up to five dimensions of up to five categories, with groups, orders, hidden categories, formats,
/// footnotes, styles, widths, and layers.
[[nodiscard]] Table arbitraryTable(Choices& choices);

/// The same table with the categories of its data in the order in which the view shows them.
[[nodiscard]] Table inShownOrder(const Table& table);
/// The same table with rows and columns exchanged.
[[nodiscard]] Table transposed(const Table& table);

/// What is wrong with a grid of a layer of a table; empty when nothing is: each place belongs to one cell,
/// each cell has the text of its place, the labels beside and above it are those of its categories, nothing
/// hidden is shown, and marks are those of the footnotes below.
[[nodiscard]] std::string wrongWith(const TableGrid& grid, const Table& table, Place layer);

}  // namespace vexa::tables
