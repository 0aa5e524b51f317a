#include "frontend/import/grid_table.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <utility>

#include "backend/text/ascii.h"
#include "frontend/import/statistic_words.h"
#include "frontend/import/text_input.h"

namespace vexa::frontend {

namespace {

std::size_t countDigits(std::string_view text) {
    std::size_t count = 0;
    while (count < text.size() && isAsciiDigit(text[count])) ++count;
    return count;
}

bool takeSign(std::string_view& text) {
    const bool has = text.starts_with('-') || text.starts_with('+');
    if (has) text.remove_prefix(1);
    return has;
}

/// Whether a text without its sign has the form of a number.
bool hasNumberForm(std::string_view text, char decimal) {
    std::size_t digits = countDigits(text);
    text.remove_prefix(digits);
    if (text.starts_with(decimal)) {
        text.remove_prefix(1);
        const std::size_t behind = countDigits(text);
        digits += behind;
        text.remove_prefix(behind);
    }
    if (digits == 0) return false;
    if (!text.starts_with('e') && !text.starts_with('E')) return text.empty();
    text.remove_prefix(1);
    takeSign(text);
    return !text.empty() && countDigits(text) == text.size();
}

void inferRoles(tables::TableDimension& dimension, const StatisticWords& words) {
    for (tables::TableCategory& category : dimension.categories) category.role = words.roleOf(category.label);
}

std::vector<SpannedLabel> numbered(std::size_t index) { return {{std::to_string(index + 1), 0}}; }

tables::TableDimension makeRows(TextGrid& grid) {
    LabelLines lines;
    for (std::size_t row = grid.headerRows; row < grid.rows(); ++row) {
        std::vector<SpannedLabel> line;
        for (std::size_t column = 0; column < grid.labelColumns; ++column) {
            line.push_back(std::move(grid.at(row, column)));
        }
        lines.push_back(line.empty() ? numbered(row - grid.headerRows) : std::move(line));
    }
    if (!grid.hasSpans) spanRepetitions(lines);
    // The top left text; of a file that has its labels' own label in the row above the data, that one.
    std::string label;
    for (std::size_t row = 0; row < grid.headerRows && grid.labelColumns > 0 && label.empty(); ++row) {
        label = grid.at(row, 0).text;
    }
    return makeDimension(std::move(label), lines);
}

tables::TableDimension makeColumns(TextGrid& grid) {
    LabelLines lines;
    for (std::size_t column = grid.labelColumns; column < grid.columns; ++column) {
        std::vector<SpannedLabel> line;
        for (std::size_t row = 0; row < grid.headerRows; ++row)
            line.push_back(std::move(grid.at(row, column)));
        lines.push_back(line.empty() ? numbered(column - grid.labelColumns) : std::move(line));
    }
    if (!grid.hasSpans) spanRepetitions(lines);
    return makeDimension({}, lines);
}

}  // namespace

bool readNumber(std::string_view text, char decimal, double& number) {
    const bool isNegative = text.starts_with('-');
    takeSign(text);
    if (!hasNumberForm(text, decimal)) return false;
    std::string plain(text);
    if (decimal != '.') {
        if (const std::size_t at = plain.find(decimal); at != std::string::npos) plain[at] = '.';
    }
    const char* const end = plain.data() + plain.size();
    const std::from_chars_result read = std::from_chars(plain.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end) return false;  // beyond what a double holds
    if (isNegative) number = -number;
    return true;
}

TableContent makeGridTable(TextGrid& grid, char decimal, const ImportContext& context) {
    std::vector<tables::TableDimension> dimensions;
    dimensions.push_back(makeRows(grid));
    dimensions.push_back(makeColumns(grid));
    for (tables::TableDimension& dimension : dimensions) inferRoles(dimension, context.words);
    tables::TableDataBuilder builder(std::move(dimensions));
    tables::Place place = 0;
    for (std::size_t row = grid.headerRows; row < grid.rows(); ++row) {
        for (std::size_t column = grid.labelColumns; column < grid.columns; ++column, ++place) {
            const std::string& text = grid.at(row, column).text;
            double number = 0;
            if (readNumber(withoutBlanks(text), decimal, number)) {
                builder.setNumber(place, number);
            } else if (!text.empty()) {
                builder.setText(place, text);
            }
        }
    }
    grid = {};
    tables::TableView view;
    view.rows = {0};
    view.columns = {1};
    return TableContent{tables::makeTable(builder.finish(), std::move(view))};
}

GridContent makeLabelGrid(TextGrid& grid, std::string title) {
    tables::FlatTable flat;
    flat.title = std::move(title);
    flat.columns = grid.columns;
    flat.headerRows = std::min(grid.headerRows, grid.rows());
    flat.headerColumns = std::min(grid.labelColumns, grid.columns);
    for (SpannedLabel& place : grid.places) flat.cells.push_back({std::move(place.text)});
    return GridContent{std::make_shared<const tables::FlatTable>(std::move(flat))};
}

}  // namespace vexa::frontend
