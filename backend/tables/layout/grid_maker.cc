#include "backend/tables/layout/grid_maker.h"

#include <algorithm>
#include <utility>

#include "backend/tables/formats/number_text.h"
#include "backend/tables/layout/column_contents.h"
#include "backend/tables/layout/grid_styles.h"

namespace vexa::tables {

namespace {

constexpr std::size_t nowhere = SIZE_MAX;
/// A longer text that several cells show stands in the grid once.
constexpr std::size_t longText = 32;
/// Beyond, texts are left out: their places in the grid have 32 bits.
constexpr std::size_t maximalTexts = UINT32_MAX / 2;

}  // namespace

GridMaker::GridMaker(const PreparedTable& prepared, FootnoteLetters& letters, bool isFirst)
    : prepared_(prepared),
      letters_(letters),
      isFirst_(isFirst),
      styles_(prepared.style(), grid_.styles),
      used_(prepared.data().footnotes().size(), false) {}

TableGrid GridMaker::make(Place layer) {
    grid_.headerRows = prepared_.headerRows;
    grid_.labelColumns = prepared_.labelColumns;
    grid_.rows = prepared_.headerRows + prepared_.bodyRows;
    grid_.columns = prepared_.labelColumns + prepared_.dataColumns;
    grid_.widths = prepared_.widths;
    makeFrame(layer);
    const std::size_t data = std::size_t{prepared_.bodyRows} * prepared_.dataColumns;
    grid_.cells.reserve(data + std::size_t{prepared_.bodyRows} * std::min(prepared_.labelColumns, 2U) +
                        std::size_t{prepared_.headerRows} * (prepared_.dataColumns + 1));
    grid_.texts.reserve(data * 8);
    makeHeader();
    for (std::uint32_t row = 0; row < prepared_.bodyRows; ++row) makeBodyRow(row, layer);
    grid_.rowBegin.push_back(grid_.cells.size());
    if (hasTexts_) alignDataTexts();
    setCellStyles(prepared_, styles_, grid_);
    makeFootnotes();
    return std::move(grid_);
}

void GridMaker::makeFrame(Place layer) {
    const TableView& view = prepared_.view();
    const TableLook& look = prepared_.look();
    grid_.minColumnWidth = view.minColumnWidth ? view.minColumnWidth : look.minColumnWidth;
    grid_.maxColumnWidth = view.maxColumnWidth ? view.maxColumnWidth : look.maxColumnWidth;
    grid_.maxLabelWidth = look.maxLabelWidth;
    if (!view.titleHidden) grid_.title.text = view.title;
    if (prepared_.options.notesAndCaptions && view.caption != view.title) grid_.caption.text = view.caption;
    grid_.layer.text = layerText(layer);
    grid_.title.style = styles_.ofText(Area::title);
    grid_.caption.style = styles_.ofText(Area::caption);
    grid_.layer.style = styles_.ofText(Area::layers);
    grid_.footnoteStyle = styles_.ofText(Area::footnotes);
}

/// The layer stands above the table, so its footnotes have the first letters. Nothing where no layer can be
/// shown.
std::string GridMaker::layerText(Place layer) {
    const TableData& data = prepared_.data();
    const std::vector<DimensionId>& ids = prepared_.view().layers;
    std::vector<CategoryId> line;
    for (const DimensionId id : ids) {
        const std::size_t count = data.dimensions()[id].categories.size();
        if (count == 0) return {};
        line.push_back(static_cast<CategoryId>(layer / data.stride(id) % count));
        if (prepared_.view().dimensions[id].isHidden(line.back())) return {};
    }
    layerFormat_ = formatOfLine(data, ids, line);
    std::string text;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const TableDimension& dimension = data.dimensions()[ids[i]];
        const TableCategory& category = dimension.categories[line[i]];
        if (i > 0) text += ", ";
        if (!prepared_.view().dimensions[ids[i]].labelHidden && !dimension.label.empty()) {
            text.append(dimension.label).append(prepared_.options.behindLabel);
        }
        text.append(category.label).append(bracketedMarks(marksOf(category.footnotes)));
    }
    return text;
}

GridCell& GridMaker::add(GridRole role, std::uint32_t row, std::uint32_t column) {
    GridCell& cell = grid_.cells.emplace_back();
    cell.role = role;
    cell.row = row;
    cell.column = column;
    cell.textBegin = static_cast<std::uint32_t>(grid_.texts.size());
    return cell;
}

void GridMaker::makeHeader() {
    if (prepared_.headerRows == 0) return;
    newLevels_.resize(prepared_.dataColumns);
    for (std::size_t i = 0; i < newLevels_.size(); ++i) {
        newLevels_[i] = prepared_.columnLabels.firstNewLevel(prepared_.columns, i);
    }
    std::uint32_t row = 0;
    for (const DimensionLabels& labels : prepared_.columnLabels.dimensions()) {
        const std::uint32_t headings = prepared_.columnLabels.hasHeading(labels) ? 1 : 0;
        for (std::uint32_t i = 0; i < headings + labels.depth(); ++i, ++row) {
            makeCorner(row);
            makeHeaderRow(&labels, i < headings, i - headings, row);
        }
    }
    for (; row < prepared_.headerRows; ++row) {
        makeCorner(row);
        if (row > 0) continue;
        // Without column dimensions nothing stands over the data.
        GridCell& cell = add(GridRole::columnLabel, 0, prepared_.labelColumns);
        cell.rowSpan = prepared_.headerRows;
        cell.columnSpan = prepared_.dataColumns;
    }
}

/// The cells over the row labels: the corner's text, and in the last row the labels of the row dimensions.
void GridMaker::makeCorner(std::uint32_t row) {
    grid_.rowBegin.push_back(grid_.cells.size());
    if (prepared_.labelColumns == 0) return;
    const std::uint32_t ofDimensions = prepared_.rowLabels.isLabelled() ? 1 : 0;
    if (row == 0 && prepared_.headerRows > ofDimensions) {
        GridCell& cell = add(GridRole::corner, 0, 0);
        cell.rowSpan = prepared_.headerRows - ofDimensions;
        cell.columnSpan = prepared_.labelColumns;
        setText(prepared_.view().corner, cell);
    }
    if (ofDimensions == 0 || row + 1 < prepared_.headerRows) return;
    std::uint32_t column = 0;
    for (const DimensionLabels& labels : prepared_.rowLabels.dimensions()) {
        GridCell& cell = add(GridRole::corner, row, column);
        cell.columnSpan = labels.depth();
        cell.dimension = labels.id();
        if (labels.isLabelled()) setText(prepared_.data().dimensions()[labels.id()].label, cell);
        column += labels.depth();
    }
}

void GridMaker::makeHeaderRow(const DimensionLabels* labels, bool isHeading, std::uint32_t part,
                              std::uint32_t level) {
    const std::vector<DimensionId>& ids = prepared_.columns.dimensions();
    const auto place =
        static_cast<std::size_t>(std::find(ids.begin(), ids.end(), labels->id()) - ids.begin());
    std::size_t open = nowhere;
    for (std::uint32_t column = 0; column < prepared_.dataColumns; ++column) {
        if (column > 0 && newLevels_[column] > level) {
            if (open != nowhere) ++grid_.cells[open].columnSpan;
            continue;
        }
        const CategoryId category = prepared_.columns.line(column)[place];
        if (!isHeading && part > labels->groups(category).size()) {
            open = nowhere;  // its category spans this row too
            continue;
        }
        open = grid_.cells.size();
        GridCell& cell = add(GridRole::columnLabel, level, prepared_.labelColumns + column);
        cell.dimension = labels->id();
        if (isHeading) {
            setText(prepared_.data().dimensions()[labels->id()].label, cell);
        } else {
            makeLabel(*labels, category, part, cell);
            if (cell.category != noGroup) cell.rowSpan = labels->depth() - part;
        }
    }
}

/// Fills a cell with the group or, behind the last of them, the category at `part` of its way.
void GridMaker::makeLabel(const DimensionLabels& labels, CategoryId category, std::uint32_t part,
                          GridCell& cell) {
    const TableDimension& dimension = prepared_.data().dimensions()[labels.id()];
    const std::span<const GroupId> groups = labels.groups(category);
    cell.dimension = labels.id();
    if (part < groups.size()) {
        cell.group = groups[part];
        setText(dimension.groups[groups[part]].label, cell);
    } else {
        cell.category = category;
        setText(dimension.categories[category].label, cell);
        setMarks(dimension.categories[category].footnotes, cell);
    }
}

void GridMaker::makeBodyRow(std::uint32_t row, Place layer) {
    grid_.rowBegin.push_back(grid_.cells.size());
    makeRowLabels(row);
    const Place begin = layer + prepared_.rows.offset(row);
    for (std::uint32_t column = 0; column < prepared_.dataColumns; ++column) {
        makeData(row, column, begin + prepared_.columns.offset(column));
    }
}

void GridMaker::makeRowLabels(std::uint32_t row) {
    const std::uint32_t first = prepared_.rowLabels.firstNewLevel(prepared_.rows, row);
    while (!openLabels_.empty() && grid_.cells[openLabels_.back()].column >= first) openLabels_.pop_back();
    for (const std::size_t open : openLabels_) ++grid_.cells[open].rowSpan;
    const std::span<const CategoryId> line = prepared_.rows.line(row);
    std::uint32_t begin = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const DimensionLabels& labels = prepared_.rowLabels.dimensions()[i];
        const auto last = static_cast<std::uint32_t>(labels.groups(line[i]).size());
        for (std::uint32_t part = first > begin ? first - begin : 0; part <= last; ++part) {
            openLabels_.push_back(grid_.cells.size());
            GridCell& cell = add(GridRole::rowLabel, prepared_.headerRows + row, begin + part);
            makeLabel(labels, line[i], part, cell);
            if (part == last) cell.columnSpan = labels.depth() - part;
        }
        begin += labels.depth();
    }
}

void GridMaker::makeData(std::uint32_t row, std::uint32_t column, Place place) {
    GridCell& cell = add(GridRole::data, prepared_.headerRows + row, prepared_.labelColumns + column);
    cell.place = place;
    const TableCell* const data = prepared_.data().find(place);
    cell.kind = data == nullptr ? CellKind::empty : data->kind;
    if (data != nullptr) setDataText(*data, cell);
    hasTexts_ = hasTexts_ || cell.kind == CellKind::text;
}

void GridMaker::alignDataTexts() {
    std::vector<bool> hasFormat;
    hasFormat.reserve(prepared_.columnFormats.size());
    for (const DisplayFormat& each : prepared_.columnFormats)
        hasFormat.push_back(each.kind != FormatKind::none);
    alignTexts(grid_, hasFormat);
}

void GridMaker::setDataText(const TableCell& data, GridCell& cell) {
    const CellExtras& extras = prepared_.data().extras(data);
    if (data.kind == CellKind::number) {
        cell.alignsRight = true;
        cell.number = data.number;
        cell.format = formatAt(cell, data);
    }
    if (extras.shown) {
        cell.hasOwnText = true;
        setText(*extras.shown, cell);
    } else if (data.kind == CellKind::text) {
        setText(prepared_.data().text(data), cell);
    } else if (data.kind == CellKind::number && grid_.texts.size() < maximalTexts) {
        appendNumber(grid_.texts, data.number, cell.format);
        cell.textLength = static_cast<std::uint32_t>(grid_.texts.size()) - cell.textBegin;
    }
    if (data.extras != 0) setMarks(extras.footnotes, cell);
}

/// The same order as `TableData::formatOf` has, with what lines say found out before.
DisplayFormat GridMaker::formatAt(const GridCell& cell, const TableCell& data) const {
    const TableStyle& style = prepared_.style();
    const DisplayFormat ofCell =
        style.cellFormats().isEmpty() ? DisplayFormat{} : style.cellFormat(cell.place);
    if (ofCell.kind != FormatKind::none) return ofCell;
    if (style.format().kind != FormatKind::none) return style.format();
    if (data.format.kind != FormatKind::none) return data.format;
    if (!prepared_.columnFormats.empty()) {
        const DisplayFormat format = prepared_.columnFormats[cell.column - prepared_.labelColumns];
        if (format.kind != FormatKind::none) return format;
    }
    if (!prepared_.rowFormats.empty()) {
        const DisplayFormat format = prepared_.rowFormats[cell.row - prepared_.headerRows];
        if (format.kind != FormatKind::none) return format;
    }
    return layerFormat_;
}

/// `text` must stand where it stands for as long as the grid is made.
void GridMaker::setText(std::string_view text, GridCell& cell) {
    if (text.size() > longText) {
        const auto [found, added] =
            longTexts_.try_emplace(text.data(), static_cast<std::uint32_t>(grid_.texts.size()));
        cell.textBegin = found->second;
        if (!added) {
            cell.textLength = static_cast<std::uint32_t>(text.size());
            return;
        }
    }
    if (text.size() > maximalTexts - std::min(grid_.texts.size(), maximalTexts)) {
        longTexts_.erase(text.data());
        return;
    }
    cell.textLength = static_cast<std::uint32_t>(text.size());
    grid_.texts += text;
}

std::vector<std::string> GridMaker::marksOf(const std::vector<FootnoteId>& footnotes) {
    std::vector<std::string> marks;
    if (!prepared_.options.notesAndCaptions) return marks;
    for (const FootnoteId id : footnotes) {
        if (id >= used_.size()) continue;
        const bool isListed = used_[id] || (prepared_.options.lettersGoOn && letters_.has(id));
        if (!isListed) listed_.push_back(id);
        used_[id] = true;
        marks.push_back(letters_.of(id));
    }
    return marks;
}

void GridMaker::setMarks(const std::vector<FootnoteId>& footnotes, GridCell& cell) {
    if (footnotes.empty() || !prepared_.options.notesAndCaptions) return;
    const auto [found, added] = marks_.try_emplace(footnotes, 0);
    if (added) {
        std::vector<std::string> marks = marksOf(footnotes);
        if (!marks.empty()) {
            grid_.marks.push_back(std::move(marks));
            found->second = static_cast<std::uint32_t>(grid_.marks.size());
        }
    }
    cell.marks = found->second;
}

/// Letters are given in the order in which footnotes are listed, so the list is in the order of its letters.
void GridMaker::makeFootnotes() {
    if (!prepared_.options.notesAndCaptions) return;
    const std::vector<std::string>& texts = prepared_.data().footnotes();
    for (const FootnoteId id : listed_) grid_.footnotes.push_back({letters_.of(id), texts[id]});
    if (prepared_.options.lettersGoOn && !isFirst_) return;
    for (const FootnoteId id : prepared_.unmarked) grid_.footnotes.push_back({"", texts[id]});
}

}  // namespace vexa::tables
