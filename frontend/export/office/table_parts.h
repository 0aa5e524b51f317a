// A table as it stands on pages or slides: cut by columns into parts that fit, with the row labels in each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

/// Of a line of text, in sizes of its font.
inline constexpr double heightOfLine = 1.2;

/// The room for tables, points.
struct TableRoom {
    double width = 0;  ///< between the margins
    double height = 0;
    double edge = 0;                 ///< from the left margin to the edge of the paper
    std::uint32_t mostColumns = 63;  ///< of one part, at least 2; word processors have no more
    double mostWidth = 1'584;  ///< of one part, whatever is asked for; word processors have no wider ones
};

/// The first columns of a grid, and some of those behind.
struct TablePart {
    const tables::TableGrid* grid = nullptr;
    std::string name;                ///< what is read out for the table; UTF-8
    std::uint32_t labelColumns = 0;  ///< from the first one on
    std::uint32_t dataBegin = 0;     ///< columns of the grid
    std::uint32_t dataEnd = 0;
    std::vector<double> widths;    ///< of the part's columns, points
    double scale = 1;              ///< of fonts and of the margins of cells
    std::uint32_t headerRows = 0;  ///< that stand at the top of each page again; none where they are too high
    std::vector<double> heights;   ///< of the rows, as they are likely to become, points

    double height = 0;         ///< of all rows
    double roomHeight = 0;     ///< of a page
    bool goesOnBelow = false;  ///< a caption or footnotes come, which shall not stand apart

    /// Whether a row is low enough to be kept on one page.
    [[nodiscard]] bool staysTogether(std::uint32_t row) const { return heights[row] <= roomHeight / 2; }
    /// Whether a row shall stand on the page of what comes behind it. Low tables stand on one page; of others
    /// no row stands alone at an end.
    [[nodiscard]] bool keepsWithNext(std::uint32_t row) const;
    [[nodiscard]] std::uint32_t columns() const { return labelColumns + dataEnd - dataBegin; }
};

/// What of a cell stands in one row.
enum class RowPlace : std::uint8_t { whole, first, further };

struct RowPiece {
    const tables::GridCell* cell = nullptr;
    std::uint32_t column = 0;  ///< of the part
    std::uint32_t span = 1;
    RowPlace place = RowPlace::whole;
};

/// The rows of a part, from the first on. Every place of the part belongs to one piece of its row.
class PartRows {
  public:
    explicit PartRows(const TablePart& part);

    /// The pieces of the next row; there must be one. Good until the next call.
    [[nodiscard]] const std::vector<RowPiece>& next();

  private:
    const TablePart& part_;
    std::uint32_t row_ = 0;
    std::vector<const tables::GridCell*> cells_;  // by column of the part
    std::vector<RowPiece> pieces_;
};

/// What was done to make a table fit.
struct TableFit {
    std::vector<TablePart> parts;
    bool longLabels = false;  ///< the row labels would take more than half of the text's width
    bool columnsCut = false;  ///< columns stand beyond the edge of the paper, or were left out
    bool textsCut = false;    ///< columns are narrower than a letter
};

/// The parts of a grid, which must outlive them; none of one without rows or columns.
[[nodiscard]] TableFit fitTable(const tables::TableGrid& grid, const TableRoom& room, WideTables wide);

}  // namespace vexa::frontend
