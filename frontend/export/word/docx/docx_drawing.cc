#include "frontend/export/word/docx/docx_drawing.h"

#include <algorithm>
#include <string_view>

#include "frontend/export/office/office_package.h"
#include "frontend/export/office/office_values.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view pictureSpace = "http://schemas.openxmlformats.org/drawingml/2006/picture";
constexpr std::string_view placeSpace =
    "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing";

std::string attribute(std::string_view name, std::string_view value) {
    std::string text = " " + std::string(name) + "=\"";
    appendXmlValue(text, value, XmlEscapes::replacing);
    return text + "\"";
}

std::string extent(ItemSize size) {
    // A drawing without a height is damage to some readers.
    return attribute("cx", std::to_string(std::max<std::int64_t>(emuOf(size.width), 1))) +
           attribute("cy", std::to_string(std::max<std::int64_t>(emuOf(size.height), 1)));
}

std::string vectorExtension(const std::string& id) {
    return "<a:extLst><a:ext" + attribute("uri", officeSvgExtension) + "><asvg:svgBlip" +
           attribute("xmlns:asvg", officeSvgSpace) + attribute("r:embed", id) + "/></a:ext></a:extLst>";
}

}  // namespace

std::string drawingSpaces() {
    return attribute("xmlns:wp", placeSpace) + attribute("xmlns:a", officeDrawingSpace) +
           attribute("xmlns:pic", pictureSpace);
}

void appendDrawing(std::string& xml, const WordPicture& picture, const DocxDrawing& drawing) {
    const std::string names = attribute("id", std::to_string(drawing.number)) +
                              attribute("name", picture.name) +
                              attribute("descr", picture.picture.alternative);
    xml += "<w:drawing><wp:inline distT=\"0\" distB=\"0\" distL=\"0\" distR=\"0\"><wp:extent";
    xml += extent(picture.size) + "/><wp:docPr" + names + "/><wp:cNvGraphicFramePr><a:graphicFrameLocks ";
    xml += "noChangeAspect=\"1\"/></wp:cNvGraphicFramePr><a:graphic><a:graphicData";
    xml += attribute("uri", pictureSpace) + "><pic:pic><pic:nvPicPr><pic:cNvPr" + names;
    xml += "/><pic:cNvPicPr/></pic:nvPicPr><pic:blipFill><a:blip" + attribute("r:embed", drawing.bitmap);
    xml += drawing.vector.empty() ? "/>" : ">" + vectorExtension(drawing.vector) + "</a:blip>";
    xml += "<a:stretch><a:fillRect/></a:stretch></pic:blipFill><pic:spPr><a:xfrm><a:off x=\"0\" y=\"0\"/>";
    xml += "<a:ext" + extent(picture.size) + "/></a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom>";
    xml += "</pic:spPr></pic:pic></a:graphicData></a:graphic></wp:inline></w:drawing>";
}

}  // namespace vexa::frontend
