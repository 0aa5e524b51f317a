// Fonts of a PDF file that are named instead of being in it.
#pragma once

#include "frontend/drawing/qpdf_library.h"

namespace vexa::frontend::pdf {

/// Takes the outlines out of all fonts of `file` that readers can replace by their own: those of Western
/// European letters. False when it has others, which stay.
[[nodiscard]] bool nameFonts(QPDF& file);

}  // namespace vexa::frontend::pdf
