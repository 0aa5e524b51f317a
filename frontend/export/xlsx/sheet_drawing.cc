#include "frontend/export/xlsx/sheet_drawing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <utility>

#include "frontend/export/office/office_package.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/xlsx/package_xml.h"
#include "frontend/package/xml_writer.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view drawingSpace =
    "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing";
constexpr double emuPerPoint = 12'700;
constexpr double pointsPerPixel = 0.75;
// Larger ones are not looked at to find out whether they are equal.
constexpr std::uint64_t mostOfAPicture = 1U << 20U;

double realOf(std::string_view text) {
    const double number = std::strtod(std::string(text).c_str(), nullptr);
    return std::isfinite(number) ? std::clamp(number, 0.0, 1e12) : 0;
}

/// A corner of an anchor: a row or a column, and how far into it, points.
struct Corner {
    std::uint32_t place = 0;
    double offset = 0;
};

Corner cornerOf(const pugi::xml_node& corner, const char* name, std::uint32_t limit) {
    const std::size_t place = numberOr(childOf(corner, name).child_value(), 0);
    const double offset = realOf(childOf(corner, std::string(name) + "Off").child_value()) / emuPerPoint;
    return {static_cast<std::uint32_t>(std::min<std::size_t>(place, limit - 1)), offset};
}

/// How many rows there are up to a point so far behind the beginning of row `from.place` as `length` and the
/// offset say.
std::uint32_t rowsTo(const SheetSurvey& survey, const Corner& from, double length) {
    double rest = from.offset + length;
    std::uint32_t row = from.place;
    auto known = survey.heights.lower_bound(row);
    while (rest > 0 && row < officeSheetLimits.rows) {
        const bool isKnown = known != survey.heights.end() && known->first == row;
        rest -= isKnown ? (known++)->second : std::max(survey.rowHeight, 1.0);
        ++row;
    }
    return std::max(row, from.place + 1);
}

std::uint32_t columnsTo(const SheetSurvey& survey, const Corner& from, double length) {
    double rest = from.offset + length;
    std::uint32_t column = from.place;
    while (rest > 0 && column < officeSheetLimits.columns) {
        auto known = survey.widths.upper_bound(column);
        const double pixels = known == survey.widths.begin() ? survey.columnWidth : std::prev(known)->second;
        rest -= std::max(pixels, 0.0) * pointsPerPixel;
        ++column;
    }
    return std::max(column, from.place + 1);
}

void surveyAnchor(const pugi::xml_node& anchor, SheetSurvey& survey) {
    Corner row;
    Corner column;
    const std::string_view kind = localName(anchor);
    if (kind == "absoluteAnchor") {
        const pugi::xml_node at = childOf(anchor, "pos");
        row.offset = realOf(attributeOf(at, "y")) / emuPerPoint;
        column.offset = realOf(attributeOf(at, "x")) / emuPerPoint;
    } else {
        row = cornerOf(childOf(anchor, "from"), "row", officeSheetLimits.rows);
        column = cornerOf(childOf(anchor, "from"), "col", officeSheetLimits.columns);
    }
    if (kind == "twoCellAnchor") {
        const pugi::xml_node to = childOf(anchor, "to");
        const Corner lastRow = cornerOf(to, "row", officeSheetLimits.rows);
        const Corner lastColumn = cornerOf(to, "col", officeSheetLimits.columns);
        survey.rows = std::max({survey.rows, row.place + 1, lastRow.place + (lastRow.offset > 0 ? 1 : 0)});
        survey.columns =
            std::max({survey.columns, column.place + 1, lastColumn.place + (lastColumn.offset > 0 ? 1 : 0)});
        return;
    }
    const pugi::xml_node size = childOf(anchor, "ext");
    survey.rows = std::max(survey.rows, rowsTo(survey, row, realOf(attributeOf(size, "cy")) / emuPerPoint));
    survey.columns =
        std::max(survey.columns, columnsTo(survey, column, realOf(attributeOf(size, "cx")) / emuPerPoint));
}

std::size_t greatestId(const pugi::xml_node& node) {
    std::size_t greatest = 1;
    for (const pugi::xml_node child : node.children()) {
        if (localName(child) == "cNvPr") {
            const std::size_t id = numberOr(attributeOf(child, "id"), 0);
            greatest = std::max(greatest, id < 1'000'000'000 ? id : 0);
        }
        greatest = std::max(greatest, greatestId(child));
    }
    return greatest;
}

struct PictureNames {
    std::size_t id = 0;
    std::string png;  ///< ids of relations
    std::string svg;
};

void writeFrame(XmlWriter& xml, const SheetPicture& picture) {
    xml.begin("xdr:spPr").begin("a:xfrm");
    xml.begin("a:off").attribute("x", 0).attribute("y", 0).end();
    xml.begin("a:ext").attribute("cx", emuOf(picture.width)).attribute("cy", emuOf(picture.height)).end();
    xml.end();
    xml.begin("a:prstGeom").attribute("prst", "rect").begin("a:avLst").end();
    xml.end();
    xml.end();
}

void writeBlip(XmlWriter& xml, const PictureNames& names) {
    xml.begin("xdr:blipFill").begin("a:blip").attribute("r:embed", names.png);
    if (!names.svg.empty()) {
        xml.begin("a:extLst").begin("a:ext").attribute("uri", officeSvgExtension);
        xml.begin("asvg:svgBlip").attribute("xmlns:asvg", officeSvgSpace).attribute("r:embed", names.svg);
        xml.end();
        xml.end();
        xml.end();
    }
    xml.end();
    xml.begin("a:stretch").begin("a:fillRect").end();
    xml.end();
    xml.end();
}

std::string anchorText(const SheetPicture& picture, SheetSpot at, const PictureNames& names) {
    XmlStyle style = officeXml;
    style.declaration = false;
    XmlWriter xml(style);
    xml.begin("xdr:oneCellAnchor").attribute("xmlns:xdr", drawingSpace);
    xml.attribute("xmlns:a", officeDrawingSpace).attribute("xmlns:r", officeRelationsSpace);
    xml.begin("xdr:from");
    xml.element("xdr:col", std::to_string(at.column)).element("xdr:colOff", "0");
    xml.element("xdr:row", std::to_string(at.row)).element("xdr:rowOff", "0");
    xml.end();
    xml.begin("xdr:ext").attribute("cx", emuOf(picture.width)).attribute("cy", emuOf(picture.height)).end();
    xml.begin("xdr:pic").begin("xdr:nvPicPr");
    xml.begin("xdr:cNvPr").attribute("id", names.id).attribute("name", "Picture " + std::to_string(names.id));
    xml.optional("descr", picture.alternative).end();
    xml.begin("xdr:cNvPicPr").begin("a:picLocks").attribute("noChangeAspect", "1").end();
    xml.end();
    xml.end();
    writeBlip(xml, names);
    writeFrame(xml, picture);
    xml.end();
    xml.begin("xdr:clientData").end();
    xml.end();
    return xml.take();
}

/// Pictures that a drawing refers to, each stored once.
class PictureParts {
  public:
    PictureParts(WorkbookPackage& package, const std::string& drawing)
        : package_(package), drawing_(drawing) {}

    /// Takes notice of the pictures that the drawing has already.
    PackageResult survey() {
        std::vector<PartRelation> relations;
        PackageResult result = package_.relations(drawing_, relations);
        for (const PartRelation& relation : relations) {
            std::string bytes;
            if (result && relation.type == "image" && !relation.isOutside &&
                package_.read(relation.target, bytes, mostOfAPicture)) {
                known_.emplace(std::move(bytes), relation.id);
            }
        }
        return result;
    }

    PackageResult relate(const std::string& bytes, std::string_view extension, std::string_view type,
                         std::string& id) {
        const auto [found, isNew] = known_.try_emplace(bytes);
        PackageResult result;
        if (isNew) {
            const std::string part = package_.freeName("xl/media/image", "." + std::string(extension));
            package_.set(part, bytes);
            package_.setExtension(extension, type);
            result = package_.relate(drawing_, std::string(officeRelation) + "image", part, found->second);
        }
        id = found->second;
        return result;
    }

  private:
    WorkbookPackage& package_;
    const std::string& drawing_;
    std::map<std::string, std::string, std::less<>> known_;
};

}  // namespace

PackageResult surveyDrawing(const WorkbookPackage& package, const std::string& drawing, SheetSurvey& survey) {
    std::string text;
    PackageXml xml;
    PackageResult result = package.read(drawing, text, mostOfATree);
    if (result) {
        result = xml.parse(std::move(text), "wsDr");
    }
    for (const pugi::xml_node anchor : xml.root().children()) {
        if (localName(anchor).ends_with("Anchor")) {
            surveyAnchor(anchor, survey);
        } else if (localName(anchor) == "AlternateContent") {
            for (const pugi::xml_node choice : anchor.children()) {
                for (const pugi::xml_node inner : choice.children()) {
                    if (localName(inner).ends_with("Anchor")) {
                        surveyAnchor(inner, survey);
                    }
                }
            }
        }
    }
    return result;
}

PackageResult addPictures(WorkbookPackage& package, const std::string& drawing,
                          const SheetFootprint& footprint) {
    std::string text;
    PackageXml xml;
    PackageResult result = package.read(drawing, text, mostOfATree);
    if (result) {
        result = xml.parse(std::move(text), "wsDr");
    }
    if (!result) {
        return result;
    }
    PictureParts parts(package, drawing);
    if (result = parts.survey(); !result) {
        return result;
    }
    PictureNames names;
    names.id = greatestId(xml.root());
    for (const SheetPicture& picture : footprint.content().pictures) {
        ++names.id;
        names.svg.clear();
        result = parts.relate(picture.png, "png", "image/png", names.png);
        if (result && !picture.svg.empty()) {
            result = parts.relate(picture.svg, "svg", "image/svg+xml", names.svg);
        }
        if (!result) {
            return result;
        }
        const SheetSpot at{footprint.at().row + picture.row, footprint.at().column + picture.column};
        const std::string anchor = anchorText(picture, at, names);
        xml.root().append_buffer(anchor.data(), anchor.size(), pugi::parse_escapes);
    }
    package.set(drawing, xml.text());
    return {};
}

PackageResult addDrawing(WorkbookPackage& package, const std::string& sheet, std::string& drawing,
                         std::string& id) {
    drawing = package.freeName("xl/drawings/drawing", ".xml");
    XmlWriter xml(officeXml);
    xml.begin("xdr:wsDr").attribute("xmlns:xdr", drawingSpace).attribute("xmlns:a", officeDrawingSpace).end();
    package.set(drawing, xml.take());
    package.setContentType(drawing, "application/vnd.openxmlformats-officedocument.drawing+xml");
    return package.relate(sheet, std::string(officeRelation) + "drawing", drawing, id);
}

}  // namespace vexa::frontend
