// The tables of an HTML page as grids of texts. For the import's own files.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vexa::frontend {

/// One cell of a table, as it is written.
struct HtmlCell {
    std::string text;
    bool isHeader = false;    ///< th
    std::size_t rowSpan = 1;  ///< 0: to the end of the table's part
    std::size_t columnSpan = 1;
};

struct HtmlRow {
    std::vector<HtmlCell> cells;
    bool isHead = false;   ///< of thead
    std::size_t part = 0;  ///< rows of one thead, tbody or tfoot have the same
};

struct HtmlTable {
    std::string caption;
    std::vector<HtmlRow> rows;
};

/// `text`: UTF-8, whatever the page says of its encoding. Nothing is fetched, and no page is too broken.
/// Tables inside tables come behind them.
[[nodiscard]] std::vector<HtmlTable> readHtmlPage(const std::string& text);

}  // namespace vexa::frontend
