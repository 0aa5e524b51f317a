// What stands on the pages of a text document, whatever its file's form: paragraphs, parts of tables,
// pictures, sections. One step makes it of an export's plan, and a writer for each form takes it, piece after
// piece.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/office/office_pictures.h"
#include "frontend/export/office/table_parts.h"
#include "frontend/export/word/word_page.h"

namespace vexa::frontend {

/// Levels of headings, and how many of them stand in the table of contents.
inline constexpr std::size_t deepestHeading = 9;
inline constexpr std::size_t deepestEntry = 3;
/// Half points of the headings from the first level on.
inline constexpr std::array<int, deepestHeading> headingSizes{32, 27, 23, 21, 20, 20, 20, 20, 20};

/// What a paragraph is; a document has a style for each.
enum class WordRole : std::uint8_t {
    text,
    heading,
    log,
    warning,
    notes,
    unknown,     ///< the label of an item that cannot be shown
    tableTitle,  ///< over a table
    tableLayer,  ///< over a table: its layer
    caption,     ///< under a table
    footnote,    ///< under a table
    pageTitle,   ///< in the head of a page
    gap,         ///< an empty line that keeps tables apart
    picture      ///< holds a picture
};

/// A piece of a paragraph. Line ends break lines.
struct WordRun {
    std::string_view text;
    bool raised = false;  ///< the mark of a footnote
    bool bold = false;    ///< beside what the paragraph is
};

/// Texts live as long as the call that gets the paragraph.
struct WordParagraph {
    WordRole role = WordRole::text;
    std::size_t level = 0;  ///< of a heading, from 1; of a line of notes, from 0
    std::vector<WordRun> runs;
    /// What is not as the role usually looks: set by the item, or by a table's look.
    tables::CellStyle own;
    tables::HorizontalAlign align = tables::HorizontalAlign::mixed;  ///< `mixed`: as the role usually is
    bool breaksPage = false;                                         ///< begins a page
    bool keepsWithNext = false;
    std::size_t bookmark = 0;  ///< not 0: what an entry of the contents leads to
};

/// A heading, as the table of contents has it.
struct WordEntry {
    std::size_t level = 1;
    std::string text;  ///< one line
    std::size_t bookmark = 0;
};

/// A picture with its size on the page.
struct WordPicture {
    OfficePicture picture;
    ItemSize size;     ///< points
    std::string name;  ///< one line
};

/// Whether the first letter that has a direction is written from right to left.
[[nodiscard]] bool isRightToLeft(std::string_view text);
[[nodiscard]] bool isRightToLeft(const WordParagraph& paragraph);

/// The name of a bookmark, as word processors name those of headings.
[[nodiscard]] std::string bookmarkName(std::size_t bookmark);

class WordWriter {
  public:
    virtual ~WordWriter() = default;

    /// The first section begins with `head` as the lines at the top of its pages. Called first, and once.
    virtual void begin(const std::vector<WordParagraph>& head) = 0;
    /// What comes stands on a new page, and on its pages, with another head.
    virtual void beginSection(const std::vector<WordParagraph>& head) = 0;
    /// A table of contents with these entries.
    virtual void contents(const std::vector<WordEntry>& entries) = 0;
    virtual void paragraph(const WordParagraph& paragraph) = 0;
    /// Never called twice without a paragraph between.
    virtual void table(const TablePart& part) = 0;
    /// `place` is the paragraph that holds it, without runs.
    virtual void picture(const WordParagraph& place, const WordPicture& picture) = 0;
    /// Whether the form has a place for an SVG beside its bitmap.
    [[nodiscard]] virtual bool holdsDrawings() const = 0;
};

}  // namespace vexa::frontend
