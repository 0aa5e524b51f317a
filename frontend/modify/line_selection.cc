#include "frontend/modify/line_selection.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "frontend/document/compared_text.h"

namespace vexa::frontend {

namespace {

using tables::AxisLines;
using tables::CategoryId;
using tables::DimensionId;
using tables::GroupId;
using tables::noGroup;
using tables::Table;
using tables::TableCategory;
using tables::TableData;
using tables::TableDimension;
using tables::TableGroup;

constexpr char separator = ';';

bool wantsRows(const CellsChange& change) { return change.dimension != CellDimension::columns; }
bool wantsColumns(const CellsChange& change) { return change.dimension != CellDimension::rows; }

void addLabels(const Table& table, const std::vector<DimensionId>& axis,
               std::unordered_set<std::string>& labels) {
    for (const DimensionId id : axis) {
        for (const TableCategory& each : table.data->dimensions()[id].categories)
            labels.insert(comparedText(each.label));
        for (const TableGroup& each : table.data->dimensions()[id].groups)
            labels.insert(comparedText(each.label));
    }
}

/// Which categories and groups of a dimension have a wanted label, or stand under a group that has one.
class NamedOfDimension {
  public:
    NamedOfDimension(const TableDimension& dimension, const std::unordered_set<std::string>& wanted)
        : categories_(dimension.categories.size()),
          groups_(dimension.groups.size()),
          inGroup_(dimension.groups.size()) {
        for (std::size_t i = 0; i < groups_.size(); ++i) {
            const TableGroup& group = dimension.groups[i];
            groups_[i] = !group.label.empty() && wanted.contains(comparedText(group.label)) ? 1 : 0;
            inGroup_[i] = groups_[i] || (group.parent != noGroup && inGroup_[group.parent]) ? 1 : 0;
        }
        for (std::size_t i = 0; i < categories_.size(); ++i) {
            const TableCategory& category = dimension.categories[i];
            own_.push_back(wanted.contains(comparedText(category.label)) ? 1 : 0);
            categories_[i] = own_[i] || (category.group != noGroup && inGroup_[category.group]) ? 1 : 0;
        }
    }

    [[nodiscard]] bool names(CategoryId category) const { return categories_[category] != 0; }
    [[nodiscard]] bool namesItself(CategoryId category) const { return own_[category] != 0; }
    [[nodiscard]] const std::vector<char>& groups() const { return groups_; }

  private:
    std::vector<char> categories_;
    std::vector<char> groups_;
    std::vector<char> inGroup_;
    std::vector<char> own_;
};

/// The innermost labels whose lines are all chosen.
void addInnermostLabels(const AxisLines& lines, const std::vector<char>& chosen,
                        std::vector<SelectedLabel>& labels) {
    const DimensionId dimension = lines.dimensions().back();
    std::unordered_set<CategoryId> left;
    for (std::size_t i = 0; i < lines.size() && lines.dimensions().size() > 1; ++i) {
        if (!chosen[i]) left.insert(lines.line(i).back());
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const CategoryId category = lines.line(i).back();
        if (chosen[i] && !left.contains(category)) labels.push_back({dimension, category, false});
    }
}

void chooseByLabels(const Table& table, const AxisLines& lines, const std::unordered_set<std::string>& wanted,
                    std::vector<char>& chosen, std::vector<SelectedLabel>& labels) {
    const std::vector<DimensionId>& dimensions = lines.dimensions();
    if (dimensions.empty()) return;
    const std::vector<SelectedLabel> shown = shownLabels(*table.data, lines);
    for (std::size_t d = 0; d < dimensions.size(); ++d) {
        const NamedOfDimension named(table.data->dimensions()[dimensions[d]], wanted);
        const bool isInnermost = d + 1 == dimensions.size();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const CategoryId category = lines.line(i)[d];
            if (!named.names(category)) continue;
            chosen[i] = 1;
            // A category of an outer dimension stands over its lines as a group does.
            if (!isInnermost && named.namesItself(category))
                labels.push_back({dimensions[d], category, false});
        }
        for (const SelectedLabel& each : shown) {
            if (each.isGroup && each.dimension == dimensions[d] && named.groups()[each.id])
                labels.push_back(each);
        }
    }
    addInnermostLabels(lines, chosen, labels);
}

void chooseByPositions(const AxisLines& lines, const std::vector<std::int32_t>& positions,
                       std::vector<char>& chosen, std::vector<SelectedLabel>& labels) {
    for (const std::int32_t position : positions) {
        if (position < 1 || static_cast<std::size_t>(position) > lines.size()) continue;
        const std::size_t line = static_cast<std::size_t>(position) - 1;
        chosen[line] = 1;
        if (!lines.dimensions().empty())
            labels.push_back({lines.dimensions().back(), lines.line(line).back(), false});
    }
}

/// Marks a group and those around it.
void markGroups(const TableDimension& dimension, GroupId group, std::vector<char>& marked) {
    for (; group != noGroup && !marked[group]; group = dimension.groups[group].parent) marked[group] = 1;
}

}  // namespace

std::vector<SelectedLabel> inOrder(std::vector<SelectedLabel> labels) {
    std::sort(labels.begin(), labels.end());
    labels.erase(std::unique(labels.begin(), labels.end()), labels.end());
    return labels;
}

std::vector<SelectedLabel> shownLabels(const TableData& data, const AxisLines& lines) {
    std::vector<SelectedLabel> labels;
    for (std::size_t d = 0; d < lines.dimensions().size(); ++d) {
        const DimensionId id = lines.dimensions()[d];
        const TableDimension& dimension = data.dimensions()[id];
        std::vector<char> categories(dimension.categories.size());
        std::vector<char> groups(dimension.groups.size());
        for (std::size_t i = 0; i < lines.size(); ++i) categories[lines.line(i)[d]] = 1;
        for (CategoryId category = 0; category < categories.size(); ++category) {
            if (!categories[category]) continue;
            labels.push_back({id, category, false});
            markGroups(dimension, dimension.categories[category].group, groups);
        }
        for (GroupId group = 0; group < groups.size(); ++group) {
            if (groups[group] && !dimension.groups[group].label.empty()) labels.push_back({id, group, true});
        }
    }
    return labels;
}

std::unordered_set<std::string> cutLabels(std::string_view joined,
                                          const std::unordered_set<std::string>& known) {
    std::vector<std::size_t> cuts;  // where pieces end
    for (std::size_t i = 0; i < joined.size(); ++i) {
        if (joined[i] == separator) cuts.push_back(i);
    }
    cuts.push_back(joined.size());
    std::ptrdiff_t most = 0;  // separators that a known label holds
    for (const std::string& each : known)
        most = std::max(most, std::count(each.begin(), each.end(), separator));
    std::unordered_set<std::string> labels;
    std::size_t begin = 0;
    for (std::size_t first = 0; first < cuts.size();) {
        std::size_t last = std::min(cuts.size() - 1, first + static_cast<std::size_t>(most));
        std::string piece = comparedText(joined.substr(begin, cuts[last] - begin));
        while (last > first && !known.contains(piece)) {
            --last;
            piece = comparedText(joined.substr(begin, cuts[last] - begin));
        }
        if (known.contains(piece)) labels.insert(std::move(piece));
        begin = cuts[last] + 1;
        first = last + 1;
    }
    return labels;
}

SelectedLines linesOfLabels(const Table& table, const CellsChange& change, const AxisLines& rows,
                            const AxisLines& columns) {
    SelectedLines lines{std::vector<char>(rows.size()), std::vector<char>(columns.size()), {}};
    std::unordered_set<std::string> known;
    if (wantsRows(change)) addLabels(table, rows.dimensions(), known);
    if (wantsColumns(change)) addLabels(table, columns.dimensions(), known);
    const std::unordered_set<std::string> wanted = cutLabels(change.labels, known);
    if (wantsRows(change)) chooseByLabels(table, rows, wanted, lines.rows, lines.labels);
    if (wantsColumns(change)) chooseByLabels(table, columns, wanted, lines.columns, lines.labels);
    lines.labels = inOrder(std::move(lines.labels));
    return lines;
}

SelectedLines linesOfPositions(const Table&, const CellsChange& change, const AxisLines& rows,
                               const AxisLines& columns) {
    SelectedLines lines{std::vector<char>(rows.size()), std::vector<char>(columns.size()), {}};
    if (wantsRows(change)) chooseByPositions(rows, change.positions, lines.rows, lines.labels);
    if (wantsColumns(change)) chooseByPositions(columns, change.positions, lines.columns, lines.labels);
    lines.labels = inOrder(std::move(lines.labels));
    return lines;
}

}  // namespace vexa::frontend
