#include "backend/pivot/rendering/axis_labels.h"

#include <algorithm>
#include <utility>

#include "backend/pivot/rendering/safe_text.h"

namespace vexa::rendering {

namespace {

/// One row of the header: the heading of a column dimension, or one level of its labels.
struct HeaderLevel {
    std::size_t dimension = 0;  ///< on the column axis
    bool heading = false;
    std::size_t level = 0;
};

struct HeaderPart {
    std::string text;
    std::size_t id = 0;
    bool openBelow = false;
};

std::vector<HeaderLevel> headerLevels(const AxisLabels& columns) {
    std::vector<HeaderLevel> levels;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i].heading().empty()) levels.push_back({i, true, 0});
        for (std::size_t level = 0; level < columns[i].depth(); ++level) levels.push_back({i, false, level});
    }
    return levels;
}

/// A category stands in its dimension's last level; between it and its groups the levels are blank and open.
HeaderPart headerPart(const AxisLabels& columns, const HeaderLevel& level, const AxisPlace& place) {
    const DimensionLabels& labels = columns[level.dimension];
    if (level.heading) return {labels.heading(), 0, false};
    const std::vector<LabelPart>& parts = labels.parts(place[level.dimension]);
    if (level.level + 1 == labels.depth()) return {parts.back().text, parts.back().id, false};
    if (level.level + 1 < parts.size()) return {parts[level.level].text, parts[level.level].id, false};
    return {"", parts.back().id, true};
}

/// The headings of the row dimensions stand in the last row of the header; above them it is blank.
void addCorner(std::vector<GridRow>& header, const AxisLabels& rows) {
    if (rows.empty()) return;
    for (std::size_t i = 0; i + 1 < header.size(); ++i) {
        header[i].spans.push_back({"", 0, labelColumnsOf(rows), Align::left, true, true});
    }
    std::size_t first = 0;
    for (const DimensionLabels& labels : rows) {
        header.back().spans.push_back({labels.heading(), first, labels.depth(), Align::left, true, false});
        first += labels.depth();
    }
}

/// Adds the spans of one level; `begins` tells where a span of a level further out begins, and is completed.
void addLevel(GridRow& row, const AxisLabels& columns, const HeaderLevel& level, const Sheet& sheet,
              std::size_t offset, std::vector<bool>& begins) {
    HeaderPart open;
    for (std::size_t column = 0; column < sheet.columns.size(); ++column) {
        HeaderPart part = headerPart(columns, level, sheet.columns[column]);
        if (column > 0 && !begins[column] && part.id == open.id) {
            ++row.spans.back().count;
            continue;
        }
        begins[column] = true;
        row.spans.push_back({part.text, offset + column, 1, Align::centre, true, part.openBelow});
        open = std::move(part);
    }
}

/// How many labels, from the outermost on, two categories of a dimension share.
std::size_t sameParts(const DimensionLabels& labels, std::size_t one, std::size_t other) {
    const std::vector<LabelPart>& left = labels.parts(one);
    const std::vector<LabelPart>& right = labels.parts(other);
    std::size_t same = 0;
    while (same < left.size() && same < right.size() && left[same].id == right[same].id) ++same;
    return same;
}

/// Adds a category's groups and, over the columns that are left, its own label; the first `same` stay blank.
void addLabels(GridRow& row, const DimensionLabels& labels, std::size_t category, std::size_t first,
               std::size_t same) {
    const std::vector<LabelPart>& parts = labels.parts(category);
    for (std::size_t level = 0; level < parts.size(); ++level) {
        const bool last = level + 1 == parts.size();
        GridSpan span{level < same ? "" : parts[level].text, first + level,
                      last ? labels.depth() - level : 1};
        span.openLeft = level > 0;
        span.goesOn = level < same;
        row.spans.push_back(std::move(span));
    }
}

bool hasHeading(const AxisLabels& rows) {
    return std::any_of(rows.begin(), rows.end(),
                       [](const DimensionLabels& labels) { return !labels.heading().empty(); });
}

}  // namespace

DimensionLabels::DimensionLabels(const PivotDimension& dimension) : heading_(safeText(dimension.label)) {
    parts_.reserve(dimension.categories.size());
    for (std::size_t i = 0; i < dimension.categories.size(); ++i) {
        const PivotCategory& category = dimension.categories[i];
        std::vector<LabelPart> parts = {{safeText(category.label), dimension.groups.size() + i}};
        for (int group = category.group; group >= 0;) {
            const PivotGroup& each = dimension.groups[static_cast<std::size_t>(group)];
            if (!each.label.empty()) parts.push_back({safeText(each.label), static_cast<std::size_t>(group)});
            group = each.parent;
        }
        std::reverse(parts.begin(), parts.end());
        depth_ = std::max(depth_, parts.size());
        parts_.push_back(std::move(parts));
    }
}

AxisLabels labelsOn(const std::vector<std::size_t>& axis, const PivotTable& table) {
    AxisLabels labels;
    for (const std::size_t dimension : axis) labels.emplace_back(table.dimensions[dimension]);
    return labels;
}

std::size_t labelColumnsOf(const AxisLabels& rows) {
    std::size_t columns = 0;
    for (const DimensionLabels& labels : rows) columns += labels.depth();
    return columns;
}

std::vector<GridRow> headerRows(const AxisLabels& rows, const AxisLabels& columns, const Sheet& sheet) {
    const std::vector<HeaderLevel> levels = headerLevels(columns);
    if (levels.empty() && !hasHeading(rows)) return {};
    std::vector<GridRow> header(std::max(levels.size(), std::size_t{1}));
    addCorner(header, rows);
    const std::size_t offset = labelColumnsOf(rows);
    if (levels.empty())
        header[0].spans.push_back({"", offset, sheet.columns.size(), Align::left, true, false});
    std::vector<bool> begins(sheet.columns.size(), false);
    for (std::size_t i = 0; i < levels.size(); ++i)
        addLevel(header[i], columns, levels[i], sheet, offset, begins);
    return header;
}

std::vector<GridRow> labelledRows(const AxisLabels& rows, const Sheet& sheet) {
    std::vector<GridRow> labelled(sheet.rows.size());
    for (std::size_t row = 0; row < sheet.rows.size(); ++row) {
        const AxisPlace* above = row > 0 ? &sheet.rows[row - 1] : nullptr;
        bool repeats = above != nullptr;
        std::size_t first = 0;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const std::size_t same = repeats ? sameParts(rows[i], (*above)[i], sheet.rows[row][i]) : 0;
            addLabels(labelled[row], rows[i], sheet.rows[row][i], first, same);
            repeats = repeats && (*above)[i] == sheet.rows[row][i];
            first += rows[i].depth();
        }
        // The outermost of several dimensions divides the body.
        labelled[row].ruleAbove = rows.size() > 1 && above != nullptr && (*above)[0] != sheet.rows[row][0];
    }
    return labelled;
}

}  // namespace vexa::rendering
