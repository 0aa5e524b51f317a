// From one item to its slides.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/exporter.h"
#include "frontend/export/office/office_pictures.h"
#include "frontend/export/slides/slide_deck.h"
#include "frontend/export/slides/slide_tables.h"

namespace vexa::frontend {

class SlideBuilder {
  public:
    /// All three must live as long as the builder. Pictures go to the deck at once.
    SlideBuilder(const ExportTask& task, const SlideDesign& design, SlideDeck& deck);

    /// The slides of an item; none of a header, a model or a page title. What cannot be shown goes to the
    /// report, which fails where there are too many slides.
    [[nodiscard]] ItemSlides build(const ExportedItem& item);

    /// The report fails for an item that one slide cannot show.
    void failForMuchText(const ExportedItem& item) const;

  private:
    [[nodiscard]] SlideDraft draft(const ExportedItem& item, bool text) const;
    [[nodiscard]] static SlideDraft section(const StyledText& heading);
    void addText(ItemSlides& made, const ExportedItem& item, std::string_view text,
                 const tables::CellStyle& style) const;
    void addNotes(ItemSlides& made, const ExportedItem& item, const NotesContent& notes) const;
    void addPicture(ItemSlides& made, const ExportedItem& item);
    [[nodiscard]] double pictureScale(const ExportedItem& item) const;
    void addTable(ItemSlides& made, const ExportedItem& item, const tables::Table& table) const;
    void addGrid(ItemSlides& made, const ExportedItem& item, const tables::TableGrid& grid) const;
    void addPart(ItemSlides& made, const ExportedItem& item, const TablePart& part) const;
    void addRowless(ItemSlides& made, const ExportedItem& item, const tables::TableGrid& grid) const;
    [[nodiscard]] TableFit fitOf(const tables::TableGrid& grid) const;
    /// The grid as large as it can be on one slide; nothing when it stays as it is.
    [[nodiscard]] std::optional<tables::TableGrid> largerGrid(const tables::TableGrid& grid,
                                                              const TableFit& fit,
                                                              std::string_view label) const;
    [[nodiscard]] bool hasRoom(const ItemSlides& made, const ExportedItem& item) const;
    [[nodiscard]] SlideBox room() const;
    [[nodiscard]] double textSize(const tables::CellStyle& style) const;

    const ExportTask& task_;
    const SlideDesign& design_;
    SlideDeck& deck_;
    OfficePictures pictures_;
};

}  // namespace vexa::frontend
