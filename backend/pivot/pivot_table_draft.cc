#include "backend/pivot/pivot_table_draft.h"

#include <cassert>
#include <functional>
#include <utility>

namespace vexa {

namespace {

/// The label as given. Arguments are set apart by a character that no text holds.
std::string identityOf(const BpCellText& label) {
    std::string identity = label.text();
    for (const std::string& argument : label.arguments()) {
        identity += '\0';
        identity += argument;
    }
    return identity;
}

std::size_t mix(std::size_t hash, std::size_t value) {
    return hash ^ (value + 0x9e3779b97f4a7c15ULL + (hash << 6) + (hash >> 2));
}

}  // namespace

std::size_t DraftLabelHash::operator()(const DraftLabel& label) const {
    return mix(std::hash<std::string>()(label.identity), static_cast<std::size_t>(label.group));
}

std::size_t DraftIndexesHash::operator()(const DraftIndexes& indexes) const {
    std::size_t hash = indexes.size();
    for (const std::uint32_t index : indexes) hash = mix(hash, index * std::size_t{0x9e3779b1});
    return hash;
}

std::size_t PivotTableDraft::dimension(const BpCellText& label, int kind) {
    const auto [found, added] = dimensionByLabel_.try_emplace(identityOf(label), dimensions_.size());
    if (added) {
        table.dimensions.push_back({label.shown(), kind, {}, {}, {}});
        dimensions_.emplace_back();
        giveCellsOneMoreDimension();
    }
    return found->second;
}

std::size_t PivotTableDraft::category(std::size_t dimension, int group, const BpCellText& label) {
    DraftDimension& draft = dimensions_[dimension];
    std::vector<PivotCategory>& categories = table.dimensions[dimension].categories;
    const auto [found, added] =
        draft.categories.try_emplace(DraftLabel{group, identityOf(label)}, categories.size());
    if (added) categories.push_back({label.shown(), group});
    draft.current = static_cast<std::uint32_t>(found->second);
    return found->second;
}

int PivotTableDraft::group(std::size_t dimension, int parent, const BpCellText& label, bool shown) {
    std::vector<PivotGroup>& groups = table.dimensions[dimension].groups;
    const auto [found, added] = dimensions_[dimension].groups.try_emplace(
        DraftLabel{parent, identityOf(label)}, static_cast<int>(groups.size()));
    if (added) groups.push_back({shown ? label.shown() : std::string(), parent});
    return found->second;
}

std::size_t PivotTableDraft::fill(std::size_t dimension, std::size_t category, const BpCellText& value) {
    DraftIndexes indexes;
    indexes.reserve(dimensions_.size());
    for (const DraftDimension& each : dimensions_) indexes.push_back(each.current);
    indexes[dimension] = static_cast<std::uint32_t>(category);
    const auto [found, added] = cellByIndexes_.try_emplace(std::move(indexes), table.cells.size());
    if (added) table.cells.emplace_back();
    PivotCell& cell = table.cells[found->second];
    cell.text = value.shown();
    cell.number = value.number();
    if (cell.extras != 0) table.extras[cell.extras - 1] = {};
    return found->second;
}

PivotCellExtras& PivotTableDraft::extras(std::size_t cell) {
    assert(cell < table.cells.size());
    std::uint32_t& extras = table.cells[cell].extras;
    if (extras == 0) {
        table.extras.emplace_back();
        extras = static_cast<std::uint32_t>(table.extras.size());
    }
    return table.extras[extras - 1];
}

void PivotTableDraft::finish() {
    for (const auto& [indexes, cell] : cellByIndexes_) {
        table.cells[cell].place = table.placeOf({indexes.begin(), indexes.end()});
    }
}

void PivotTableDraft::giveCellsOneMoreDimension() {
    if (cellByIndexes_.empty()) return;
    std::unordered_map<DraftIndexes, std::size_t, DraftIndexesHash> cells;
    cells.reserve(cellByIndexes_.size());
    for (const auto& [indexes, cell] : cellByIndexes_) {
        DraftIndexes longer = indexes;
        longer.push_back(0);
        cells.emplace(std::move(longer), cell);
    }
    cellByIndexes_ = std::move(cells);
}

}  // namespace vexa
