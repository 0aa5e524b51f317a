// Single cells as records of a binary workbook.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/export/xls/record_reader.h"

namespace vexa::frontend::biff {

/// The cells of one record: neighbours in one row. A formula has its result, and what is said of formulas
/// that several cells share, in records behind its own.
struct CellView {
    std::uint32_t row = 0;
    std::uint16_t first = 0;
    std::uint16_t last = 0;
    std::string_view raw;

    [[nodiscard]] std::uint16_t id() const { return twoAt(raw, 0); }
    [[nodiscard]] bool isBlank() const { return id() == id::blank || id() == id::mulBlank; }
};

/// Whether a record is one of a cell or of several, or one that goes with a formula.
[[nodiscard]] bool isCellRecord(std::uint16_t id);
[[nodiscard]] bool goesWithFormula(std::uint16_t id);

/// The cells of a record; nothing where it is cut off.
[[nodiscard]] std::optional<CellView> cellsOf(const RecordView& record);

void appendBlanks(Records& records, std::uint32_t row, std::uint32_t first, std::uint32_t last,
                  std::uint16_t format);
void appendNumber(Records& records, std::uint32_t row, std::uint32_t column, std::uint16_t format,
                  double value);
void appendText(Records& records, std::uint32_t row, std::uint32_t column, std::uint16_t format,
                std::uint32_t text);

/// One cell of a record of several as a record of its own.
void appendCellOf(Records& records, const CellView& cells, std::uint16_t column);

/// The short form of a number, where it has one that is as exact.
[[nodiscard]] std::optional<std::uint32_t> shortNumber(double value);

/// A range of cells as formulas that stand for several cells have it. Both ends are within.
struct CellRange {
    std::uint32_t firstRow = 0;
    std::uint32_t lastRow = 0;
    std::uint32_t firstColumn = 0;
    std::uint32_t lastColumn = 0;

    [[nodiscard]] bool holds(std::uint32_t row, std::uint32_t column) const {
        return row >= firstRow && row <= lastRow && column >= firstColumn && column <= lastColumn;
    }
    [[nodiscard]] std::uint64_t cells() const {
        return std::uint64_t{lastRow - firstRow + 1} * (lastColumn - firstColumn + 1);
    }
};

}  // namespace vexa::frontend::biff
