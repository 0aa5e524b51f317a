// Pictures of items as office documents hold them: a bitmap that every program shows, and beside it the SVG
// that newer ones show sharp.
#pragma once

#include <string>
#include <vector>

#include "frontend/document/item.h"
#include "frontend/export/export_plan.h"
#include "frontend/export/export_report.h"
#include "frontend/export/picture_styles.h"

namespace vexa::frontend {

struct OfficePicture {
    std::string png;  ///< never empty: the picture, or a frame that stands for it
    std::string svg;  ///< with its rules applied; empty where there is none, or it cannot be read
    ItemSize size;    ///< points, as the document says
    std::string alternative;
};

class OfficePictures {
  public:
    OfficePictures(std::vector<std::string> styleFolders, ExportReport& report)
        : report_(report), styles_(std::move(styleFolders), report) {}

    /// The picture of a chart or a tree. A PNG is copied; an SVG is drawn with two dots for each of its
    /// pixels when it is shown `scale` times as large as the document says. What cannot be drawn has a frame
    /// with its alternative text; a build that cannot draw has an empty frame beside the SVG. Either is a
    /// note of the report. Counts the picture.
    [[nodiscard]] OfficePicture make(const ExportedItem& item, double scale = 1);

  private:
    void drawInto(OfficePicture& made, const ExportedItem& item, const std::string& rules, double scale);

    ExportReport& report_;
    PictureStyles styles_;
};

}  // namespace vexa::frontend
