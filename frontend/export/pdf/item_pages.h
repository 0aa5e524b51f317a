// The items of an export on pages, one below the other.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/drawings_ahead.h"
#include "frontend/export/exporter.h"
#include "frontend/export/pdf/bookmarks.h"
#include "frontend/export/pdf/page_flow.h"
#include "frontend/export/pdf/picture_forms.h"
#include "frontend/export/picture_styles.h"

namespace vexa::frontend::pdf {

class ItemPages {
  public:
    ItemPages(const ExportTask& task, PdfFile& file, TextShaper& shaper, StructureTree& structure,
              PageFlow& flow);

    /// Writes all items; false when the export shall end.
    [[nodiscard]] bool write();
    /// Of what was written: headings, tables and pictures.
    [[nodiscard]] const Bookmarks& bookmarks() const { return bookmarks_; }
    /// Pictures have texts, whose fonts are in the file.
    [[nodiscard]] bool picturesHoldFonts() const { return picturesHoldFonts_; }

  private:
    void writeItem(const ExportedItem& item);
    void writeHeading(const ExportedItem& item, const StyledText& text);
    void writePageTitle(const ExportedItem& item, const StyledText& title);
    void noteUnseenTitles();
    void writeParagraph(const ParagraphLook& look, std::string_view text);
    void writeWarning(const std::string& text);
    void writeNotes(const NotesContent& notes);
    void writeTableItem(const ExportedItem& item);
    void writeGrid(const ExportedItem& item, const tables::TableGrid& grid, bool isFirst);
    void writePicture(const ExportedItem& item);
    [[nodiscard]] std::unique_ptr<PageDrawing> beginDrawing(const ExportedItem& item);
    void writePlaceholder(const ExportedItem& item, const Box& box);

    const ExportTask& task_;
    PdfFile& file_;
    TextShaper& shaper_;
    StructureTree& structure_;
    PageFlow& flow_;
    PictureStyles styles_;
    DrawingsAhead<std::unique_ptr<PageDrawing>> drawings_;
    Bookmarks bookmarks_;
    std::size_t pictures_ = 0;
    bool picturesHoldFonts_ = false;
    bool followsTitle_ = false;
    std::vector<const ExportedItem*> titles_;  // those that pages have now
};

}  // namespace vexa::frontend::pdf
