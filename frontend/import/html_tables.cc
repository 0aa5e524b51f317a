#include "frontend/import/html_tables.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "backend/text/character_set.h"
#include "frontend/import/grid_table.h"
#include "frontend/import/html_page.h"
#include "frontend/import/text_input.h"

namespace vexa::frontend {

namespace {

/// Puts the cells of a table into a grid, each on all the places that it spans.
class GridFiller {
  public:
    explicit GridFiller(HtmlTable& table) : table_(table) {}

    /// False when the grid would have more places than a table may.
    bool fill(TextGrid& grid) {
        rows_.resize(table_.rows.size());
        for (std::size_t row = 0; row < table_.rows.size(); ++row) {
            std::size_t column = 0;
            for (HtmlCell& cell : table_.rows[row].cells) {
                while (column < rows_[row].size() && rows_[row][column].isTaken) ++column;
                if (!put(cell, row, column)) return false;
                column += cell.columnSpan;
            }
        }
        for (const auto& row : rows_) grid.columns = std::max(grid.columns, row.size());
        if (grid.columns * rows_.size() > tables::maximalFlatCells) return false;
        grid.hasSpans = true;
        for (auto& row : rows_) {
            row.resize(grid.columns);
            for (Spot& spot : row) grid.places.push_back(std::move(spot.label));
        }
        return true;
    }

    /// How many places at the beginning of a row, or from its top down, are headers.
    [[nodiscard]] bool isHeader(std::size_t row, std::size_t column) const {
        return column < rows_[row].size() && rows_[row][column].isHeader;
    }

  private:
    struct Spot {
        SpannedLabel label;
        bool isTaken = false;
        bool isHeader = false;
    };

    bool put(const HtmlCell& cell, std::size_t row, std::size_t column) {
        const std::size_t end = rowEnd(cell, row);
        count_ += (end - row) * cell.columnSpan;
        if (count_ > tables::maximalFlatCells || column + cell.columnSpan > tables::maximalFlatCells)
            return false;
        ++spans_;
        for (std::size_t i = row; i < end; ++i) {
            if (rows_[i].size() < column + cell.columnSpan) rows_[i].resize(column + cell.columnSpan);
            for (std::size_t j = column; j < column + cell.columnSpan; ++j) {
                Spot& spot = rows_[i][j];
                if (spot.isTaken) continue;
                spot = {{cell.text, spans_}, true, cell.isHeader};
            }
        }
        return true;
    }

    /// The row behind the last that a cell spans: its table's part ends it.
    [[nodiscard]] std::size_t rowEnd(const HtmlCell& cell, std::size_t row) const {
        std::size_t end = row + 1;
        while (end < table_.rows.size() && table_.rows[end].part == table_.rows[row].part &&
               (cell.rowSpan == 0 || end < row + cell.rowSpan)) {
            ++end;
        }
        return end;
    }

    HtmlTable& table_;
    std::vector<std::vector<Spot>> rows_;
    std::size_t spans_ = 0;
    std::size_t count_ = 0;
};

/// Rows of thead, or those at the top that hold nothing but headers.
std::size_t countHeaderRows(const HtmlTable& table) {
    const auto isHead = [](const HtmlRow& row) { return row.isHead; };
    const auto heads = static_cast<std::size_t>(
        std::find_if_not(table.rows.begin(), table.rows.end(), isHead) - table.rows.begin());
    if (heads > 0) return heads;
    const auto isHeaders = [](const HtmlRow& row) {
        return !row.cells.empty() && std::all_of(row.cells.begin(), row.cells.end(),
                                                 [](const HtmlCell& cell) { return cell.isHeader; });
    };
    return static_cast<std::size_t>(std::find_if_not(table.rows.begin(), table.rows.end(), isHeaders) -
                                    table.rows.begin());
}

/// Columns at the left that hold nothing but headers below the header rows.
std::size_t countLabelColumns(const GridFiller& filler, const TextGrid& grid) {
    std::size_t count = 0;
    const auto isHeaders = [&](std::size_t column) {
        for (std::size_t row = grid.headerRows; row < grid.rows(); ++row) {
            if (!filler.isHeader(row, column)) return false;
        }
        return grid.rows() > grid.headerRows;
    };
    while (count < grid.columns && isHeaders(count)) ++count;
    return count;
}

/// A label that spans several places is the label of all; data that do so stand in the first place.
void keepOnce(TextGrid& grid) {
    for (std::size_t row = grid.rows(); row-- > grid.headerRows;) {
        for (std::size_t column = grid.columns; column-- > grid.labelColumns;) {
            SpannedLabel& place = grid.at(row, column);
            const bool goesLeft = column > grid.labelColumns && grid.at(row, column - 1).span == place.span;
            const bool goesUp = row > grid.headerRows && grid.at(row - 1, column).span == place.span;
            if (goesLeft || goesUp) place.text.clear();
        }
    }
}

/// Data that hard blanks pad: pages keep the lines of empty cells with them, and align numbers.
void dropPadding(TextGrid& grid, char decimal) {
    constexpr std::string_view hardBlank = "\xC2\xA0";
    for (std::size_t row = grid.headerRows; row < grid.rows(); ++row) {
        for (std::size_t column = grid.labelColumns; column < grid.columns; ++column) {
            std::string& text = grid.at(row, column).text;
            std::string_view core = withoutBlanks(text);
            while (core.starts_with(hardBlank)) core = withoutBlanks(core.substr(hardBlank.size()));
            while (core.ends_with(hardBlank)) {
                core = withoutBlanks(core.substr(0, core.size() - hardBlank.size()));
            }
            double number = 0;
            if (core.empty() || readNumber(core, decimal, number)) text = std::string(core);
        }
    }
}

/// A last header row that says nothing but the row labels' own label is no level of column labels.
void dropRowOfLabels(TextGrid& grid) {
    if (grid.headerRows < 2) return;
    const std::size_t last = grid.headerRows - 1;
    for (std::size_t column = grid.labelColumns; column < grid.columns; ++column) {
        if (!grid.at(last, column).text.empty()) return;
    }
    for (std::size_t column = 0; column < grid.labelColumns; ++column) {
        if (grid.at(0, column).text.empty()) grid.at(0, column).text = grid.at(last, column).text;
    }
    const auto begin = grid.places.begin() + static_cast<std::ptrdiff_t>(last * grid.columns);
    grid.places.erase(begin, begin + static_cast<std::ptrdiff_t>(grid.columns));
    --grid.headerRows;
}

/// The rows of column labels. Where nothing marks any, the first row has them; but not in a table that marks
/// the labels of all its rows, whose first row is one of data then, nor in a single row.
std::size_t findHeaderRows(const HtmlTable& table, const GridFiller& filler, TextGrid& grid) {
    const std::size_t headers = countHeaderRows(table);
    if (headers > 0 || grid.rows() == 1) return headers;
    grid.headerRows = 0;
    return countLabelColumns(filler, grid) > 0 ? 0 : 1;
}

/// Finds out where the labels end. A single row or column that nothing marks as labels is data.
void findLabels(const HtmlTable& table, const GridFiller& filler, const ImportOptions& options,
                TextGrid& grid) {
    grid.headerRows = options.headerRows ? *options.headerRows : findHeaderRows(table, filler, grid);
    const std::size_t labels = countLabelColumns(filler, grid);
    const std::size_t unmarkedColumns = grid.columns > 1 ? 1 : 0;
    grid.labelColumns = options.labelColumns.value_or(labels > 0 ? labels : unmarkedColumns);
}

void addLabels(HtmlTable& table, TextGrid& grid, std::vector<Item>& items) {
    const std::size_t headerRows = std::exchange(grid.headerRows, 0);
    const std::size_t labelColumns = std::exchange(grid.labelColumns, 0);
    keepOnce(grid);
    grid.headerRows = headerRows;
    grid.labelColumns = labelColumns;
    items.emplace_back().content = makeLabelGrid(grid, std::move(table.caption));
}

/// False for a table that is too large. One without any cell is passed over.
bool addTable(HtmlTable& table, const ImportOptions& options, const ImportContext& context,
              std::vector<Item>& items) {
    TextGrid grid;
    GridFiller filler(table);
    if (!filler.fill(grid)) return false;
    if (grid.rows() == 0) return true;
    findLabels(table, filler, options, grid);
    if (!grid.hasData()) {
        addLabels(table, grid, items);
        return true;
    }
    keepOnce(grid);
    dropPadding(grid, options.decimal);
    if (!options.headerRows) dropRowOfLabels(grid);
    Item& item = items.emplace_back();
    TableContent content = makeGridTable(grid, options.decimal, context);
    tables::TableView view = *content.table.view;
    view.title = std::move(table.caption);
    content.table.view = std::make_shared<const tables::TableView>(std::move(view));
    item.content = std::move(content);
    return true;
}

/// What the page says of its encoding near its beginning; empty when it says nothing.
std::string namedEncoding(const std::string& bytes) {
    constexpr std::size_t kLookedAt = 2048;
    constexpr std::string_view kSaid = "charset=";
    std::string beginning = bytes.substr(0, kLookedAt);
    for (char& c : beginning) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    std::size_t from = beginning.find(kSaid);
    if (from == std::string::npos) return {};
    from = beginning.find_first_not_of("\"' ", from + kSaid.size());
    if (from == std::string::npos) return {};
    return beginning.substr(from, beginning.find_first_of("\"' ;/>", from) - from);
}

/// The page in UTF-8. An encoding that was given must fit, as for every text; what the page itself says is
/// taken where it is known, and bytes that do not fit become U+FFFD, as browsers do it.
bool readPageText(const std::string& bytes, const std::string& given, std::string& text,
                  ImportProblem& problem) {
    const bool isUtf16 = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    if (!given.empty() || isUtf16) return readText(bytes, given, text, problem);
    std::unique_ptr<CharacterSet> set = CharacterSet::find(namedEncoding(bytes));
    if (set == nullptr) {
        const bool isUtf8 = firstNoUtf8(bytes) == std::string_view::npos;
        set = CharacterSet::find(isUtf8 ? "UTF-8" : "windows-1252");
    }
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    text = set->toUtf8(bytes.starts_with(kMark) ? std::string_view(bytes).substr(kMark.size()) : bytes);
    return true;
}

}  // namespace

bool readHtmlTables(const std::string& bytes, const ImportOptions& options, const ImportContext& context,
                    std::vector<Item>& items, ImportProblem& problem) {
    std::string text;
    if (!readPageText(bytes, options.encoding, text, problem)) return false;
    std::vector<HtmlTable> tables = readHtmlPage(text);
    const std::size_t before = items.size();
    for (std::size_t i = 0; i < tables.size(); ++i) {
        if (addTable(tables[i], options, context, items)) continue;
        problem.message = composed("Table ^1 of the page has more cells than a table may have."_text,
                                   {std::to_string(i + 1)});
        return false;
    }
    if (items.size() > before) return true;
    problem.message = translated("The page has no table."_text);
    return false;
}

}  // namespace vexa::frontend
