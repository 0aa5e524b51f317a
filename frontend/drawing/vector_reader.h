// Reads a picture as lines, areas and texts: it is drawn as a page of PDF, the one form that keeps texts, and
// the page is read. For what may take any time and memory it is called in a process apart.
#pragma once

#include <string>

#include "frontend/document/item.h"
#include "frontend/drawing/vector_target.h"

namespace vexa::frontend {

/// Hands what the picture of that size in points draws to the target. False, with the reason as shown, when
/// it cannot be drawn; the target may have got some of it then.
[[nodiscard]] bool readVectors(const Picture& picture, double width, double height, VectorTarget& target,
                               std::string& reason);

}  // namespace vexa::frontend
