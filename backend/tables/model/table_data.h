// What a pivot table says: dimensions, categories, groups, cells and footnotes. Immutable, so whoever keeps a
// table shares it; how it is arranged is in TableView, how it looks in TableStyle.
//
// Every text is UTF-8. Categories, groups and footnotes are known by their index, which holds as long as the
// data lives: sorting, hiding and transposing change the view and move nothing here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "backend/tables/formats/display_format.h"

namespace vexa::tables {

/// What a category's numbers are, as far as commands can ask for it.
enum class StatisticRole : std::uint8_t {
    none,
    mean,
    count,
    percent,
    significance,
    residual,
    correlation,
    median,
    total
};

using DimensionId = std::uint32_t;  ///< index into the table's dimensions
using CategoryId = std::uint32_t;   ///< index into the categories of its dimension
using GroupId = std::uint32_t;      ///< index into the groups of its dimension
using FootnoteId = std::uint32_t;   ///< index into the table's footnotes
inline constexpr GroupId noGroup = UINT32_MAX;

/// A header over several categories. Groups nest.
struct TableGroup {
    std::string label;         ///< empty for a group whose header is not shown
    GroupId parent = noGroup;  ///< an earlier group of the same dimension

    bool operator==(const TableGroup&) const = default;
};

struct TableCategory {
    std::string label;
    GroupId group = noGroup;
    StatisticRole role =
        StatisticRole::none;  ///< as given, or as inferred from the label when the table was made
    DisplayFormat format;     ///< of its cells' numbers; FormatKind::none when it has none
    std::vector<FootnoteId> footnotes;

    bool operator==(const TableCategory&) const = default;
};

struct TableDimension {
    std::string label;
    std::vector<TableGroup> groups;
    std::vector<TableCategory> categories;

    bool operator==(const TableDimension&) const = default;
};

/// A cell's place: row-major over the categories of all dimensions, in the order of the dimensions, the last
/// one varying fastest.
using Place = std::uint64_t;

/// The most places that a table may have. Tables with more cannot be made.
inline constexpr Place maximalPlaces = Place{1} << 48;

enum class CellKind : std::uint8_t { empty, number, text };

/// One cell; its texts are in the table that it belongs to.
struct TableCell {
    double number = 0;         ///< of a number
    std::uint32_t text = 0;    ///< of a text: index into the table's texts
    std::uint32_t extras = 0;  ///< 0 for none, else 1 + index into the table's cell extras
    DisplayFormat format;      ///< of a number; FormatKind::none for the one of its categories
    CellKind kind = CellKind::empty;
};
static_assert(sizeof(TableCell) <= 24);

/// What only few cells carry.
struct CellExtras {
    std::optional<std::string> shown;  ///< shown in the place of what value and format give
    std::vector<FootnoteId> footnotes;

    bool operator==(const CellExtras&) const = default;
};

class TableData {
  public:
    [[nodiscard]] const std::vector<TableDimension>& dimensions() const { return dimensions_; }
    [[nodiscard]] const std::vector<std::string>& footnotes() const { return footnotes_; }
    /// The product of the dimensions' numbers of categories; 1 for a table without dimensions.
    [[nodiscard]] Place placeCount() const { return placeCount_; }
    /// Cells that are not empty.
    [[nodiscard]] std::size_t filledCount() const { return filled_; }

    /// The cell at a place, or null where it is empty or there is no such place.
    [[nodiscard]] const TableCell* find(Place place) const;
    /// The text of a text cell.
    [[nodiscard]] std::string_view text(const TableCell& cell) const { return texts_[cell.text]; }
    /// Extras of a cell, or an empty set of them.
    [[nodiscard]] const CellExtras& extras(const TableCell& cell) const;
    /// Whether a cell, or null, has no value: an empty text that is there only to carry footnotes has none.
    [[nodiscard]] bool isEmpty(const TableCell* cell) const;

    /// Calls `action(place, cell)` for every cell that is not empty, in the order of places.
    template <typename Action>
    void forEachCell(const Action& action) const;

    /// The category in every dimension of a place; `ids` gets one entry a dimension.
    void coordinates(Place place, std::vector<CategoryId>& ids) const;
    /// The reverse; `ids` has one entry a dimension.
    [[nodiscard]] Place placeOf(std::span<const CategoryId> ids) const;
    /// How far apart the places of neighbouring categories of a dimension are.
    [[nodiscard]] Place stride(DimensionId dimension) const { return strides_[dimension]; }

    /// The format of a number's cell: its own, else the first found in its categories in the order of
    /// `dimensions`.
    [[nodiscard]] DisplayFormat formatOf(Place place, const TableCell& cell,
                                         std::span<const DimensionId> dimensions) const;

    /// Bytes that the table takes, about.
    [[nodiscard]] std::size_t memory() const;

    /// By value: dimensions, footnotes, and what stands at each place. Not-a-number equals itself.
    [[nodiscard]] bool operator==(const TableData& other) const;

  private:
    friend class TableDataBuilder;
    TableData() = default;

    std::vector<TableDimension> dimensions_;
    std::vector<std::string> footnotes_;
    std::vector<Place> strides_;
    Place placeCount_ = 1;
    std::size_t filled_ = 0;
    std::vector<TableCell> cells_;  // one a place, or, of a sparse table, one a filled place
    std::vector<Place> places_;     // of a sparse table, ascending; empty otherwise
    bool sparse_ = false;
    std::vector<std::string> texts_;
    std::vector<CellExtras> extras_;
};

/// The product of the numbers of categories, or nothing beyond `maximalPlaces`.
[[nodiscard]] std::optional<Place> placeCountOf(const std::vector<TableDimension>& dimensions);

/// Makes table data. Cells may be set in any order; the last value of a place counts.
class TableDataBuilder {
  public:
    /// `dimensions` must have at most `maximalPlaces` places.
    explicit TableDataBuilder(std::vector<TableDimension> dimensions,
                              std::vector<std::string> footnotes = {});
    /// Begins with what `data` says.
    explicit TableDataBuilder(TableData data);

    [[nodiscard]] Place placeCount() const { return data_.placeCount_; }
    /// For changing labels, roles, formats and footnotes; the number of categories and groups must stay.
    [[nodiscard]] TableDimension& dimension(DimensionId id) { return data_.dimensions_[id]; }
    /// Adds a footnote, or finds the one with that text.
    FootnoteId footnote(std::string_view text);
    /// Adds a text, or finds it: its number, for cells that all have the same one.
    [[nodiscard]] std::uint32_t intern(std::string_view text);

    /// Each needs a place below `placeCount`. A new value keeps the shown text and the footnotes that the
    /// cell has.
    void setNumber(Place place, double number, DisplayFormat format = {});
    void setText(Place place, std::string_view text) { setInterned(place, intern(text)); }
    void setInterned(Place place, std::uint32_t text);
    /// Empties a cell; its footnotes go with it.
    void clear(Place place);
    /// Of a cell that has been set and is not empty.
    /// Nothing: what value and format give.
    void setShown(Place place, std::optional<std::string> text);
    void setFootnotes(Place place, std::vector<FootnoteId> footnotes);

    /// The finished table; the builder is empty afterwards.
    [[nodiscard]] std::shared_ptr<const TableData> finish();

  private:
    TableCell& cellAt(Place place);
    [[nodiscard]] TableCell* existing(Place place);
    CellExtras& extrasOf(Place place);
    void orderSparseCells();
    void makeDense();

    TableData data_;
    std::unordered_map<Place, std::size_t> sparseIndex_;  // empty while a sparse table's places are ascending
    std::unordered_map<std::string, std::uint32_t> textIds_;
    std::unordered_map<std::string, FootnoteId> footnoteIds_;
};

template <typename Action>
void TableData::forEachCell(const Action& action) const {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        if (cells_[i].kind != CellKind::empty) action(sparse_ ? places_[i] : Place{i}, cells_[i]);
    }
}

}  // namespace vexa::tables
