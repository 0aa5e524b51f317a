// Pictures of items as office documents hold them: a bitmap that every program shows, and beside it the SVG
// that newer ones show sharp.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "frontend/document/item.h"
#include "frontend/drawing/picture_drawing.h"
#include "frontend/export/drawings_ahead.h"
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
    /// How many times as large as the document says a picture is shown.
    using Scale = std::function<double(const ExportedItem&)>;

    /// Without `scale` pictures are shown as large as the document says.
    OfficePictures(const ExportPlan& plan, std::vector<std::string> styleFolders, ExportReport& report,
                   Scale scale = {});
    OfficePictures(const OfficePictures&) = delete;
    OfficePictures& operator=(const OfficePictures&) = delete;
    ~OfficePictures() = default;

    /// The picture of a chart or a tree. A PNG is copied; an SVG is drawn with two dots for each of its
    /// pixels as it is shown. What cannot be drawn has a frame with its alternative text; a build that cannot
    /// draw has an empty frame beside the SVG. Either is a note of the report. Counts the picture. Called in
    /// the order of the plan.
    [[nodiscard]] OfficePicture make(const ExportedItem& item);

  private:
    [[nodiscard]] std::unique_ptr<PendingDrawing> begin(const ExportedItem& item);
    void finish(PendingDrawing* drawing, OfficePicture& made, const ExportedItem& item);
    void finishPng(PendingDrawing* drawing, OfficePicture& made, const ExportedItem& item);
    void noteUnreadable(const ExportedItem& item, const std::string& why);

    ExportReport& report_;
    PictureStyles styles_;
    Scale scale_;
    DrawingsAhead<std::unique_ptr<PendingDrawing>> drawings_;
};

}  // namespace vexa::frontend
