// Rows of a large worksheet that an export does not touch: they are copied as they are packed.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "frontend/export/xlsx/sheet_survey.h"
#include "frontend/package/marked_source.h"

namespace vexa::frontend {

/// Rows from the one that begins at `begin` up to the one that begins at `end`: their packed blocks, and
/// before and behind these what belongs to the same rows. What is before the blocks is long enough for them
/// to look back.
struct KeptRows {
    const RowMark* begin = nullptr;
    const RowMark* end = nullptr;
    PackedBlocks blocks;
};

/// The rows of the sheet, if there are enough of them, before the row `touched` and from `behind` on. The
/// survey and the packed bytes of the sheet must live as long.
[[nodiscard]] std::vector<KeptRows> keptRows(const SheetSurvey& survey, std::string_view packed,
                                             std::uint32_t touched, std::uint32_t behind);

}  // namespace vexa::frontend
