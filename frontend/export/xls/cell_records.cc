#include "frontend/export/xls/cell_records.h"

#include <cmath>
#include <cstring>

namespace vexa::frontend::biff {

namespace {

/// Of a record of several cells: its place and its last column.
constexpr std::size_t severalBytes = 6;
constexpr std::size_t shortCellBytes = 6;  ///< format and short number
constexpr std::size_t cellBytes = 6;

std::uint64_t bitsOf(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

std::optional<std::uint32_t> shortWhole(double value) {
    constexpr double most = 1U << 29U;
    if (!(value >= -most && value < most) || value != std::floor(value)) return std::nullopt;
    if (value == 0 && std::signbit(value)) return std::nullopt;
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(value)) << 2U | 2U;
}

}  // namespace

bool isCellRecord(std::uint16_t id) {
    switch (id) {
        case id::formula:
        case id::mulRk:
        case id::mulBlank:
        case id::rString:
        case id::labelSst:
        case id::blank:
        case id::number:
        case id::label:
        case id::boolErr:
        case id::rk:
            return true;
        default:
            return false;
    }
}

bool goesWithFormula(std::uint16_t id) {
    return id == id::formulaString || id == id::sharedFormula || id == id::array || id == id::table;
}

std::optional<CellView> cellsOf(const RecordView& record) {
    const std::string_view content = record.content();
    if (content.size() < cellBytes) return std::nullopt;
    CellView cells{twoAt(content, 0), twoAt(content, 2), twoAt(content, 2), record.raw};
    if (record.id == id::mulRk || record.id == id::mulBlank) {
        const std::size_t each = record.id == id::mulRk ? shortCellBytes : 2;
        cells.last = twoAt(content, content.size() - 2);
        if (cells.last < cells.first ||
            content.size() != severalBytes + each * (std::size_t{cells.last} - cells.first + 1)) {
            return std::nullopt;
        }
    }
    return cells.last < columnCount ? std::optional(cells) : std::nullopt;
}

void appendBlanks(Records& records, std::uint32_t row, std::uint32_t first, std::uint32_t last,
                  std::uint16_t format) {
    if (first == last) {
        records.begin(id::blank).two(row).two(first).two(format).end();
        return;
    }
    records.begin(id::mulBlank).two(row).two(first);
    for (std::uint32_t column = first; column <= last; ++column) records.two(format);
    records.two(last).end();
}

std::optional<std::uint32_t> shortNumber(double value) {
    constexpr std::uint64_t dropped = (1ULL << 34U) - 1;
    if (const auto whole = shortWhole(value)) return whole;
    const std::uint64_t bits = bitsOf(value);
    if ((bits & dropped) == 0) return static_cast<std::uint32_t>(bits >> 32U);
    // Hundredths, where dividing gives the very same number back.
    const double hundredths = std::round(value * 100);
    const auto whole = shortWhole(hundredths);
    if (whole && bitsOf(hundredths / 100) == bits) return *whole | 1U;
    return std::nullopt;
}

void appendNumber(Records& records, std::uint32_t row, std::uint32_t column, std::uint16_t format,
                  double value) {
    if (const auto brief = shortNumber(value)) {
        records.begin(id::rk).two(row).two(column).two(format).four(*brief).end();
    } else {
        records.begin(id::number).two(row).two(column).two(format).real(value).end();
    }
}

void appendText(Records& records, std::uint32_t row, std::uint32_t column, std::uint16_t format,
                std::uint32_t text) {
    records.begin(id::labelSst).two(row).two(column).two(format).four(text).end();
}

void appendCellOf(Records& records, const CellView& cells, std::uint16_t column) {
    const bool isNumbers = cells.id() == id::mulRk;
    const std::size_t each = isNumbers ? shortCellBytes : 2;
    const std::string_view cell =
        cells.raw.substr(headerBytes + 4 + each * (std::size_t{column} - cells.first), each);
    records.begin(isNumbers ? id::rk : id::blank).two(cells.row).two(column).bytes(cell).end();
}

}  // namespace vexa::frontend::biff
