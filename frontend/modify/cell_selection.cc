#include "frontend/modify/cell_selection.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "frontend/modify/cell_condition.h"
#include "frontend/modify/line_selection.h"

namespace vexa::frontend {

namespace {

using tables::Axis;
using tables::AxisLines;
using tables::axisLines;
using tables::CategoryId;
using tables::DimensionId;
using tables::GroupId;
using tables::LayerChoice;
using tables::layersOf;
using tables::noGroup;
using tables::Place;
using tables::StatisticRole;
using tables::Table;
using tables::TableDimension;
using Request = frontend::CellKind;
using Labels = std::vector<SelectedLabel>;

/// The statistic that a keyword of cells asks for.
struct Statistic {
    Request kind;
    StatisticRole role;
};
constexpr Statistic statistics[] = {{Request::correlation, StatisticRole::correlation},
                                    {Request::count, StatisticRole::count},
                                    {Request::mean, StatisticRole::mean},
                                    {Request::median, StatisticRole::median},
                                    {Request::percent, StatisticRole::percent},
                                    {Request::residual, StatisticRole::residual},
                                    {Request::significance, StatisticRole::significance}};

/// The cells of a table while they are chosen: a flag a place of rows, columns and layers as shown, and
/// labels in their order.
class CellChooser {
  public:
    CellChooser(const Table& table, const TableLines& lines, const CellsChange& change)
        : table_(table), change_(change), rows_(lines.rows), columns_(lines.columns), layers_(lines.layers) {}

    [[nodiscard]] bool fits() const {
        const std::uint64_t lines = std::max<std::uint64_t>(1, rows_.size());
        const std::uint64_t perLayer = lines * std::max<std::uint64_t>(1, columns_.size());
        return lines <= maximalSelectedCells && perLayer <= maximalSelectedCells &&
               perLayer * layers_.size() <= maximalSelectedCells;
    }

    void choose(SelectedCells& cells) {
        chooseAreas(cells);
        if (isConditional(change_.condition)) {
            labels_.clear();
            cells.title = cells.caption = cells.footnotes = false;
            if (hasData_) keepMatching();
        }
        widen();
        collect(cells);
    }

  private:
    [[nodiscard]] bool asksForStatistics() const {
        return std::any_of(std::begin(statistics), std::end(statistics),
                           [&](const Statistic& each) { return change_.chooses(each.kind); });
    }

    void chooseAreas(SelectedCells& cells) {
        cells.title = change_.chooses(Request::title);
        cells.caption = change_.chooses(Request::caption);
        cells.footnotes = change_.chooses(Request::footnotes);
        const bool body = change_.chooses(Request::body);
        const bool headers = change_.chooses(Request::headers);
        if (asksForStatistics() || !change_.labels.empty() || !change_.positions.empty()) {
            chooseShared(body || !headers, headers || !body);
            return;
        }
        if (body) chooseAllData();
        if (headers) labels_ = allLabels();
    }

    void chooseAllData() {
        chosen_.assign(rows_.size() * columns_.size() * layers_.size(), 1);
        hasData_ = true;
    }

    /// What statistics, expressions and positions share, data and labels as asked for.
    void chooseShared(bool data, bool labels) {
        if (data) chooseAllData();
        std::optional<Labels> shared;
        const auto keepShared = [&](Labels own) {
            if (!shared) {
                shared = std::move(own);
                return;
            }
            Labels both;
            std::set_intersection(shared->begin(), shared->end(), own.begin(), own.end(),
                                  std::back_inserter(both));
            shared = std::move(both);
        };
        if (asksForStatistics()) {
            if (data) keepDataOfStatistics();
            keepShared(change_.chooses(Request::headers) ? labelsOfStatistics() : Labels{});
        }
        const auto keepLines = [&](SelectedLines lines) {
            if (data) keepDataOf(lines);
            keepShared(std::move(lines.labels));
        };
        if (!change_.labels.empty()) keepLines(linesOfLabels(table_, change_, rows_, columns_));
        if (!change_.positions.empty()) keepLines(linesOfPositions(table_, change_, rows_, columns_));
        if (labels && shared) labels_ = std::move(*shared);
    }

    void keepDataOf(const SelectedLines& lines) {
        forEachCell([&](std::size_t row, std::size_t column, std::size_t, char& chosen) {
            if (!lines.rows[row] && !lines.columns[column]) chosen = 0;
        });
    }

    [[nodiscard]] bool isWanted(StatisticRole role) const {
        return std::any_of(std::begin(statistics), std::end(statistics), [&](const Statistic& each) {
            return each.role == role && change_.chooses(each.kind);
        });
    }

    /// Which lines of an axis have a category of a wanted statistic.
    [[nodiscard]] std::vector<char> linesOfStatistics(const AxisLines& lines) const {
        std::vector<char> wanted(lines.size());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            for (std::size_t d = 0; d < lines.dimensions().size(); ++d) {
                const auto& categories = table_.data->dimensions()[lines.dimensions()[d]].categories;
                if (isWanted(categories[lines.line(i)[d]].role)) wanted[i] = 1;
            }
        }
        return wanted;
    }

    void keepDataOfStatistics() {
        const std::vector<char> rows = linesOfStatistics(rows_);
        const std::vector<char> columns = linesOfStatistics(columns_);
        std::vector<char> layers(layers_.size());
        std::vector<CategoryId> ids;
        for (std::size_t i = 0; i < layers_.size() && table_.data->placeCount() > 0; ++i) {
            table_.data->coordinates(layers_[i], ids);
            for (const DimensionId id : table_.view->layers) {
                if (isWanted(table_.data->dimensions()[id].categories[ids[id]].role)) layers[i] = 1;
            }
        }
        forEachCell([&](std::size_t row, std::size_t column, std::size_t layer, char& chosen) {
            if (!rows[row] && !columns[column] && !layers[layer]) chosen = 0;
        });
    }

    [[nodiscard]] Labels allLabels() const {
        Labels labels = shownLabels(*table_.data, rows_);
        const Labels ofColumns = shownLabels(*table_.data, columns_);
        labels.insert(labels.end(), ofColumns.begin(), ofColumns.end());
        std::sort(labels.begin(), labels.end());
        return labels;
    }

    [[nodiscard]] Labels labelsOfStatistics() const {
        Labels labels = allLabels();
        std::erase_if(labels, [&](const SelectedLabel& each) {
            const TableDimension& dimension = table_.data->dimensions()[each.dimension];
            return each.isGroup || !isWanted(dimension.categories[each.id].role);
        });
        return labels;
    }

    void keepMatching() {
        ConditionJudge judge(*table_.data, change_.condition);
        forEachCell([&](std::size_t row, std::size_t column, std::size_t layer, char& chosen) {
            if (chosen) judge.look(placeAt(row, column, layer));
        });
        judge.decide();
        forEachCell([&](std::size_t row, std::size_t column, std::size_t layer, char& chosen) {
            if (chosen && !judge.meets(placeAt(row, column, layer))) chosen = 0;
        });
    }

    /// Which categories of a dimension have a chosen label, or stand under a group that has one.
    [[nodiscard]] std::vector<char> categoriesUnderLabels(DimensionId id) const {
        const TableDimension& dimension = table_.data->dimensions()[id];
        const auto isChosen = [&](std::uint32_t label, bool isGroup) {
            return std::binary_search(labels_.begin(), labels_.end(), SelectedLabel{id, label, isGroup});
        };
        std::vector<char> groups(dimension.groups.size());
        for (GroupId i = 0; i < groups.size(); ++i) {
            const GroupId parent = dimension.groups[i].parent;
            groups[i] = isChosen(i, true) || (parent != noGroup && groups[parent]) ? 1 : 0;
        }
        std::vector<char> categories(dimension.categories.size());
        for (CategoryId i = 0; i < categories.size(); ++i) {
            const GroupId group = dimension.categories[i].group;
            categories[i] = isChosen(i, false) || (group != noGroup && groups[group]) ? 1 : 0;
        }
        return categories;
    }

    /// Which lines of an axis have a chosen cell, or a chosen label, that of a group or an outer category
    /// too.
    [[nodiscard]] std::vector<char> chosenLines(Axis axis) {
        const AxisLines& lines = axis == Axis::row ? rows_ : columns_;
        std::vector<char> has(lines.size());
        forEachCell([&](std::size_t row, std::size_t column, std::size_t, char& chosen) {
            if (chosen) has[axis == Axis::row ? row : column] = 1;
        });
        for (std::size_t d = 0; d < lines.dimensions().size() && !labels_.empty(); ++d) {
            const std::vector<char> under = categoriesUnderLabels(lines.dimensions()[d]);
            for (std::size_t i = 0; i < lines.size(); ++i) {
                if (under[lines.line(i)[d]]) has[i] = 1;
            }
        }
        return has;
    }

    [[nodiscard]] static SelectedLabel labelOf(const AxisLines& lines, std::size_t line) {
        return {lines.dimensions().back(), lines.line(line).back(), false};
    }

    /// The labels at the end of the chosen lines.
    [[nodiscard]] static Labels labelsOf(const AxisLines& lines, const std::vector<char>& chosen) {
        Labels labels;
        for (std::size_t i = 0; i < lines.size() && !lines.dimensions().empty(); ++i) {
            if (chosen[i]) labels.push_back(labelOf(lines, i));
        }
        return inOrder(std::move(labels));
    }

    void widen() {
        const CellReach reach = change_.reach;
        if (reach == CellReach::cell) return;
        const bool toColumns =
            reach == CellReach::column || reach == CellReach::columnData || reach == CellReach::columnHeader;
        const bool withData = reach != CellReach::columnHeader && reach != CellReach::rowHeader;
        const bool withLabels = reach != CellReach::columnData && reach != CellReach::rowData;
        const AxisLines& lines = toColumns ? columns_ : rows_;
        const std::vector<char> has = chosenLines(toColumns ? Axis::column : Axis::row);
        if (withData) chooseAllData();
        forEachCell([&](std::size_t row, std::size_t column, std::size_t, char& chosen) {
            chosen = withData && has[toColumns ? column : row] ? 1 : 0;
        });
        labels_ = withLabels ? labelsOf(lines, has) : Labels{};
    }

    void collect(SelectedCells& cells) {
        cells.data.reserve(static_cast<std::size_t>(std::count(chosen_.begin(), chosen_.end(), 1)));
        forEachCell([&](std::size_t row, std::size_t column, std::size_t layer, char& chosen) {
            if (chosen) cells.data.push_back(placeAt(row, column, layer));
        });
        if (change_.columnWidth || change_.revertToDefault) {
            const std::vector<char> has = chosenLines(Axis::column);
            cells.hasColumns = std::find(has.begin(), has.end(), 1) != has.end();
            cells.columns = labelsOf(columns_, has);
        }
        cells.labels = std::move(labels_);
    }

    /// Nothing where no data was ever chosen.
    template <typename Action>
    void forEachCell(const Action& action) {
        if (!hasData_) return;
        std::size_t index = 0;
        for (std::size_t layer = 0; layer < layers_.size(); ++layer) {
            for (std::size_t row = 0; row < rows_.size(); ++row) {
                for (std::size_t column = 0; column < columns_.size(); ++column) {
                    action(row, column, layer, chosen_[index++]);
                }
            }
        }
    }

    [[nodiscard]] Place placeAt(std::size_t row, std::size_t column, std::size_t layer) const {
        return rows_.offset(row) + columns_.offset(column) + layers_[layer];
    }

    const Table& table_;
    const CellsChange& change_;
    const AxisLines& rows_;
    const AxisLines& columns_;
    const std::vector<Place>& layers_;
    std::vector<char> chosen_;  // one a cell once `hasData_`
    bool hasData_ = false;
    Labels labels_;
};

}  // namespace

TableLines::TableLines(const Table& table)
    : rows(axisLines(table, Axis::row)),
      columns(axisLines(table, Axis::column)),
      layers(layersOf(table, LayerChoice::all)) {}

bool selectCells(const Table& table, const TableLines& lines, const CellsChange& change,
                 SelectedCells& cells) {
    CellChooser chooser(table, lines, change);
    if (!chooser.fits()) return false;
    chooser.choose(cells);
    return true;
}

}  // namespace vexa::frontend
