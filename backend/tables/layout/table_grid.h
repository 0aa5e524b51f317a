// A table as it is shown: a grid of cells with spans, roles, texts and styles, and the texts around it. This
// is the only thing that terminal, document files without a data model, and every export see of a table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "backend/tables/layout/axis_lines.h"
#include "backend/tables/model/flat_table.h"
#include "backend/tables/model/table.h"

namespace vexa::tables {

enum class GridRole : std::uint8_t { corner, columnLabel, rowLabel, data };

/// The dimension of a cell that belongs to none: data, the corner, an empty header.
inline constexpr DimensionId noDimension = UINT32_MAX;

/// A style with everything set.
struct ShownStyle {
    AreaLook look;  ///< fonts, colours, alignment, margins
    std::array<BorderLine, 4>
        borders{};  ///< top, right, bottom, left; neighbours both bear the line between them
    CellStyle own;  ///< what the table itself sets, beyond its look

    bool operator==(const ShownStyle&) const = default;
};

/// Index into `TableGrid::styles`.
using ShownStyleId = std::uint32_t;

struct GridCell {
    std::uint32_t row = 0;
    std::uint32_t column = 0;
    std::uint32_t rowSpan = 1;
    std::uint32_t columnSpan = 1;
    GridRole role = GridRole::data;
    CellKind kind = CellKind::text;  ///< of a data cell; labels are texts
    DisplayFormat format;            ///< of a number, as it is shown
    bool hasOwnText = false;         ///< of a number: its text is not made of number and format
    bool alignsRight = false;        ///< where the style is `mixed`: numbers, and texts in a column of them
    double number = 0;               ///< of a number
    ShownStyleId style = 0;
    std::uint32_t textBegin = 0;  ///< in `TableGrid::texts`
    std::uint32_t textLength = 0;
    std::uint32_t marks = 0;  ///< 0 for none, else 1 + index into `TableGrid::marks`
    /// Of a label: the dimension that it belongs to, its category, or its group where `category` is
    /// `noGroup`; the dimension's own label has neither.
    DimensionId dimension = noDimension;
    CategoryId category = noGroup;
    GroupId group = noGroup;
    Place place = 0;  ///< of a data cell
};

/// A text outside the grid.
struct GridText {
    std::string text;  ///< empty when there is none
    ShownStyleId style = 0;
};

struct GridFootnote {
    std::string mark;  ///< "a"; empty for one that nothing refers to
    std::string text;
};

struct TableGrid {
    GridText title;                       ///< empty when hidden
    GridText caption;                     ///< empty when it says what the title says
    GridText layer;                       ///< "Sex: Female, Year: 2026"; empty without layers
    std::vector<GridFootnote> footnotes;  ///< of what this grid shows, in the order of their marks
    ShownStyleId footnoteStyle = 0;

    std::uint32_t rows = 0;
    std::uint32_t columns = 0;
    std::uint32_t headerRows = 0;    ///< the first rows hold column labels
    std::uint32_t labelColumns = 0;  ///< the first columns hold row labels
    /// By row, then by column of their first place; each place of the grid belongs to one cell.
    std::vector<GridCell> cells;
    std::vector<std::size_t> rowBegin;  ///< index of the first cell of each row, and one more for the end
    std::vector<std::optional<double>> widths;  ///< of each column, points; nothing where none is set
    std::optional<double> minColumnWidth;       ///< of data columns, points
    std::optional<double> maxColumnWidth;
    std::optional<double> maxLabelWidth;  ///< of columns of row labels, points
    std::vector<ShownStyle> styles;
    std::vector<std::vector<std::string>> marks;  ///< the marks that a cell bears, "a", "b"
    std::string texts;
    bool isFlat = false;  ///< made of a table without dimensions: spans and numbers are not known

    [[nodiscard]] std::string_view text(const GridCell& cell) const {
        return std::string_view(texts).substr(cell.textBegin, cell.textLength);
    }
    [[nodiscard]] std::span<const GridCell> row(std::size_t index) const {
        return {cells.data() + rowBegin[index], cells.data() + rowBegin[index + 1]};
    }
    [[nodiscard]] const ShownStyle& style(const GridCell& cell) const { return styles[cell.style]; }
    /// " [a,b]", or nothing.
    [[nodiscard]] std::string markText(const GridCell& cell) const;
};

struct LayoutOptions {
    bool notesAndCaptions = true;         ///< caption, footnotes and their marks
    std::string_view behindLabel = ": ";  ///< between a layer dimension's label and its category
    /// The grids of one `TableLayout` share their letters, and each footnote is listed once: with the first
    /// grid that refers to it, or with the first one of all. Otherwise each grid begins with "a".
    bool lettersGoOn = false;
};

/// The most places that a grid may have. A table that is mostly empty may have `maximalEmptyPlaces` and one
/// more for each of its values, or some more where there are millions of them: a small file, which cannot
/// hold so many values, is never the cause of a grid that takes hundreds of megabytes.
inline constexpr std::uint64_t maximalGridPlaces = 20'000'000;
inline constexpr std::uint64_t maximalEmptyPlaces = 1'000'000;

struct PreparedTable;
class FootnoteLetters;

/// Lays out a table's layers one after the other: what they have in common is found out once.
class TableLayout {
  public:
    /// Keeps the table's data, view and style.
    explicit TableLayout(Table table, const LayoutOptions& options = {});
    TableLayout(TableLayout&&) noexcept;
    TableLayout& operator=(TableLayout&&) noexcept;
    TableLayout(const TableLayout&) = delete;
    TableLayout& operator=(const TableLayout&) = delete;
    ~TableLayout();

    /// The grid of one layer, which `layersOf` gave. Takes time in proportion to the grid.
    [[nodiscard]] TableGrid grid(Place layer);
    /// Whether the grid stays within the limits; beyond them its last rows, or all, are left out.
    [[nodiscard]] bool fits() const;
    /// The places that a whole grid would have, labels included, and those that it may have.
    [[nodiscard]] std::uint64_t places() const;
    [[nodiscard]] std::uint64_t mostPlaces() const;
    /// Rows and columns of a grid, labels included.
    [[nodiscard]] std::size_t rows() const;
    [[nodiscard]] std::size_t columns() const;

  private:
    std::unique_ptr<const PreparedTable> prepared_;
    std::unique_ptr<FootnoteLetters> letters_;
    bool isFirst_ = true;
};

/// Whether a table's grid stays within the limits; beyond, `layOut` shows the first rows only.
[[nodiscard]] bool fitsGrid(const Table& table);

/// The grid of one layer, which `layersOf` gave. For several layers a `TableLayout` is faster.
[[nodiscard]] TableGrid layOut(const Table& table, Place layer, const LayoutOptions& options = {});
/// The grid of the layer that is shown now.
[[nodiscard]] TableGrid layOut(const Table& table, const LayoutOptions& options = {});
/// The grid of a table without dimensions; its cells keep their places and span nothing.
[[nodiscard]] TableGrid layOut(const FlatTable& table, const LayoutOptions& options = {});

/// What the grids of all layers show, as one flat table: footnote marks stand behind the texts, footnotes
/// below the caption. Nothing when that has more than `maximalFlatCells` places or `maximalFlatBytes` of
/// text.
[[nodiscard]] std::optional<FlatTable> flatten(const Table& table);
inline constexpr std::size_t maximalFlatBytes = 64'000'000;

/// The letters of the footnote with this number, from 0: a, b, ..., z, aa, ab, ...
[[nodiscard]] std::string footnoteLetters(std::size_t number);

}  // namespace vexa::tables
