#include "frontend/export/xlsx/workbook_part.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frontend/export/workbook/sheet_name.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view relationsSpace =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

// What may stand behind the settings of calculation.
constexpr std::array<std::string_view, 9> behindCalculation{
    "oleSize",       "customWorkbookViews", "pivotCaches",       "smartTagPr", "smartTagTypes",
    "webPublishing", "fileRecoveryPr",      "webPublishObjects", "extLst"};

/// The attribute that holds the id of a relation, whatever its prefix.
pugi::xml_attribute relationOf(const pugi::xml_node& node) {
    for (const pugi::xml_attribute attribute : node.attributes()) {
        if (std::string_view(attribute.name()).ends_with(":id")) {
            return attribute;
        }
    }
    return {};
}

}  // namespace

PackageResult WorkbookPart::parse(std::string xml) {
    PackageResult result = xml_.parse(std::move(xml), "workbook");
    if (!result) {
        return result;
    }
    if (xml_.space() == strictSpreadsheetSpace) {
        return {PackageProblem::damaged, "it is of the strict kind; save it as an ordinary workbook"_text};
    }
    return xml_.space() == spreadsheetSpace && childOf(xml_.root(), "sheets")
               ? PackageResult()
               : PackageResult{PackageProblem::damaged, "a different root element than expected"_text};
}

bool WorkbookPart::countsFrom1904() const {
    const std::string_view value = attributeOf(childOf(xml_.root(), "workbookPr"), "date1904");
    return value == "1" || value == "true";
}

std::vector<WorkbookSheet> WorkbookPart::sheets() const {
    std::vector<WorkbookSheet> sheets;
    for (pugi::xml_node node = childOf(childOf(xml_.root(), "sheets"), "sheet"); node; node = nextOf(node)) {
        sheets.push_back({std::string(attributeOf(node, "name")), relationOf(node).value()});
    }
    return sheets;
}

pugi::xml_node WorkbookPart::sheet(std::size_t number) const {
    pugi::xml_node node = childOf(childOf(xml_.root(), "sheets"), "sheet");
    while (node && number > 0) {
        node = nextOf(node);
        --number;
    }
    return node;
}

std::optional<std::size_t> WorkbookPart::find(std::string_view name) const {
    const std::vector<WorkbookSheet> sheets = this->sheets();
    const auto found = std::find_if(sheets.begin(), sheets.end(), [name](const WorkbookSheet& sheet) {
        return isSameSheetName(sheet.name, name);
    });
    return found == sheets.end() ? std::nullopt
                                 : std::optional(static_cast<std::size_t>(found - sheets.begin()));
}

void WorkbookPart::add(std::string_view name, std::string_view relation) {
    pugi::xml_node list = childOf(xml_.root(), "sheets");
    std::size_t greatest = 0;
    for (pugi::xml_node node = childOf(list, "sheet"); node; node = nextOf(node)) {
        const std::size_t id = numberOr(attributeOf(node, "sheetId"), 0);
        greatest = std::max(greatest, id < 65'000 ? id : 0);
    }
    pugi::xml_node node = list.append_child(xml_.named("sheet").c_str());
    setAttribute(node, "name", name);
    setAttribute(node, "sheetId", std::to_string(greatest + 1));
    // Whatever the prefix is that the workbook has for relations: this one is declared here.
    const bool isKnown = xml_.root().attribute("xmlns:r").value() == relationsSpace;
    if (!isKnown) {
        setAttribute(node, "xmlns:r", relationsSpace);
    }
    setAttribute(node, "r:id", relation);
}

void WorkbookPart::relate(std::size_t sheet, std::string_view relation) {
    relationOf(this->sheet(sheet)).set_value(std::string(relation).c_str());
}

void WorkbookPart::dropBuiltInNames(std::size_t sheet) {
    pugi::xml_node list = childOf(xml_.root(), "definedNames");
    pugi::xml_node next;
    for (pugi::xml_node node = childOf(list, "definedName"); node; node = next) {
        next = nextOf(node);
        const bool isOfSheet = attributeOf(node, "localSheetId") == std::to_string(sheet);
        if (isOfSheet && attributeOf(node, "name").starts_with("_xlnm.")) {
            list.remove_child(node);
        }
    }
    if (list && !childOf(list, "definedName")) {
        xml_.root().remove_child(list);
    }
}

void WorkbookPart::calculateOnLoad() {
    pugi::xml_node node = childOf(xml_.root(), "calcPr");
    if (!node) {
        pugi::xml_node next;
        for (const pugi::xml_node child : xml_.root().children()) {
            const bool isBehind = std::find(behindCalculation.begin(), behindCalculation.end(),
                                            localName(child)) != behindCalculation.end();
            if (isBehind && !next) {
                next = child;
            }
        }
        const std::string name = xml_.named("calcPr");
        node = next ? xml_.root().insert_child_before(name.c_str(), next)
                    : xml_.root().append_child(name.c_str());
    }
    setAttribute(node, "fullCalcOnLoad", "1");
}

}  // namespace vexa::frontend
