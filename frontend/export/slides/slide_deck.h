// A presentation as it grows: slides one after the other, and at the end what refers to all of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/export/office/office_package.h"
#include "frontend/export/slides/slide_design.h"
#include "frontend/export/slides/slide_parts.h"
#include "frontend/export/slides/slide_text.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

/// A slide before it has its number.
struct SlideDraft {
    SlideLayout layout = SlideLayout::blank;
    std::string_view title;  ///< shown where the layout has one; lives as long as the document
    tables::CellStyle titleStyle;
    std::vector<std::string> pictures;  ///< parts: the first one's relation is `firstPictureRelation`
    std::string notes;                  ///< of the speaker; line ends divide paragraphs
};

/// The slides of one item, and for each the XML of what stands below the title: packed where it is much.
struct ItemSlides {
    void add(SlideDraft slide, std::string below) {
        slides.push_back(std::move(slide));
        shapes.takeAll(below);
    }

    std::vector<SlideDraft> slides;
    PackedText shapes;
};

/// Of all slides, unpacked: many slides with a long title would come to so much.
inline constexpr std::uint64_t mostDeckBytes = std::uint64_t{4} << 30;

/// Numbers of shapes on a slide that are free for what stands below the title.
inline constexpr int firstShape = 5;
/// The number of the relation to the first picture of a slide.
inline constexpr int firstPictureRelation = 2;

/// A line of text and how it looks.
struct FooterLine {
    std::string text;
    tables::CellStyle style;
};

class SlideDeck {
  public:
    SlideDeck(ByteSink sink, const SlideDesign& design, const OfficeProperties& properties);

    [[nodiscard]] const SlideText& text() const { return text_; }
    /// The part of a picture, see `OfficePackage::addPicture`.
    std::string addPicture(std::string_view bytes, std::string_view extension) {
        return package_.addPicture(bytes, extension);
    }
    /// What stands at the foot of the slides that come.
    void setFooter(std::vector<FooterLine> footer) { footer_ = std::move(footer); }
    /// Adds the slides of one item. Where there are several, their titles are numbered from the second on:
    /// "Report (2/3)".
    void add(ItemSlides& drafts);
    [[nodiscard]] std::size_t slides() const { return slides_; }
    /// Whether a slide, or the notes of one, came to more than `mostSlideBytes`.
    [[nodiscard]] bool hasTooMuch() const { return hasTooMuch_; }
    /// Bytes of all slides, unpacked.
    [[nodiscard]] std::uint64_t bytes() const { return bytes_; }
    /// Adds what is left, and ends the package; the first failure of all.
    PackageResult finish();

  private:
    void addSlide(const SlideDraft& draft, const std::string& title, std::string_view shapes);
    void addNotes(const std::string& slide, const std::string& notes);
    void writeTitle(XmlWriter& xml, const SlideDraft& draft, const std::string& title) const;
    void writeFooter(XmlWriter& xml) const;
    void count(const XmlWriter& xml);
    void addDesign();
    [[nodiscard]] std::string presentation();

    const SlideDesign& design_;
    std::string language_;
    SlideText text_;
    OfficePackage package_;
    std::vector<FooterLine> footer_;
    std::vector<std::string> relations_;  // of the slides
    std::size_t slides_ = 0;
    bool hasNotes_ = false;
    bool hasTooMuch_ = false;
    std::uint64_t bytes_ = 0;
};

}  // namespace vexa::frontend
