// Shapes texts: finds fonts for every letter, joins and places them, breaks lines. Each different text of a
// style is shaped once, as long as the results do not take too much memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frontend/export/pdf/run_writer.h"

namespace vexa::frontend::pdf {

struct TextStyle {
    std::string font = "sans-serif";
    double size = 9;  ///< points
    bool bold = false;
    bool italic = false;

    bool operator==(const TextStyle&) const = default;
};

/// Index into the styles of a `TextShaper`.
using TextStyleId = std::uint32_t;

class TextShaper {
  public:
    /// `language` is that of the texts. Without `embedFonts`, fonts are named where that suffices.
    TextShaper(PdfFonts& fonts, const std::string& language, bool embedFonts);
    ~TextShaper();
    TextShaper(const TextShaper&) = delete;
    TextShaper& operator=(const TextShaper&) = delete;

    [[nodiscard]] TextStyleId styleOf(const TextStyle& style);
    [[nodiscard]] const TextStyle& style(TextStyleId id) const { return styles_[id]; }

    /// The text in the lines that it has itself. Good until the next call of this or the next function.
    const ShapedText& lines(TextStyleId style, std::string_view text);
    /// The same, with lines of at most `width` points where the text can be broken at all.
    const ShapedText& wrapped(TextStyleId style, std::string_view text, double width);
    /// The width of the longest piece that lines are not broken in.
    [[nodiscard]] double longestPiece(TextStyleId style, std::string_view text);

    /// Characters that no installed font has.
    [[nodiscard]] const std::set<char32_t>& missing() const { return missing_; }
    [[nodiscard]] bool hasEmbeddedAllTheSame() const { return writer_.hasEmbedded(); }

  private:
    struct Pango;
    struct PlainFont;

    const ShapedText& shape(TextStyleId style, std::string_view text, double width);
    ShapedText shapePlain(TextStyleId style, std::string_view text);
    ShapedText shapeAny(TextStyleId style, const std::string& text, double width, bool breaksWords);
    void shapeParagraph(TextStyleId style, std::string_view text, ShapedText& shaped);
    void noteMissing(const FontShape& shape, std::string_view text);
    void forgetSome();

    PdfFonts& fonts_;
    RunWriter writer_;
    std::unique_ptr<Pango> pango_;
    std::vector<TextStyle> styles_;
    std::vector<std::unique_ptr<PlainFont>> plain_;  // by style
    std::unordered_map<std::string, ShapedText> known_;
    std::size_t knownLines_ = 0;
    std::string key_;
    std::size_t shaped_ = 0;  // texts so far
    std::vector<PlacedGlyph> glyphs_;
    std::set<char32_t> missing_;
};

/// UTF-8 that fonts can show: broken bytes and control characters replaced, line ends as `\n`, none at the
/// end.
[[nodiscard]] std::string showableText(std::string_view text);

}  // namespace vexa::frontend::pdf
