// The pages, filled from top to bottom: begins a page where the last one is full, with its page title and its
// number.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/export/pdf/page_canvas.h"
#include "frontend/export/pdf/structure_tree.h"
#include "frontend/export/pdf/text_shaper.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend::pdf {

/// How a text outside of tables looks.
struct ParagraphLook {
    TextStyle style;
    tables::Color color;
    bool underline = false;
    std::optional<tables::Color> background;
    double indent = 0;  ///< points
    tables::HorizontalAlign align = tables::HorizontalAlign::left;
    double width = 0;  ///< within which it is aligned; 0 for that of the page
};

/// A place that links and bookmarks lead to.
struct PagePlace {
    PdfObject page = 0;
    double x = 0;
    double y = 0;  ///< from the page's upper edge
};

class PageFlow {
  public:
    /// `fontsObject` is what pages refer to as their fonts.
    PageFlow(PdfFile& file, StructureTree& structure, TextShaper& shaper, PdfFonts& fonts,
             PdfObject fontsObject);

    [[nodiscard]] double left() const { return margins_.left; }
    [[nodiscard]] double width() const { return page_.width - margins_.left - margins_.right; }
    [[nodiscard]] double bodyHeight() const { return page_.height - margins_.bottom - bodyTop(); }
    /// What is left of the page for what comes next, behind the headings that wait for it.
    [[nodiscard]] double rest() const;
    /// The same on a page that has nothing yet.
    [[nodiscard]] double freshRest() const { return bodyHeight() - waitingHeight(); }
    /// Nothing stands above the place that is reserved.
    [[nodiscard]] bool isAtTop() const { return y_ <= bodyTop() + 0.01; }
    /// The place that the next thing takes.
    [[nodiscard]] double y() const { return y_; }
    [[nodiscard]] PagePlace place() const { return {tagged_.number, left(), y_}; }

    /// Leaves room before what comes next, but not at the top of a page.
    void leaveSpace(double height) { space_ = std::max(space_, height); }
    /// Sees to it that a page is there and has room for `height` (as far as any page has), and writes the
    /// headings that wait. To be called before anything is drawn.
    void reserve(double height);
    void advance(double height) { y_ += height; }
    /// What comes next stands on a new page.
    void breakPage();
    /// `draw` writes something of that height, together with what comes next.
    void keepWithNext(double height, std::function<void()> draw);
    /// Writes the headings that wait although nothing comes.
    void writeWaiting() { reserve(0); }

    /// Writes a text line by line, as content of `element` (as an artifact without one).
    void write(const ParagraphLook& look, std::string_view text, StructureElement* element);
    /// The height that it takes; of a very long text, that of its beginning, which is more than a page.
    [[nodiscard]] double heightOf(const ParagraphLook& look, std::string_view text);

    /// A line at the top of each further page; several that follow each other stand one below the other.
    void addPageTitle(const ParagraphLook& look, const std::string& text, bool follows);
    /// Titles that no page has shown.
    [[nodiscard]] bool hasUnseenTitle() const;

    [[nodiscard]] PageCanvas& canvas() { return canvas_; }
    [[nodiscard]] TaggedPage& tagged() { return tagged_; }
    void beginContent(StructureElement& element);
    /// An area of the page that leads somewhere, which is said later: its number.
    [[nodiscard]] PdfObject addLink(const Box& box, StructureElement& element);
    void setLinkTarget(PdfObject link, const PagePlace& target, const std::string& text);
    void usePicture(const std::string& name, PdfObject object);

    /// Ends the last page; gives the root of the pages.
    [[nodiscard]] PdfObject finish();
    [[nodiscard]] std::string destination(const PagePlace& place) const;
    /// The box as files have it: "[left bottom right top]".
    [[nodiscard]] std::string rectangle(const Box& box) const;

  private:
    struct PageTitle {
        ParagraphLook look;
        std::string text;
        bool wasShown = false;
    };
    struct Waiting {
        double height;
        std::function<void()> draw;
    };
    [[nodiscard]] double bodyTop() const;
    [[nodiscard]] double waitingHeight() const;
    void beginPage();
    void endPage();
    void writeTitles();
    void writePageNumber();
    void fillGround(const ParagraphLook& look, double height);
    void writePiece(const ParagraphLook& look, std::string_view text, StructureElement* element,
                    bool isFirst);
    void writeLine(const ParagraphLook& look, const ShapedLine& line);

    PdfFile& file_;
    StructureTree& structure_;
    TextShaper& shaper_;
    Extent page_ = kA4;
    Margins margins_;
    PageCanvas canvas_;
    std::vector<PageTitle> titles_;
    double titleHeight_ = 0;
    std::vector<Waiting> waiting_;
    TaggedPage tagged_;
    bool isOpen_ = false;
    bool isEmpty_ = true;  // of the open page
    double y_ = 0;
    double space_ = 0;
    std::size_t pages_ = 0;
    PdfObject fontsObject_;
    PdfObject pagesRoot_;
    std::vector<std::pair<PdfObject, std::string>> nodes_;  // of the tree of pages, with their kids
    struct PendingLink {
        PdfObject number;
        std::string entries;
    };
    std::vector<PendingLink> links_;
    std::string annotations_;
    std::string pictures_;
};

}  // namespace vexa::frontend::pdf
