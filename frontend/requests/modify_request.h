// What a modification asks for, as plain values. The text that it is read from is
// docs/formats/modify-request.md; what the changes mean is for those who apply them.
//
// Texts are UTF-8, without entities. What is empty, or nothing, was not asked for.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexa::frontend {

/// The item types that a selection names, in the order of the request.
enum class SelectedType {
    charts,
    headings,
    logs,
    notes,
    models,
    tables,
    texts,
    trees,
    warnings,
    outlineHeaders,
    unknown,
    other,
    pageTitles
};
inline constexpr std::size_t kSelectedTypes = 13;

/// Which types a group selects: all but `excepted`, or `selected` alone.
struct TypeSelection {
    bool all = false;
    std::bitset<kSelectedTypes> selected;  ///< empty with `all`
    std::bitset<kSelectedTypes> excepted;  ///< empty without `all`

    [[nodiscard]] bool includes(SelectedType type) const {
        const auto bit = static_cast<std::size_t>(type);
        return all ? !excepted.test(bit) : selected.test(bit);
    }
    bool operator==(const TypeSelection&) const = default;
};

/// What a run of a command made: of every run, of the n-th, or of the last one. An empty name stands for
/// every command: with `last`, for the last run of all.
struct CommandCriterion {
    std::string name;
    std::optional<std::int32_t> run;  ///< from 1
    bool last = false;

    bool operator==(const CommandCriterion&) const = default;
};

enum class LabelMatch { exact, begins, ends, contains };

struct LabelCriterion {
    std::string text;
    LabelMatch match = LabelMatch::exact;

    bool operator==(const LabelCriterion&) const = default;
};

/// The n-th of the items that meet everything else, or the last one.
struct InstanceCriterion {
    std::optional<std::int32_t> number;  ///< from 1; nothing for the last one

    [[nodiscard]] bool isLast() const { return !number; }
    bool operator==(const InstanceCriterion&) const = default;
};

enum class IndexNotation { number, smallLetters, capitalLetters, smallRoman, capitalRoman };

/// What is appended to labels.
struct IndexChange {
    IndexNotation notation = IndexNotation::number;
    std::int32_t start = 1;

    bool operator==(const IndexChange&) const = default;
};

struct GraphChange {
    std::string styleSheet;              ///< the name of a file
    std::vector<std::string> templates;  ///< XML of template files, well-formed or not

    bool operator==(const GraphChange&) const = default;
};

enum class VisibilityChange { asIs, show, hide };

/// Sizes are above 0. A side is given in points or in percent, not in both.
struct ObjectChange {
    std::optional<VisibilityChange> visible;
    std::optional<double> widthPoints;
    std::optional<double> heightPoints;
    std::optional<double> widthPercent;
    std::optional<double> heightPercent;
    std::string label;

    bool operator==(const ObjectChange&) const = default;
};

/// The column by which rows are sorted: by its label, or by its position where that is empty.
struct SortChange {
    std::string label;
    std::int32_t position = -1;  ///< from 1; any other number names no column
    bool ascending = true;

    bool operator==(const SortChange&) const = default;
};

/// A layer dimension, or a category of it: by its label, or by its number where that is nothing.
struct LayerDesignator {
    std::optional<std::string> label;
    std::int32_t number = -1;  ///< from 1; 0 for every dimension, or the last category; -1 for none

    bool operator==(const LayerDesignator&) const = default;
};

struct LayerChange {
    LayerDesignator layer;
    LayerDesignator category;

    bool operator==(const LayerChange&) const = default;
};

struct TableChange {
    std::string title;
    std::string summary;  ///< the caption
    bool transpose = false;
    std::optional<SortChange> sort;
    std::string format;  ///< in capitals; whether it exists is not checked
    bool defaultLook = false;
    std::vector<LayerChange> layers;  ///< in the order of the request
    std::string look;                 ///< XML of a look's file, byte for byte, well-formed or not

    bool operator==(const TableChange&) const = default;
};

struct RequestedColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const RequestedColor&) const = default;
};

/// What chooses cells by statistic or area, in the order of the request.
enum class CellKind {
    correlation,
    count,
    mean,
    median,
    percent,
    residual,
    body,
    significance,
    headers,
    footnotes,
    title,
    caption
};
inline constexpr std::size_t kCellKinds = 12;

/// The dimensions in which labels and positions count.
enum class CellDimension { columns, rows, both };

enum class Comparison { greater, greaterOrEqual, less, lessOrEqual, equal, notEqual };

/// Which of the chosen cells count, by their values.
struct CellCondition {
    enum class Kind { none, all, missing, top, bottom, comparison };

    Kind kind = Kind::none;
    std::int32_t count = 0;  ///< of top and bottom: from 1
    Comparison comparison = Comparison::equal;
    double number = 0.0;  ///< that values are compared with

    bool operator==(const CellCondition&) const = default;
};

/// How far a change reaches from a chosen cell.
enum class CellReach { cell, column, row, columnData, rowData, columnHeader, rowHeader };

struct CellReplacement {
    std::optional<std::string> text;
    double number = -1.0;  ///< where there is no text; -1 empties the cell

    bool operator==(const CellReplacement&) const = default;
};

struct CellsChange {
    std::bitset<kCellKinds> kinds;
    std::string labels;                   ///< of rows and columns, joined by `;`, which a label may hold too
    std::vector<std::int32_t> positions;  ///< from 1
    CellDimension dimension = CellDimension::both;
    CellCondition condition;
    bool revertToDefault = false;
    std::optional<bool> bold;
    std::optional<bool> underline;
    std::optional<bool> italic;
    std::optional<std::int32_t> columnWidth;  ///< points, from 1
    std::optional<double> fontSize;           ///< points, above 0
    std::optional<RequestedColor> textColor;
    std::optional<RequestedColor> backgroundColor;
    CellReach reach = CellReach::cell;
    std::string format;  ///< in capitals, as the font; whether they exist is not checked
    std::string font;
    std::optional<CellReplacement> replacement;

    [[nodiscard]] bool chooses(CellKind kind) const { return kinds.test(static_cast<std::size_t>(kind)); }
    bool operator==(const CellsChange&) const = default;
};

struct TextChange {
    std::string text;
    std::string font;
    std::optional<RequestedColor> color;
    std::optional<double> fontSize;  ///< points, above 0
    std::optional<bool> bold;
    std::optional<bool> italic;
    std::optional<bool> underline;

    bool operator==(const TextChange&) const = default;
};

/// What is selected, and what is done with it. An item must be of a selected type, and meet one criterion of
/// every kind that has any.
struct ModifyGroup {
    TypeSelection types;
    bool visibleOnly = false;
    std::vector<CommandCriterion> commands;
    std::vector<std::string> subtypes;
    std::vector<LabelCriterion> labels;
    std::vector<InstanceCriterion> instances;

    std::optional<IndexChange> index;
    bool deletes = false;
    std::optional<GraphChange> graph;  ///< nothing also for a bare `<modifyGraph`
    std::optional<ObjectChange> object;
    std::optional<TableChange> table;
    std::vector<CellsChange> cells;  ///< in their order
    std::optional<TextChange> text;

    bool operator==(const ModifyGroup&) const = default;
};

struct ModifyRequest {
    std::string documentName;  ///< `*` for the active document, empty for every open one
    bool debug = false;
    std::vector<ModifyGroup> groups;

    [[nodiscard]] bool namesActive() const { return documentName == "*"; }
    [[nodiscard]] bool namesAll() const { return documentName.empty(); }
    bool operator==(const ModifyRequest&) const = default;
};

}  // namespace vexa::frontend
