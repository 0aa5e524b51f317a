// Pictures as parts of a PDF file: vectors stay vectors, letters stay letters. What is drawn comes from
// outside, so it is drawn in a process of its own that has limits.
#pragma once

#include <cstddef>
#include <string>

#include "frontend/document/item.h"
#include "frontend/export/pdf/pdf_file.h"

namespace vexa::frontend::pdf {

struct PictureObject {
    PdfObject object = 0;     ///< 0 when it could not be drawn
    bool holdsFonts = false;  ///< it has texts, whose fonts are in the file
    std::string reason;       ///< why it could not be drawn, as shown
};

/// Writes `picture`, with `rules` applied to it (an SVG), as an object of that size in points that pages can
/// draw.
[[nodiscard]] PictureObject addPictureForm(PdfFile& file, const Picture& picture, const std::string& rules,
                                           const ItemSize& size);

}  // namespace vexa::frontend::pdf
