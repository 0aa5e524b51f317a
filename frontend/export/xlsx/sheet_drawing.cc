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

/// Where rows or columns begin, points from the first one on.
class AxisScale {
  public:
    /// `sizes` are those of the places that say one; with `untilNext` each counts up to the next one.
    AxisScale(const std::map<std::uint32_t, double>& sizes, double usual, bool untilNext) {
        stretches_.push_back({0, 0, usual});
        for (const auto& [place, size] : sizes) {
            begin(place, size);
            if (!untilNext) {
                begin(place + 1, usual);
            }
        }
    }

    /// The first place behind `length` points from the beginning of `from` and its offset; one place at
    /// least.
    [[nodiscard]] std::uint32_t placeBehind(const Corner& from, double length, std::uint32_t limit) const {
        const auto holds = std::prev(
            std::partition_point(stretches_.begin(), stretches_.end(),
                                 [&from](const Stretch& each) { return each.place <= from.place; }));
        const double end = holds->point + (from.place - holds->place) * holds->size + from.offset + length;
        const auto last =
            std::prev(std::partition_point(stretches_.begin() + 1, stretches_.end(),
                                           [end](const Stretch& each) { return each.point < end; }));
        const double more = last->size > 0 ? std::ceil((end - last->point) / last->size) : 0;
        const double place = std::min<double>(last->place + more, limit);
        return std::max(static_cast<std::uint32_t>(place), from.place + 1);
    }

  private:
    struct Stretch {
        std::uint32_t place = 0;
        double point = 0;
        double size = 0;
    };
    void begin(std::uint32_t place, double size) {
        const Stretch& last = stretches_.back();
        if (last.place == place) {
            stretches_.back().size = size;
        } else {
            stretches_.push_back({place, last.point + (place - last.place) * last.size, size});
        }
    }
    std::vector<Stretch> stretches_;
};

void surveyAnchor(const pugi::xml_node& anchor, const AxisScale& rows, const AxisScale& columns,
                  SheetSurvey& survey) {
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
    survey.rows = std::max(survey.rows, rows.placeBehind(row, realOf(attributeOf(size, "cy")) / emuPerPoint,
                                                         officeSheetLimits.rows));
    survey.columns =
        std::max(survey.columns, columns.placeBehind(column, realOf(attributeOf(size, "cx")) / emuPerPoint,
                                                     officeSheetLimits.columns));
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
                ids_.emplace(std::move(bytes), relation.id);
            }
        }
        return result;
    }

    void add(const std::string& bytes, std::string_view extension, std::string_view type) {
        if (bytes.empty() || !ids_.try_emplace(bytes).second) {
            return;
        }
        parts_.push_back(package_.freeName("xl/media/image", "." + std::string(extension)));
        added_.push_back(&bytes);
        package_.set(parts_.back(), bytes);
        package_.setExtension(extension, type);
    }

    /// Relates the drawing to all that were added.
    PackageResult relate() {
        std::vector<std::string> ids;
        PackageResult result;
        if (!parts_.empty()) {
            result = package_.relate(drawing_, officeRelationType("image"), parts_, ids);
        }
        for (std::size_t i = 0; result && i < ids.size(); ++i) {
            ids_[*added_[i]] = ids[i];
        }
        return result;
    }

    /// The id of the drawing's relation to a picture that was added; empty for none.
    [[nodiscard]] std::string idOf(const std::string& bytes) const {
        const auto found = ids_.find(bytes);
        return found == ids_.end() ? std::string() : found->second;
    }

  private:
    WorkbookPackage& package_;
    const std::string& drawing_;
    std::map<std::string, std::string, std::less<>> ids_;  ///< by the pictures' bytes
    std::vector<std::string> parts_;
    std::vector<const std::string*> added_;
};

}  // namespace

PackageResult surveyDrawing(const WorkbookPackage& package, const std::string& drawing, SheetSurvey& survey) {
    std::string text;
    PackageXml xml;
    PackageResult result = package.read(drawing, text, mostOfATree);
    if (result) {
        result = xml.parse(std::move(text), "wsDr");
    }
    std::map<std::uint32_t, double> widths;
    for (const auto& [column, pixels] : survey.widths) {
        widths.emplace(column, pixels * pointsPerPixel);
    }
    const AxisScale rows(survey.heights, survey.rowHeight, false);
    const AxisScale columns(widths, survey.columnWidth * pointsPerPixel, true);
    for (const pugi::xml_node anchor : xml.root().children()) {
        if (localName(anchor).ends_with("Anchor")) {
            surveyAnchor(anchor, rows, columns, survey);
        } else if (localName(anchor) == "AlternateContent") {
            for (const pugi::xml_node choice : anchor.children()) {
                for (const pugi::xml_node inner : choice.children()) {
                    if (localName(inner).ends_with("Anchor")) {
                        surveyAnchor(inner, rows, columns, survey);
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
    const std::vector<SheetPicture>& pictures = footprint.content().pictures;
    for (const SheetPicture& picture : pictures) {
        parts.add(picture.png, "png", "image/png");
        parts.add(picture.svg, "svg", "image/svg+xml");
    }
    if (result = parts.relate(); !result) {
        return result;
    }
    for (const SheetPicture& picture : pictures) {
        ++names.id;
        names.png = parts.idOf(picture.png);
        names.svg = parts.idOf(picture.svg);
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
    return package.relate(sheet, officeRelationType("drawing"), drawing, id);
}

}  // namespace vexa::frontend
