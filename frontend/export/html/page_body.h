// The items of an export as the body of an HTML page: what HTML and REPORT have in common.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "frontend/export/exporter.h"
#include "frontend/export/html/style_classes.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

/// Puts pictures into a page: inline, or as files beside it.
class PicturePlacer {
  public:
    virtual ~PicturePlacer() = default;
    /// Appends an element that shows the picture of `item`; `id` is unlike that of every other one of the
    /// page.
    virtual void append(std::string& html, const ExportedItem& item, const std::string& id) = 0;
};

struct PageBodyOptions {
    bool notesAndCaptions = true;
    bool styling = true;             ///< false: no classes, no style attributes
    bool restyle = false;            ///< fonts, sizes, colours and lines are left to the page
    bool interactiveLayers = false;  ///< every layer, with a list for each layer dimension
    std::size_t firstHeading = 1;    ///< the level of headings on the top level
};

/// A heading of the page's outline.
struct PageHeading {
    std::string id;
    std::size_t depth = 0;
    std::string text;
};

class PageBody {
  public:
    PageBody(const ExportTask& task, const PageBodyOptions& options, PicturePlacer& pictures);

    /// Appends one item after the other; false when the export shall end.
    [[nodiscard]] bool append(PackedText& page);

    /// Of the items written: their classes, the headers and titles in their order, and whether a list of
    /// layers is there.
    [[nodiscard]] const std::string& rules() const { return classes_.rules(); }
    [[nodiscard]] const std::vector<PageHeading>& headings() const { return headings_; }
    [[nodiscard]] bool hasLayerLists() const { return hasLayerLists_; }

  private:
    void appendItem(std::string& html, const ExportedItem& item);
    void appendHeading(std::string& html, const ExportedItem& item, const std::string& text,
                       std::string_view style);
    void appendStyled(std::string& html, std::string_view element, std::string_view kind,
                      const StyledText& text);
    void appendTableItem(std::string& html, const ExportedItem& item);
    void appendLayers(std::string& html, const ExportedItem& item, const tables::Table& table);
    void appendLayerLists(std::string& html, const tables::Table& table);
    void appendGrid(std::string& html, const tables::TableGrid& grid, const std::string& id);
    void appendNotes(std::string& html, const NotesContent& notes);
    void appendPicture(std::string& html, const ExportedItem& item);
    [[nodiscard]] std::string classAttribute(std::string_view kind) const;

    const ExportTask& task_;
    PageBodyOptions options_;
    PicturePlacer& pictures_;
    StyleClasses classes_;
    TextTaker take_;  // away what is written
    std::vector<PageHeading> headings_;
    bool hasLayerLists_ = false;
};

}  // namespace vexa::frontend
