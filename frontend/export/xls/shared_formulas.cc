#include "frontend/export/xls/shared_formulas.h"

#include <algorithm>

namespace vexa::frontend::biff {

namespace {

/// Of a formula's record: where its tokens begin, and the one that names another cell.
constexpr std::size_t tokensAt = headerBytes + 22;
constexpr std::uint32_t seeCell = 1;
constexpr std::uint32_t seeTable = 2;

CellRange rangeOf(std::string_view content) {
    return {twoAt(content, 0), twoAt(content, 2), numberAt(content, 4, 1), numberAt(content, 5, 1)};
}

/// The record of a shared formula among those behind a cell's own; empty where there is none.
std::string_view sharedOf(std::string_view raw) {
    while (raw.size() >= headerBytes) {
        const std::size_t length = headerBytes + twoAt(raw, 2);
        if (length > raw.size()) break;
        if (twoAt(raw, 0) == id::sharedFormula) return raw.substr(0, length);
        raw.remove_prefix(length);
    }
    return {};
}

/// The cells that still share a formula, in their order.
struct Sharers {
    std::vector<CellView*> cells;
    CellRange range;

    void add(CellView& cell) {
        if (cells.empty()) range = {cell.row, cell.row, cell.first, cell.first};
        range.firstRow = std::min(range.firstRow, cell.row);
        range.lastRow = std::max(range.lastRow, cell.row);
        range.firstColumn = std::min<std::uint32_t>(range.firstColumn, cell.first);
        range.lastColumn = std::max<std::uint32_t>(range.lastColumn, cell.first);
        cells.push_back(&cell);
    }

    /// The formula for the cells that are left.
    [[nodiscard]] std::string formulaOf(std::string_view shared) const {
        constexpr std::size_t mostCounted = 255;
        std::string bytes(shared);
        if (bytes.size() < headerBytes + 8) return bytes;
        setNumber(bytes, headerBytes, range.firstRow, 2);
        setNumber(bytes, headerBytes + 2, range.lastRow, 2);
        setNumber(bytes, headerBytes + 4, range.firstColumn, 1);
        setNumber(bytes, headerBytes + 5, range.lastColumn, 1);
        setNumber(bytes, headerBytes + 7, static_cast<std::uint32_t>(std::min(cells.size(), mostCounted)), 1);
        return bytes;
    }
};

}  // namespace

void SharedFormulas::read(const RecordView& record) {
    if (record.id == id::array || record.id == id::table) {
        const CellRange range = rangeOf(record.content());
        if (range.firstRow <= range.lastRow && range.firstColumn <= range.lastColumn) whole_.push_back(range);
    }
}

std::optional<SharedFormulas::Place> SharedFormulas::placeNamed(const CellView& cell) {
    if (cell.id() != id::formula || cell.raw.size() < tokensAt + 5 ||
        (numberAt(cell.raw, tokensAt, 1) != seeCell && numberAt(cell.raw, tokensAt, 1) != seeTable)) {
        return std::nullopt;
    }
    return Place{twoAt(cell.raw, tokensAt + 1), twoAt(cell.raw, tokensAt + 3)};
}

bool SharedFormulas::belongsTo(const CellView& cell, const CellRange& range) {
    const auto place = placeNamed(cell);
    return place && *place == Place{range.firstRow, range.firstColumn};
}

void SharedFormulas::drop(const CellView& cell) {
    const std::string_view shared = sharedOf(cell.raw);
    const auto place = placeNamed(cell);
    if (!shared.empty() && place) dropped_.emplace(*place, shared);
}

void SharedFormulas::settle(std::vector<CellView>& cells, std::deque<std::string>& pieces) const {
    if (dropped_.empty()) return;
    std::map<Place, Sharers> sharers;
    for (CellView& cell : cells) {
        const auto place = placeNamed(cell);
        if (place && dropped_.contains(*place)) sharers[*place].add(cell);
    }
    for (auto& [place, those] : sharers) {
        const std::string shared = those.formulaOf(dropped_.at(place));
        const CellView& host = *those.cells.front();
        const std::uint32_t hostRow = host.row;
        const std::uint32_t hostColumn = host.first;
        for (CellView* const cell : those.cells) {
            std::string& raw = pieces.emplace_back(cell->raw);
            setNumber(raw, tokensAt + 1, hostRow, 2);
            setNumber(raw, tokensAt + 3, hostColumn, 2);
            if (cell == those.cells.front()) raw.insert(headerBytes + twoAt(raw, 2), shared);
            cell->raw = raw;
        }
    }
}

}  // namespace vexa::frontend::biff
