// Text as letters of fonts in their places, ready to stand in the content of a page.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frontend/export/pdf/pdf_fonts.h"

namespace vexa::frontend::pdf {

/// A face as it is shown: slanted or thickened where the family has no such face.
struct FontShape {
    FontId id = 0;
    float slant = 0;
    bool isThickened = false;
};

/// Letters of one font. Measures are points.
struct ShapedRun {
    FontShape font;
    const FontSheet* sheet = nullptr;  ///< what shows it without the font being in the file
    float begin = 0;                   ///< from the beginning of the line
    std::string operators;
};

/// The place of a character that no font has.
struct MissingBox {
    float begin = 0;
    float width = 0;
};

struct ShapedLine {
    float width = 0;
    float ascent = 0;
    float descent = 0;
    std::vector<ShapedRun> runs;  ///< from left to right
    std::vector<MissingBox> missing;

    [[nodiscard]] float height() const { return ascent + descent; }
};

/// Never without a line.
struct ShapedText {
    std::vector<ShapedLine> lines;
    float width = 0;  ///< of the widest line
    float height = 0;
};

}  // namespace vexa::frontend::pdf
