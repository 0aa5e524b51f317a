#include "frontend/drawing/vector_target.h"

#include <algorithm>
#include <cmath>

namespace vexa::frontend {

VectorMatrix VectorMatrix::then(const VectorMatrix& next) const {
    return {a * next.a + b * next.c, a * next.b + b * next.d,          c * next.a + d * next.c,
            c * next.b + d * next.d, e * next.a + f * next.c + next.e, e * next.b + f * next.d + next.f};
}

double VectorMatrix::scale() const { return std::sqrt(std::abs(a * d - b * c)); }

void VectorBox::take(VectorPoint point) {
    left = std::min(left, point.x);
    right = std::max(right, point.x);
    top = std::min(top, point.y);
    bottom = std::max(bottom, point.y);
}

VectorBox VectorBox::within(const VectorBox& other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
}

VectorBox VectorPath::box() const {
    VectorBox box;
    for (const PathPart& part : parts) {
        if (part.step == PathStep::close) continue;
        const std::size_t count = part.step == PathStep::curve ? 3 : 1;
        for (std::size_t i = 0; i < count; ++i) box.take(part.points[i]);
    }
    return box;
}

}  // namespace vexa::frontend
