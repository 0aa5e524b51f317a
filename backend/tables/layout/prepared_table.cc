#include "backend/tables/layout/prepared_table.h"

#include <algorithm>
#include <utility>

#include "backend/tables/layout/footnote_letters.h"

namespace vexa::tables {

namespace {

/// How many places more a table may take for each of its values beyond the first ones, where it is one.
constexpr std::uint64_t placesPerValue = 4;
constexpr std::uint64_t firstValues = 1'000'000;

std::uint64_t mostPlacesOf(std::uint64_t values) {
    const std::uint64_t first = std::min(values, firstValues);
    return std::min(maximalGridPlaces, maximalEmptyPlaces + first + placesPerValue * (values - first));
}

bool canShowLayers(const Table& table) {
    const std::vector<DimensionId>& layers = table.view->layers;
    return std::none_of(layers.begin(), layers.end(), [&](DimensionId id) {
        return shownCategories(table.data->dimensions()[id], table.view->dimensions[id]).empty();
    });
}

std::vector<DisplayFormat> formatsOf(const TableData& data, const AxisLines& lines) {
    const std::vector<DimensionId>& ids = lines.dimensions();
    const bool some = std::any_of(ids.begin(), ids.end(), [&](DimensionId id) {
        const std::vector<TableCategory>& categories = data.dimensions()[id].categories;
        return std::any_of(categories.begin(), categories.end(), [](const TableCategory& category) {
            return category.format.kind != FormatKind::none;
        });
    });
    std::vector<DisplayFormat> formats;
    if (!some) return formats;
    formats.reserve(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) formats.push_back(formatOfLine(data, ids, lines.line(i)));
    return formats;
}

/// For each line whether it begins a new outermost label, where there are labels within it.
std::vector<bool> groupBegins(const AxisLabels& labels, const AxisLines& lines, std::size_t count) {
    std::vector<bool> begins(count, false);
    const auto depth = labels.dimensions().empty() ? 0 : labels.levels();
    const std::uint32_t outermost =
        !labels.dimensions().empty() && labels.hasHeading(labels.dimensions().front()) ? 1 : 0;
    if (depth < outermost + 2) return begins;
    for (std::size_t i = 1; i < count; ++i) begins[i] = labels.firstNewLevel(lines, i) <= outermost;
    return begins;
}

std::vector<Border> bordersOf(const std::vector<bool>& begins, Border group, Border other, Border first,
                              Border last, const TableLook& look) {
    std::vector<Border> borders(begins.size() + 1, other);
    const bool drawsGroups = look.border(group).style != LineStyle::none;
    for (std::size_t i = 1; drawsGroups && i < begins.size(); ++i) {
        if (begins[i]) borders[i] = group;
    }
    borders.front() = first;
    borders.back() = last;
    return borders;
}

}  // namespace

DisplayFormat formatOfLine(const TableData& data, const std::vector<DimensionId>& dimensions,
                           std::span<const CategoryId> line) {
    for (std::size_t i = dimensions.size(); i-- > 0;) {
        const DisplayFormat format = data.dimensions()[dimensions[i]].categories[line[i]].format;
        if (format.kind != FormatKind::none) return format;
    }
    return {};
}

PreparedTable::PreparedTable(Table given, const LayoutOptions& chosen)
    : table(std::move(given)),
      options(chosen),
      rows(axisLines(table, Axis::row)),
      columns(axisLines(table, Axis::column)),
      rowLabels(table, Axis::row, false),
      columnLabels(table, Axis::column, true),
      unmarked(unmarkedFootnotes(*table.data)) {
    const bool hasNothing = data().dimensions().empty() && data().filledCount() == 0;
    if (!hasNothing && !rows.isEmpty() && !columns.isEmpty() && canShowLayers(table)) measure();
    fit();
    setFormats();
    setWidths();
    setRowBorders();
    setColumnBorders();
}

/// A header row is made for the labels of row dimensions and for the corner's text where there is none, and
/// one more where both need one.
void PreparedTable::measure() {
    labelColumns = rowLabels.levels();
    bodyRows = static_cast<std::uint32_t>(rows.size());
    dataColumns = static_cast<std::uint32_t>(columns.size());
    headerRows = columnLabels.levels();
    if (labelColumns == 0) return;
    const std::uint32_t needed = (rowLabels.isLabelled() ? 1U : 0U) + (view().corner.empty() ? 0U : 1U);
    if (needed <= headerRows) return;
    if (!columnLabels.dimensions().empty()) columnLabels.dimensions().back().deepen(needed - headerRows);
    headerRows = needed;
}

void PreparedTable::fit() {
    mostPlaces = mostPlacesOf(data().filledCount());
    const std::uint64_t width = std::uint64_t{labelColumns} + dataColumns;
    places = width * (std::uint64_t{headerRows} + bodyRows);
    if (places <= mostPlaces) return;
    hasCut = true;
    const std::uint64_t height = mostPlaces / width;
    if (height > headerRows) {
        bodyRows = static_cast<std::uint32_t>(height - headerRows);
    } else {
        headerRows = labelColumns = bodyRows = dataColumns = 0;
    }
}

void PreparedTable::setFormats() {
    rowFormats = formatsOf(data(), rows);
    columnFormats = formatsOf(data(), columns);
}

void PreparedTable::setWidths() {
    widths.resize(std::size_t{labelColumns} + dataColumns);
    const std::vector<DimensionId>& ids = columns.dimensions();
    for (std::size_t i = 0; !ids.empty() && i < dataColumns; ++i) {
        widths[labelColumns + i] = style().width(ids.back(), columns.line(i).back());
    }
}

void PreparedTable::setRowBorders() {
    if (bodyRows == 0) return;
    const Border first = headerRows > 0 ? Border::belowHeader : Border::top;
    const std::vector<bool> begins = groupBegins(rowLabels, rows, bodyRows);
    dataRowBorders = bordersOf(begins, Border::groupRows, Border::dataRows, first, Border::bottom, look());
    labelRowBorders = bordersOf(begins, Border::groupRows, Border::labelRows, first, Border::bottom, look());
}

void PreparedTable::setColumnBorders() {
    if (dataColumns == 0) return;
    const Border first = labelColumns > 0 ? Border::besideLabels : Border::left;
    const std::vector<bool> begins = groupBegins(columnLabels, columns, dataColumns);
    dataColumnBorders =
        bordersOf(begins, Border::groupColumns, Border::dataColumns, first, Border::right, look());
    headerColumnBorders =
        bordersOf(begins, Border::groupColumns, Border::headerColumns, first, Border::right, look());
}

}  // namespace vexa::tables
