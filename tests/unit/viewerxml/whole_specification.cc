#include "tests/unit/viewerxml/whole_specification.h"

namespace vexa::testing {

namespace {

constexpr auto kMm = MEASUREMENT_TYPE::MM;
constexpr auto kInches = MEASUREMENT_TYPE::INCHES;

void setMargins(MarginSettings& spec) {
    spec.setRightMargin(kMm, 4, "4.0");
    spec.setLeftMargin(kInches, 3, "3");
    spec.setBottomMargin(kMm, 2.5, "2.5");
    spec.setTopMargin(kInches, 0.01, ".01");
}

void setPagesAndSlides(ExportSpec& spec) {
    spec.doc().setPageBreaks(false);
    setMargins(spec.doc());
    spec.doc().setPageSizeHeight(kMm, 297, "297");
    spec.doc().setPageSizeWidth(kMm, 210, "210");
    spec.doc().setWideTables(WideTablesSetting::WIDE_TABLES::WRAP);
    spec.doc().setNotesAndCaptions(true);
    spec.doc().setDocumentFile("C:\\a &amp; b.doc");
    spec.ppt().setSlideTitles(true);
    setMargins(spec.ppt());
    spec.ppt().setSlideSizeHeight(kInches, 7.5, "7.50");
    spec.ppt().setSlideSizeWidth(kInches, 10, "10");
    spec.ppt().setWideTables(WideTablesSetting::WIDE_TABLES::SHRINK);
    spec.ppt().setNotesAndCaptions(false);
    spec.ppt().setDocumentFile("d.ppt");
    spec.pdf().setEmbedFonts(false);
    spec.pdf().setEmbedBookmarks(true);
    spec.pdf().setDocumentFile("d.pdf");
}

void setWebPages(ExportSpec& spec) {
    spec.html().setInteractiveLayers(true);
    spec.html().setStyling(false);
    spec.html().setImageFormat(ImageFormatSetting::IMAGE_FORMAT::BMP);
    spec.html().setNotesAndCaptions(true);
    spec.html().setDocumentFile("d.htm");
    spec.report().restyle(false);
    spec.report().addURL("http://one/?a=1&b=2", "One");
    spec.report().excludeWarnings();
    spec.report().excludeNotes();
    spec.report().excludeLogs();
    spec.report().excludeTexts();
    spec.report().addURL("two", "\"Two\"");
    spec.report().setMHT(true);
    spec.report().setTitle("R &amp; D");
    spec.report().setDocumentFile("d.mht");
}

void setText(ExportTextSpec& spec) {
    spec.setColumnBorder("|");
    spec.setRowBorder("-");
    spec.setSeparator(ExportTextSpec::SEPARATOR::TAB);
    spec.setColumnWidth(12, "012", false);
    spec.setEncoding(ExportTextSpec::ENCODING::UTF16);
    spec.setImageFormat(ImageFormatSetting::IMAGE_FORMAT::PNG);
    spec.setNotesAndCaptions(false);
    spec.setDocumentFile("d.txt");
}

void setSpreadsheet(ExportXLSSpec& spec, ExportXLSSpec::OPERATION operation) {
    spec.setStartCell("B2");
    spec.setLocation(ExportXLSSpec::LOCATION::STARTCELL);
    spec.setSheet("Sheet <1>");
    spec.setOperation(operation);
    spec.setNotesAndCaptions(true);
    spec.setDocumentFile("d.xls");
}

template <class Images>
void setImages(Images& spec, std::string_view root) {
    spec.setPercentSize(200, "200");
    spec.setImageRoot(root);
}

void setAllImages(ExportSpec& spec) {
    spec.bmp().setCompress(true);
    setImages(spec.bmp(), "a&b");
    setImages(spec.emf(), "e");
    spec.eps().setFontHandling(ExportEPSSpec::FONT_HANDLING::CURVES);
    spec.eps().setPreview(true);
    spec.eps().setWidth(ExportEPSSpec::UNITS::POINTS, 0.5, "0.50");
    spec.eps().setImageRoot("p");
    spec.jpg().setGrayscale(false);
    setImages(spec.jpg(), "j");
    spec.png().setDepth(ExportPNGSpec::DEPTH::TRUE32BIT);
    setImages(spec.png(), "n");
    setImages(spec.tif(), "t");
}

template <class... Formats>
void markPresent(Formats&... formats) {
    (formats.setOptionPresent(true), ...);
}

}  // namespace

void setEverything(ExportSpec& spec) {
    setAllImages(spec);
    setSpreadsheet(spec.xlsm(), ExportXLSSpec::OPERATION::MODIFYSHEET);
    setSpreadsheet(spec.xlsx(), ExportXLSSpec::OPERATION::CREATESHEET);
    setSpreadsheet(spec.xls(), ExportXLSSpec::OPERATION::CREATEFILE);
    setText(spec.text());
    setWebPages(spec);
    setPagesAndSlides(spec);
    spec.contents().setModelViews(ExportContentsSpec::MODELVIEWS_TYPE::VISIBLE);
    spec.contents().setLayers(ExportContentsSpec::LAYERS_TYPE::ALL);
    spec.contents().setExport(ExportContentsSpec::EXPORT_TYPE::VISIBLE);
    spec.global().setPrintOption(ExportGlobalSpec::PRINT_OPTION::ERRORS);
    spec.global().setName("Output1");
    markPresent(spec.doc(), spec.html(), spec.report(), spec.pdf(), spec.ppt(), spec.text(), spec.xls(),
                spec.xlsx(), spec.xlsm(), spec.bmp(), spec.emf(), spec.eps(), spec.jpg(), spec.png(),
                spec.tif());
}

const char* const kEverything =
    R"(<exportSpecification>)"
    R"(<global name="Output1" printOption="2"/>)"
    R"(<contents export="1" layers="1" modelViews="2"/>)"
    R"(<doc documentFile="C:\a &amp; b.doc" notesAndCaptions="true" wideTables="2")"
    R"( pageSizeWidth="210" pageSizeWidthUnit="1" pageSizeWidthText="210")"
    R"( pageSizeHeight="297" pageSizeHeightUnit="1" pageSizeHeightText="297")"
    R"( topMargin="0.01" topMarginUnit="0" topMarginText=".01")"
    R"( bottomMargin="2.5" bottomMarginUnit="1" bottomMarginText="2.5")"
    R"( leftMargin="3" leftMarginUnit="0" leftMarginText="3")"
    R"( rightMargin="4" rightMarginUnit="1" rightMarginText="4.0" pageBreaks="false"/>)"
    R"(<html documentFile="d.htm" notesAndCaptions="true" imageFormat="2" styling="false" interactiveLayers="true"/>)"
    R"(<report documentFile="d.mht" title="R &amp; D" mHT="true" excludeTexts="true" excludeLogs="true")"
    R"( excludeNotes="true" excludeWarnings="true" restyle="false">)"
    R"(<url address="http://one/?a=1&amp;b=2" label="One"/><url address="two" label="&quot;Two&quot;"/></report>)"
    R"(<pdf documentFile="d.pdf" embedBookmarks="true" embedFonts="false"/>)"
    R"(<ppt documentFile="d.ppt" notesAndCaptions="false" wideTables="1")"
    R"( slideSizeWidth="10" slideSizeWidthUnit="0" slideSizeWidthText="10")"
    R"( slideSizeHeight="7.5" slideSizeHeightUnit="0" slideSizeHeightText="7.50")"
    R"( topMargin="0.01" topMarginUnit="0" topMarginText=".01")"
    R"( bottomMargin="2.5" bottomMarginUnit="1" bottomMarginText="2.5")"
    R"( leftMargin="3" leftMarginUnit="0" leftMarginText="3")"
    R"( rightMargin="4" rightMarginUnit="1" rightMarginText="4.0" slideTitles="true"/>)"
    R"(<text documentFile="d.txt" notesAndCaptions="false" imageFormat="1" encoding="2")"
    R"( columnWidth="12" columnWidthText="012" columnWidthAutofit="false")"
    R"( separator="1" rowBorder="-" columnBorder="|"/>)"
    R"(<xls documentFile="d.xls" notesAndCaptions="true" operation="0" sheet="Sheet &lt;1>" location="2" startCell="B2"/>)"
    R"(<xlsx documentFile="d.xls" notesAndCaptions="true" operation="1" sheet="Sheet &lt;1>" location="2" startCell="B2"/>)"
    R"(<xlsm documentFile="d.xls" notesAndCaptions="true" operation="2" sheet="Sheet &lt;1>" location="2" startCell="B2"/>)"
    R"(<bmp imageRoot="a&amp;b" percentSize="200" percentSizeText="200" compress="true"/>)"
    R"(<emf imageRoot="e" percentSize="200" percentSizeText="200"/>)"
    R"(<eps imageRoot="p" width="0.5" widthUnit="3" widthText="0.50" preview="true" fontHandling="1"/>)"
    R"(<jpg imageRoot="j" percentSize="200" percentSizeText="200" grayscale="false"/>)"
    R"(<png imageRoot="n" percentSize="200" percentSizeText="200" depth="6"/>)"
    R"(<tif imageRoot="t" percentSize="200" percentSizeText="200"/>)"
    R"(</exportSpecification>)";

}  // namespace vexa::testing
