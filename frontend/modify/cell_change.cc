#include "frontend/modify/cell_change.h"

#include <unordered_map>

#include "frontend/modify/number_formats.h"

namespace vexa::frontend {

namespace {

using tables::Area;
using tables::CellStyle;
using tables::DisplayFormat;
using tables::Place;
using tables::StyleId;
using tables::Table;
using tables::TableCell;
using tables::TableData;
using tables::TableDataBuilder;
using tables::TableDimension;
using tables::TableStyle;
using tables::TableView;

/// Changes the styles of the selected cells in place.
class StyleChanger {
  public:
    StyleChanger(TableStyle& style, const PreparedCellsChange& prepared, Place placeCount)
        : style_(style), prepared_(prepared), placeCount_(placeCount) {}

    /// False when all of them have their new styles already.
    bool change(const SelectedCells& cells) {
        for (const Place place : cells.data) {
            if (isOther(style_.cell(place))) style_.setCell(place, to_, placeCount_);
        }
        for (const SelectedLabel& each : cells.labels) changeLabel(each);
        if (cells.title) changeArea(Area::title);
        if (cells.caption) changeArea(Area::caption);
        if (cells.footnotes) changeArea(Area::footnotes);
        return changed_;
    }

  private:
    void changeLabel(const SelectedLabel& label) {
        if (label.isGroup) {
            if (isOther(style_.group(label.dimension, label.id)))
                style_.setGroup(label.dimension, label.id, to_);
        } else if (isOther(style_.category(label.dimension, label.id))) {
            style_.setCategory(label.dimension, label.id, to_);
        }
    }

    void changeArea(Area area) {
        if (isOther(style_.area(area))) style_.setArea(area, to_);
    }

    /// Lets `to_` be the style that takes the place of one that was there. Neighbours mostly have the same.
    bool isOther(StyleId from) {
        if (!hasFrom_ || from != from_) {
            hasFrom_ = true;
            from_ = from;
            to_ = styleFor(from);
        }
        changed_ = changed_ || to_ != from;
        return to_ != from;
    }

    StyleId styleFor(StyleId from) {
        const auto known = known_.find(from);
        if (known != known_.end()) return known->second;
        CellStyle style = prepared_.change->revertToDefault ? CellStyle{} : style_.style(from);
        style.overlay(prepared_.style);
        return known_[from] = style_.intern(style);
    }

    TableStyle& style_;
    const PreparedCellsChange& prepared_;
    Place placeCount_;
    std::unordered_map<StyleId, StyleId> known_;
    bool hasFrom_ = false;
    StyleId from_ = 0;
    StyleId to_ = 0;
    bool changed_ = false;
};

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

/// What is no number has no format: those that a style gives to cells that become texts or empty go.
void dropFormats(TableStyle& style, const std::vector<Place>& places, Place placeCount) {
    for (const Place place : places) style.setCellFormat(place, {}, placeCount);
}

}  // namespace

const TableLines& CellsEditor::lines() {
    if (!lines_) lines_.emplace(table_);
    return *lines_;
}

TableStyle& CellsEditor::style() {
    if (style_ == nullptr) {
        style_ = std::make_shared<TableStyle>(*table_.style);
        table_.style = style_;
    }
    return *style_;
}

Table CellsEditor::take() const {
    Table changed = table_;
    if (!hasOtherStyle_) changed.style = before_;
    return changed;
}

bool CellsEditor::takeData(std::shared_ptr<const TableData> data) {
    if (data == table_.data || *data == *table_.data) return false;
    table_.data = std::move(data);
    lines_.reset();  // which lines are empty may be different now
    return true;
}

bool CellsEditor::replaceValues(const CellReplacement& replacement, const SelectedCells& cells) {
    if (!takeData(replaceData(table_.data, replacement, cells))) return false;
    const bool keepsNumbers = !replacement.text && replacement.number != emptying;
    if (!keepsNumbers && !table_.style->cellFormats().isEmpty()) {
        dropFormats(style(), cells.data, table_.data->placeCount());
        hasOtherStyle_ = true;
    }
    return true;
}

bool CellsEditor::replace(const CellReplacement& replacement, const SelectedCells& cells) {
    const bool values = replaceValues(replacement, cells);
    if (!replacement.text) return values;
    const bool title = cells.title && table_.view->title != *replacement.text;
    const bool caption = cells.caption && table_.view->caption != *replacement.text;
    if (!title && !caption) return values;
    auto view = std::make_shared<TableView>(*table_.view);
    if (title) view->title = *replacement.text;
    if (caption) view->caption = *replacement.text;
    table_.view = std::move(view);
    return true;
}

/// A table whose one data column stands under no dimension keeps the column's width as that of all data
/// columns.
bool CellsEditor::changeView(const CellsChange& change, const SelectedCells& cells) {
    if (!table_.view->columns.empty() || !cells.hasColumns) return false;
    std::optional<double> width;
    if (change.columnWidth) width = *change.columnWidth;
    if (table_.view->minColumnWidth == width && table_.view->maxColumnWidth == width) return false;
    auto view = std::make_shared<TableView>(*table_.view);
    view->minColumnWidth = view->maxColumnWidth = width;
    table_.view = std::move(view);
    return true;
}

bool CellsEditor::changeWidths(const CellsChange& change, const SelectedCells& cells) {
    if (!change.columnWidth && !change.revertToDefault) return false;
    std::optional<double> width;
    if (change.columnWidth) width = *change.columnWidth;
    bool changed = changeView(change, cells);
    for (const SelectedLabel& column : cells.columns) {
        if (table_.style->width(column.dimension, column.id) == width) continue;
        style().setWidth(column.dimension, column.id, width);
        hasOtherStyle_ = changed = true;
    }
    return changed;
}

bool CellsEditor::changeStyles(const PreparedCellsChange& prepared, const SelectedCells& cells) {
    if (!prepared.change->revertToDefault && prepared.style.isEmpty()) return false;
    const bool changed = StyleChanger(style(), prepared, table_.data->placeCount()).change(cells);
    hasOtherStyle_ = hasOtherStyle_ || changed;
    return changed;
}

/// A number that is shown in that format already gets none of its own.
bool CellsEditor::changeFormats(DisplayFormat format, const SelectedCells& cells) {
    TableStyle& changed = style();
    const NumberFormats formats(*table_.data, *table_.view, changed);
    bool isOther = false;
    for (const Place place : cells.data) {
        const TableCell* const cell = table_.data->find(place);
        if (cell == nullptr || cell->kind != tables::CellKind::number) continue;
        if (formats.isShownIn(format, place, *cell)) continue;
        changed.setCellFormat(place, format, table_.data->placeCount());
        isOther = true;
    }
    hasOtherStyle_ = hasOtherStyle_ || isOther;
    const bool hasOtherData = takeData(withoutOwnTexts(table_.data, cells.data));
    return isOther || hasOtherData;
}

void CellsEditor::change(const PreparedCellsChange& prepared, ItemPlan& plan) {
    const CellsChange& change = *prepared.change;
    SelectedCells cells;
    if (!selectCells(table_, lines(), change, cells)) {
        plan.report("The table has too many cells for a selection."_text);
        return;
    }
    if (cells.isEmpty()) {
        plan.passOver("It has no such cells."_text);
        return;
    }
    // Values come before formats, which are for the numbers that are there afterwards.
    bool changed = change.replacement && replace(*change.replacement, cells);
    changed = changeWidths(change, cells) || changed;
    changed = changeStyles(prepared, cells) || changed;
    changed = (prepared.format && changeFormats(*prepared.format, cells)) || changed;
    if (changed) plan.add(ChangeKind::cells);
}

}  // namespace vexa::frontend
