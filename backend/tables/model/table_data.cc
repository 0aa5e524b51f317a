#include "backend/tables/model/table_data.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <utility>

namespace vexa::tables {

namespace {

/// A table with at most so many places has a cell for each of them from the start.
constexpr Place smallTable = 1024;
/// A larger one becomes dense when at least one place in so many is filled.
constexpr Place denseEnough = 4;

bool isSameNumber(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right) || left == right ||
           (left != left && right != right);
}

bool isSameCell(const TableData& left, const TableCell& a, const TableData& right, const TableCell& b) {
    if (a.kind != b.kind || !(left.extras(a) == right.extras(b))) return false;
    if (a.kind == CellKind::text) return left.text(a) == right.text(b);
    return isSameNumber(a.number, b.number) && a.format == b.format;
}

}  // namespace

std::optional<Place> placeCountOf(const std::vector<TableDimension>& dimensions) {
    Place count = 1;
    bool isEmpty = false;
    for (const TableDimension& dimension : dimensions) {
        const Place categories = dimension.categories.size();
        if (categories == 0) {
            isEmpty = true;
            continue;
        }
        if (count > maximalPlaces / categories) return std::nullopt;
        count *= categories;
    }
    return isEmpty ? 0 : count;
}

const TableCell* TableData::find(Place place) const {
    if (!sparse_) {
        return place < cells_.size() && cells_[place].kind != CellKind::empty ? &cells_[place] : nullptr;
    }
    const auto found = std::lower_bound(places_.begin(), places_.end(), place);
    return found == places_.end() || *found != place
               ? nullptr
               : &cells_[static_cast<std::size_t>(found - places_.begin())];
}

const CellExtras& TableData::extras(const TableCell& cell) const {
    static const CellExtras none;
    return cell.extras == 0 ? none : extras_[cell.extras - 1];
}

bool TableData::isEmpty(const TableCell* cell) const {
    if (cell == nullptr || cell->kind == CellKind::empty) return true;
    if (cell->kind != CellKind::text || cell->extras == 0 || !text(*cell).empty()) return false;
    const CellExtras& carried = extras(*cell);
    return !carried.shown && !carried.footnotes.empty();
}

void TableData::coordinates(Place place, std::vector<CategoryId>& ids) const {
    assert(place < placeCount_);
    ids.resize(dimensions_.size());
    for (std::size_t i = 0; i < dimensions_.size(); ++i) {
        ids[i] = static_cast<CategoryId>(place / strides_[i]);
        place %= strides_[i];
    }
}

Place TableData::placeOf(std::span<const CategoryId> ids) const {
    assert(ids.size() == dimensions_.size());
    Place place = 0;
    for (std::size_t i = 0; i < ids.size(); ++i) place += ids[i] * strides_[i];
    return place;
}

DisplayFormat TableData::formatOf(Place place, const TableCell& cell,
                                  std::span<const DimensionId> dimensions) const {
    if (cell.format.kind != FormatKind::none) return cell.format;
    for (const DimensionId id : dimensions) {
        const std::vector<TableCategory>& categories = dimensions_[id].categories;
        const DisplayFormat format = categories[place / strides_[id] % categories.size()].format;
        if (format.kind != FormatKind::none) return format;
    }
    return {};
}

std::size_t TableData::memory() const {
    std::size_t bytes = sizeof(TableData) + cells_.capacity() * sizeof(TableCell) +
                        places_.capacity() * sizeof(Place) + extras_.capacity() * sizeof(CellExtras);
    const auto addText = [&](const std::string& text) {
        bytes += sizeof(std::string) + (text.capacity() > 15 ? text.capacity() + 1 : 0);
    };
    for (const std::string& text : texts_) addText(text);
    for (const std::string& text : footnotes_) addText(text);
    for (const TableDimension& dimension : dimensions_) {
        bytes += dimension.categories.capacity() * (sizeof(TableCategory) - sizeof(std::string));
        for (const TableCategory& category : dimension.categories) addText(category.label);
        for (const TableGroup& group : dimension.groups) addText(group.label);
    }
    return bytes;
}

bool TableData::operator==(const TableData& other) const {
    if (dimensions_ != other.dimensions_ || footnotes_ != other.footnotes_ || filled_ != other.filled_)
        return false;
    bool same = true;
    forEachCell([&](Place place, const TableCell& cell) {
        if (!same) return;
        const TableCell* const there = other.find(place);
        same = there != nullptr && isSameCell(*this, cell, other, *there);
    });
    return same;
}

TableDataBuilder::TableDataBuilder(std::vector<TableDimension> dimensions,
                                   std::vector<std::string> footnotes) {
    const std::optional<Place> count = placeCountOf(dimensions);
    assert(count);
    data_.dimensions_ = std::move(dimensions);
    data_.placeCount_ = count.value_or(0);
    data_.strides_.resize(data_.dimensions_.size());
    Place stride = 1;
    for (std::size_t i = data_.dimensions_.size(); i-- > 0;) {
        data_.strides_[i] = stride;
        stride *= std::max<Place>(1, data_.dimensions_[i].categories.size());
    }
    for (std::string& text : footnotes) {
        footnoteIds_.try_emplace(text, static_cast<FootnoteId>(data_.footnotes_.size()));
        data_.footnotes_.push_back(std::move(text));
    }
    if (data_.placeCount_ <= smallTable) {
        data_.cells_.resize(data_.placeCount_);
    } else {
        data_.sparse_ = true;
    }
}

TableDataBuilder::TableDataBuilder(TableData data) : data_(std::move(data)) {
    for (std::size_t i = 0; i < data_.texts_.size(); ++i) {
        textIds_.try_emplace(data_.texts_[i], static_cast<std::uint32_t>(i));
    }
    for (std::size_t i = 0; i < data_.footnotes_.size(); ++i) {
        footnoteIds_.try_emplace(data_.footnotes_[i], static_cast<FootnoteId>(i));
    }
    for (std::size_t i = 0; i < data_.places_.size(); ++i) sparseIndex_.emplace(data_.places_[i], i);
}

FootnoteId TableDataBuilder::footnote(std::string_view text) {
    const auto [found, added] =
        footnoteIds_.try_emplace(std::string(text), static_cast<FootnoteId>(data_.footnotes_.size()));
    if (added) data_.footnotes_.emplace_back(text);
    return found->second;
}

TableCell& TableDataBuilder::cellAt(Place place) {
    assert(place < data_.placeCount_);
    if (!data_.sparse_) return data_.cells_[place];
    // Cells that come in the order of their places, as they mostly do, need no search.
    if (data_.places_.empty() || place > data_.places_.back()) {
        if (!sparseIndex_.empty()) sparseIndex_.emplace(place, data_.cells_.size());
        data_.places_.push_back(place);
        return data_.cells_.emplace_back();
    }
    if (sparseIndex_.empty()) {
        for (std::size_t i = 0; i < data_.places_.size(); ++i) sparseIndex_.emplace(data_.places_[i], i);
    }
    const auto [found, added] = sparseIndex_.try_emplace(place, data_.cells_.size());
    if (added) {
        // The places are put in order at the end; until then the last one is the greatest, so that the test
        // above holds.
        data_.places_.push_back(data_.places_.back());
        data_.cells_.push_back(data_.cells_.back());
        const std::size_t last = data_.places_.size() - 1;
        sparseIndex_[data_.places_[last]] = last;
        found->second = last - 1;
        data_.places_[last - 1] = place;
        data_.cells_[last - 1] = {};
    }
    return data_.cells_[found->second];
}

TableCell* TableDataBuilder::existing(Place place) {
    if (!data_.sparse_) return &data_.cells_[place];
    if (!data_.places_.empty() && data_.places_.back() == place) return &data_.cells_.back();
    if (sparseIndex_.empty()) {
        const auto found = std::lower_bound(data_.places_.begin(), data_.places_.end(), place);
        if (found == data_.places_.end() || *found != place) return nullptr;
        return &data_.cells_[static_cast<std::size_t>(found - data_.places_.begin())];
    }
    const auto found = sparseIndex_.find(place);
    return found == sparseIndex_.end() ? nullptr : &data_.cells_[found->second];
}

std::uint32_t TableDataBuilder::intern(std::string_view text) {
    const auto [found, added] =
        textIds_.try_emplace(std::string(text), static_cast<std::uint32_t>(data_.texts_.size()));
    if (added) data_.texts_.emplace_back(text);
    return found->second;
}

void TableDataBuilder::setNumber(Place place, double number, DisplayFormat format) {
    TableCell& cell = cellAt(place);
    cell.kind = CellKind::number;
    cell.number = number;
    cell.format = format;
}

void TableDataBuilder::setInterned(Place place, std::uint32_t text) {
    TableCell& cell = cellAt(place);
    cell.kind = CellKind::text;
    cell.number = 0;
    cell.format = {};
    cell.text = text;
}

void TableDataBuilder::clear(Place place) {
    if (TableCell* const cell = existing(place)) *cell = {};
}

CellExtras& TableDataBuilder::extrasOf(Place place) {
    TableCell* const cell = existing(place);
    assert(cell != nullptr && cell->kind != CellKind::empty);
    if (cell->extras == 0) {
        data_.extras_.emplace_back();
        cell->extras = static_cast<std::uint32_t>(data_.extras_.size());
    }
    return data_.extras_[cell->extras - 1];
}

void TableDataBuilder::setShown(Place place, std::optional<std::string> text) {
    extrasOf(place).shown = std::move(text);
}

void TableDataBuilder::setFootnotes(Place place, std::vector<FootnoteId> footnotes) {
    extrasOf(place).footnotes = std::move(footnotes);
}

void TableDataBuilder::orderSparseCells() {
    std::vector<std::size_t> order;
    order.reserve(data_.cells_.size());
    for (std::size_t i = 0; i < data_.cells_.size(); ++i) {
        if (data_.cells_[i].kind != CellKind::empty) order.push_back(i);
    }
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return data_.places_[a] < data_.places_[b]; });
    std::vector<TableCell> cells;
    std::vector<Place> places;
    cells.reserve(order.size());
    places.reserve(order.size());
    for (const std::size_t i : order) {
        cells.push_back(data_.cells_[i]);
        places.push_back(data_.places_[i]);
    }
    data_.cells_ = std::move(cells);
    data_.places_ = std::move(places);
}

void TableDataBuilder::makeDense() {
    std::vector<TableCell> cells(data_.placeCount_);
    for (std::size_t i = 0; i < data_.cells_.size(); ++i) cells[data_.places_[i]] = data_.cells_[i];
    data_.cells_ = std::move(cells);
    data_.places_ = {};
    data_.sparse_ = false;
}

std::shared_ptr<const TableData> TableDataBuilder::finish() {
    if (data_.sparse_) {
        orderSparseCells();
        if (data_.placeCount_ / denseEnough <= data_.cells_.size()) makeDense();
    }
    data_.filled_ = static_cast<std::size_t>(
        std::count_if(data_.cells_.begin(), data_.cells_.end(),
                      [](const TableCell& cell) { return cell.kind != CellKind::empty; }));
    data_.texts_.shrink_to_fit();
    data_.cells_.shrink_to_fit();
    sparseIndex_.clear();
    textIds_.clear();
    footnoteIds_.clear();
    // The constructor is private.
    return std::shared_ptr<const TableData>(new TableData(std::exchange(data_, TableData())));
}

}  // namespace vexa::tables
