#include "frontend/export/xlsx/sheet_insertion.h"

#include <gtest/gtest.h>

#include "tests/unit/xlsx/workbook_samples.h"

namespace vexa::frontend {
namespace {

const std::string relationsSpace = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
const std::string packageSpace = "http://schemas.openxmlformats.org/package/2006/relationships";

std::string relations(const std::map<std::string, std::string>& targets) {
    std::string xml = "<Relationships xmlns=\"" + packageSpace + "\">";
    int number = 0;
    for (const auto& [target, type] : targets) {
        xml += "<Relationship Id=\"rId" + std::to_string(++number) + "\" Type=\"" + relationsSpace + type +
               "\" Target=\"" + target + "\"/>";
    }
    return xml + "</Relationships>";
}

/// Where the first own cell of an export comes to stand.
std::string placeIn(const std::string& sheet, SheetLocation location, const Parts& more = {}) {
    ContentMaker maker;
    maker.number(0, 0, 4711);
    const std::string rows =
        insertInto(workbookWith(sheet, more), maker.content, modifying("Data", location)).rows();
    const std::size_t end = rows.find("\" s=\"1\"><v>4711");
    const std::size_t begin = rows.rfind('"', end - 1);
    return end == std::string::npos ? rows : rows.substr(begin + 1, end - begin - 1);
}

TEST(SheetInsertion, BeginsBelowOrBeside) {
    const std::string values =
        "<sheetData><row r=\"2\"><c r=\"C2\"><v>1</v></c><c r=\"F2\" s=\"1\"/></row><row "
        "r=\"9\"/></sheetData>";
    EXPECT_EQ(placeIn("<sheetData/>", SheetLocation::lastRow), "A1");
    EXPECT_EQ(placeIn("<sheetData/>", SheetLocation::lastColumn), "A1");
    EXPECT_EQ(placeIn(values, SheetLocation::lastRow), "A4");
    EXPECT_EQ(placeIn(values, SheetLocation::lastColumn), "E1");
    const std::string merged = values + "<mergeCells><mergeCell ref=\"B5:G7\"/></mergeCells>";
    EXPECT_EQ(placeIn(merged, SheetLocation::lastRow), "A9");
    EXPECT_EQ(placeIn(merged, SheetLocation::lastColumn), "I1");
}

TEST(SheetInsertion, DrawingsTakePlaces) {
    const std::string sheet = "<sheetFormatPr defaultRowHeight=\"10\"/><sheetData/><drawing r:id=\"rId1\"/>";
    const auto placed = [&](const std::string& anchor, SheetLocation location) {
        return placeIn(
            sheet, location,
            {{"xl/worksheets/_rels/sheet1.xml.rels", relations({{"../drawings/d.xml", "drawing"}})},
             {"xl/drawings/d.xml", "<xdr:wsDr xmlns:xdr=\"x\">" + anchor + "</xdr:wsDr>"}});
    };
    const std::string two =
        "<xdr:twoCellAnchor><xdr:from><xdr:col>1</xdr:col><xdr:row>1</xdr:row></xdr:from><xdr:to><xdr:col>4</"
        "xdr:col>"
        "<xdr:colOff>0</xdr:colOff><xdr:row>6</xdr:row><xdr:rowOff>5</xdr:rowOff></xdr:to></"
        "xdr:twoCellAnchor>";
    EXPECT_EQ(placed(two, SheetLocation::lastRow), "A9");
    EXPECT_EQ(placed(two, SheetLocation::lastColumn), "F1");
    const std::string one =
        "<xdr:oneCellAnchor><xdr:from><xdr:col>1</xdr:col><xdr:row>1</xdr:row></xdr:from><xdr:ext "
        "cx=\"635000\" "
        "cy=\"317500\"/></xdr:oneCellAnchor>";
    EXPECT_EQ(placed(one, SheetLocation::lastRow), "A6");
    EXPECT_EQ(placed(one, SheetLocation::lastColumn), "E1");
    const std::string nowhere =
        "<xdr:absoluteAnchor><xdr:pos x=\"0\" y=\"0\"/><xdr:ext cx=\"127\" cy=\"127\"/></xdr:absoluteAnchor>";
    EXPECT_EQ(placed(nowhere, SheetLocation::lastRow), "A3");
}

TEST(SheetInsertion, CopiesEverythingElse) {
    const std::string other = "<any>\r\n<thing/> &#65;</any>";
    const std::string bytes =
        workbookWith("<sheetData/>",
                     {{"xl/theme/theme1.xml", other}, {"xl/vbaProject.bin", "\x01\x02"}, {"custom/x", ""}});
    const Parts before = partsOf(bytes);
    for (const WorkbookExport& options : {modifying("DATA"), creating("New"), creating("data")}) {
        const Inserted inserted = insertInto(bytes, smallContent(), options);
        ASSERT_TRUE(inserted.done) << inserted.reason;
        for (const char* part :
             {"xl/theme/theme1.xml", "xl/vbaProject.bin", "custom/x", "xl/worksheets/sheet2.xml"}) {
            EXPECT_EQ(inserted.parts.at(part), before.at(part)) << part;
        }
    }
}

TEST(SheetInsertion, AddsASheetAtTheEnd) {
    const Inserted inserted =
        insertInto(workbookWith("<sheetData/>"), smallContent(), creating("New & other"));
    ASSERT_TRUE(inserted.done) << inserted.reason;
    EXPECT_NE(
        inserted.parts.at("xl/workbook.xml")
            .find("r:id=\"rId2\"/><sheet name=\"New &amp; other\" sheetId=\"8\" r:id=\"rId4\"/></sheets>"),
        std::string::npos)
        << inserted.parts.at("xl/workbook.xml");
    EXPECT_TRUE(inserted.parts.contains("xl/worksheets/sheet3.xml"));
    EXPECT_EQ(inserted.parts.at("xl/workbook.xml").find("fullCalcOnLoad"), std::string::npos);
}

TEST(SheetInsertion, AReplacedSheetTakesItsBelongingsAlong) {
    const Parts more{
        {"xl/worksheets/_rels/sheet1.xml.rels",
         relations({{"../drawings/d1.xml", "drawing"}, {"../comments1.xml", "comments"}})},
        {"xl/drawings/d1.xml", "<xdr:wsDr xmlns:xdr=\"x\"/>"},
        {"xl/drawings/_rels/d1.xml.rels",
         relations({{"../charts/c1.xml", "chart"}, {"../media/both.png", "image"}})},
        {"xl/charts/c1.xml", "<c/>"},
        {"xl/media/both.png", "p"},
        {"xl/comments1.xml", "<comments/>"},
        {"xl/worksheets/_rels/sheet2.xml.rels", relations({{"../media/both.png", "image"}})},
        {"xl/workbook.xml",
         "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" xmlns:r=\"" +
             relationsSpace.substr(0, relationsSpace.size() - 1) +
             "\"><sheets><sheet name=\"Data\" sheetId=\"4\" state=\"hidden\" r:id=\"rId1\"/><sheet "
             "name=\"Other\" "
             "sheetId=\"7\" r:id=\"rId2\"/></sheets><definedNames><definedName name=\"_xlnm.Print_Area\" "
             "localSheetId=\"0\">Data!$A$1</definedName><definedName name=\"own\" "
             "localSheetId=\"0\">1</definedName>"
             "<definedName name=\"_xlnm.Print_Area\" "
             "localSheetId=\"1\">Other!$A$1</definedName></definedNames>"
             "<pivotCaches/></workbook>"}};
    const Inserted inserted = insertInto(
        workbookWith("<sheetPr codeName=\"Tab7\"/><sheetData><row r=\"1\"><c r=\"A1\"><f>1</f></c></row>"
                     "</sheetData><drawing r:id=\"rId1\"/>",
                     more),
        smallContent(), creating("DATA"));
    ASSERT_TRUE(inserted.done) << inserted.reason;
    for (const char* gone : {"xl/drawings/d1.xml", "xl/drawings/_rels/d1.xml.rels", "xl/charts/c1.xml",
                             "xl/comments1.xml", "xl/worksheets/_rels/sheet1.xml.rels"}) {
        EXPECT_FALSE(inserted.parts.contains(gone)) << gone;
    }
    EXPECT_TRUE(inserted.parts.contains("xl/media/both.png"));
    EXPECT_NE(inserted.sheet().find("<sheetPr codeName=\"Tab7\"/>"), std::string::npos);
    EXPECT_EQ(inserted.sheet().find("<f>"), std::string::npos);
    const std::string& list = inserted.parts.at("xl/workbook.xml");
    EXPECT_NE(list.find("<sheet name=\"Data\" sheetId=\"4\" state=\"hidden\" r:id=\"rId1\"/>"),
              std::string::npos);
    EXPECT_NE(
        list.find("<definedNames><definedName name=\"own\" localSheetId=\"0\">1</definedName><definedName "
                  "name=\"_xlnm.Print_Area\" localSheetId=\"1\">"),
        std::string::npos)
        << list;
    EXPECT_NE(list.find("<calcPr fullCalcOnLoad=\"1\"/><pivotCaches/>"), std::string::npos) << list;
}

TEST(SheetInsertion, AsksForACalculationWhereValuesWent) {
    const Parts chain{
        {"xl/calcChain.xml", "<calcChain/>"},
        {"xl/_rels/workbook.xml.rels", relations({{"calcChain.xml", "calcChain"},
                                                  {"styles.xml", "styles"},
                                                  {"worksheets/sheet1.xml", "worksheet"},
                                                  {"worksheets/sheet2.xml", "worksheet"}})},
        {"xl/workbook.xml",
         "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" xmlns:q=\"" +
             relationsSpace.substr(0, relationsSpace.size() - 1) +
             "\"><sheets><sheet name=\"Data\" sheetId=\"4\" q:id=\"rId3\"/></sheets><calcPr "
             "calcId=\"1\"/></workbook>"}};
    const std::string rows =
        "<sheetData><row r=\"1\"><c r=\"A1\"><f>2</f><v>2</v></c><c r=\"B1\"><v>2</v></c></row></sheetData>";
    const auto at = [&](const std::string& cell) {
        return insertInto(workbookWith(rows, chain), smallContent(),
                          modifying("Data", SheetLocation::startCell, cell));
    };
    const Inserted overFormula = at("A1");
    EXPECT_FALSE(overFormula.parts.contains("xl/calcChain.xml"));
    EXPECT_EQ(overFormula.parts.at("xl/_rels/workbook.xml.rels").find("calcChain"), std::string::npos);
    EXPECT_NE(overFormula.parts.at("xl/workbook.xml").find("<calcPr calcId=\"1\" fullCalcOnLoad=\"1\"/>"),
              std::string::npos);
    const Inserted overValue = at("B1");
    EXPECT_TRUE(overValue.parts.contains("xl/calcChain.xml"));
    EXPECT_NE(overValue.parts.at("xl/workbook.xml").find("fullCalcOnLoad"), std::string::npos);
    const Inserted noFormulas =
        insertInto(workbookWith("<sheetData><row r=\"1\"><c r=\"A1\"><v>2</v></c></row></sheetData>"),
                   smallContent(), modifying("Data"));
    EXPECT_EQ(noFormulas.parts.at("xl/workbook.xml").find("fullCalcOnLoad"), std::string::npos);
}

TEST(SheetInsertion, CountsDaysAsTheWorkbookDoes) {
    ContentMaker maker;
    maker.number(0, 0, 43831.5).number(0, 1, 0.5).number(0, 2, 2000).number(0, 3, 1461);
    maker.content.styles.resize(3);
    maker.content.styles[1].numberFormat = "[$-409]dd\\-mmm\\-yyyy\\ hh:mm:ss";
    maker.content.styles[2].numberFormat = "[hh]:mm:ss";
    maker.content.cells[0].style = 1;
    maker.content.cells[1].style = 2;
    maker.content.cells[3].style = 1;
    const auto values = [&maker](const std::string& properties) {
        const std::string list =
            "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" xmlns:q=\"" +
            relationsSpace.substr(0, relationsSpace.size() - 1) + "\">" + properties +
            "<sheets><sheet name=\"Data\" sheetId=\"4\" q:id=\"rId1\"/></sheets></workbook>";
        const Inserted inserted = insertInto(workbookWith("<sheetData/>", {{"xl/workbook.xml", list}}),
                                             maker.content, modifying("Data"));
        const std::string rows = inserted.rows();
        std::string found;
        for (std::size_t at = rows.find("<v>"); at != std::string::npos; at = rows.find("<v>", at + 1)) {
            found += rows.substr(at + 3, rows.find('<', at + 3) - at - 3) + " ";
        }
        if (const auto strings = inserted.parts.find("xl/sharedStrings.xml");
            strings != inserted.parts.end()) {
            const std::size_t text = strings->second.find("-1903 00:00:00");
            found += text == std::string::npos ? "" : strings->second.substr(text - 6, 20);
        }
        return found;
    };
    // The last one is before that, and a text: the first of those that cells share.
    const std::string from1904 = "42369.5 0.5 2000 0 31-Dec-1903 00:00:00";
    const std::string asTheyAre = "43831.5 0.5 2000 1461 ";
    EXPECT_EQ(values("<workbookPr date1904=\"1\"/>"), from1904);
    EXPECT_EQ(values("<workbookPr codeName=\"Book\" date1904=\"true\"/>"), from1904);
    EXPECT_EQ(values("<workbookPr date1904=\"0\"/>"), asTheyAre);
    EXPECT_EQ(values("<workbookPr/>"), asTheyAre);
    EXPECT_EQ(values(""), asTheyAre);
}

TEST(SheetInsertion, LeavesTablesWhole) {
    const Parts more{{"xl/worksheets/_rels/sheet1.xml.rels", relations({{"../tables/t.xml", "table"}})},
                     {"xl/tables/t.xml", "<table displayName=\"Sales\" ref=\"B2:D5\"/>"}};
    const std::string sheet = "<sheetData/><tableParts><tablePart r:id=\"rId1\"/></tableParts>";
    ContentMaker maker;
    maker.number(0, 0, 1);
    const auto at = [&](const SheetContent& content, const std::string& cell) {
        return insertInto(workbookWith(sheet, more), content,
                          modifying("Data", SheetLocation::startCell, cell));
    };
    EXPECT_FALSE(at(maker.content, "C2").done);
    EXPECT_NE(at(maker.content, "C2").reason.find("Sales"), std::string::npos);
    EXPECT_TRUE(at(maker.content, "C3").done);
    EXPECT_FALSE(at(smallContent(), "C3").done);
    EXPECT_TRUE(at(smallContent(), "E3").done);
    EXPECT_EQ(placeIn(sheet, SheetLocation::lastRow, more), "A7");
}

TEST(SheetInsertion, LeavesPivotTablesWhole) {
    const Parts more{
        {"xl/worksheets/_rels/sheet1.xml.rels", relations({{"../pivotTables/p.xml", "pivotTable"}})},
        {"xl/pivotTables/p.xml",
         "<pivotTableDefinition name=\"Sums\"><location ref=\"B5:D7\" "
         "rowPageCount=\"1\"/></pivotTableDefinition>"}};
    ContentMaker maker;
    maker.number(0, 0, 1);
    const auto at = [&](const std::string& cell) {
        return insertInto(workbookWith("<sheetData/>", more), maker.content,
                          modifying("Data", SheetLocation::startCell, cell));
    };
    for (const char* const inside : {"B5", "C6", "D7", "B3"}) {
        EXPECT_FALSE(at(inside).done) << inside;
        EXPECT_NE(at(inside).reason.find("Sums"), std::string::npos);
    }
    for (const char* const outside : {"A5", "B8", "E6", "B2"}) EXPECT_TRUE(at(outside).done) << outside;
    EXPECT_EQ(placeIn("<sheetData/>", SheetLocation::lastRow, more), "A9");
}

TEST(SheetInsertion, KnowsTheLimitsOfSheetsAndNames) {
    const std::string full = "<sheetData><row r=\"1048575\"><c r=\"A1048575\"><v>1</v></c></row></sheetData>";
    EXPECT_EQ(insertInto(workbookWith(full), smallContent(), modifying("Data")).error, ExportError::other);
    EXPECT_EQ(insertInto(workbookWith("<sheetData/>"), smallContent(),
                         modifying("Data", SheetLocation::startCell, "XFD1"))
                  .error,
              ExportError::tooManyColumns);
    EXPECT_EQ(insertInto(workbookWith("<sheetData/>"), smallContent(),
                         modifying("Data", SheetLocation::startCell, "nowhere"))
                  .error,
              ExportError::other);
    EXPECT_EQ(insertInto(workbookWith("<sheetData/>"), smallContent(), creating(std::string(32, 'a'))).error,
              ExportError::sheetNameTooLong);
    EXPECT_EQ(insertInto(workbookWith("<sheetData/>"), smallContent(), modifying("a/b")).error,
              ExportError::sheetNameForbidden);
}

TEST(SheetInsertion, RefusesWhatItCannotKeep) {
    const auto reason = [](const std::string& bytes) {
        const Inserted inserted = insertInto(bytes, smallContent(), modifying("Data"));
        EXPECT_FALSE(inserted.done);
        return inserted.reason;
    };
    EXPECT_EQ(reason("text"), "it is no workbook");
    EXPECT_EQ(reason(archiveWith({{"a", "b"}})), "the entry [Content_Types].xml");
    const std::string types = partsOf(workbookWith("")).at("[Content_Types].xml");
    const auto withType = [&](const std::string& type) {
        std::string xml = types;
        const std::string usual = "vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml";
        xml.replace(xml.find(usual), usual.size(), type);
        return workbookWith("<sheetData/>", {{"[Content_Types].xml", xml}});
    };
    EXPECT_EQ(reason(withType("vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml")),
              "it is no workbook");
    EXPECT_EQ(reason(withType("vnd.ms-excel.sheet.binary.macroEnabled.main")),
              "it is a binary workbook, XLSB");
    EXPECT_NE(
        reason(workbookWith("", {{"xl/workbook.xml",
                                  "<workbook xmlns=\"http://purl.oclc.org/ooxml/spreadsheetml/main\"/>"}}))
            .find("strict"),
        std::string::npos);
    EXPECT_FALSE(reason(workbookWith("", {{"xl/workbook.xml", "<workbook"}})).empty());
    EXPECT_FALSE(reason(workbookWith("<sheetData>", {})).empty());
}

TEST(SheetInsertion, KnowsASignature) {
    const auto isSigned = [](const std::string& more) {
        WorkbookFile workbook;
        EXPECT_TRUE(workbook.open(workbookWith(
            "<sheetData/>",
            {{"_rels/.rels", "<Relationships xmlns=\"" + packageSpace + "\"><Relationship Id=\"a\" Type=\"" +
                                 relationsSpace + "officeDocument\" Target=\"xl/workbook.xml\"/>" + more +
                                 "</Relationships>"}})));
        return workbook.isSigned();
    };
    EXPECT_FALSE(isSigned(""));
    EXPECT_TRUE(isSigned("<Relationship Id=\"b\" Type=\"" + packageSpace +
                         "/digital-signature/origin\" Target=\"_xmlsignatures/origin.sigs\"/>"));
}

TEST(SheetInsertion, ANewWorkbookHasWhatReadersLookFor) {
    const Inserted inserted = insertIntoNew(smallContent());
    ASSERT_TRUE(inserted.done) << inserted.reason;
    EXPECT_NE(inserted.parts.at("docProps/core.xml").find("<dc:title>A title &amp; more</dc:title>"),
              std::string::npos);
    EXPECT_NE(
        inserted.parts.at("xl/workbook.xml").find("<sheet name=\"Output\" sheetId=\"1\" r:id=\"rId1\"/>"),
        std::string::npos);
    EXPECT_EQ(inserted.rows(),
              "<row r=\"1\"><c r=\"A1\" s=\"1\" t=\"s\"><v>0</v></c><c r=\"B1\" s=\"1\"/></row><row "
              "r=\"2\"><c r=\"A2\" "
              "s=\"1\"><v>1.5</v></c><c r=\"B2\" s=\"1\"><v>100000</v></c></row>");
    EXPECT_TRUE(inserted.bytes == insertIntoNew(smallContent()).bytes);
}

}  // namespace
}  // namespace vexa::frontend
