// One item of a viewer document: what stands in the outline and what it shows. Every text is UTF-8.
//
// What is large (tables, pictures, grids) is shared and immutable: changing an item exchanges a pointer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "backend/tables/model/flat_table.h"
#include "backend/tables/model/table.h"

namespace vexa::frontend {

/// The enumerators stand in the order of the alternatives of `ItemContent`.
enum class ItemType : std::uint8_t {
    header,     ///< holds other items: one run of a command, or a section
    heading,    ///< a heading that is shown on the page
    table,      ///< a pivot table with its data model
    chart,      ///< a picture
    text,       ///< a text that the user or a command wrote
    log,        ///< what a run echoed, and its messages of level 1
    warning,    ///< a message of level 2 or above
    notes,      ///< the notes of a run
    pageTitle,  ///< a line at the top of each page, from its place on
    model,      ///< several views, each an item, one of them shown
    tree,       ///< a tree diagram
    grid,       ///< a table without its data model
    unknown     ///< of a later version: kept as it came
};
inline constexpr std::size_t itemTypeCount = 13;

/// The word for each type wherever it is written, in the order of the enumerators. The last one stands for no
/// item in particular: an unknown item has a word of its own.
inline constexpr std::array<std::string_view, itemTypeCount> itemTypeWords{
    "header", "heading",   "table", "chart", "text", "log",    "warning",
    "notes",  "pageTitle", "model", "tree",  "grid", "unknown"};

/// The type of a word; `unknown` for every word that is none of a known type.
[[nodiscard]] ItemType itemTypeOf(std::string_view word);

/// Whether items of the type can have others under them: headers, models (their views), and what a later
/// version may have put under an item that is unknown here.
[[nodiscard]] constexpr bool holdsItems(ItemType type) {
    return type == ItemType::header || type == ItemType::model || type == ItemType::unknown;
}

struct HeaderContent {
    bool operator==(const HeaderContent&) const = default;
};

struct StyledText {
    std::string text;
    tables::CellStyle style;  ///< what is not set is the reader's default

    bool operator==(const StyledText&) const = default;
};
struct HeadingContent : StyledText {};
struct TextContent : StyledText {};
struct PageTitleContent : StyledText {};

struct LogContent {
    std::string text;

    bool operator==(const LogContent&) const = default;
};

struct WarningContent {
    int level = 2;  ///< 2 a warning, 3 and above an error
    std::string text;

    bool operator==(const WarningContent&) const = default;
};

struct NoteLine {
    int level = 0;
    std::string label;
    std::string value;

    bool operator==(const NoteLine&) const = default;
};

struct NotesContent {
    std::vector<NoteLine> lines;

    bool operator==(const NotesContent&) const = default;
};

struct TableContent {
    tables::Table table;

    bool operator==(const TableContent&) const = default;
};

/// Never null.
struct GridContent {
    std::shared_ptr<const tables::FlatTable> grid;

    bool operator==(const GridContent& other) const { return grid == other.grid || *grid == *other.grid; }
};

enum class PictureForm : std::uint8_t { svg, png };

/// A picture as it came.
struct Picture {
    PictureForm form = PictureForm::svg;
    std::string bytes;
    double width = 0;  ///< its natural size in points: an SVG's own, a PNG's pixels at 96 an inch
    double height = 0;
    std::uint64_t packedBytes = 0;  ///< that it took in the file that it came from; 0 where it came from none

    /// Where a picture came from makes no difference.
    bool operator==(const Picture& other) const {
        return form == other.form && bytes == other.bytes && width == other.width && height == other.height;
    }
};

/// A picture of a document, and what is applied to it when it is shown. `picture` is never null.
struct ShownPicture {
    std::shared_ptr<const Picture> picture;
    std::string alternativeText;
    std::vector<std::string> templates;  ///< `<template>` texts, in their order
    std::string styleSheet;              ///< the name of a `.css` file of `Looks`; empty for none

    bool operator==(const ShownPicture& other) const;
};
struct ChartContent : ShownPicture {};
struct TreeContent : ShownPicture {};

/// Its views are the items under it.
struct ModelContent {
    std::size_t shown = 0;  ///< index of the view that is shown, from 0
    std::optional<tables::LayerPrinting> viewPrinting;

    bool operator==(const ModelContent&) const = default;
};

/// An item that this version does not know. `raw` is what a document file or a JSON text said of it.
struct UnknownContent {
    std::string type;
    std::shared_ptr<const std::string> raw;  ///< never null
    /// Not 0 when a file said that this version of its format is needed to read the item. The type may be a
    /// known one then.
    int neededVersion = 0;

    bool operator==(const UnknownContent& other) const {
        return type == other.type && neededVersion == other.neededVersion && *raw == *other.raw;
    }
};

using ItemContent = std::variant<HeaderContent, HeadingContent, TableContent, ChartContent, TextContent,
                                 LogContent, WarningContent, NotesContent, PageTitleContent, ModelContent,
                                 TreeContent, GridContent, UnknownContent>;
static_assert(std::variant_size_v<ItemContent> == itemTypeCount);

struct Item {
    std::string label;  ///< in the outline; empty: see `shownLabel`
    std::string
        command;  ///< the command that produced it, "OUTPUT COMMENT"; empty where only its run has one
    std::string subtype;  ///< mostly of a table
    bool visible = true;  ///< a hidden header hides what stands under it
    bool pageBreakBefore = false;
    std::optional<double> width;  ///< points; nothing for the natural size
    std::optional<double> height;
    ItemContent content;

    [[nodiscard]] ItemType type() const { return static_cast<ItemType>(content.index()); }

    bool operator==(const Item&) const = default;
};

/// The word of the item's type; an unknown item's own.
[[nodiscard]] std::string_view typeWord(const Item& item);

/// The label, else the title of a table or grid, else the command, else the type's word.
[[nodiscard]] std::string shownLabel(const Item& item);

/// The label of a line of notes as it stands before the value: with a colon and a blank where there are both.
[[nodiscard]] std::string labelBeforeValue(const NoteLine& line);

/// The size that an item is shown in, in points: its own, else the natural one of its picture. One side that
/// is set alone keeps the proportion. Nothing where that does not tell both sides, as for most types.
struct ItemSize {
    double width = 0;
    double height = 0;
};
[[nodiscard]] std::optional<ItemSize> shownSize(const Item& item);

}  // namespace vexa::frontend
