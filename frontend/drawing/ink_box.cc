#include "frontend/drawing/ink_box.h"

#include <cmath>
#include <numeric>

namespace vexa::frontend {

void InkBox::restore() {
    if (saved_.empty()) return;
    clip_ = saved_.back();
    saved_.pop_back();
}

void InkBox::clip(const VectorPath& path, bool /*evenOdd*/) { clip_ = clip_.within(path.box()); }

void InkBox::fill(const VectorPath& path, bool /*evenOdd*/, VectorColor /*color*/) { take(path.box()); }

void InkBox::stroke(const VectorPath& path, const VectorLine& line, VectorColor /*color*/) {
    take(boxOfLine(path, line));
}

void InkBox::text(const VectorText& text) { take(boxOfText(text), true); }

void InkBox::bitmap(const VectorBox& place) { take(place); }

void InkBox::take(const VectorBox& box, bool isText) {
    const VectorBox shown = box.within(clip_);
    if (shown.isEmpty()) return;
    for (VectorBox* const each : {&box_, isText ? &box_ : &drawn_}) {
        each->take({shown.left, shown.top});
        each->take({shown.right, shown.bottom});
    }
}

VectorBox boxOfLine(const VectorPath& path, const VectorLine& line) {
    const VectorBox box = path.box();
    // Where two pieces of a line meet, it may stand out further than its half.
    const double more = line.width / 2 * (line.join == LineJoin::miter ? 2 : 1.5);
    return {box.left - more, box.top - more, box.right + more, box.bottom + more};
}

VectorBox boxOfText(const VectorText& text) {
    const double length = std::accumulate(text.advances.begin(), text.advances.end(), 0.0);
    const VectorPoint along{std::cos(text.angle), -std::sin(text.angle)};
    const VectorPoint up{-std::sin(text.angle), -std::cos(text.angle)};
    VectorBox box;
    for (const double distance : {-text.size / 4, length + text.size / 4}) {
        for (const double height : {-text.size * 0.4, text.size * 1.1}) {
            box.take({text.begin.x + along.x * distance + up.x * height,
                      text.begin.y + along.y * distance + up.y * height});
        }
    }
    return box;
}

}  // namespace vexa::frontend
