// A rectangle of texts as a pivot table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frontend/document/item.h"
#include "frontend/import/import_context.h"
#include "frontend/import/label_tree.h"

namespace vexa::frontend {

/// Texts row by row; the first rows and columns hold labels.
struct TextGrid {
    std::size_t columns = 0;
    std::vector<SpannedLabel> places;  ///< whole rows only
    std::size_t headerRows = 1;
    std::size_t labelColumns = 1;
    bool hasSpans =
        false;  ///< the places say which labels belong together; else repetitions and empty labels do

    [[nodiscard]] std::size_t rows() const { return columns == 0 ? 0 : places.size() / columns; }
    [[nodiscard]] bool hasData() const { return rows() > headerRows && columns > labelColumns; }
    [[nodiscard]] SpannedLabel& at(std::size_t row, std::size_t column) {
        return places[row * columns + column];
    }
};

/// The number that a text is: a sign or none, digits with a decimal mark or none, an exponent or none;
/// nothing for any other text.
[[nodiscard]] bool readNumber(std::string_view text, char decimal, double& number);

/// The table of a grid that has data, which it loses. Rows and columns without labels are numbered.
[[nodiscard]] TableContent makeGridTable(TextGrid& grid, char decimal, const ImportContext& context);

/// What a grid without data, which loses its texts, can be: labels alone have no data model.
[[nodiscard]] GridContent makeLabelGrid(TextGrid& grid, std::string title);

}  // namespace vexa::frontend
