// The cells of a table as they come out of a JSON text, before its dimensions need be known.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "backend/tables/model/table_data.h"
#include "backend/tables/model/table_look.h"
#include "frontend/import/json_object.h"

namespace vexa::frontend {

/// What only few cells have.
struct JsonCellDetails {
    tables::DisplayFormat format;
    tables::CellStyle style;
    std::vector<tables::FootnoteId> footnotes;
    std::optional<std::string> shown;
};

struct JsonCell {
    double number = 0;
    std::uint32_t text = 0;     ///< index into `texts`
    std::uint32_t details = 0;  ///< 0 for none, else 1 + index into `details`
    tables::CellKind kind = tables::CellKind::empty;
};

/// Cells in the order of the text.
struct JsonCells {
    bool isThere = false;
    bool isSparse = false;
    std::vector<JsonCell> cells;
    std::vector<std::string> texts;
    std::vector<JsonCellDetails> details;
    std::vector<std::uint32_t> at;  ///< of a sparse list: the categories of all cells, one behind the other
    std::size_t atLength = 0;       ///< how many each cell has

    void addEmpty() { cells.emplace_back(); }
    void addNumber(double number) {
        JsonCell& cell = cells.emplace_back();
        cell.kind = tables::CellKind::number;
        cell.number = number;
    }
    void addText(std::string text);
};

/// Reads a cell that is written as an object.
bool readCellObject(Json& value, const JsonPlace& place, JsonRefusal& refusal, JsonCells& cells);

/// The footnotes of a cell or category: numbers from 1, here from 0.
void readFootnoteNumbers(JsonObject& object, std::vector<tables::FootnoteId>& footnotes);

}  // namespace vexa::frontend
