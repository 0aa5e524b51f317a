// From letters with their places to the operators that show them.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "frontend/export/pdf/shaped_text.h"

namespace vexa::frontend::pdf {

/// A letter of a font. Measures are thousandths of the font's size. Letters that follow each other and have
/// the same `textBegin` stand for one piece of text together.
struct PlacedGlyph {
    hb_codepoint_t id = 0;
    bool isShown = true;     ///< false for what only takes room
    bool isMissing = false;  ///< the font has none, and no other one either
    double advance = 0;
    double x = 0;  ///< from where it would stand
    double y = 0;  ///< upwards
    std::size_t textBegin = 0;
    std::size_t textEnd = 0;
};

class RunWriter {
  public:
    /// With `preferNames`, runs that can be shown without the font being in the file are.
    RunWriter(PdfFonts& fonts, bool preferNames) : fonts_(fonts), preferNames_(preferNames) {}

    /// Appends a run behind what the line holds. `text` is what the letters' places refer to; a run that is
    /// read from right to left has its letters from left to right all the same.
    void append(const FontShape& font, double size, std::span<const PlacedGlyph> glyphs,
                std::string_view text, bool isBackward, ShapedLine& line);

    [[nodiscard]] bool prefersNames() const { return preferNames_; }
    /// Whether something had to be embedded although names are preferred.
    [[nodiscard]] bool hasEmbedded() const { return hasEmbedded_; }

  private:
    PdfFonts& fonts_;
    bool preferNames_;
    bool hasEmbedded_ = false;
};

}  // namespace vexa::frontend::pdf
