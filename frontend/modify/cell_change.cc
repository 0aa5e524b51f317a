#include "frontend/modify/cell_change.h"

#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>

#include "frontend/modify/cell_selection.h"
#include "frontend/modify/number_formats.h"

namespace vexa::frontend {

namespace {

using namespace tables;

/// Changes the styles of the selected cells in place.
class StyleChanger {
  public:
    StyleChanger(TableStyle& style, const PreparedCellsChange& prepared, Place placeCount)
        : style_(style), prepared_(prepared), placeCount_(placeCount) {}

    void change(const SelectedCells& cells) {
        for (const Place place : cells.data) style_.setCell(place, changed(style_.cell(place)), placeCount_);
        for (const SelectedLabel& each : cells.labels) changeLabel(each);
        if (cells.title) changeArea(Area::title);
        if (cells.caption) changeArea(Area::caption);
        if (cells.footnotes) changeArea(Area::footnotes);
    }

  private:
    void changeLabel(const SelectedLabel& label) {
        if (label.isGroup) {
            style_.setGroup(label.dimension, label.id, changed(style_.group(label.dimension, label.id)));
        } else {
            style_.setCategory(label.dimension, label.id,
                               changed(style_.category(label.dimension, label.id)));
        }
    }

    void changeArea(Area area) { style_.setArea(area, changed(style_.area(area))); }

    /// The style that takes the place of one that was there; found out once for each.
    StyleId changed(StyleId from) {
        const auto known = known_.find(from);
        if (known != known_.end()) return known->second;
        CellStyle style = prepared_.change->revertToDefault ? CellStyle{} : style_.style(from);
        style.overlay(prepared_.style);
        const StyleId to = style_.intern(style);
        known_.emplace(from, to);
        return to;
    }

    TableStyle& style_;
    const PreparedCellsChange& prepared_;
    Place placeCount_;
    std::unordered_map<StyleId, StyleId> known_;
};

void changeWidths(TableStyle& style, const CellsChange& change, const SelectedCells& cells) {
    if (!change.columnWidth && !change.revertToDefault) return;
    std::optional<double> width;
    if (change.columnWidth) width = *change.columnWidth;
    for (const SelectedLabel& column : cells.columns) style.setWidth(column.dimension, column.id, width);
}

/// A number that is shown in that format already gets none of its own.
void changeFormats(const TableData& data, const TableView& view, TableStyle& style, DisplayFormat format,
                   const SelectedCells& cells) {
    const NumberFormats formats(data, view, style);
    for (const Place place : cells.data) {
        const TableCell* const cell = data.find(place);
        if (cell == nullptr || cell->kind != tables::CellKind::number) continue;
        if (!formats.isShownIn(format, place, *cell)) style.setCellFormat(place, format, data.placeCount());
    }
}

bool changesStyle(const PreparedCellsChange& prepared) {
    const CellsChange& change = *prepared.change;
    return change.revertToDefault || change.columnWidth || !prepared.style.isEmpty();
}

/// A table whose one data column stands under no dimension keeps the column's width as that of all data
/// columns.
void changeOnlyColumn(TableView& view, const CellsChange& change, const SelectedCells& cells) {
    if (!view.columns.empty() || !cells.hasColumns) return;
    if (change.revertToDefault) view.minColumnWidth = view.maxColumnWidth = std::nullopt;
    if (change.columnWidth) view.minColumnWidth = view.maxColumnWidth = *change.columnWidth;
}

void replaceNumber(TableDataBuilder& builder, const TableData& data, Place place, double number) {
    const TableCell* const cell = data.find(place);
    builder.setNumber(place, number, cell == nullptr ? DisplayFormat{} : cell->format);
    if (cell != nullptr && data.extras(*cell).shown) builder.setShown(place, std::nullopt);
}

void replaceText(TableDataBuilder& builder, const TableData& data, Place place, const std::string& text) {
    const TableCell* const cell = data.find(place);
    builder.setText(place, text);
    if (cell != nullptr && data.extras(*cell).shown) builder.setShown(place, std::nullopt);
}

/// The value that empties a cell: it stands for an empty text in a request.
constexpr double emptying = -1;

void replaceValue(TableDataBuilder& builder, const TableData& data, Place place,
                  const CellReplacement& replacement) {
    if (replacement.text) {
        replaceText(builder, data, place, *replacement.text);
    } else if (replacement.number == emptying) {
        builder.clear(place);
    } else {
        replaceNumber(builder, data, place, replacement.number);
    }
}

void replaceLabel(TableDataBuilder& builder, const SelectedLabel& label, const std::string& text) {
    TableDimension& dimension = builder.dimension(label.dimension);
    if (label.isGroup) {
        dimension.groups[label.id].label = text;
    } else {
        dimension.categories[label.id].label = text;
    }
}

/// Values of data cells, and, for a text, labels. The data as they were where nothing is different.
std::shared_ptr<const TableData> replaceData(const std::shared_ptr<const TableData>& data,
                                             const CellReplacement& replacement, const SelectedCells& cells) {
    const bool changesLabels = replacement.text && !cells.labels.empty();
    if (cells.data.empty() && !changesLabels) return data;
    TableDataBuilder builder(*data);
    for (const Place place : cells.data) replaceValue(builder, *data, place, replacement);
    if (changesLabels) {
        for (const SelectedLabel& each : cells.labels) replaceLabel(builder, each, *replacement.text);
    }
    return builder.finish();
}

void replaceTexts(TableView& view, const CellReplacement& replacement, const SelectedCells& cells) {
    if (!replacement.text) return;
    if (cells.title) view.title = *replacement.text;
    if (cells.caption) view.caption = *replacement.text;
}

/// What is no number has no format: those that a style gives to cells that become texts or empty go.
void dropFormats(TableStyle& style, const CellReplacement& replacement, const SelectedCells& cells,
                 Place placeCount) {
    const bool keepsNumbers = !replacement.text && replacement.number != emptying;
    if (keepsNumbers || style.cellFormats().isEmpty()) return;
    for (const Place place : cells.data) style.setCellFormat(place, {}, placeCount);
}

/// Values come before formats, which are for the numbers that are there afterwards.
Table apply(const Table& table, const PreparedCellsChange& prepared, const SelectedCells& cells) {
    const CellsChange& change = *prepared.change;
    const Place placeCount = table.data->placeCount();
    TableView view = *table.view;
    auto style = std::make_shared<TableStyle>(*table.style);
    Table changed = table;
    if (change.replacement) {
        changed.data = replaceData(table.data, *change.replacement, cells);
        replaceTexts(view, *change.replacement, cells);
        dropFormats(*style, *change.replacement, cells, placeCount);
    }
    if (changesStyle(prepared)) {
        changeWidths(*style, change, cells);
        changeOnlyColumn(view, change, cells);
        StyleChanger(*style, prepared, placeCount).change(cells);
    }
    if (prepared.format) {
        changeFormats(*changed.data, view, *style, *prepared.format, cells);
        changed.data = withoutOwnTexts(changed.data, cells.data);
    }
    changed.view = std::make_shared<const TableView>(std::move(view));
    changed.style = std::move(style);
    return changed;
}

/// Keeps the old pointers where nothing is different.
Table keepSame(const Table& before, Table after) {
    if (after.data != before.data && *after.data == *before.data) after.data = before.data;
    if (*after.view == *before.view) after.view = before.view;
    if (*after.style == *before.style) after.style = before.style;
    return after;
}

}  // namespace

Table changeCells(const Table& table, const PreparedCellsChange& prepared, ItemPlan& plan) {
    SelectedCells cells;
    if (!selectCells(table, *prepared.change, cells)) {
        plan.report("The table has too many cells for a selection."_text);
        return table;
    }
    if (cells.isEmpty()) {
        plan.passOver("It has no such cells."_text);
        return table;
    }
    Table changed = keepSame(table, apply(table, prepared, cells));
    const bool same =
        changed.data == table.data && changed.view == table.view && changed.style == table.style;
    if (!same) plan.add(ChangeKind::cells);
    return changed;
}

}  // namespace vexa::frontend
