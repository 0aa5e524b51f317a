#include "frontend/export/xlsx/new_workbook.h"

#include <utility>

#include "frontend/export/office/office_package.h"
#include "frontend/export/xlsx/macro_project.h"
#include "frontend/export/xlsx/package_xml.h"
#include "frontend/package/xml_writer.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view packageRelation = "http://schemas.openxmlformats.org/package/2006/relationships/";

std::string workbookXml(bool hasMacros) {
    XmlWriter xml(officeXml);
    xml.begin("workbook").attribute("xmlns", spreadsheetSpace).attribute("xmlns:r", officeRelationsSpace);
    if (hasMacros) {
        xml.begin("workbookPr").attribute("codeName", workbookCodeName).end();
    }
    xml.begin("bookViews").begin("workbookView").end();
    xml.end();
    xml.begin("sheets").end();
    xml.end();
    return xml.take();
}

std::string coreXml(std::string_view title, std::string_view language) {
    XmlWriter xml(officeXml);
    xml.begin("cp:coreProperties")
        .attribute("xmlns:cp", "http://schemas.openxmlformats.org/package/2006/metadata/core-properties")
        .attribute("xmlns:dc", "http://purl.org/dc/elements/1.1/");
    xml.element("dc:title", title);
    if (!language.empty()) {
        xml.element("dc:language", language);
    }
    xml.end();
    return xml.take();
}

std::string applicationXml() {
    XmlWriter xml(officeXml);
    xml.begin("Properties")
        .attribute("xmlns", "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties");
    xml.element("Application", "Vexa Output");
    xml.end();
    return xml.take();
}

PackageResult addMacroProject(WorkbookPackage& package, const std::string& main) {
    const std::string part = "xl/vbaProject.bin";
    std::string project;
    std::string id;
    if (PackageResult result = makeMacroProject({std::string(firstSheetCodeName)}, project); !result) {
        return result;
    }
    package.set(part, std::move(project));
    package.setContentType(part, "application/vnd.ms-office.vbaProject");
    return package.relate(main, "http://schemas.microsoft.com/office/2006/relationships/vbaProject", part,
                          id);
}

}  // namespace

PackageResult beginWorkbook(WorkbookPackage& package, const std::string& main, bool hasMacros,
                            std::string_view title, std::string_view language) {
    std::string id;
    package.set(main, workbookXml(hasMacros));
    PackageResult result = package.relate("", officeRelationType("officeDocument"), main, id);
    const auto add = [&](std::string_view part, std::string content, std::string_view type,
                         const std::string& relation) {
        package.set(part, std::move(content));
        package.setContentType(part, type);
        if (result) {
            result = package.relate("", relation, part, id);
        }
    };
    add("docProps/core.xml", coreXml(title, language),
        "application/vnd.openxmlformats-package.core-properties+xml",
        std::string(packageRelation) + "metadata/core-properties");
    add("docProps/app.xml", applicationXml(),
        "application/vnd.openxmlformats-officedocument.extended-properties+xml",
        officeRelationType("extended-properties"));
    if (result && hasMacros) {
        result = addMacroProject(package, main);
    }
    return result;
}

std::string emptySheet(std::string_view codeName, bool isFirst) {
    XmlWriter xml(officeXml);
    xml.begin("worksheet").attribute("xmlns", spreadsheetSpace).attribute("xmlns:r", officeRelationsSpace);
    if (!codeName.empty()) {
        xml.begin("sheetPr").attribute("codeName", codeName).end();
    }
    xml.begin("dimension").attribute("ref", "A1").end();
    xml.begin("sheetViews").begin("sheetView");
    if (isFirst) {
        xml.attribute("tabSelected", "1");
    }
    xml.attribute("workbookViewId", "0").end();
    xml.end();
    xml.begin("sheetFormatPr").attribute("defaultRowHeight", "15").end();
    xml.begin("sheetData").end();
    xml.begin("pageMargins").attribute("left", "0.7").attribute("right", "0.7");
    xml.attribute("top", "0.75").attribute("bottom", "0.75");
    xml.attribute("header", "0.3").attribute("footer", "0.3").end();
    xml.end();
    return xml.take();
}

}  // namespace vexa::frontend
