// Text on slides: its runs and paragraphs as XML, and how much of it a slide takes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "backend/tables/model/table_look.h"
#include "frontend/package/xml_writer.h"

namespace vexa::frontend {

/// What a run of text says of itself; the rest comes from the place that it stands in.
struct SlideRunStyle {
    tables::CellStyle style;  ///< its background is the place's
    bool raised = false;      ///< the mark of a footnote

    bool operator==(const SlideRunStyle&) const = default;
};

/// A line without the carriage return that some systems end lines with.
[[nodiscard]] std::string_view withoutReturn(std::string_view line);

/// How a text looks of which everything is set.
[[nodiscard]] SlideRunStyle runStyleOf(const tables::AreaLook& look, double scale = 1);

/// One piece of a paragraph.
struct SlideRun {
    std::string_view text;
    SlideRunStyle style;
};

struct SlideParagraph {
    std::vector<SlideRun> runs;
    tables::HorizontalAlign align = tables::HorizontalAlign::mixed;  ///< `mixed`: the place's
    int level = 0;                                                   ///< how far it is set in, up to 8
    bool heads = false;                                              ///< stands apart from what is above it
};

/// Of XML: no program opens slides with so much on them. Where there would be more, the rest of a text is
/// left out, and as many blanks as make it too much stand in its place.
inline constexpr std::size_t mostSlideBytes = std::size_t{32} << 20;

/// Whether `text` would be too much; its place is filled then.
[[nodiscard]] bool isTooMuch(XmlWriter& xml, std::string_view text);

/// Writes texts in one language.
class SlideText {
  public:
    explicit SlideText(std::string language) : language_(std::move(language)) {}

    /// `a:rPr`, or another element of that content.
    void properties(XmlWriter& xml, std::string_view element, const SlideRunStyle& style) const;
    /// A run. A line end in it breaks the line.
    void run(XmlWriter& xml, const SlideRun& run) const;
    /// `a:p`; where it has no text, an empty line as high as `empty` says.
    void paragraph(XmlWriter& xml, const SlideParagraph& paragraph, const SlideRunStyle& empty = {}) const;

  private:
    std::string language_;
};

/// A text in pieces that take at most so many lines each, in a column of that width: cut between lines, each
/// with as many of its own line ends as it had. Never empty. `first` is what the first piece has room for.
struct TextRoom {
    double width = 0;  ///< points
    std::size_t lines = 1;
    std::size_t first = 1;
};
[[nodiscard]] std::vector<std::string_view> cutText(std::string_view text, std::string_view font, double size,
                                                    bool bold, const TextRoom& room);

}  // namespace vexa::frontend
