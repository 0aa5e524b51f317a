#include "frontend/export/slides/slide_design.h"

#include <algorithm>
#include <utility>

#include "backend/strings/dictionary.h"

namespace vexa::frontend {

namespace {

/// What the format takes: one inch to 56 inches.
constexpr double smallestSide = 72;
constexpr double largestSide = 56 * 72;
/// What margins leave at least.
constexpr double leastRoom = 36;
constexpr double titleHeight = 40;
constexpr double titleGap = 8;
constexpr double footerHeight = 26;
constexpr double numberWidth = 60;

Extent sizeOf(const PptExport& request, ExportReport& report) {
    const Extent size{std::clamp(request.slide.width, smallestSide, largestSide),
                      std::clamp(request.slide.height, smallestSide, largestSide)};
    if (!(size == request.slide)) {
        report.note(translated(
            "Slides are at least 1 and at most 56 inches wide and high: the size of the slides was changed."_text));
    }
    return size;
}

/// Makes two margins smaller, both alike, until there is room between them.
bool makeRoom(double side, double& one, double& other) {
    const double most = side - leastRoom;
    if (one + other <= most) return false;
    const double part = most / (one + other);
    one *= part;
    other *= part;
    return true;
}

Margins marginsOf(const PptExport& request, const Extent& slide, ExportReport& report) {
    Margins margins = request.margins;
    const bool narrow = makeRoom(slide.width, margins.left, margins.right);
    const bool low = makeRoom(slide.height, margins.top, margins.bottom);
    if (narrow || low) {
        report.note(translated("The margins leave no room on the slides: they were made smaller."_text));
    }
    return margins;
}

}  // namespace

SlideDesign designSlides(const PptExport& request, ExportReport& report) {
    SlideDesign design;
    design.slide = sizeOf(request, report);
    const Margins margins = marginsOf(request, design.slide, report);
    const double width = design.slide.width - margins.left - margins.right;
    double height = design.slide.height - margins.top - margins.bottom;
    // The footer stands in the margin where that is wide enough.
    const double below = std::max(margins.bottom, std::min(footerHeight, height / 4));
    height -= below - margins.bottom;
    design.titles = request.slideTitles;
    const double titled = design.titles ? std::min(titleHeight, height / 3) : 0;
    const double taken = design.titles ? std::min(titled + titleGap, height / 2) : 0;
    design.title = {margins.left, margins.top, width, std::min(titleHeight, height / 3)};
    design.content = {margins.left, margins.top + taken, width, height - taken};
    design.section = {margins.left, margins.top + height / 4, width, height / 2};
    const double footerTop = design.slide.height - below + (below - std::min(footerHeight, below)) / 2;
    const double numbered = std::min(numberWidth, width / 4);
    design.footer = {margins.left, footerTop, width - numbered, std::min(footerHeight, below)};
    design.number = {margins.left + width - numbered, footerTop, numbered, std::min(footerHeight, below)};
    return design;
}

}  // namespace vexa::frontend
