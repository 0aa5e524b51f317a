// What every part with shapes shares: its frame, places, and shapes that hold text.
#pragma once

#include <string>
#include <string_view>

#include "frontend/export/slides/slide_design.h"
#include "frontend/package/xml_writer.h"

namespace vexa::frontend {

/// Of pieces that are put into a part.
inline constexpr XmlStyle pieceXml{XmlEscapes::replacing, false, false, false, false};

/// Opens a root element with the three namespaces of presentations.
void beginPresentationPart(XmlWriter& xml, std::string_view root);
/// Opens `p:cSld` and its tree of shapes, and closes both.
void beginShapes(XmlWriter& xml, std::string_view name = {}, bool background = false);
void endShapes(XmlWriter& xml);
/// `p:clrMapOvr`, which leaves the colours as the master has them.
void writeMasterColors(XmlWriter& xml);

/// `a:xfrm`, or another element of that content.
void writePlace(XmlWriter& xml, const SlideBox& box, std::string_view element = "a:xfrm");

/// The beginning of a shape: its number on the slide, its name, and what is read out.
struct ShapeName {
    int id = 0;
    std::string name;
    std::string description = {};
};
void writeShapeName(XmlWriter& xml, const ShapeName& name);

/// A place for text that a layout or a master knows. `type` is empty for the usual one.
struct Placeholder {
    std::string_view type;
    int index = 0;  ///< 0 for none
    bool quarter = false;
};
/// Opens `p:sp` up to its properties, which are left open in `p:spPr`.
void beginPlaceholder(XmlWriter& xml, const ShapeName& name, const Placeholder& placeholder);
/// The same for a box of text that nothing else knows.
void beginTextBox(XmlWriter& xml, const ShapeName& name, const SlideBox& box);
/// Closes the properties, and opens `p:txBody` up to its paragraphs. `body` are attributes of `a:bodyPr`.
struct BodyProperties {
    std::string_view anchor;  ///< "t", "ctr" or "b"; empty for the place's own
    bool plain = false;       ///< no margins inside
};
void beginParagraphs(XmlWriter& xml, const BodyProperties& properties = {});
/// Closes `p:txBody` and `p:sp`.
void endParagraphs(XmlWriter& xml);

/// The field that shows a slide's number, as a paragraph; `shown` until a program counts.
void writeNumberField(XmlWriter& xml, std::string_view language, std::string_view shown);

}  // namespace vexa::frontend
