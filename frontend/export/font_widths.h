// How wide texts are in print, without asking any font: by tables of the usual letters of sans-serif, serif
// and monospaced fonts. For columns and lines of files whose reader has the fonts, and lays out the texts
// himself.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexa::frontend {

/// Of a text that may have several lines, points.
struct TextExtent {
    double width = 0;  ///< of the widest line
    double word = 0;   ///< of the widest piece that no line is broken in
    std::size_t lines = 1;
};

/// The letters of one font in one size. Families that are known to be wider or narrower than others are
/// taken for what they are, an unknown one for a sans-serif font.
class FontWidths {
  public:
    /// `size` in points.
    FontWidths(std::string_view family, double size, bool bold);

    /// The text in one line, points. Control characters have no width.
    [[nodiscard]] double width(std::string_view text) const;
    /// The text with its own line ends.
    [[nodiscard]] TextExtent extent(std::string_view text) const;
    /// How many lines the text takes in a column of that width; a word that is wider takes several.
    [[nodiscard]] std::size_t linesIn(std::string_view text, double columnWidth) const;

  private:
    [[nodiscard]] std::uint32_t letter(std::string_view text, std::size_t& index) const;

    const std::array<std::uint16_t, 95>* table_;  // of U+0020 to U+007E, thousandths of the size
    double scale_;                                // points a thousandth
};

/// What kind of letters a family has: `sans-serif`, `serif` or `monospace`.
[[nodiscard]] std::string_view genericFamily(std::string_view family);

}  // namespace vexa::frontend
