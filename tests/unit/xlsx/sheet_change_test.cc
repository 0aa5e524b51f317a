#include "frontend/export/xlsx/sheet_change.h"

#include <gtest/gtest.h>

#include "tests/unit/xlsx/workbook_samples.h"

namespace vexa::frontend {
namespace {

SheetContent oneNumber() {
    ContentMaker maker;
    maker.number(0, 0, 7);
    return maker.content;
}

/// What becomes of the rows when a number is put at a place.
std::string rowsWith(const std::string& rows, const std::string& place) {
    return insertInto(workbookWith("<sheetData>" + rows + "</sheetData>"), oneNumber(),
                      modifying("Data", SheetLocation::startCell, place))
        .rows();
}

/// What becomes of what stands behind the rows.
std::string behindWith(const std::string& behind, const std::string& place) {
    const std::string sheet = insertInto(workbookWith("<sheetData/>" + behind), oneNumber(),
                                         modifying("Data", SheetLocation::startCell, place))
                                  .sheet();
    const std::size_t begin = sheet.find("</sheetData>") + 12;
    return sheet.substr(begin, sheet.find("</worksheet>") - begin);
}

TEST(SheetChange, PutsCellsBetweenThoseThatAreThere) {
    EXPECT_EQ(rowsWith("", "B2"), "<row r=\"2\"><c r=\"B2\" s=\"1\"><v>7</v></c></row>");
    EXPECT_EQ(
        rowsWith("<row r=\"2\" spans=\"1:3\" s=\"4\"><c r=\"A2\"/><c r=\"C2\"><v>3</v></c></row>", "B2"),
        "<row r=\"2\" s=\"4\"><c r=\"A2\"/><c r=\"B2\" s=\"1\"><v>7</v></c><c r=\"C2\"><v>3</v></c></row>");
    EXPECT_EQ(rowsWith("<row r=\"2\"><c r=\"B2\" t=\"inlineStr\"><is><t>x</t></is></c></row>", "B2"),
              "<row r=\"2\"><c r=\"B2\" s=\"1\"><v>7</v></c></row>");
    EXPECT_EQ(rowsWith("<row r=\"3\"/>", "A3"), "<row r=\"3\"><c r=\"A3\" s=\"1\"><v>7</v></c></row>");
    EXPECT_EQ(rowsWith("<row r=\"3\"/><row r=\"5\"/>", "A4"),
              "<row r=\"3\"/><row r=\"4\"><c r=\"A4\" s=\"1\"><v>7</v></c></row><row r=\"5\"/>");
    EXPECT_EQ(rowsWith("<row r=\"2\"><c r=\"A2\"/><extLst/></row>", "B2"),
              "<row r=\"2\"><c r=\"A2\"/><c r=\"B2\" s=\"1\"><v>7</v></c><extLst/></row>");
}

TEST(SheetChange, CountsRowsAndCellsThatDoNotSayWhereTheyAre) {
    EXPECT_EQ(
        rowsWith("<row><c><v>1</v></c></row><row><c/><c><v>2</v></c><c/></row><row/>", "B2"),
        "<row r=\"1\"><c><v>1</v></c></row><row r=\"2\"><c r=\"A2\"/><c r=\"B2\" s=\"1\"><v>7</v></c><c "
        "r=\"C2\"/></row><row r=\"3\"/>");
}

TEST(SheetChange, KeepsSharedFormulas) {
    const std::string rows =
        "<row r=\"1\"><c r=\"A1\"><f t=\"shared\" ref=\"A1:A3\" "
        "si=\"0\">B1*2&amp;\"A1\"</f><v>2</v></c></row>"
        "<row r=\"2\"><c r=\"A2\"><f t=\"shared\" si=\"0\"/><v>4</v></c></row>";
    EXPECT_EQ(rowsWith(rows, "A1"),
              "<row r=\"1\"><c r=\"A1\" s=\"1\"><v>7</v></c></row><row r=\"2\"><c "
              "r=\"A2\"><f>B2*2&amp;\"A1\"</f><v>4</v></c></row>");
    EXPECT_EQ(rowsWith(rows, "A2").find("<f>"), std::string::npos);
}

TEST(SheetChange, LeavesTheValuesOfFormulasOfSeveralCells) {
    const std::string rows =
        "<row r=\"1\"><c r=\"A1\" cm=\"1\"><f t=\"array\" ref=\"A1:A2\">B1:B2</f><v>2</v></c></row>"
        "<row r=\"2\"><c r=\"A2\"><v>4</v></c></row>";
    EXPECT_EQ(
        rowsWith(rows, "A2"),
        "<row r=\"1\"><c r=\"A1\"><v>2</v></c></row><row r=\"2\"><c r=\"A2\" s=\"1\"><v>7</v></c></row>");
    EXPECT_NE(rowsWith(rows, "A3").find("<f t=\"array\""), std::string::npos);
}

TEST(SheetChange, DissolvesMergedRangesInTheWay) {
    const std::string merged =
        "<mergeCells count=\"2\"><mergeCell ref=\"A1:B2\"/><mergeCell ref=\"D4:E5\"/></mergeCells>";
    EXPECT_EQ(behindWith(merged, "B2"), "<mergeCells><mergeCell ref=\"D4:E5\"/></mergeCells>");
    EXPECT_EQ(behindWith("<mergeCells count=\"1\"><mergeCell ref=\"A1:B2\"/></mergeCells>", "B2"), "");
}

TEST(SheetChange, TakesPlacesOutOfFormatsAndValidations) {
    EXPECT_EQ(
        behindWith("<conditionalFormatting sqref=\"A1:A3\"><cfRule><formula>A1&gt;B$1</formula></cfRule>"
                   "</conditionalFormatting>",
                   "A1"),
        "<conditionalFormatting sqref=\"A2:A3\"><cfRule><formula>A2&gt;B$1</formula></cfRule>"
        "</conditionalFormatting>");
    EXPECT_EQ(behindWith("<conditionalFormatting sqref=\"A1\"><cfRule/></conditionalFormatting>", "A1"), "");
    EXPECT_EQ(behindWith("<dataValidations count=\"2\"><dataValidation sqref=\"B2\"/><dataValidation "
                         "sqref=\"B1:B3\"><formula1>A1</formula1></dataValidation></dataValidations>",
                         "B2"),
              "<dataValidations><dataValidation sqref=\"B1 B3\"><formula1>A1</formula1></dataValidation>"
              "</dataValidations>");
    EXPECT_EQ(behindWith(
                  "<hyperlinks><hyperlink ref=\"B2\" location=\"x\"/><hyperlink ref=\"A1:A2\"/></hyperlinks>",
                  "A2"),
              "<hyperlinks><hyperlink ref=\"B2\" location=\"x\"/><hyperlink ref=\"A1\"/></hyperlinks>");
}

TEST(SheetChange, TakesPlacesOutOfExtensions) {
    const std::string formats =
        "<x14:conditionalFormattings><x14:conditionalFormatting><x14:cfRule><xm:f>A1&gt;B$1</xm:f></"
        "x14:cfRule>"
        "<xm:sqref>A1:A3</xm:sqref></x14:conditionalFormatting></x14:conditionalFormattings>";
    const std::string lines =
        "<x14:sparklineGroups><x14:sparklineGroup><x14:sparklines><x14:sparkline><xm:f>Data!B1:B3</xm:f>"
        "<xm:sqref>D1</xm:sqref></x14:sparkline></x14:sparklines></x14:sparklineGroup></x14:sparklineGroups>";
    const std::string validations =
        "<x14:dataValidations count=\"2\"><x14:dataValidation><xm:sqref>A1</xm:sqref></x14:dataValidation>"
        "<x14:dataValidation><xm:sqref>E1</xm:sqref></x14:dataValidation></x14:dataValidations>";
    const auto list = [](const std::string& inside) {
        return inside.empty() ? inside : "<extLst>" + inside + "</extLst>";
    };
    const auto ext = [](const std::string& inside) { return "<ext uri=\"{1}\">" + inside + "</ext>"; };
    const std::string all = list(ext(formats) + "\n" + ext(lines) + ext(validations));
    EXPECT_EQ(behindWith(all, "C1"), all);
    std::string cut = formats;
    cut.replace(cut.find("A1&gt;"), 6, "A2&gt;");
    cut.replace(cut.find("A1:A3"), 5, "A2:A3");
    std::string fewer = validations;
    fewer.replace(fewer.find("\"2\""), 3, "\"1\"");
    fewer.erase(fewer.find("<x14:dataValidation>"), 64);
    EXPECT_EQ(behindWith(all, "A1"), list(ext(cut) + "\n" + ext(lines) + ext(fewer)));
    EXPECT_EQ(behindWith(list(ext(lines)), "D1"), "");
    EXPECT_EQ(behindWith(list(ext(lines) + ext("<y/>")), "D1"), list(ext("<y/>")));
}

TEST(SheetChange, PutsElementsInTheirOrder) {
    ContentMaker maker;
    maker.text(0, 0, "a").blank(0, 1);
    maker.content.merged.push_back({0, 0, 1, 2});
    maker.content.widths[1] = 75;
    maker.content.pageBreaks.push_back(3);
    SheetPicture& picture = maker.content.pictures.emplace_back();
    picture.png = "png";
    picture.width = picture.height = 10;
    const std::string sheet =
        insertInto(
            workbookWith(
                "<sheetPr/><dimension ref=\"C3\"/><sheetData/><phoneticPr/><pageMargins/><legacyDrawing/>"
                "<mc:AlternateContent xmlns:mc=\"m\"><controls/></mc:AlternateContent><extLst/>"),
            maker.content, modifying("Data", SheetLocation::startCell, "B2"))
            .sheet();
    std::string order;
    XmlStream xml(textSource(sheet));
    while (xml.next()) {
        if (xml.isStart() && xml.depth() == 1) order += std::string(xml.localName()) + " ";
    }
    EXPECT_EQ(order,
              "sheetPr dimension cols sheetData mergeCells phoneticPr pageMargins rowBreaks ignoredErrors "
              "drawing legacyDrawing "
              "AlternateContent extLst ");
    EXPECT_NE(
        sheet.find(
            "<dimension ref=\"B2:C3\"/><cols><col min=\"3\" max=\"3\" width=\"14.2857\" customWidth=\"1\"/>"),
        std::string::npos)
        << sheet;
    EXPECT_NE(sheet.find("<brk id=\"4\" "), std::string::npos) << sheet;
}

TEST(SheetChange, ColumnsOnlyBecomeWider) {
    ContentMaker maker;
    maker.number(0, 0, 1).number(0, 1, 1).number(0, 2, 1);
    maker.content.widths = {{0, 75}, {1, 75}, {2, 75}};
    const std::string sheet =
        insertInto(
            workbookWith("<cols><col min=\"1\" max=\"2\" width=\"9\" style=\"3\"/><col min=\"3\" max=\"5\" "
                         "hidden=\"1\" width=\"2\"/></cols><sheetData/>"),
            maker.content, modifying("Data", SheetLocation::startCell, "B1"))
            .sheet();
    EXPECT_NE(sheet.find(
                  "<cols><col min=\"1\" max=\"1\" width=\"9\" style=\"3\"/><col min=\"2\" max=\"2\" "
                  "width=\"14.2857\" customWidth=\"1\" style=\"3\"/><col min=\"3\" max=\"3\" width=\"2\" "
                  "hidden=\"1\"/><col min=\"4\" max=\"4\" width=\"2\" hidden=\"1\"/><col min=\"5\" max=\"5\" "
                  "width=\"2\" hidden=\"1\"/></cols>"),
              std::string::npos)
        << sheet;
}

TEST(SheetChange, SpeaksTheSheetsOwnWords) {
    const std::string space = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    const std::string sheet =
        "<x:worksheet xmlns:x=\"" + space +
        "\"><x:sheetData><x:row r=\"1\"><x:c r=\"A1\"><x:v>1</x:v></x:c></x:row></x:sheetData></x:worksheet>";
    const Inserted inserted = insertInto(workbookWith("", {{"xl/worksheets/sheet1.xml", sheet}}),
                                         smallContent(), modifying("data"));
    EXPECT_NE(inserted.sheet().find(
                  "<x:v>1</x:v></x:c></x:row><x:row r=\"3\"><x:c r=\"A3\" s=\"1\" t=\"s\"><x:v>0</x:v>"),
              std::string::npos)
        << inserted.sheet();
    EXPECT_NE(
        inserted.sheet().find("<x:mergeCells><x:mergeCell ref=\"A3:B3\"/></x:mergeCells><x:ignoredErrors>"),
        std::string::npos);
}

TEST(SheetChange, RefusesRowsOutOfOrder) {
    for (const std::string rows : {"<row r=\"2\"/><row r=\"1\"/>", "<row r=\"1\"/><row r=\"1\"/>",
                                   "<row r=\"0\"/>", "<row r=\"1048577\"/>", "<row r=\"x\"/>",
                                   "<row><c r=\"B1\"/><c r=\"A1\"/></row>", "<row><c r=\"XFE1\"/></row>"}) {
        const Inserted inserted =
            insertInto(workbookWith("<sheetData>" + rows + "</sheetData>"), oneNumber(), modifying("Data"));
        EXPECT_FALSE(inserted.done) << rows;
        EXPECT_EQ(inserted.error, ExportError::other) << rows;
    }
    EXPECT_FALSE(insertInto(workbookWith("<dimension/>"), oneNumber(), modifying("Data")).done);
}

}  // namespace
}  // namespace vexa::frontend
