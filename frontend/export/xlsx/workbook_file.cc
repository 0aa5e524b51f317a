#include "frontend/export/xlsx/workbook_file.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frontend/export/xlsx/new_workbook.h"
#include "frontend/export/xlsx/package_xml.h"
#include "frontend/export/xlsx/xml_stream.h"
#include "frontend/package/compound_file.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view sheetType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml";
constexpr std::string_view plainType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml";
constexpr std::string_view macroType = "application/vnd.ms-excel.sheet.macroEnabled.main+xml";

/// The types of workbooks that are XML: ordinary ones, templates, add-ins.
bool isWorkbookType(std::string_view type) {
    constexpr std::array<std::string_view, 5> known{
        plainType, macroType, "application/vnd.openxmlformats-officedocument.spreadsheetml.template.main+xml",
        "application/vnd.ms-excel.template.macroEnabled.main+xml",
        "application/vnd.ms-excel.addin.macroEnabled.main+xml"};
    return std::find(known.begin(), known.end(), type) != known.end();
}

PackageResult refused(SystemText reason) { return {PackageProblem::damaged, reason}; }

/// Why a compound file is no workbook that can be changed here.
PackageResult refusedCompound(std::string_view bytes) {
    CompoundFile file;
    if (file.read(bytes) && file.find("EncryptedPackage")) {
        return refused("it is protected by a password"_text);
    }
    return refused("it is a workbook of the older kind, XLS"_text);
}

}  // namespace

PackageResult WorkbookFile::begin(WorkbookKind kind, const WorkbookProperties& properties) {
    PackageResult result = package_.begin();
    main_ = "xl/workbook.xml";
    if (result) {
        result =
            beginWorkbook(package_, main_, kind == WorkbookKind::xlsm, properties.title, properties.language);
    }
    std::string xml;
    if (result) {
        result = package_.read(main_, xml, mostOfATree);
    }
    package_.setContentType(main_, kind == WorkbookKind::xlsm ? macroType : plainType);
    return result ? list_.parse(std::move(xml)) : result;
}

PackageResult WorkbookFile::open(std::string bytes) {
    if (CompoundFile::isOne(bytes)) {
        return refusedCompound(bytes);
    }
    PackageResult result = package_.open(std::move(bytes));
    if (result.problem == PackageProblem::notAnArchive) {
        return refused("it is no workbook"_text);
    }
    return result ? openParts() : result;
}

PackageResult WorkbookFile::openParts() {
    std::vector<PartRelation> relations;
    if (PackageResult result = package_.relations("", relations); !result) {
        return result;
    }
    for (const PartRelation& relation : relations) {
        if (relation.type == "officeDocument" && main_.empty()) {
            main_ = relation.target;
        }
        isSigned_ |= relation.type == "origin";
    }
    if (main_.empty() || !package_.has(main_)) {
        return refused("it is no workbook"_text);
    }
    const std::string type = package_.contentType(main_);
    if (type.find("sheet.binary") != std::string::npos) {
        return refused("it is a binary workbook, XLSB"_text);
    }
    if (!isWorkbookType(type)) {
        return refused("it is no workbook"_text);
    }
    std::string xml;
    PackageResult result = package_.read(main_, xml, mostOfATree);
    return result ? list_.parse(std::move(xml)) : result;
}

bool WorkbookFile::hasMacroType() const { return package_.contentType(main_) == macroType; }

void WorkbookFile::takeMacroType() {
    if (package_.contentType(main_) == plainType) {
        package_.setContentType(main_, macroType);
    }
}

PackageResult WorkbookFile::addSheet(std::string_view name, std::string& part) {
    const std::string folder = main_.substr(0, main_.rfind('/') + 1);
    part = package_.freeName(folder + "worksheets/sheet", ".xml");
    const bool isFirst = list_.sheets().empty();
    package_.set(part, emptySheet(isFirst && hasMacroType() ? firstSheetCodeName : "", isFirst));
    package_.setContentType(part, sheetType);
    std::string id;
    PackageResult result = package_.relate(main_, officeRelationType("worksheet"), part, id);
    if (result) {
        result = countSheetsInProperties(name);
    }
    if (result) {
        list_.add(name, id);
    }
    return result;
}

PackageResult WorkbookFile::sheetPart(std::size_t sheet, std::string& part) const {
    std::vector<PartRelation> relations;
    part.clear();
    if (PackageResult result = package_.relations(main_, relations); !result) {
        return result;
    }
    const std::string id = list_.sheets()[sheet].relation;
    for (const PartRelation& relation : relations) {
        if (relation.id == id && relation.type == "worksheet" && package_.has(relation.target)) {
            part = relation.target;
        }
    }
    return {};
}

PackageResult WorkbookFile::replaceSheet(std::size_t sheet, std::string& part) {
    std::set<std::string> before;
    PackageResult result = package_.reachable(before);
    std::string old;
    if (result) {
        result = sheetPart(sheet, old);
    }
    SheetSurvey survey;
    if (result && !old.empty()) {
        // What macros call the sheet stays; a sheet that cannot be read has no name to keep.
        static_cast<void>(surveySheet(package_.source(old), survey));
    }
    if (!result) {
        return result;
    }
    if (old.empty()) {
        const std::string oldRelation = list_.sheets()[sheet].relation;
        part = package_.freeName(main_.substr(0, main_.rfind('/') + 1) + "worksheets/sheet", ".xml");
        std::string id;
        result = package_.relate(main_, officeRelationType("worksheet"), part, id);
        list_.relate(sheet, id);
        if (result) {
            result = package_.unrelate(main_, oldRelation);
        }
        package_.setContentType(part, sheetType);
    } else {
        part = old;
        if (package_.has(relationsPart(part))) {
            package_.remove(relationsPart(part));
        }
    }
    package_.set(part, emptySheet(survey.codeName, false));
    list_.dropBuiltInNames(sheet);
    return result ? dropUnreachable(before) : result;
}

PackageResult WorkbookFile::dropUnreachable(const std::set<std::string>& before) {
    std::set<std::string> after;
    PackageResult result = package_.reachable(after);
    for (const std::string& part : before) {
        if (result && !after.contains(part) && package_.has(part)) {
            package_.remove(part);
            if (package_.has(relationsPart(part))) {
                package_.remove(relationsPart(part));
            }
        }
    }
    return result;
}

/// A pivot table is one piece: its fields above the table, which stand a row apart, and all of its cells.
PackageResult WorkbookFile::addPivotTable(const std::string& part, std::vector<Table>& tables) const {
    std::string text;
    PackageXml xml;
    PackageResult result = package_.read(part, text, mostOfATree);
    if (result) {
        result = xml.parse(std::move(text), "pivotTableDefinition");
    }
    const pugi::xml_node location = childOf(xml.root(), "location");
    std::optional<SheetRange> range = readRange(attributeOf(location, "ref"));
    if (result && range) {
        const std::size_t fields = numberOr(attributeOf(location, "rowPageCount"), 0);
        const auto above =
            static_cast<std::uint32_t>(fields == 0 ? 0 : std::min<std::size_t>(fields + 1, range->row));
        range->row -= above;
        range->rows += above;
        tables.push_back({std::string(attributeOf(xml.root(), "name")), *range, range->rows, 0});
    }
    return result;
}

PackageResult WorkbookFile::tables(const std::string& part, const SheetSurvey& survey,
                                   std::vector<Table>& tables) const {
    std::vector<PartRelation> relations;
    PackageResult result = package_.relations(part, relations);
    for (const PartRelation& relation : relations) {
        const bool isNamed =
            std::find(survey.tables.begin(), survey.tables.end(), relation.id) != survey.tables.end();
        if (result && relation.type == "pivotTable") {
            result = addPivotTable(relation.target, tables);
        }
        if (!result || !isNamed || relation.type != "table") {
            continue;
        }
        std::string text;
        PackageXml xml;
        result = package_.read(relation.target, text, mostOfATree);
        if (result) {
            result = xml.parse(std::move(text), "table");
        }
        const auto range = readRange(attributeOf(xml.root(), "ref"));
        if (result && range) {
            tables.push_back(
                {std::string(attributeOf(xml.root(), "displayName")), *range,
                 static_cast<std::uint32_t>(numberOr(attributeOf(xml.root(), "headerRowCount"), 1) & 0xFFU),
                 static_cast<std::uint32_t>(numberOr(attributeOf(xml.root(), "totalsRowCount"), 0) & 0xFFU)});
        }
    }
    return result;
}

PackageResult WorkbookFile::sharedPart(std::string_view relation, std::string_view content,
                                       std::string_view type, std::string& part) {
    std::vector<PartRelation> relations;
    if (PackageResult result = package_.relations(main_, relations); !result) {
        return result;
    }
    for (const PartRelation& each : relations) {
        if (each.type == relation && !each.isOutside && package_.has(each.target)) {
            part = each.target;
            return {};
        }
    }
    part = main_.substr(0, main_.rfind('/') + 1) + std::string(relation) + ".xml";
    if (package_.has(part)) {
        part = package_.freeName(main_.substr(0, main_.rfind('/') + 1) + std::string(relation), ".xml");
    }
    package_.set(part, std::string(content));
    package_.setContentType(part, type);
    std::string id;
    return package_.relate(main_, officeRelationType(relation), part, id);
}

PackageResult WorkbookFile::dropCalculationOrder() {
    std::vector<PartRelation> relations;
    PackageResult result = package_.relations(main_, relations);
    for (const PartRelation& relation : relations) {
        if (result && relation.type == "calcChain") {
            package_.remove(relation.target);
            result = package_.unrelate(main_, relation.id);
        }
    }
    return result;
}

/// The properties list the sheets by name, those with rows and columns first. Where they do so plainly, the
/// new one is added.
PackageResult WorkbookFile::countSheetsInProperties(std::string_view added) {
    std::vector<PartRelation> relations;
    PackageResult result = package_.relations("", relations);
    const auto found = std::find_if(relations.begin(), relations.end(), [](const PartRelation& relation) {
        return relation.type == "extended-properties";
    });
    if (!result || found == relations.end() || !package_.has(found->target)) {
        return result;
    }
    std::string text;
    PackageXml xml;
    if (!package_.read(found->target, text, mostOfATree) || !xml.parse(std::move(text), "Properties")) {
        return {};  // whatever it is, nobody reads it for more than to show it
    }
    const pugi::xml_node pairs = childOf(childOf(xml.root(), "HeadingPairs"), "vector");
    const pugi::xml_node titles = childOf(childOf(xml.root(), "TitlesOfParts"), "vector");
    const pugi::xml_node firstCount = childOf(nextOf(childOf(pairs, "variant")), "i4");
    const std::size_t count = numberOr(firstCount.child_value(), 0);
    pugi::xml_node last = childOf(titles, "lpstr");
    for (std::size_t i = 1; i < count && last; ++i) {
        last = nextOf(last);
    }
    if (!last || count != list_.sheets().size()) {
        return {};
    }
    firstCount.text().set(std::to_string(count + 1).c_str());
    pugi::xml_node parent = last.parent();
    pugi::xml_node title = parent.insert_child_after(last.name(), last);
    title.text().set(std::string(added).c_str());
    setAttribute(parent, "size", std::to_string(numberOr(attributeOf(parent, "size"), count) + 1));
    package_.set(found->target, xml.text());
    return {};
}

PackageResult WorkbookFile::write(const ByteSink& sink) {
    package_.set(main_, list_.text());
    return package_.write(sink);
}

}  // namespace vexa::frontend
