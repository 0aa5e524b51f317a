// From the plan of an export to what stands on the pages of a text document.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "frontend/export/exporter.h"
#include "frontend/export/office/office_pictures.h"
#include "frontend/export/word/word_content.h"

namespace vexa::frontend {

class ContentBuilder {
  public:
    /// `task.request.doc` is there.
    ContentBuilder(const ExportTask& task, const WordPage& page, WordWriter& writer);

    /// Gives the writer one piece after the other; false when the export shall end.
    [[nodiscard]] bool build();

  private:
    void addItem(const ExportedItem& item);
    void addHeading(const ExportedItem& item, std::string_view text, const tables::CellStyle& own);
    void addText(WordRole role, std::string_view text, const tables::CellStyle& own = {});
    void addLog(std::string_view text);
    void addNotes(const NotesContent& notes);
    void addTable(const ExportedItem& item, const tables::Table& table);
    void addGrid(const ExportedItem& item, const tables::TableGrid& grid);
    void addOver(const tables::TableGrid& grid);
    void addParts(const ExportedItem& item, const tables::TableGrid& grid);
    void addUnder(const tables::TableGrid& grid);
    void addPicture(const ExportedItem& item);
    /// So that it fits onto a page.
    [[nodiscard]] double pictureScale(const ExportedItem& item) const;
    void addContents();
    void startSection();
    [[nodiscard]] bool takeBreak();
    void put(WordParagraph paragraph);
    void putGap();

    const ExportTask& task_;
    const DocExport& request_;
    const WordPage& page_;
    WordWriter& writer_;
    OfficePictures pictures_;
    std::vector<const PageTitleContent*> titles_;  // page titles that nothing follows yet
    bool hasBegun_ = false;                        // the writer has its first section
    bool isPageNew_ = true;                        // nothing stands on the page yet
    bool breaksPage_ = false;                      // the next paragraph begins a page
};

/// The number by which an entry of the contents leads to a heading.
[[nodiscard]] inline std::size_t bookmarkOf(const ExportedItem& item) { return item.number; }

}  // namespace vexa::frontend
