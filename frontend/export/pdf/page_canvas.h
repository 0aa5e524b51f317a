// What stands on one page. Measures are points from the page's upper left corner, downwards; texts stand on
// their base line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "backend/tables/model/table_look.h"
#include "frontend/export/pdf/pdf_fonts.h"
#include "frontend/export/pdf/shaped_text.h"

namespace vexa::frontend::pdf {

struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double right() const { return left + width; }
    [[nodiscard]] double bottom() const { return top + height; }
};

class PageCanvas {
  public:
    PageCanvas(PdfFonts& fonts, double pageHeight) : fonts_(fonts), pageHeight_(pageHeight) {}

    /// Content that belongs to an element of the structure, by its number on the page.
    void beginContent(std::string_view type, std::size_t number);
    /// Content that is none: lines, grounds, what is repeated. `kind` is "Layout",
    /// "Pagination/Subtype/Header".
    void beginArtifact(std::string_view kind);
    void end() { content_ += "EMC\n"; }

    void fill(const Box& box, tables::Color color);
    /// A line whose middle goes from one point to the other.
    void line(double fromX, double fromY, double toX, double toY, const tables::BorderLine& style);
    void text(const ShapedLine& line, double size, tables::Color color, double x, double baseline);
    /// Draws a picture of the resources, `width` by `height` points large, into the box.
    void picture(const std::string& name, double width, double height, const Box& box);

    /// Gives the page's content and begins the next page.
    [[nodiscard]] std::string take();

  private:
    void setFill(tables::Color color);
    void setStroke(tables::Color color);
    void showRun(const ShapedRun& run, double size, double x, double y, bool isFirst);
    void strokeLine(double fromX, double fromY, double toX, double toY, double width,
                    std::string_view dashes);

    PdfFonts& fonts_;
    double pageHeight_;
    std::string content_;
    // What the reader of the page has in mind at this place.
    std::uint32_t fillColor_ = 0;
    std::uint32_t strokeColor_ = 0;
    const std::string* font_ = nullptr;
    double size_ = 0;
};

/// How thick a line is drawn, all of it.
[[nodiscard]] double thicknessOf(tables::LineStyle style);

}  // namespace vexa::frontend::pdf
