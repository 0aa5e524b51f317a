// How much the drawing of a picture may take.
#pragma once

#include "frontend/document/item.h"
#include "frontend/drawing/bounded_work.h"

namespace vexa::frontend {

/// The limits for drawing `picture` with so many pixels; 0 for vectors. `sharesLittle`: it is one of those of
/// a small document, which together, with the program, take no more memory than is said of such.
[[nodiscard]] WorkLimits limitsForPicture(const Picture& picture, double pixels, bool sharesLittle);

}  // namespace vexa::frontend
