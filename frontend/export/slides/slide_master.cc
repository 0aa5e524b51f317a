#include "frontend/export/office/office_package.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/slides/slide_parts.h"
#include "frontend/export/slides/slide_xml.h"

namespace vexa::frontend {

namespace {

/// Texts of the master are seen only where a master is edited.
constexpr std::string_view sample = "\xE2\x80\xA6";
constexpr int levels = 9;
/// Points that each further level is set in.
constexpr double levelIndent = 18;
constexpr std::array<std::string_view, levels> levelElements{"a:lvl1pPr", "a:lvl2pPr", "a:lvl3pPr",
                                                             "a:lvl4pPr", "a:lvl5pPr", "a:lvl6pPr",
                                                             "a:lvl7pPr", "a:lvl8pPr", "a:lvl9pPr"};

void writeSample(XmlWriter& xml) {
    xml.begin("a:p").begin("a:r").begin("a:rPr").attribute("lang", "en-US").end();
    xml.element("a:t", sample).end();
    xml.end();
}

void writeLevel(XmlWriter& xml, int level, double size, std::string_view align, std::string_view font) {
    xml.begin(levelElements[static_cast<std::size_t>(level)]);
    xml.attribute("marL", emuOf(levelIndent * level)).attribute("indent", "0").attribute("algn", align);
    xml.attribute("defTabSz", emuOf(72)).attribute("rtl", "0").attribute("eaLnBrk", "1");
    xml.attribute("latinLnBrk", "0").attribute("hangingPunct", "1");
    xml.begin("a:spcBef").begin("a:spcPts").attribute("val", "0").end();
    xml.end();
    xml.begin("a:buNone").end();
    xml.begin("a:defRPr").attribute("sz", hundredthsOf(size)).attribute("kern", "1200");
    xml.begin("a:solidFill").begin("a:schemeClr").attribute("val", "tx1").end();
    xml.end();
    for (const char* const script : {"lt", "ea", "cs"}) {
        const std::string_view element = script[0] == 'l' ? "a:latin" : script[0] == 'e' ? "a:ea" : "a:cs";
        xml.begin(element)
            .attribute("typeface", std::string("+").append(font).append("-").append(script))
            .end();
    }
    xml.end();
    xml.end();
}

void writeTextStyles(XmlWriter& xml) {
    xml.begin("p:txStyles").begin("p:titleStyle");
    writeLevel(xml, 0, slideTitleSize, "l", "mj");
    xml.end();
    for (const std::string_view element : {"p:bodyStyle", "p:otherStyle"}) {
        xml.begin(element);
        for (int level = 0; level < levels; ++level) writeLevel(xml, level, slideTextSize, "l", "mn");
        xml.end();
    }
    xml.end();
}

/// A placeholder in its place, with the size and the side of its text where they are not the usual ones.
struct PlaceholderForm {
    ShapeName name;
    Placeholder placeholder;
    SlideBox box;
    std::string_view anchor = "t";
    double size = 0;  ///< 0: the usual one
    std::string_view align = {};
    bool isNumber = false;
    bool isFooter = false;
    bool isTitle = false;
};

void writeForm(XmlWriter& xml, const PlaceholderForm& form) {
    beginPlaceholder(xml, form.name, form.placeholder);
    writePlace(xml, form.box);
    xml.begin("a:prstGeom").attribute("prst", "rect").begin("a:avLst").end();
    xml.end();
    xml.end();
    xml.begin("p:txBody").begin("a:bodyPr").attribute("vert", "horz");
    for (const std::string_view side : {"lIns", "tIns", "rIns", "bIns"}) xml.attribute(side, "0");
    xml.attribute("rtlCol", "0").attribute("anchor", form.anchor).begin("a:normAutofit").end();
    xml.end();
    xml.begin("a:lstStyle");
    if (form.size > 0) {
        xml.begin("a:lvl1pPr").attribute("algn", form.align).begin("a:defRPr");
        xml.attribute("sz", hundredthsOf(form.size));
        xml.begin("a:latin").attribute("typeface", form.isTitle ? "+mj-lt" : "+mn-lt").end();
        xml.end();
        xml.end();
    }
    xml.end();
    if (form.isNumber) {
        writeNumberField(xml, "en-US", "\xE2\x80\xB9#\xE2\x80\xBA");
    } else if (form.isFooter) {
        xml.begin("a:p").begin("a:endParaRPr").attribute("lang", "en-US").end();
        xml.end();
    } else {
        writeSample(xml);
    }
    endParagraphs(xml);
}

void writeFooters(XmlWriter& xml, const SlideDesign& design) {
    writeForm(xml, {{4, "Footer 3"},
                    {"ftr", footerPlaceholder, true},
                    design.footer,
                    "ctr",
                    slideFooterSize,
                    "l",
                    false,
                    true});
    writeForm(xml, {{5, "Number 4"},
                    {"sldNum", numberPlaceholder, true},
                    design.number,
                    "ctr",
                    slideFooterSize,
                    "r",
                    true});
}

PlaceholderForm titleForm(const SlideBox& box, std::string_view anchor) {
    PlaceholderForm form{{2, "Title 1"}, {"title"}, box, anchor};
    form.isTitle = true;
    return form;
}

SlideBox textBox(const SlideDesign& design, SlideLayout layout) {
    SlideBox box = design.content;
    if (layout == SlideLayout::plainText) {
        box.height += box.top - design.title.top;
        box.top = design.title.top;
    }
    return box;
}

struct LayoutWords {
    std::string_view type;  ///< that the format knows
    std::string_view name;
};

LayoutWords wordsOf(SlideLayout layout) {
    constexpr std::array<LayoutWords, slideLayoutCount> words{
        {{"titleOnly", "Title"}, {"obj", "Text"}, {"secHead", "Section"}, {"blank", "Blank"}, {"", "Plain"}}};
    return words[static_cast<std::size_t>(layout)];
}

}  // namespace

std::string slideLayoutPart(SlideLayout layout) {
    return "/ppt/slideLayouts/slideLayout" + std::to_string(static_cast<std::size_t>(layout) + 1) + ".xml";
}

std::string slideMaster(const SlideDesign& design,
                        const std::array<std::string, slideLayoutCount>& layoutRelations) {
    // The ids of masters and layouts share one row of numbers, which begins here.
    constexpr std::int64_t firstId = 2'147'483'648;
    XmlWriter xml(officeXml);
    beginPresentationPart(xml, "p:sldMaster");
    beginShapes(xml, {}, true);
    writeForm(xml, titleForm(design.title, "ctr"));
    writeForm(xml, {{3, "Text 2"}, {"body", textPlaceholder}, textBox(design, SlideLayout::text)});
    writeFooters(xml, design);
    endShapes(xml);
    xml.begin("p:clrMap").attribute("bg1", "lt1").attribute("tx1", "dk1").attribute("bg2", "lt2");
    xml.attribute("tx2", "dk2");
    for (const std::string_view name :
         {"accent1", "accent2", "accent3", "accent4", "accent5", "accent6", "hlink", "folHlink"}) {
        xml.attribute(name, name);
    }
    xml.end();
    xml.begin("p:sldLayoutIdLst");
    for (std::size_t i = 0; i < slideLayoutCount; ++i) {
        xml.begin("p:sldLayoutId").attribute("id", firstId + 1 + static_cast<std::int64_t>(i));
        xml.attribute("r:id", layoutRelations[i]).end();
    }
    xml.end();
    writeTextStyles(xml);
    xml.end();
    return xml.take();
}

std::string slideLayout(const SlideDesign& design, SlideLayout layout) {
    const LayoutWords words = wordsOf(layout);
    XmlWriter xml(officeXml);
    beginPresentationPart(xml, "p:sldLayout");
    xml.optional("type", words.type).attribute("preserve", "1");
    beginShapes(xml, words.name);
    if (layout == SlideLayout::section) {
        PlaceholderForm form = titleForm(design.section, "ctr");
        form.size = 36;
        form.align = "ctr";
        writeForm(xml, form);
    } else if (hasTitle(layout)) {
        writeForm(xml, titleForm(design.title, "ctr"));
    }
    if (hasText(layout)) {
        writeForm(xml, {{3, "Text 2"}, {{}, textPlaceholder}, textBox(design, layout)});
    }
    writeFooters(xml, design);
    endShapes(xml);
    writeMasterColors(xml);
    xml.end();
    return xml.take();
}

std::string notesMaster() {
    // A page of 7.5 by 10 inches: the slide above, the notes below.
    const SlideBox slide{54, 54, 432, 243};
    const SlideBox notes{54, 324, 432, 324};
    XmlWriter xml(officeXml);
    beginPresentationPart(xml, "p:notesMaster");
    beginShapes(xml, {}, true);
    xml.begin("p:sp").begin("p:nvSpPr");
    writeShapeName(xml, {2, "Slide 1"});
    xml.begin("p:cNvSpPr").begin("a:spLocks").attribute("noGrp", "1").attribute("noRot", "1");
    xml.attribute("noChangeAspect", "1").end();
    xml.end();
    xml.begin("p:nvPr").begin("p:ph").attribute("type", "sldImg").attribute("idx", 2).end();
    xml.end();
    xml.end();
    xml.begin("p:spPr");
    writePlace(xml, slide);
    xml.begin("a:prstGeom").attribute("prst", "rect").begin("a:avLst").end();
    xml.end();
    xml.end();
    xml.end();
    writeForm(xml, {{3, "Notes 2"}, {"body", 3, true}, notes});
    endShapes(xml);
    xml.begin("p:clrMap").attribute("bg1", "lt1").attribute("tx1", "dk1").attribute("bg2", "lt2");
    xml.attribute("tx2", "dk2");
    for (const std::string_view name :
         {"accent1", "accent2", "accent3", "accent4", "accent5", "accent6", "hlink", "folHlink"}) {
        xml.attribute(name, name);
    }
    xml.end();
    xml.begin("p:notesStyle");
    for (int level = 0; level < levels; ++level) writeLevel(xml, level, 12, "l", "mn");
    xml.end();
    xml.end();
    return xml.take();
}

}  // namespace vexa::frontend
