// Every setter and the attributes that it writes.

#include <gtest/gtest.h>

#include <string>

#include "backend/viewerxml/export_xml.h"
#include "tests/unit/viewerxml/xml_judge.h"

namespace {

using vexa::ExportContentsSpec;
using vexa::ExportEPSSpec;
using vexa::ExportGlobalSpec;
using vexa::ExportPNGSpec;
using vexa::ExportSpec;
using vexa::ExportTextSpec;
using vexa::ExportXLSSpec;
using vexa::MEASUREMENT_TYPE;
using ImageFormat = vexa::ImageFormatSetting::IMAGE_FORMAT;
using WideTables = vexa::WideTablesSetting::WIDE_TABLES;

struct Setting {
    const char* element;
    void (*set)(ExportSpec&);
    const char* written;
};

// The formats that a case writes; `global` and `contents` are always there.
void markPresent(ExportSpec& spec, const std::string& element) {
    spec.doc().setOptionPresent(element == "doc");
    spec.html().setOptionPresent(element == "html");
    spec.report().setOptionPresent(element == "report");
    spec.pdf().setOptionPresent(element == "pdf");
    spec.ppt().setOptionPresent(element == "ppt");
    spec.text().setOptionPresent(element == "text");
    spec.xls().setOptionPresent(element == "xls");
    spec.xlsx().setOptionPresent(element == "xlsx");
    spec.xlsm().setOptionPresent(element == "xlsm");
    spec.bmp().setOptionPresent(element == "bmp");
    spec.emf().setOptionPresent(element == "emf");
    spec.eps().setOptionPresent(element == "eps");
    spec.jpg().setOptionPresent(element == "jpg");
    spec.png().setOptionPresent(element == "png");
    spec.tif().setOptionPresent(element == "tif");
}

std::string expected(const Setting& one) {
    const std::string element = one.element;
    const std::string written = "<" + element + " " + one.written + "/>";
    std::string xml = "<exportSpecification>";
    xml += element == "global" ? written : "<global/>";
    xml += element == "contents" ? written : "<contents/>";
    if (element != "global" && element != "contents") xml += written;
    return xml + "</exportSpecification>";
}

void check(const Setting& one) {
    SCOPED_TRACE(std::string(one.element) + " " + one.written);
    ExportSpec spec;
    markPresent(spec, one.element);
    one.set(spec);
    const std::string xml = vexa::ExportXML::convertToXML(spec);
    EXPECT_EQ(xml, expected(one));
    EXPECT_EQ(vexa::testing::complaintsAbout(xml, vexa::testing::Schema::exportSpecification), "");
}

TEST(ExportSettings, GlobalAndContents) {
    using Print = ExportGlobalSpec::PRINT_OPTION;
    using Type = ExportContentsSpec::EXPORT_TYPE;
    using Layers = ExportContentsSpec::LAYERS_TYPE;
    using Views = ExportContentsSpec::MODELVIEWS_TYPE;
    static constexpr Setting kCases[] = {
        {"global", [](ExportSpec& spec) { spec.global().setName("a"); }, R"(name="a")"},
        {"global", [](ExportSpec& spec) { spec.global().setPrintOption(Print::ALWAYS); },
         R"(printOption="0")"},
        {"global", [](ExportSpec& spec) { spec.global().setPrintOption(Print::NEVER); },
         R"(printOption="1")"},
        {"global", [](ExportSpec& spec) { spec.global().setPrintOption(Print::ERRORS); },
         R"(printOption="2")"},
        {"contents", [](ExportSpec& spec) { spec.contents().setExport(Type::ALL); }, R"(export="0")"},
        {"contents", [](ExportSpec& spec) { spec.contents().setExport(Type::VISIBLE); }, R"(export="1")"},
        {"contents", [](ExportSpec& spec) { spec.contents().setLayers(Layers::PRINTSETTING); },
         R"(layers="0")"},
        {"contents", [](ExportSpec& spec) { spec.contents().setLayers(Layers::ALL); }, R"(layers="1")"},
        {"contents", [](ExportSpec& spec) { spec.contents().setLayers(Layers::VISIBLE); }, R"(layers="2")"},
        {"contents", [](ExportSpec& spec) { spec.contents().setModelViews(Views::PRINTSETTING); },
         R"(modelViews="0")"},
        {"contents", [](ExportSpec& spec) { spec.contents().setModelViews(Views::ALL); },
         R"(modelViews="1")"},
        {"contents", [](ExportSpec& spec) { spec.contents().setModelViews(Views::VISIBLE); },
         R"(modelViews="2")"},
    };
    for (const Setting& one : kCases) check(one);
}

TEST(ExportSettings, Documents) {
    static constexpr Setting kCases[] = {
        {"doc", [](ExportSpec& spec) { spec.doc().setDocumentFile("f"); }, R"(documentFile="f")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setNotesAndCaptions(false); },
         R"(notesAndCaptions="false")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setWideTables(WideTables::ASIS); }, R"(wideTables="0")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setWideTables(WideTables::SHRINK); }, R"(wideTables="1")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setWideTables(WideTables::WRAP); }, R"(wideTables="2")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setPageSizeWidth(MEASUREMENT_TYPE::MM, 210, "210"); },
         R"(pageSizeWidth="210" pageSizeWidthUnit="1" pageSizeWidthText="210")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setPageSizeHeight(MEASUREMENT_TYPE::INCHES, 11, "11."); },
         R"(pageSizeHeight="11" pageSizeHeightUnit="0" pageSizeHeightText="11.")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setTopMargin(MEASUREMENT_TYPE::INCHES, 0.01, ".01"); },
         R"(topMargin="0.01" topMarginUnit="0" topMarginText=".01")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setBottomMargin(MEASUREMENT_TYPE::MM, 1, "1"); },
         R"(bottomMargin="1" bottomMarginUnit="1" bottomMarginText="1")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setLeftMargin(MEASUREMENT_TYPE::MM, 2, "2"); },
         R"(leftMargin="2" leftMarginUnit="1" leftMarginText="2")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setRightMargin(MEASUREMENT_TYPE::MM, 3, "3"); },
         R"(rightMargin="3" rightMarginUnit="1" rightMarginText="3")"},
        {"doc", [](ExportSpec& spec) { spec.doc().setPageBreaks(true); }, R"(pageBreaks="true")"},
        {"ppt", [](ExportSpec& spec) { spec.ppt().setDocumentFile("f"); }, R"(documentFile="f")"},
        {"ppt", [](ExportSpec& spec) { spec.ppt().setNotesAndCaptions(true); }, R"(notesAndCaptions="true")"},
        {"ppt", [](ExportSpec& spec) { spec.ppt().setWideTables(WideTables::WRAP); }, R"(wideTables="2")"},
        {"ppt", [](ExportSpec& spec) { spec.ppt().setSlideSizeWidth(MEASUREMENT_TYPE::MM, 10, "10"); },
         R"(slideSizeWidth="10" slideSizeWidthUnit="1" slideSizeWidthText="10")"},
        {"ppt",
         [](ExportSpec& spec) { spec.ppt().setSlideSizeHeight(MEASUREMENT_TYPE::INCHES, 7.5, "7.50"); },
         R"(slideSizeHeight="7.5" slideSizeHeightUnit="0" slideSizeHeightText="7.50")"},
        {"ppt", [](ExportSpec& spec) { spec.ppt().setTopMargin(MEASUREMENT_TYPE::MM, 1, "1"); },
         R"(topMargin="1" topMarginUnit="1" topMarginText="1")"},
        {"ppt", [](ExportSpec& spec) { spec.ppt().setSlideTitles(true); }, R"(slideTitles="true")"},
        {"pdf", [](ExportSpec& spec) { spec.pdf().setDocumentFile("f"); }, R"(documentFile="f")"},
        {"pdf", [](ExportSpec& spec) { spec.pdf().setEmbedBookmarks(true); }, R"(embedBookmarks="true")"},
        {"pdf", [](ExportSpec& spec) { spec.pdf().setEmbedFonts(false); }, R"(embedFonts="false")"},
    };
    for (const Setting& one : kCases) check(one);
}

TEST(ExportSettings, Pages) {
    static constexpr Setting kCases[] = {
        {"html", [](ExportSpec& spec) { spec.html().setDocumentFile("f"); }, R"(documentFile="f")"},
        {"html", [](ExportSpec& spec) { spec.html().setNotesAndCaptions(true); },
         R"(notesAndCaptions="true")"},
        {"html", [](ExportSpec& spec) { spec.html().setImageFormat(ImageFormat::JPG); },
         R"(imageFormat="0")"},
        {"html", [](ExportSpec& spec) { spec.html().setImageFormat(ImageFormat::PNG); },
         R"(imageFormat="1")"},
        {"html", [](ExportSpec& spec) { spec.html().setImageFormat(ImageFormat::BMP); },
         R"(imageFormat="2")"},
        {"html", [](ExportSpec& spec) { spec.html().setStyling(true); }, R"(styling="true")"},
        {"html", [](ExportSpec& spec) { spec.html().setInteractiveLayers(false); },
         R"(interactiveLayers="false")"},
        {"report", [](ExportSpec& spec) { spec.report().setDocumentFile("f"); }, R"(documentFile="f")"},
        {"report", [](ExportSpec& spec) { spec.report().setTitle("t"); }, R"(title="t")"},
        {"report", [](ExportSpec& spec) { spec.report().setMHT(false); }, R"(mHT="false")"},
        {"report", [](ExportSpec& spec) { spec.report().setMHT(true); }, R"(mHT="true")"},
        {"report", [](ExportSpec& spec) { spec.report().excludeTexts(); }, R"(excludeTexts="true")"},
        {"report", [](ExportSpec& spec) { spec.report().excludeLogs(); }, R"(excludeLogs="true")"},
        {"report", [](ExportSpec& spec) { spec.report().excludeNotes(); }, R"(excludeNotes="true")"},
        {"report", [](ExportSpec& spec) { spec.report().excludeWarnings(); }, R"(excludeWarnings="true")"},
        {"report", [](ExportSpec& spec) { spec.report().restyle(false); }, R"(restyle="false")"},
        {"text", [](ExportSpec& spec) { spec.text().setDocumentFile("f"); }, R"(documentFile="f")"},
        {"text", [](ExportSpec& spec) { spec.text().setNotesAndCaptions(true); },
         R"(notesAndCaptions="true")"},
        {"text", [](ExportSpec& spec) { spec.text().setImageFormat(ImageFormat::BMP); },
         R"(imageFormat="2")"},
        {"text", [](ExportSpec& spec) { spec.text().setEncoding(ExportTextSpec::ENCODING::LOCALE); },
         R"(encoding="0")"},
        {"text", [](ExportSpec& spec) { spec.text().setEncoding(ExportTextSpec::ENCODING::UTF8); },
         R"(encoding="1")"},
        {"text", [](ExportSpec& spec) { spec.text().setEncoding(ExportTextSpec::ENCODING::UTF16); },
         R"(encoding="2")"},
        {"text", [](ExportSpec& spec) { spec.text().setColumnWidth(80, "080", false); },
         R"(columnWidth="80" columnWidthText="080" columnWidthAutofit="false")"},
        {"text", [](ExportSpec& spec) { spec.text().setColumnWidth(3'000'000'000, "3000000000", false); },
         R"(columnWidth="3000000000" columnWidthText="3000000000" columnWidthAutofit="false")"},
        {"text", [](ExportSpec& spec) { spec.text().setColumnWidth(0, "0", true); },
         R"(columnWidth="0" columnWidthText="0" columnWidthAutofit="true")"},
        {"text", [](ExportSpec& spec) { spec.text().setSeparator(ExportTextSpec::SEPARATOR::SPACE); },
         R"(separator="0")"},
        {"text", [](ExportSpec& spec) { spec.text().setSeparator(ExportTextSpec::SEPARATOR::TAB); },
         R"(separator="1")"},
        {"text", [](ExportSpec& spec) { spec.text().setRowBorder("\xE2\x94\x80"); },
         "rowBorder=\"\xE2\x94\x80\""},
        {"text", [](ExportSpec& spec) { spec.text().setColumnBorder("<"); }, R"(columnBorder="&lt;")"},
    };
    for (const Setting& one : kCases) check(one);
}

TEST(ExportSettings, Spreadsheets) {
    using Operation = ExportXLSSpec::OPERATION;
    using Location = ExportXLSSpec::LOCATION;
    static constexpr Setting kCases[] = {
        {"xls", [](ExportSpec& spec) { spec.xls().setDocumentFile("f"); }, R"(documentFile="f")"},
        {"xls", [](ExportSpec& spec) { spec.xls().setNotesAndCaptions(true); }, R"(notesAndCaptions="true")"},
        {"xls", [](ExportSpec& spec) { spec.xls().setOperation(Operation::CREATEFILE); }, R"(operation="0")"},
        {"xlsx", [](ExportSpec& spec) { spec.xlsx().setOperation(Operation::CREATESHEET); },
         R"(operation="1")"},
        {"xlsm", [](ExportSpec& spec) { spec.xlsm().setOperation(Operation::MODIFYSHEET); },
         R"(operation="2")"},
        {"xls", [](ExportSpec& spec) { spec.xls().setSheet("Sheet 1"); }, R"(sheet="Sheet 1")"},
        {"xlsx", [](ExportSpec& spec) { spec.xlsx().setLocation(Location::LASTCOLUMN); }, R"(location="0")"},
        {"xlsx", [](ExportSpec& spec) { spec.xlsx().setLocation(Location::LASTROW); }, R"(location="1")"},
        {"xlsm", [](ExportSpec& spec) { spec.xlsm().setLocation(Location::STARTCELL); }, R"(location="2")"},
        {"xlsm", [](ExportSpec& spec) { spec.xlsm().setStartCell("A1"); }, R"(startCell="A1")"},
    };
    for (const Setting& one : kCases) check(one);
}

TEST(ExportSettings, Images) {
    using Units = ExportEPSSpec::UNITS;
    using Fonts = ExportEPSSpec::FONT_HANDLING;
    static constexpr Setting kCases[] = {
        {"bmp", [](ExportSpec& spec) { spec.bmp().setImageRoot("r"); }, R"(imageRoot="r")"},
        {"bmp", [](ExportSpec& spec) { spec.bmp().setPercentSize(0.5, ".50"); },
         R"(percentSize="0.5" percentSizeText=".50")"},
        {"bmp", [](ExportSpec& spec) { spec.bmp().setCompress(true); }, R"(compress="true")"},
        {"emf", [](ExportSpec& spec) { spec.emf().setImageRoot("r"); }, R"(imageRoot="r")"},
        {"emf", [](ExportSpec& spec) { spec.emf().setPercentSize(200, "2E2"); },
         R"(percentSize="200" percentSizeText="2E2")"},
        {"eps", [](ExportSpec& spec) { spec.eps().setImageRoot("r"); }, R"(imageRoot="r")"},
        {"eps", [](ExportSpec& spec) { spec.eps().setWidth(Units::PERCENT, 50, "50"); },
         R"(width="50" widthUnit="0" widthText="50")"},
        {"eps", [](ExportSpec& spec) { spec.eps().setWidth(Units::CENTIMETERS, 5, "5"); },
         R"(width="5" widthUnit="1" widthText="5")"},
        {"eps", [](ExportSpec& spec) { spec.eps().setWidth(Units::INCHES, 5, "5"); },
         R"(width="5" widthUnit="2" widthText="5")"},
        {"eps", [](ExportSpec& spec) { spec.eps().setWidth(Units::POINTS, 0.5, "0.5"); },
         R"(width="0.5" widthUnit="3" widthText="0.5")"},
        {"eps", [](ExportSpec& spec) { spec.eps().setPreview(false); }, R"(preview="false")"},
        {"eps", [](ExportSpec& spec) { spec.eps().setFontHandling(Fonts::REFERENCES); },
         R"(fontHandling="0")"},
        {"eps", [](ExportSpec& spec) { spec.eps().setFontHandling(Fonts::CURVES); }, R"(fontHandling="1")"},
        {"jpg", [](ExportSpec& spec) { spec.jpg().setImageRoot("r"); }, R"(imageRoot="r")"},
        {"jpg", [](ExportSpec& spec) { spec.jpg().setPercentSize(1, "1"); },
         R"(percentSize="1" percentSizeText="1")"},
        {"jpg", [](ExportSpec& spec) { spec.jpg().setGrayscale(true); }, R"(grayscale="true")"},
        {"png", [](ExportSpec& spec) { spec.png().setImageRoot("r"); }, R"(imageRoot="r")"},
        {"png", [](ExportSpec& spec) { spec.png().setPercentSize(1, "1"); },
         R"(percentSize="1" percentSizeText="1")"},
        {"tif", [](ExportSpec& spec) { spec.tif().setImageRoot("r"); }, R"(imageRoot="r")"},
        {"tif", [](ExportSpec& spec) { spec.tif().setPercentSize(1, "1"); },
         R"(percentSize="1" percentSizeText="1")"},
    };
    for (const Setting& one : kCases) check(one);
}

TEST(ExportSettings, Depths) {
    using Depth = ExportPNGSpec::DEPTH;
    static constexpr Setting kCases[] = {
        {"png", [](ExportSpec& spec) { spec.png().setDepth(Depth::SCREEN); }, R"(depth="0")"},
        {"png", [](ExportSpec& spec) { spec.png().setDepth(Depth::BLACKWHITE); }, R"(depth="1")"},
        {"png", [](ExportSpec& spec) { spec.png().setDepth(Depth::GRAYS256); }, R"(depth="2")"},
        {"png", [](ExportSpec& spec) { spec.png().setDepth(Depth::COLORS16); }, R"(depth="3")"},
        {"png", [](ExportSpec& spec) { spec.png().setDepth(Depth::COLORS256); }, R"(depth="4")"},
        {"png", [](ExportSpec& spec) { spec.png().setDepth(Depth::TRUE24BIT); }, R"(depth="5")"},
        {"png", [](ExportSpec& spec) { spec.png().setDepth(Depth::TRUE32BIT); }, R"(depth="6")"},
    };
    for (const Setting& one : kCases) check(one);
}

}  // namespace
