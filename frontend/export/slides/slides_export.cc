#include "frontend/export/slides/slides_export.h"

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "backend/strings/dictionary.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/picture_files.h"
#include "frontend/export/slides/slide_builder.h"
#include "frontend/export/slides/slide_deck.h"

namespace vexa::frontend {

namespace {

class SlidesWriter {
  public:
    SlidesWriter(const ExportTask& task, ByteSink sink)
        : task_(task),
          design_(designSlides(*task.request.ppt, task.report)),
          deck_(std::move(sink), design_,
                {documentTitle(task.document), officeLanguage(task.surroundings.language)}),
          builder_(task, design_, deck_) {}

    PackageResult write() {
        std::size_t done = 0;
        for (const ExportedItem& item : task_.plan.items) {
            writeItem(item);
            if (task_.report.failed()) return {};
            if (!task_.goesOn(++done)) return {};
        }
        // Page titles alone would stand nowhere.
        if (deck_.slides() == 0) {
            ItemSlides alone;
            alone.add({}, {});
            deck_.add(alone);
        }
        return deck_.finish();
    }

  private:
    void writeItem(const ExportedItem& item) {
        const ItemContent& content = item.item().content;
        const bool isPageTitle = std::holds_alternative<PageTitleContent>(content);
        if (isPageTitle) addPageTitle(std::get<PageTitleContent>(content));
        behindPageTitle_ = isPageTitle;
        ItemSlides slides = builder_.build(item);
        deck_.add(slides);
        if (deck_.hasTooMuch()) builder_.failForMuchText(item);
        if (deck_.bytes() > mostDeckBytes) {
            task_.report.fail(
                ExportError::other,
                composed(
                    "Item ^1 (^2) makes the presentation too large. Export less at a time, or in another format."_text,
                    {std::to_string(item.number), item.shortLabel()}));
        }
    }

    /// One that follows another is a further line of the same footer.
    void addPageTitle(const PageTitleContent& title) {
        if (!behindPageTitle_) footer_.clear();
        footer_.push_back({title.text, title.style});
        deck_.setFooter(footer_);
    }

    const ExportTask& task_;
    SlideDesign design_;
    SlideDeck deck_;
    SlideBuilder builder_;
    std::vector<FooterLine> footer_;
    bool behindPageTitle_ = false;
};

}  // namespace

PackageResult writeSlides(const ExportTask& task, ByteSink sink) {
    return SlidesWriter(task, std::move(sink)).write();
}

}  // namespace vexa::frontend
