#include "frontend/export/slides/slide_deck.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frontend/export/font_widths.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/slides/slide_xml.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view slideType = "presentationml.slide+xml";
constexpr std::int64_t firstSlideId = 256;
constexpr std::int64_t masterId = 2'147'483'648;
/// Sizes that a title is shown in, the first that leaves it two lines at most, in its box.
constexpr std::array<double, 4> titleSizes{slideTitleSize, 18, 14, 10};
constexpr double titleLine = 1.2;

std::string numbered(std::string_view folder, std::string_view name, std::size_t number) {
    return std::string("/ppt/").append(folder).append("/").append(name).append(std::to_string(number)) +
           ".xml";
}

std::string presentationType(std::string_view part) {
    return officeContentType(std::string("presentationml.").append(part).append("+xml"));
}

/// A part that holds nothing but its root.
std::string emptyPart(std::string_view root) {
    XmlWriter xml(officeXml);
    beginPresentationPart(xml, root);
    xml.end();
    return xml.take();
}

/// Tables name this style, which draws nothing of its own.
std::string tableStyles() {
    XmlWriter xml(officeXml);
    xml.begin("a:tblStyleLst").attribute("xmlns:a", officeDrawingSpace);
    xml.attribute("def", "{2D5ABB26-0587-4C30-8999-92F81FD0307C}").end();
    return xml.take();
}

double titleSizeOf(const std::string& title, const SlideBox& box) {
    for (const double size : titleSizes) {
        const std::size_t lines = FontWidths("Arial", size, false).linesIn(title, box.width);
        if (static_cast<double>(lines) * size * titleLine <= box.height) return size;
    }
    return titleSizes.back();
}

void writeSize(XmlWriter& xml, std::string_view element, double width, double height) {
    xml.begin(element).attribute("cx", emuOf(width)).attribute("cy", emuOf(height)).end();
}

}  // namespace

SlideDeck::SlideDeck(ByteSink sink, const SlideDesign& design, const OfficeProperties& properties)
    : design_(design),
      language_(properties.language),
      text_(properties.language),
      package_(std::move(sink), properties, std::string(presentationPart)) {
    package_.relate(std::string(presentationPart), "slideMaster", std::string(slideMasterPart));
    addDesign();
}

void SlideDeck::addDesign() {
    const std::string master(slideMasterPart);
    std::array<std::string, slideLayoutCount> layouts;
    for (std::size_t i = 0; i < slideLayoutCount; ++i) {
        const std::string part = slideLayoutPart(static_cast<SlideLayout>(i));
        layouts[i] = package_.relate(master, "slideLayout", part);
        package_.relate(part, "slideMaster", master);
    }
    package_.relate(master, "theme", numbered("theme", "theme", 1));
    static_cast<void>(package_.add(master, presentationType("slideMaster"), slideMaster(design_, layouts)));
    for (std::size_t i = 0; i < slideLayoutCount; ++i) {
        const auto layout = static_cast<SlideLayout>(i);
        static_cast<void>(package_.add(slideLayoutPart(layout), presentationType("slideLayout"),
                                       slideLayout(design_, layout)));
    }
    static_cast<void>(
        package_.add(numbered("theme", "theme", 1), officeContentType("theme+xml"), slideTheme()));
}

void SlideDeck::add(ItemSlides& drafts) {
    const std::size_t count = drafts.slides.size();
    std::string shapes;
    for (std::size_t i = 0; i < count && drafts.shapes.next(shapes); ++i) {
        std::string title(drafts.slides[i].title);
        if (i > 0) title += " (" + std::to_string(i + 1) + "/" + std::to_string(count) + ")";
        addSlide(drafts.slides[i], title, shapes);
        if (hasTooMuch_ || bytes_ > mostDeckBytes) return;
    }
}

void SlideDeck::addSlide(const SlideDraft& draft, const std::string& title, std::string_view shapes) {
    const std::string part = numbered("slides", "slide", ++slides_);
    relations_.push_back(package_.relate(std::string(presentationPart), "slide", part));
    package_.relate(part, "slideLayout", slideLayoutPart(draft.layout));
    for (const std::string& each : draft.pictures) package_.relate(part, "image", each);
    if (!draft.notes.empty())
        package_.relate(part, "notesSlide", numbered("notesSlides", "notesSlide", slides_));
    XmlWriter xml(officeXml);
    beginPresentationPart(xml, "p:sld");
    beginShapes(xml);
    if (hasTitle(draft.layout)) writeTitle(xml, draft, title);
    xml.raw(shapes);
    writeFooter(xml);
    endShapes(xml);
    writeMasterColors(xml);
    xml.end();
    count(xml);
    static_cast<void>(package_.add(part, officeContentType(slideType), xml.take()));
    if (!draft.notes.empty()) addNotes(part, draft.notes);
}

void SlideDeck::count(const XmlWriter& xml) {
    hasTooMuch_ = hasTooMuch_ || xml.bytes() > mostSlideBytes;
    bytes_ += xml.bytes();
}

void SlideDeck::writeTitle(XmlWriter& xml, const SlideDraft& draft, const std::string& title) const {
    beginPlaceholder(xml, {2, "Title 1"}, {"title"});
    if (draft.titleStyle.background) {
        xml.begin("a:solidFill").begin("a:srgbClr");
        xml.attribute("val", officeColor(*draft.titleStyle.background)).end();
        xml.end();
    }
    beginParagraphs(xml);
    SlideRunStyle style{draft.titleStyle, false};
    if (draft.layout != SlideLayout::section && !style.style.size) {
        const double size = titleSizeOf(title, design_.title);
        if (size != slideTitleSize) style.style.size = size;
    }
    text_.paragraph(xml, {{{title, style}}, tables::HorizontalAlign::mixed, 0, false});
    endParagraphs(xml);
}

void SlideDeck::writeFooter(XmlWriter& xml) const {
    if (!footer_.empty()) {
        beginPlaceholder(xml, {3, "Footer 2"}, {"ftr", footerPlaceholder, true});
        beginParagraphs(xml);
        for (const FooterLine& line : footer_) {
            text_.paragraph(xml,
                            {{{line.text, {line.style, false}}}, tables::HorizontalAlign::mixed, 0, false});
        }
        endParagraphs(xml);
    }
    beginPlaceholder(xml, {4, "Number 3"}, {"sldNum", numberPlaceholder, true});
    beginParagraphs(xml);
    writeNumberField(xml, language_, std::to_string(slides_));
    endParagraphs(xml);
}

void SlideDeck::addNotes(const std::string& slide, const std::string& notes) {
    hasNotes_ = true;
    const std::string part = numbered("notesSlides", "notesSlide", slides_);
    package_.relate(part, "notesMaster", std::string(notesMasterPart));
    package_.relate(part, "slide", slide);
    XmlWriter xml(officeXml);
    beginPresentationPart(xml, "p:notes");
    beginShapes(xml);
    xml.begin("p:sp").begin("p:nvSpPr");
    writeShapeName(xml, {2, "Slide 1"});
    xml.begin("p:cNvSpPr").begin("a:spLocks").attribute("noGrp", "1").attribute("noRot", "1");
    xml.attribute("noChangeAspect", "1").end();
    xml.end();
    xml.begin("p:nvPr").begin("p:ph").attribute("type", "sldImg").end();
    xml.end();
    xml.end();
    xml.begin("p:spPr").end();
    xml.end();
    beginPlaceholder(xml, {3, "Notes 2"}, {"body", textPlaceholder});
    beginParagraphs(xml);
    for (std::size_t begin = 0; begin <= notes.size();) {
        const std::size_t end = std::min(notes.find('\n', begin), notes.size());
        text_.paragraph(xml, {{{std::string_view(notes).substr(begin, end - begin), {}}},
                              tables::HorizontalAlign::mixed,
                              0,
                              false});
        begin = end + 1;
    }
    endParagraphs(xml);
    endShapes(xml);
    writeMasterColors(xml);
    xml.end();
    count(xml);
    static_cast<void>(package_.add(part, presentationType("notesSlide"), xml.take()));
}

std::string SlideDeck::presentation() {
    const std::string part(presentationPart);
    XmlWriter xml(officeXml);
    beginPresentationPart(xml, "p:presentation");
    xml.attribute("saveSubsetFonts", "1");
    xml.begin("p:sldMasterIdLst").begin("p:sldMasterId").attribute("id", masterId).attribute("r:id", "rId1");
    xml.end();
    xml.end();
    if (hasNotes_) {
        xml.begin("p:notesMasterIdLst").begin("p:notesMasterId");
        xml.attribute("r:id", package_.relate(part, "notesMaster", std::string(notesMasterPart))).end();
        xml.end();
    }
    if (!relations_.empty()) {
        xml.begin("p:sldIdLst");
        for (std::size_t i = 0; i < relations_.size(); ++i) {
            xml.begin("p:sldId").attribute("id", firstSlideId + static_cast<std::int64_t>(i));
            xml.attribute("r:id", relations_[i]).end();
        }
        xml.end();
    }
    writeSize(xml, "p:sldSz", design_.slide.width, design_.slide.height);
    writeSize(xml, "p:notesSz", 540, 720);
    xml.end();
    return xml.take();
}

PackageResult SlideDeck::finish() {
    const std::string part(presentationPart);
    if (hasNotes_) {
        const std::string master(notesMasterPart);
        package_.relate(master, "theme", numbered("theme", "theme", 2));
        static_cast<void>(package_.add(master, presentationType("notesMaster"), notesMaster()));
        static_cast<void>(
            package_.add(numbered("theme", "theme", 2), officeContentType("theme+xml"), slideTheme()));
    }
    std::string content = presentation();
    package_.relate(part, "presProps", "/ppt/presProps.xml");
    package_.relate(part, "viewProps", "/ppt/viewProps.xml");
    package_.relate(part, "theme", numbered("theme", "theme", 1));
    package_.relate(part, "tableStyles", "/ppt/tableStyles.xml");
    static_cast<void>(package_.add(part, presentationType("presentation.main"), std::move(content)));
    static_cast<void>(
        package_.add("/ppt/presProps.xml", presentationType("presProps"), emptyPart("p:presentationPr")));
    static_cast<void>(
        package_.add("/ppt/viewProps.xml", presentationType("viewProps"), emptyPart("p:viewPr")));
    static_cast<void>(package_.add("/ppt/tableStyles.xml", presentationType("tableStyles"), tableStyles()));
    return package_.finish();
}

}  // namespace vexa::frontend
