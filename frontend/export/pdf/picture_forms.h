// Pictures as parts of a PDF file: vectors stay vectors, letters stay letters. What is drawn comes from
// outside, so it is drawn in a process of its own that has limits.
#pragma once

#include <cstddef>
#include <string>

#include "frontend/document/item.h"
#include "frontend/drawing/bounded_work.h"
#include "frontend/export/pdf/pdf_file.h"

namespace vexa::frontend::pdf {

struct PictureObject {
    PdfObject object = 0;     ///< 0 when it could not be drawn
    bool holdsFonts = false;  ///< it has texts, whose fonts are in the file
    std::string reason;       ///< why it could not be drawn, as shown
};

/// A picture that is being drawn as the page of a file of its own.
class PageDrawing {
  public:
    /// Begins to draw `picture`, which must live as long, with `rules` applied to it (an SVG), in that size
    /// in points. `sharesLittle` as in `DrawingOrder`.
    PageDrawing(const Picture& picture, std::string rules, const ItemSize& size, bool sharesLittle);

    /// Waits for the file; empty, with a reason as shown, where it cannot be drawn. Called once.
    [[nodiscard]] std::string finish(std::string& reason);

  private:
    [[nodiscard]] std::string draw() const;

    const Picture& picture_;
    std::string rules_;
    ItemSize size_;
    WorkApart work_;
};

/// Writes what was drawn as an object that pages can draw. With `namesFonts`, fonts that readers can replace
/// by their own are not in it.
[[nodiscard]] PictureObject addPictureForm(PdfFile& file, PageDrawing& drawing, bool namesFonts);

}  // namespace vexa::frontend::pdf
