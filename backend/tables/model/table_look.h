// A look: how the areas of a table are drawn where nothing of the table's own says otherwise. Shared by many
// tables.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace vexa::tables {

/// Red, green, blue: 0xRRGGBB.
struct Color {
    std::uint32_t rgb = 0;

    bool operator==(const Color&) const = default;
};

enum class Area : std::uint8_t { title, caption, corner, rowLabels, columnLabels, data, footnotes, layers };
inline constexpr std::size_t areaCount = 8;

/// `mixed`: numbers right, texts left.
enum class HorizontalAlign : std::uint8_t { mixed, left, center, right };
enum class VerticalAlign : std::uint8_t { top, center, bottom };

/// What is set of a text's style; what is not set comes from further out (area, look).
struct CellStyle {
    std::optional<bool> bold;
    std::optional<bool> italic;
    std::optional<bool> underline;
    std::string font;            ///< family name; empty when not set
    std::optional<double> size;  ///< points
    std::optional<Color> color;
    std::optional<Color> background;

    [[nodiscard]] bool isEmpty() const { return *this == CellStyle{}; }
    /// Sets what `over` sets.
    void overlay(const CellStyle& over);

    bool operator==(const CellStyle&) const = default;
};

/// How one area looks. Everything is set.
struct AreaLook {
    std::string font = "sans-serif";
    double size = 9;  ///< points
    bool bold = false;
    bool italic = false;
    bool underline = false;
    Color color;
    std::optional<Color> background;  ///< nothing: that of the page
    HorizontalAlign horizontal = HorizontalAlign::mixed;
    VerticalAlign vertical = VerticalAlign::top;
    /// Inside a cell, points.
    double marginLeft = 4;
    double marginRight = 4;
    double marginTop = 1;
    double marginBottom = 1;

    bool operator==(const AreaLook&) const = default;
};

enum class LineStyle : std::uint8_t { none, thin, medium, thick, twofold, dashed, dotted };

struct BorderLine {
    LineStyle style = LineStyle::none;
    Color color;

    bool operator==(const BorderLine&) const = default;
};

/// Where lines stand. Title, caption and footnotes stand outside all of them.
enum class Border : std::uint8_t {
    top,            ///< over the whole table
    bottom,         ///< under it
    left,           ///< left of it
    right,          ///< right of it
    belowHeader,    ///< between the column labels and the data
    besideLabels,   ///< between the row labels and the data
    headerRows,     ///< between the levels of column labels, under a label that spans several columns
    headerColumns,  ///< between column labels beside each other
    labelRows,      ///< between row labels below each other
    labelColumns,   ///< between the levels of row labels
    dataRows,       ///< between rows of data
    dataColumns,    ///< between columns of data
    groupRows,      ///< over the first row of a new outermost row label, labels and data
    groupColumns    ///< left of the first column of a new outermost column label, labels and data
};
inline constexpr std::size_t borderCount = 14;

/// Every second band of so many rows has other colours. Counted over the rows of the data.
struct RowBanding {
    std::uint32_t rows = 0;  ///< 0: no bands
    std::optional<Color> background;
    std::optional<Color> color;
    bool labels = false;  ///< row labels too

    bool operator==(const RowBanding&) const = default;
};

struct TableLook {
    std::string name;    ///< as a user names it; empty for one without a name
    std::string source;  ///< its XML where it came as such and not by its name
    std::array<AreaLook, areaCount> areas;
    std::array<BorderLine, borderCount> borders;
    RowBanding banding;
    std::optional<double> minColumnWidth;  ///< of data columns, points
    std::optional<double> maxColumnWidth;
    std::optional<double> maxLabelWidth;  ///< of columns of row labels, points

    [[nodiscard]] const AreaLook& area(Area which) const { return areas[static_cast<std::size_t>(which)]; }
    [[nodiscard]] AreaLook& area(Area which) { return areas[static_cast<std::size_t>(which)]; }
    [[nodiscard]] const BorderLine& border(Border which) const {
        return borders[static_cast<std::size_t>(which)];
    }
    [[nodiscard]] BorderLine& border(Border which) { return borders[static_cast<std::size_t>(which)]; }

    bool operator==(const TableLook&) const = default;
};

/// The look of a table that names none: never null, the same object every time.
[[nodiscard]] const std::shared_ptr<const TableLook>& plainLook();

}  // namespace vexa::tables
