#include "frontend/modify/table_change.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "frontend/document/compared_text.h"
#include "frontend/modify/number_formats.h"
#include "frontend/modify/row_sort.h"

namespace vexa::frontend {

namespace {

using tables::CategoryId;
using tables::DimensionId;
using tables::DimensionView;
using tables::DisplayFormat;
using tables::Place;
using tables::shownCategories;
using tables::Table;
using tables::TableCell;
using tables::TableDimension;
using tables::TableStyle;
using tables::TableView;

void changeTextsOf(TableView& view, const TableChange& change, ItemPlan& plan) {
    if (!change.title.empty() && view.title != change.title) {
        view.title = change.title;
        plan.add(ChangeKind::title);
    }
    if (!change.summary.empty() && view.caption != change.summary) {
        view.caption = change.summary;
        plan.add(ChangeKind::caption);
    }
}

void transpose(TableView& view, ItemPlan& plan) {
    if (view.rows.empty() && view.columns.empty()) return;
    std::swap(view.rows, view.columns);
    plan.add(ChangeKind::transposition);
}

/// The layer dimensions that a designator means.
std::vector<DimensionId> layersMeant(const Table& table, const TableView& view,
                                     const LayerDesignator& layer) {
    if (layer.label) {
        const std::string wanted = comparedText(*layer.label);
        for (const DimensionId id : view.layers) {
            if (comparedText(table.data->dimensions()[id].label) == wanted) return {id};
        }
        return {};
    }
    if (layer.number == 0) return view.layers;
    const auto index = static_cast<std::size_t>(layer.number) - 1;
    if (layer.number < 0 || index >= view.layers.size()) return {};
    return {view.layers[index]};
}

/// The category that a designator means, counted as the layer's categories are shown.
std::optional<CategoryId> categoryMeant(const TableDimension& dimension, const DimensionView& view,
                                        const LayerDesignator& category) {
    const std::vector<CategoryId> shown = shownCategories(dimension, view);
    if (category.label) {
        const std::string wanted = comparedText(*category.label);
        const auto found = std::find_if(shown.begin(), shown.end(), [&](CategoryId id) {
            return comparedText(dimension.categories[id].label) == wanted;
        });
        return found == shown.end() ? std::nullopt : std::optional(*found);
    }
    if (category.number < 0 || static_cast<std::size_t>(category.number) > shown.size() || shown.empty()) {
        return std::nullopt;
    }
    return category.number == 0 ? shown.back() : shown[static_cast<std::size_t>(category.number) - 1];
}

void chooseLayers(const Table& table, TableView& view, const TableChange& change, ItemPlan& plan) {
    for (const LayerChange& each : change.layers) {
        const std::vector<DimensionId> layers = layersMeant(table, view, each.layer);
        if (layers.empty()) plan.passOver("It has no such layer."_text);
        for (const DimensionId id : layers) {
            const auto category =
                categoryMeant(table.data->dimensions()[id], view.dimensions[id], each.category);
            if (!category) plan.passOver("The layer has no such category."_text);
            if (!category || view.dimensions[id].shown == *category) continue;
            view.dimensions[id].shown = *category;
            plan.add(ChangeKind::layer);
        }
    }
}

/// Whether some number of the table is shown in another format.
bool showsOtherFormat(const Table& table, const TableView& view, DisplayFormat format) {
    const NumberFormats formats(*table.data, view, *table.style);
    bool other = false;
    table.data->forEachCell([&](Place place, const TableCell& cell) {
        if (other || cell.kind != tables::CellKind::number) return;
        other = !formats.isShownIn(format, place, cell);
    });
    return other;
}

/// Style and, where numbers have texts of their own, data of the table in other formats and another look.
void changeStyle(const TableView& view, const PreparedTableChange& prepared, Table& table, ItemPlan& plan) {
    const bool changesFormat = prepared.format && showsOtherFormat(table, view, *prepared.format);
    const bool changesLook = prepared.look != nullptr && prepared.look != table.style->look() &&
                             !(*prepared.look == *table.style->look());
    if (!changesFormat && !changesLook) return;
    auto style = std::make_shared<TableStyle>(*table.style);
    if (changesFormat) {
        style->setFormat(*prepared.format);
        table.data = withoutOwnTexts(table.data);
        plan.add(ChangeKind::format);
    }
    if (changesLook) {
        style->setLook(prepared.look);
        plan.add(ChangeKind::look);
    }
    table.style = std::move(style);
}

void sort(const Table& table, TableView& view, const SortChange& change, ItemPlan& plan) {
    switch (sortRows(table, view, change)) {
        case SortOutcome::sorted:
            plan.add(ChangeKind::sorting);
            break;
        case SortOutcome::noSuchColumn:
            plan.passOver("It has no such column to sort by."_text);
            break;
        case SortOutcome::same:
            break;
    }
}

}  // namespace

Table changeTable(const Table& table, const PreparedTableChange& prepared, ItemPlan& plan) {
    const TableChange& change = *prepared.change;
    TableView view = *table.view;
    changeTextsOf(view, change, plan);
    if (change.transpose) transpose(view, plan);
    if (change.sort) sort(table, view, *change.sort, plan);
    Table changed = table;
    changeStyle(view, prepared, changed, plan);
    chooseLayers(table, view, change, plan);
    if (!(view == *table.view)) changed.view = std::make_shared<const TableView>(std::move(view));
    return changed;
}

}  // namespace vexa::frontend
