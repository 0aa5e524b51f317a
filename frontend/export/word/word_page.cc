#include "frontend/export/word/word_page.h"

#include <algorithm>

namespace vexa::frontend {

namespace {

constexpr double largestSide = 22 * kPointsOfInch;
constexpr double smallestSide = 0.5 * kPointsOfInch;
/// What is left for the text of a side at least.
constexpr double smallestText = 0.3;

void makeRoom(double side, double& first, double& second) {
    const double most = side * (1 - smallestText);
    if (first + second <= most) return;
    const double scale = most / (first + second);
    first *= scale;
    second *= scale;
}

}  // namespace

WordPage wordPageOf(const DocExport& request, bool& isChanged) {
    WordPage page{request.page, request.margins};
    page.paper.width = std::clamp(page.paper.width, smallestSide, largestSide);
    page.paper.height = std::clamp(page.paper.height, smallestSide, largestSide);
    makeRoom(page.paper.width, page.margins.left, page.margins.right);
    makeRoom(page.paper.height, page.margins.top, page.margins.bottom);
    isChanged = page.paper != request.page || page.margins != request.margins;
    return page;
}

}  // namespace vexa::frontend
