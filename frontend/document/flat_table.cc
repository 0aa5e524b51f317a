#include "frontend/document/flat_table.h"

#include <algorithm>
#include <utility>

namespace vexa::frontend {
// Set apart from the types of the same names in item.h until everything uses those.
inline namespace former {
namespace {

/// The labels over (or beside) a category, outermost group first, the category's own label last.
using LabelPath = std::vector<std::string>;

/// How deep groups may nest in a grid.
constexpr std::size_t maximalLevels = 64;

LabelPath pathOf(const PivotDimension& dimension, const PivotCategory& category) {
    LabelPath path;
    for (int group = category.group; group >= 0 && path.size() <= maximalLevels;
         group = dimension.groups[static_cast<std::size_t>(group)].parent) {
        path.insert(path.begin(), dimension.groups[static_cast<std::size_t>(group)].label);
    }
    path.push_back(category.label);
    return path;
}

/// The dimensions of one axis, outermost first, and how they are laid out.
struct Axis {
    struct Part {
        const PivotDimension* dimension;
        std::size_t number;            ///< index of the dimension in the table
        std::size_t levels = 0;        ///< label levels of its categories
        std::size_t stride = 1;        ///< lines of the axis from one category to the next
        std::vector<LabelPath> paths;  ///< one a category
    };
    std::vector<Part> parts;
    std::size_t length = 1;  ///< lines (rows, columns or layers)
    std::size_t levels = 0;
    std::size_t labels = 0;  ///< label texts of all parts
};

// Saturates, because the numbers of categories may multiply to anything.
std::size_t multiply(std::size_t left, std::size_t right) {
    return right != 0 && left > maximalFlatCells / right ? maximalFlatCells + 1 : left * right;
}

// False when there are more labels than a grid has places; they are not gathered then.
bool collectPaths(Axis::Part& part, std::size_t& labels) {
    for (const PivotCategory& category : part.dimension->categories) {
        part.paths.push_back(pathOf(*part.dimension, category));
        part.levels = std::max(part.levels, part.paths.back().size());
        labels += part.paths.back().size();
        if (labels > maximalFlatCells || part.levels > maximalLevels) {
            return false;
        }
    }
    return true;
}

Axis layOut(const PivotTable& table, PivotAxis wanted) {
    Axis axis;
    for (std::size_t i = 0; i < table.dimensions.size(); ++i) {
        if (table.dimensions[i].axis() == wanted) {
            axis.parts.push_back({&table.dimensions[i], i, 0, 1, {}});
        }
    }
    std::stable_sort(axis.parts.begin(), axis.parts.end(), [](const auto& left, const auto& right) {
        return left.dimension->position[1] < right.dimension->position[1];
    });
    for (auto part = axis.parts.rbegin(); part != axis.parts.rend(); ++part) {
        part->stride = axis.length;
        axis.length = multiply(axis.length, part->dimension->categories.size());
        if (axis.length > maximalFlatCells || !collectPaths(*part, axis.labels)) {
            axis.length = maximalFlatCells + 1;
            return axis;
        }
        axis.levels += part->levels;
    }
    return axis;
}

std::size_t categoryAt(const Axis::Part& part, std::size_t line) {
    return line / part.stride % part.dimension->categories.size();
}

/// All labels of one line of an axis, one a level; levels that a category does not reach are empty before its
/// own label.
std::vector<std::string> labelsOf(const Axis& axis, std::size_t line) {
    std::vector<std::string> labels;
    for (const Axis::Part& part : axis.parts) {
        const LabelPath& path = part.paths[categoryAt(part, line)];
        labels.insert(labels.end(), path.begin(), path.end() - 1);
        labels.insert(labels.end(), part.levels - path.size(), std::string());
        labels.push_back(path.back());
    }
    return labels;
}

/// The labels that line `line` shows: those that the line before has too, at their level and all outer ones,
/// are blank.
std::vector<std::string> shownLabelsOf(const Axis& axis, std::size_t line) {
    std::vector<std::string> labels = labelsOf(axis, line);
    if (line == 0) {
        return labels;
    }
    const std::vector<std::string> before = labelsOf(axis, line - 1);
    for (std::size_t level = 0; level + 1 < labels.size() && labels[level] == before[level]; ++level) {
        labels[level].clear();
    }
    return labels;
}

class Flattening {
  public:
    explicit Flattening(const PivotTable& table)
        : table_(table),
          rows_(layOut(table, PivotAxis::row)),
          columns_(layOut(table, PivotAxis::column)),
          layers_(layOut(table, PivotAxis::layer)) {
        hasCorner_ = std::any_of(rows_.parts.begin(), rows_.parts.end(),
                                 [](const Axis::Part& part) { return !part.dimension->label.empty(); });
        headerRows_ = std::max<std::size_t>(columns_.levels, hasCorner_ ? 1 : 0);
        layerRows_ = rows_.length + (layers_.parts.empty() ? 0 : 1);
    }

    [[nodiscard]] bool fits() const {
        const std::size_t rows = multiply(layers_.length, layerRows_) + headerRows_;
        return rows <= maximalFlatCells && columns_.length <= maximalFlatCells &&
               multiply(rows, columns_.length + rows_.levels) <= maximalFlatCells;
    }

    FlatTable make() {
        copyFrame();
        flat_.headerRows = headerRows_;
        flat_.headerColumns = rows_.levels;
        flat_.columns = columns_.length + rows_.levels;
        flat_.cells.resize((headerRows_ + layers_.length * layerRows_) * flat_.columns);
        writeColumnLabels();
        writeCorner();
        for (std::size_t layer = 0; layer < layers_.length; ++layer) {
            writeRowLabels(layer);
        }
        writeCells();
        return std::move(flat_);
    }

  private:
    void copyFrame() {
        flat_.title = table_.title;
        flat_.caption = table_.caption;
        flat_.subtype = table_.subtype;
        flat_.titleHidden = table_.titleHidden;
        flat_.minDataColumnWidth = table_.minDataColumnWidth;
        flat_.maxDataColumnWidth = table_.maxDataColumnWidth;
        flat_.extras = table_.extras;
    }

    FlatCell& at(std::size_t row, std::size_t column) { return flat_.cells[row * flat_.columns + column]; }
    [[nodiscard]] std::size_t firstRowOf(std::size_t layer) const {
        return headerRows_ + layer * layerRows_ + (layers_.parts.empty() ? 0 : 1);
    }

    void writeColumnLabels() {
        const std::size_t firstRow = headerRows_ - columns_.levels;
        for (std::size_t column = 0; column < columns_.length; ++column) {
            const std::vector<std::string> labels = shownLabelsOf(columns_, column);
            for (std::size_t level = 0; level < labels.size(); ++level) {
                at(firstRow + level, rows_.levels + column).text = labels[level];
            }
        }
    }

    void writeCorner() {
        std::size_t column = 0;
        for (const Axis::Part& part : rows_.parts) {
            if (hasCorner_ && part.levels > 0) {
                at(headerRows_ - 1, column).text = part.dimension->label;
            }
            column += part.levels;
        }
    }

    void writeRowLabels(std::size_t layer) {
        if (!layers_.parts.empty() && flat_.columns > 0) {
            at(firstRowOf(layer) - 1, 0).text = layerText(layer);
        }
        for (std::size_t row = 0; row < rows_.length; ++row) {
            const std::vector<std::string> labels = shownLabelsOf(rows_, row);
            for (std::size_t level = 0; level < labels.size(); ++level) {
                at(firstRowOf(layer) + row, level).text = labels[level];
            }
        }
    }

    [[nodiscard]] std::string layerText(std::size_t layer) const {
        std::string text;
        for (const Axis::Part& part : layers_.parts) {
            text += text.empty() ? "" : ", ";
            text += part.dimension->label.empty() ? "" : part.dimension->label + ": ";
            text += part.dimension->categories[categoryAt(part, layer)].label;
        }
        return text;
    }

    static std::size_t lineOf(const Axis& axis, const std::vector<std::size_t>& coordinates) {
        std::size_t line = 0;
        for (const Axis::Part& part : axis.parts) {
            line += coordinates[part.number] * part.stride;
        }
        return line;
    }

    void writeCells() {
        for (const PivotCell& cell : table_.cells) {
            const std::vector<std::size_t> coordinates = table_.coordinates(cell.place);
            const std::size_t row = firstRowOf(lineOf(layers_, coordinates)) + lineOf(rows_, coordinates);
            at(row, rows_.levels + lineOf(columns_, coordinates)) = {cell.text, cell.extras};
        }
    }

    const PivotTable& table_;
    Axis rows_;
    Axis columns_;
    Axis layers_;
    bool hasCorner_ = false;
    std::size_t headerRows_ = 0;
    std::size_t layerRows_ = 0;
    FlatTable flat_;
};

}  // namespace

std::optional<FlatTable> flatten(const PivotTable& table) {
    Flattening flattening(table);
    if (!flattening.fits()) {
        return std::nullopt;
    }
    return flattening.make();
}

}  // namespace former
}  // namespace vexa::frontend
