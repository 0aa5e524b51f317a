#include "frontend/export/slides/slide_xml.h"

#include "frontend/export/office/office_package.h"
#include "frontend/export/office/office_values.h"

namespace vexa::frontend {

void beginPresentationPart(XmlWriter& xml, std::string_view root) {
    xml.begin(root).attribute("xmlns:a", officeDrawingSpace).attribute("xmlns:r", officeRelationsSpace);
    xml.attribute("xmlns:p", "http://schemas.openxmlformats.org/presentationml/2006/main");
}

void beginShapes(XmlWriter& xml, std::string_view name, bool background) {
    xml.begin("p:cSld").optional("name", name);
    if (background) {
        xml.begin("p:bg").begin("p:bgRef").attribute("idx", "1001");
        xml.begin("a:schemeClr").attribute("val", "bg1").end();
        xml.end();
        xml.end();
    }
    xml.begin("p:spTree").begin("p:nvGrpSpPr");
    xml.begin("p:cNvPr").attribute("id", "1").attribute("name", "").end();
    xml.begin("p:cNvGrpSpPr").end();
    xml.begin("p:nvPr").end();
    xml.end();
    xml.begin("p:grpSpPr").begin("a:xfrm");
    for (const std::string_view corner : {"a:off", "a:ext", "a:chOff", "a:chExt"}) {
        const bool isPlace = corner.ends_with("ff");
        xml.begin(corner).attribute(isPlace ? "x" : "cx", "0").attribute(isPlace ? "y" : "cy", "0").end();
    }
    xml.end();
    xml.end();
}

void endShapes(XmlWriter& xml) {
    xml.end();
    xml.end();
}

void writeMasterColors(XmlWriter& xml) {
    xml.begin("p:clrMapOvr").begin("a:masterClrMapping").end();
    xml.end();
}

void writePlace(XmlWriter& xml, const SlideBox& box, std::string_view element) {
    xml.begin(element);
    xml.begin("a:off").attribute("x", emuOf(box.left)).attribute("y", emuOf(box.top)).end();
    xml.begin("a:ext").attribute("cx", emuOf(box.width)).attribute("cy", emuOf(box.height)).end();
    xml.end();
}

void writeShapeName(XmlWriter& xml, const ShapeName& name) {
    xml.begin("p:cNvPr").attribute("id", name.id).attribute("name", name.name);
    xml.optional("descr", name.description).end();
}

void beginPlaceholder(XmlWriter& xml, const ShapeName& name, const Placeholder& placeholder) {
    xml.begin("p:sp").begin("p:nvSpPr");
    writeShapeName(xml, name);
    xml.begin("p:cNvSpPr").begin("a:spLocks").attribute("noGrp", "1").end();
    xml.end();
    xml.begin("p:nvPr").begin("p:ph").optional("type", placeholder.type);
    if (placeholder.quarter) xml.attribute("sz", "quarter");
    if (placeholder.index > 0) xml.attribute("idx", placeholder.index);
    xml.end();
    xml.end();
    xml.end();
    xml.begin("p:spPr");
}

void beginTextBox(XmlWriter& xml, const ShapeName& name, const SlideBox& box) {
    xml.begin("p:sp").begin("p:nvSpPr");
    writeShapeName(xml, name);
    xml.begin("p:cNvSpPr").attribute("txBox", "1").end();
    xml.begin("p:nvPr").end();
    xml.end();
    xml.begin("p:spPr");
    writePlace(xml, box);
    xml.begin("a:prstGeom").attribute("prst", "rect").begin("a:avLst").end();
    xml.end();
}

void beginParagraphs(XmlWriter& xml, const BodyProperties& properties) {
    xml.end();
    xml.begin("p:txBody").begin("a:bodyPr");
    if (properties.plain) {
        xml.attribute("wrap", "square");
        for (const std::string_view side : {"lIns", "tIns", "rIns", "bIns"}) xml.attribute(side, "0");
    }
    xml.optional("anchor", properties.anchor);
    xml.end();
    xml.begin("a:lstStyle").end();
}

void endParagraphs(XmlWriter& xml) {
    xml.end();
    xml.end();
}

void writeNumberField(XmlWriter& xml, std::string_view language, std::string_view shown) {
    xml.begin("a:p").begin("a:fld").attribute("id", "{B6F15528-21DE-4FAA-801E-634DDDAF4B2B}");
    xml.attribute("type", "slidenum").begin("a:rPr").attribute("lang", language).end();
    xml.element("a:t", shown).end();
    xml.end();
}

}  // namespace vexa::frontend
