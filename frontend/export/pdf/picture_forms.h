// Pictures as parts of a PDF file: vectors stay vectors, letters stay letters. What is drawn comes from
// outside, so it is drawn in a process of its own that has limits.
#pragma once

#include <cstddef>
#include <string>

#include "frontend/document/item.h"
#include "frontend/export/pdf/pdf_file.h"

namespace vexa::frontend::pdf {

/// Writes `picture`, with `rules` applied to it (an SVG), as an object of that size in points that pages can
/// draw. 0, with the reason as shown, when it cannot be drawn.
[[nodiscard]] PdfObject addPictureForm(PdfFile& file, const Picture& picture, const std::string& rules,
                                       const ItemSize& size, std::string& reason);

}  // namespace vexa::frontend::pdf
