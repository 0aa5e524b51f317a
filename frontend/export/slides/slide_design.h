// Where things stand on the slides of one export: the size of the slides, and the places within their
// margins.
#pragma once

#include "frontend/export/export_report.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

/// Points from the upper left corner of the slide.
struct SlideBox {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

struct SlideDesign {
    Extent slide;
    SlideBox title;
    SlideBox content;  ///< below the title; all within the margins where slides have none
    SlideBox section;  ///< the title of a section
    SlideBox footer;
    SlideBox number;  ///< of the slide
    bool titles = true;
};

/// Sizes of fonts that no item sets, points.
inline constexpr double slideTitleSize = 24;
inline constexpr double slideTextSize = 16;
inline constexpr double slideLogSize = 11;
inline constexpr double slideFooterSize = 10;
/// What stands over and under tables is at least so far from them.
inline constexpr double slideGap = 6;

/// A size that the format cannot have, and margins that leave no room, are changed, with a note.
[[nodiscard]] SlideDesign designSlides(const PptExport& request, ExportReport& report);

}  // namespace vexa::frontend
