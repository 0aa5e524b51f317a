// The same picture in fewer colours.
#pragma once

#include <cstddef>

#include "frontend/drawing/bitmap.h"

namespace vexa::frontend {

/// The bitmap in `most` colours at most, at least one: those that differ least from what they stand for. An
/// even area keeps its colour. What is transparent is lost.
[[nodiscard]] Bitmap inFewerColors(const Bitmap& bitmap, std::size_t most);

}  // namespace vexa::frontend
