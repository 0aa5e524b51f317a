// Places on a sheet as its XML writes them: B2, $B$2, B2:C3. Here rows and columns count from 0.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/workbook/sheet_content.h"

namespace vexa::frontend {

/// Where something stands on a sheet.
struct SheetSpot {
    std::uint32_t row = 0;
    std::uint32_t column = 0;

    bool operator==(const SheetSpot&) const = default;
    /// By row, then by column.
    bool operator<(const SheetSpot& other) const {
        return row != other.row ? row < other.row : column < other.column;
    }
};

/// Nothing where the text is no cell of a sheet. Letters of either case; dollar signs are passed over.
[[nodiscard]] std::optional<SheetSpot> readSpot(std::string_view text);
/// One cell, or two with a colon between them.
[[nodiscard]] std::optional<SheetRange> readRange(std::string_view text);
/// Ranges with blanks between them; nothing where one of them is none.
[[nodiscard]] std::optional<std::vector<SheetRange>> readRanges(std::string_view text);
/// The column that `letters` name, from 0.
[[nodiscard]] std::optional<std::uint32_t> readColumn(std::string_view letters);

void appendColumn(std::string& out, std::uint32_t column);
void appendSpot(std::string& out, SheetSpot spot);
void appendRange(std::string& out, const SheetRange& range);
[[nodiscard]] std::string rangeText(const SheetRange& range);

/// Ranges with blanks between them.
[[nodiscard]] std::string rangesText(const std::vector<SheetRange>& ranges);
/// Where formulas that are about some ranges are seen from. There must be one.
[[nodiscard]] SheetSpot upperLeft(const std::vector<SheetRange>& ranges);

[[nodiscard]] bool overlap(const SheetRange& left, const SheetRange& right);

}  // namespace vexa::frontend
