#include "tests/unit/xlsx/workbook_samples.h"

#include "frontend/export/xlsx/sheet_insertion.h"
#include "frontend/package/zip_reader.h"
#include "frontend/package/zip_writer.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const std::string mainSpace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const std::string relationTypes = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

std::string relationsXml(const std::string& inside) {
    return std::string(declaration) +
           "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" + inside +
           "</Relationships>";
}

std::string relationXml(const std::string& id, const std::string& type, const std::string& target) {
    return "<Relationship Id=\"" + id + "\" Type=\"" + relationTypes + "/" + type + "\" Target=\"" + target +
           "\"/>";
}

Inserted finish(WorkbookFile& workbook, const SheetContent& content, const WorkbookExport& options) {
    Inserted inserted;
    ExportReport report;
    inserted.done = insertSheet(workbook, content, options, report);
    inserted.error = report.error();
    inserted.reason = report.reason();
    if (inserted.done) {
        inserted.done = static_cast<bool>(workbook.write(gatherInto(inserted.bytes)));
        inserted.parts = partsOf(inserted.bytes);
    }
    return inserted;
}

}  // namespace

ContentMaker::ContentMaker() { content.styles.emplace_back(); }

SheetCell& ContentMaker::add(std::uint32_t row, std::uint16_t column) {
    SheetCell& cell = content.cells.emplace_back();
    cell.row = row;
    cell.column = column;
    content.rows = std::max(content.rows, row + 1);
    content.columns = std::max<std::uint32_t>(content.columns, column + 1U);
    return cell;
}

ContentMaker& ContentMaker::number(std::uint32_t row, std::uint16_t column, double value) {
    SheetCell& cell = add(row, column);
    cell.value = SheetValue::number;
    cell.number = value;
    return *this;
}

ContentMaker& ContentMaker::text(std::uint32_t row, std::uint16_t column, std::string_view text,
                                 std::uint32_t raised) {
    SheetCell& cell = add(row, column);
    cell.value = SheetValue::text;
    cell.textBegin = static_cast<std::uint32_t>(content.texts.size());
    cell.textLength = static_cast<std::uint32_t>(text.size());
    cell.raised = raised;
    content.texts += text;
    return *this;
}

ContentMaker& ContentMaker::blank(std::uint32_t row, std::uint16_t column) {
    add(row, column);
    return *this;
}

SheetContent smallContent() {
    ContentMaker maker;
    maker.text(0, 0, "title").blank(0, 1).number(1, 0, 1.5).number(1, 1, 100'000);
    maker.content.merged.push_back({0, 0, 1, 2});
    return maker.content;
}

std::string archiveWith(const Parts& parts) {
    std::string bytes;
    ZipWriter zip(gatherInto(bytes), workbookLimits, 1);
    for (const auto& [name, content] : parts) {
        static_cast<void>(zip.add(name, content));
    }
    static_cast<void>(zip.finish());
    return bytes;
}

std::string workbookWith(const std::string& sheet, const Parts& more) {
    const std::string types = "application/vnd.openxmlformats-officedocument.spreadsheetml.";
    const auto override = [&types](const std::string& part, const std::string& type) {
        return "<Override PartName=\"/xl/" + part + ".xml\" ContentType=\"" + types + type + "+xml\"/>";
    };
    const std::string root = "<worksheet xmlns=\"" + mainSpace + "\" xmlns:r=\"" + relationTypes + "\">";
    Parts parts{
        {"[Content_Types].xml",
         "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
         "Extension=\"rels\" "
         "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/><Default "
         "Extension=\"xml\" ContentType=\"application/xml\"/>" +
             override("workbook", "sheet.main") + override("worksheets/sheet1", "worksheet") +
             override("worksheets/sheet2", "worksheet") + override("styles", "styles") + "</Types>"},
        {"_rels/.rels", relationsXml(relationXml("rId1", "officeDocument", "xl/workbook.xml"))},
        {"xl/_rels/workbook.xml.rels",
         relationsXml(relationXml("rId1", "worksheet", "worksheets/sheet1.xml") +
                      relationXml("rId2", "worksheet", "/xl/worksheets/sheet2.xml") +
                      relationXml("rId3", "styles", "styles.xml"))},
        {"xl/workbook.xml", "<workbook xmlns=\"" + mainSpace + "\" xmlns:r=\"" + relationTypes +
                                "\"><sheets><sheet name=\"Data\" sheetId=\"4\" r:id=\"rId1\"/><sheet "
                                "name=\"Other\" sheetId=\"7\" r:id=\"rId2\"/></sheets></workbook>"},
        {"xl/worksheets/sheet1.xml", root + sheet + "</worksheet>"},
        {"xl/worksheets/sheet2.xml", root + "<sheetData/></worksheet>"},
        {"xl/styles.xml",
         "<styleSheet xmlns=\"" + mainSpace +
             "\"><fonts count=\"1\"><font><sz val=\"11\"/></font></fonts><fills count=\"1\"><fill/></fills>"
             "<borders count=\"1\"><border/></borders><cellXfs count=\"1\"><xf/></cellXfs></styleSheet>"}};
    for (const auto& [name, content] : more) {
        parts[name] = content;
    }
    return archiveWith(parts);
}

Parts partsOf(const std::string& bytes) {
    Parts parts;
    ZipReader reader(workbookLimits);
    if (reader.open(bytes)) {
        for (std::size_t place = 0; place < reader.count(); ++place) {
            static_cast<void>(reader.read(place, parts[reader.entry(place).name]));
        }
    }
    return parts;
}

std::string Inserted::sheet() const {
    const auto found = parts.find("xl/worksheets/sheet1.xml");
    return found == parts.end() ? "(none)" : found->second;
}

std::string Inserted::rows() const {
    const std::string xml = sheet();
    const std::size_t begin = xml.find("<sheetData>");
    const std::size_t end = xml.find("</sheetData>");
    return begin == std::string::npos || end == std::string::npos ? "(none)"
                                                                  : xml.substr(begin + 11, end - begin - 11);
}

Inserted insertInto(const std::string& bytes, const SheetContent& content, const WorkbookExport& options) {
    WorkbookFile workbook;
    if (const PackageResult result = workbook.open(bytes); !result) {
        Inserted refused;
        refused.error = ExportError::other;
        refused.reason = result.shownDetail();
        return refused;
    }
    return finish(workbook, content, options);
}

WorkbookExport modifying(std::string_view sheet, SheetLocation location, std::string_view startCell) {
    WorkbookExport options;
    options.operation = SheetOperation::modifySheet;
    options.sheet = sheet;
    options.location = location;
    options.startCell = startCell;
    return options;
}

WorkbookExport creating(std::string_view sheet) {
    WorkbookExport options;
    options.operation = SheetOperation::createSheet;
    options.sheet = sheet;
    return options;
}

Inserted insertIntoNew(const SheetContent& content, WorkbookKind kind, WorkbookExport options) {
    WorkbookFile workbook;
    static_cast<void>(workbook.begin(kind, {"A title & more", "en-US"}));
    return finish(workbook, content, options);
}

}  // namespace vexa::frontend
