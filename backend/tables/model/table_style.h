// How a table looks beyond its look: styles of areas, categories, groups and single cells, widths of columns,
// formats that stand before those of the data. Restyling a table changes this and never its cells.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "backend/tables/model/table_data.h"
#include "backend/tables/model/table_look.h"

namespace vexa::tables {

/// Index into the styles of a `TableStyle`; 0 is the one that sets nothing.
using StyleId = std::uint32_t;

/// A value for some places, dense where the table is small enough and a map otherwise. What was never set is
/// `T{}`.
template <typename T>
class PlaceMap {
  public:
    [[nodiscard]] bool isEmpty() const { return dense_.empty() && sparse_.empty(); }
    [[nodiscard]] T at(Place place) const;
    /// `placeCount` is that of the table, the same in every call.
    void set(Place place, T value, Place placeCount);
    void clear();
    /// Calls `action(place, value)` for every place whose value is not `T{}`, in no particular order.
    template <typename Action>
    void forEach(const Action& action) const;
    /// Replaces each value by `action(value)`.
    template <typename Action>
    void transform(const Action& action);

  private:
    static constexpr Place mostDense = 1U << 20;
    /// A larger table becomes dense when one in so many of its places is set.
    static constexpr Place alwaysDense = 4096;
    static constexpr Place denseEnough = 16;
    std::vector<T> dense_;
    std::unordered_map<Place, T> sparse_;
};

class TableStyle {
  public:
    /// Never null.
    [[nodiscard]] const std::shared_ptr<const TableLook>& look() const { return look_; }
    void setLook(std::shared_ptr<const TableLook> look) { look_ = std::move(look); }

    [[nodiscard]] const CellStyle& style(StyleId id) const { return styles_[id]; }
    /// The id of a style; the same one for equal styles.
    StyleId intern(const CellStyle& style);

    /// Styles of title, caption, footnotes, and any other area as a whole.
    [[nodiscard]] StyleId area(Area which) const { return areas_[static_cast<std::size_t>(which)]; }
    void setArea(Area which, StyleId id) { areas_[static_cast<std::size_t>(which)] = id; }

    /// Of a category's or group's label, not of its cells.
    [[nodiscard]] StyleId category(DimensionId dimension, CategoryId category) const;
    void setCategory(DimensionId dimension, CategoryId category, StyleId id);
    [[nodiscard]] StyleId group(DimensionId dimension, GroupId group) const;
    void setGroup(DimensionId dimension, GroupId group, StyleId id);

    [[nodiscard]] StyleId cell(Place place) const { return cells_.at(place); }
    void setCell(Place place, StyleId id, Place placeCount) { cells_.set(place, id, placeCount); }
    [[nodiscard]] const PlaceMap<StyleId>& cells() const { return cells_; }

    /// Of the columns of a category of a column dimension, points.
    [[nodiscard]] std::optional<double> width(DimensionId dimension, CategoryId category) const;
    void setWidth(DimensionId dimension, CategoryId category, std::optional<double> points);

    /// The format of every number, before those of the data; FormatKind::none when there is none.
    [[nodiscard]] DisplayFormat format() const { return format_; }
    /// Replaces the formats of single cells too.
    void setFormat(DisplayFormat format);
    /// The format of one cell's number, before all others.
    [[nodiscard]] DisplayFormat cellFormat(Place place) const { return cellFormats_.at(place); }
    void setCellFormat(Place place, DisplayFormat format, Place placeCount) {
        cellFormats_.set(place, format, placeCount);
    }
    [[nodiscard]] const PlaceMap<DisplayFormat>& cellFormats() const { return cellFormats_; }

    /// By what is set where; ids may differ.
    [[nodiscard]] bool operator==(const TableStyle& other) const;

  private:
    struct CategoryEntry {
        std::optional<double> width;
        StyleId style = 0;
    };
    /// By dimension, then by category or group; what stands beyond the end is as new.
    template <typename T>
    using ByLabel = std::vector<std::vector<T>>;
    template <typename T>
    [[nodiscard]] static T at(const ByLabel<T>& entries, DimensionId dimension, std::uint32_t id);
    template <typename T>
    [[nodiscard]] static T& entry(ByLabel<T>& entries, DimensionId dimension, std::uint32_t id);
    template <typename T, typename Compare>
    [[nodiscard]] static bool isSame(const ByLabel<T>& left, const ByLabel<T>& right, const Compare& compare);

    std::shared_ptr<const TableLook> look_ = plainLook();
    std::vector<CellStyle> styles_ = std::vector<CellStyle>(1);
    std::unordered_multimap<std::size_t, StyleId> styleIndex_;  // by hash; empty while there are few styles
    std::array<StyleId, areaCount> areas_{};
    ByLabel<CategoryEntry> categories_;
    ByLabel<StyleId> groups_;
    PlaceMap<StyleId> cells_;
    PlaceMap<DisplayFormat> cellFormats_;
    DisplayFormat format_;
};

template <typename T>
T TableStyle::at(const ByLabel<T>& entries, DimensionId dimension, std::uint32_t id) {
    if (dimension >= entries.size() || id >= entries[dimension].size()) return T{};
    return entries[dimension][id];
}

template <typename T>
T& TableStyle::entry(ByLabel<T>& entries, DimensionId dimension, std::uint32_t id) {
    if (dimension >= entries.size()) entries.resize(dimension + std::size_t{1});
    if (id >= entries[dimension].size()) entries[dimension].resize(id + std::size_t{1});
    return entries[dimension][id];
}

template <typename T, typename Compare>
bool TableStyle::isSame(const ByLabel<T>& left, const ByLabel<T>& right, const Compare& compare) {
    for (std::size_t d = 0; d < std::max(left.size(), right.size()); ++d) {
        const std::size_t count =
            std::max(d < left.size() ? left[d].size() : 0, d < right.size() ? right[d].size() : 0);
        for (std::size_t i = 0; i < count; ++i) {
            const auto dimension = static_cast<DimensionId>(d);
            const auto id = static_cast<std::uint32_t>(i);
            if (!compare(at(left, dimension, id), at(right, dimension, id))) return false;
        }
    }
    return true;
}

template <typename T>
T PlaceMap<T>::at(Place place) const {
    if (place < dense_.size()) return dense_[place];
    if (sparse_.empty()) return T{};
    const auto found = sparse_.find(place);
    return found == sparse_.end() ? T{} : found->second;
}

template <typename T>
void PlaceMap<T>::set(Place place, T value, Place placeCount) {
    const bool isWorthIt = placeCount <= alwaysDense || sparse_.size() >= placeCount / denseEnough;
    if (dense_.empty() && (placeCount > mostDense || !isWorthIt || value == T{})) {
        if (value == T{}) {
            sparse_.erase(place);
        } else {
            sparse_[place] = value;
        }
        return;
    }
    if (dense_.empty()) {
        dense_.resize(placeCount);
        for (const auto& [known, old] : sparse_) dense_[known] = old;
        sparse_.clear();
    }
    dense_[place] = value;
}

template <typename T>
void PlaceMap<T>::clear() {
    dense_.clear();
    sparse_.clear();
}

template <typename T>
template <typename Action>
void PlaceMap<T>::forEach(const Action& action) const {
    for (std::size_t i = 0; i < dense_.size(); ++i) {
        if (!(dense_[i] == T{})) action(Place{i}, dense_[i]);
    }
    for (const auto& [place, value] : sparse_) action(place, value);
}

template <typename T>
template <typename Action>
void PlaceMap<T>::transform(const Action& action) {
    for (T& value : dense_) value = action(value);
    for (auto& [place, value] : sparse_) value = action(value);
}

}  // namespace vexa::tables
