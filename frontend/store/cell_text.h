// The cells of a table as one text: there may be very many, so each takes little more than its value.
//
// Tokens with a blank between them, in the order of places. `1.5` is a number, `#3` the third text of the
// table, `*12` stands for twelve empty places. `:2` behind a number gives it, and the numbers after it, the
// second of the formats named beside the cells; `:0` none, as at the beginning. `!4` behind all else is the
// fourth of the table's extras. Empty places at the end are left out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "backend/tables/model/table_data.h"
#include "frontend/store/entry_context.h"

namespace vexa::frontend {

/// What the tokens of a table refer to, numbered in the order of their first use.
struct CellReferences {
    std::vector<tables::DisplayFormat> formats;
    std::vector<std::string> texts;
    std::vector<tables::CellExtras> extras;
};

/// The tokens of all cells; `references` gets what they refer to.
[[nodiscard]] std::string writeCells(const tables::TableData& data, CellReferences& references,
                                     WritingContext& context);

/// How many tokens a text has at most, empty places left out.
[[nodiscard]] std::uint64_t countCells(std::string_view tokens);
/// Sets the cells in `builder`; false for tokens that cannot be read or refer to what is not there.
[[nodiscard]] bool readCells(std::string_view tokens, const CellReferences& references,
                             tables::TableDataBuilder& builder, ReadingContext& context);

/// Values of places: `17:2` is the value 2 at place 17, `17+40:2` at 40 places from there on, in ascending
/// order.
struct PlaceRun {
    tables::Place place = 0;
    tables::Place count = 0;
    std::uint32_t value = 0;
};
/// `values` are places and values above 0 in any order.
[[nodiscard]] std::string writePlaceRuns(std::vector<PlaceRun> values);
/// Runs that do not overlap, each with a value of at most `most`, all below `placeCount`.
[[nodiscard]] bool readPlaceRuns(std::string_view tokens, tables::Place placeCount, std::uint32_t most,
                                 std::vector<PlaceRun>& runs);

}  // namespace vexa::frontend
