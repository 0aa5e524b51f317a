// Dashes as pieces of a path, for forms whose readers do not know dashes of any length.
#pragma once

#include "frontend/drawing/vector_target.h"

namespace vexa::frontend {

/// The dashes of a line along the path: pieces of straight lines. The path itself where the line has none, or
/// would have more than anybody could see.
[[nodiscard]] VectorPath dashedPath(const VectorPath& path, const VectorLine& line);

}  // namespace vexa::frontend
