#include "backend/tables/model/table_style.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace vexa::tables {

namespace {

/// Up to so many styles, as nearly every table has them, are looked through; more get an index.
constexpr std::size_t fewStyles = 32;

std::size_t mix(std::size_t hash, std::size_t value) {
    return hash ^ (value + 0x9e3779b97f4a7c15ULL + (hash << 6) + (hash >> 2));
}

std::size_t hashOf(const CellStyle& style) {
    const auto flag = [](const std::optional<bool>& value) -> std::size_t {
        return value ? 1U + (*value ? 1U : 0U) : 0U;
    };
    const auto color = [](const std::optional<Color>& value) -> std::size_t {
        return value ? value->rgb + 1ULL : 0U;
    };
    std::size_t hash = std::hash<std::string>()(style.font);
    hash = mix(hash, flag(style.bold) + 3 * flag(style.italic) + 9 * flag(style.underline));
    hash = mix(hash, std::hash<double>()(style.size.value_or(-1)));
    return mix(mix(hash, color(style.color)), color(style.background));
}

template <typename T>
void overlayOne(std::optional<T>& value, const std::optional<T>& over) {
    if (over) value = over;
}

/// Whether two maps give the same style for every place or key.
bool isSameMap(const PlaceMap<StyleId>& left, const TableStyle& leftStyles, const PlaceMap<StyleId>& right,
               const TableStyle& rightStyles) {
    bool same = true;
    // Neighbours mostly have the same styles, which are compared once then.
    std::pair<StyleId, StyleId> known{0, 0};
    const auto compare = [&](StyleId ofLeft, StyleId ofRight) {
        if (!same || known == std::pair{ofLeft, ofRight}) return;
        same = leftStyles.style(ofLeft) == rightStyles.style(ofRight);
        known = {ofLeft, ofRight};
    };
    left.forEach([&](Place place, StyleId id) { compare(id, right.at(place)); });
    right.forEach([&](Place place, StyleId id) { compare(left.at(place), id); });
    return same;
}

bool isSameMap(const PlaceMap<DisplayFormat>& left, const PlaceMap<DisplayFormat>& right) {
    bool same = true;
    left.forEach([&](Place place, DisplayFormat format) { same = same && right.at(place) == format; });
    right.forEach([&](Place place, DisplayFormat format) { same = same && left.at(place) == format; });
    return same;
}

}  // namespace

void CellStyle::overlay(const CellStyle& over) {
    overlayOne(bold, over.bold);
    overlayOne(italic, over.italic);
    overlayOne(underline, over.underline);
    overlayOne(size, over.size);
    overlayOne(color, over.color);
    overlayOne(background, over.background);
    if (!over.font.empty()) font = over.font;
}

StyleId TableStyle::intern(const CellStyle& style) {
    if (styles_.size() < fewStyles) {
        // From the end, because the one that is asked for was mostly added last.
        for (std::size_t behind = styles_.size(); behind > 0; --behind) {
            if (styles_[behind - 1] == style) return static_cast<StyleId>(behind - 1);
        }
        styles_.push_back(style);
        return static_cast<StyleId>(styles_.size() - 1);
    }
    for (std::size_t id = styleIndex_.size(); id < styles_.size(); ++id) {
        styleIndex_.emplace(hashOf(styles_[id]), static_cast<StyleId>(id));
    }
    const std::size_t hash = hashOf(style);
    const auto [begin, end] = styleIndex_.equal_range(hash);
    for (auto each = begin; each != end; ++each) {
        if (styles_[each->second] == style) return each->second;
    }
    styles_.push_back(style);
    styleIndex_.emplace(hash, static_cast<StyleId>(styles_.size() - 1));
    return static_cast<StyleId>(styles_.size() - 1);
}

StyleId TableStyle::category(DimensionId dimension, CategoryId category) const {
    return at(categories_, dimension, category).style;
}

void TableStyle::setCategory(DimensionId dimension, CategoryId category, StyleId id) {
    if (id != at(categories_, dimension, category).style) entry(categories_, dimension, category).style = id;
}

StyleId TableStyle::group(DimensionId dimension, GroupId group) const {
    return at(groups_, dimension, group);
}

void TableStyle::setGroup(DimensionId dimension, GroupId group, StyleId id) {
    if (id != at(groups_, dimension, group)) entry(groups_, dimension, group) = id;
}

std::optional<double> TableStyle::width(DimensionId dimension, CategoryId category) const {
    return at(categories_, dimension, category).width;
}

void TableStyle::setWidth(DimensionId dimension, CategoryId category, std::optional<double> points) {
    if (points != at(categories_, dimension, category).width) {
        entry(categories_, dimension, category).width = points;
    }
}

void TableStyle::setFormat(DisplayFormat format) {
    format_ = format;
    cellFormats_.clear();
}

bool TableStyle::operator==(const TableStyle& other) const {
    if (look_ != other.look_ && !(*look_ == *other.look_)) return false;
    for (std::size_t i = 0; i < areaCount; ++i) {
        if (!(style(areas_[i]) == other.style(other.areas_[i]))) return false;
    }
    const auto isSameCategory = [&](const CategoryEntry& left, const CategoryEntry& right) {
        return left.width == right.width && style(left.style) == other.style(right.style);
    };
    const auto isSameGroup = [&](StyleId left, StyleId right) { return style(left) == other.style(right); };
    return format_ == other.format_ && isSame(categories_, other.categories_, isSameCategory) &&
           isSame(groups_, other.groups_, isSameGroup) && isSameMap(cells_, *this, other.cells_, other) &&
           isSameMap(cellFormats_, other.cellFormats_);
}

}  // namespace vexa::tables
