// Requests of exports: every default, and every value of every setting.

#include "frontend/requests/export_request.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "backend/text/character_set.h"
#include "backend/viewerxml/export_reader.h"
#include "frontend/requests/entities.h"

namespace vexa::frontend {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::Optional;

constexpr double kClose = 1e-9;

ExportRequest requestOf(const std::string& formats, const std::string& common = "<global/><contents/>") {
    const ReadExportSpec read =
        readExportSpec("<exportSpecification>" + common + formats + "</exportSpecification>");
    EXPECT_EQ(read.error, "");
    return read.spec ? exportRequestOf(*read.spec) : ExportRequest();
}

std::string measure(const std::string& name, const std::string& number, int unit) {
    return " " + name + "=\"" + number + "\" " + name + "Unit=\"" + std::to_string(unit) + "\" " + name +
           "Text=\"\"";
}

TEST(ExportRequest, HasItsDefaults) {
    const ExportRequest request = requestOf("");
    EXPECT_EQ(request, ExportRequest());
    EXPECT_TRUE(request.namesActive());
    EXPECT_EQ(request.print, PrintRule::always);
    EXPECT_EQ(request.items, ExportedItems::visible);
    EXPECT_EQ(request.layers, ExportedLayers::printSetting);
    EXPECT_EQ(request.modelViews, ExportedLayers::printSetting);
    EXPECT_FALSE(request.doc || request.html || request.report || request.pdf || request.ppt || request.text);
    EXPECT_FALSE(request.xls || request.xlsx || request.xlsm || request.bmp || request.emf || request.eps);
    EXPECT_FALSE(request.jpg || request.png || request.tif);
}

TEST(ExportRequest, HasTheDefaultsOfDocuments) {
    const ExportRequest request = requestOf("<doc/><html/><report/><pdf/><ppt/><text/><xls/><xlsx/><xlsm/>");
    ASSERT_TRUE(request.doc && request.html && request.report && request.pdf && request.ppt && request.text);
    EXPECT_TRUE(request.doc->notesAndCaptions && request.doc->pageBreaks);
    EXPECT_EQ(request.doc->wideTables, WideTables::wrap);
    EXPECT_NEAR(request.doc->page.width, 595.275590551, 1e-6);
    EXPECT_NEAR(request.doc->page.height, 841.889763780, 1e-6);
    EXPECT_NEAR(request.doc->margins.top, 70.866141732, 1e-6);
    EXPECT_EQ(request.doc->margins, (Margins{request.doc->margins.top, request.doc->margins.top,
                                             request.doc->margins.top, request.doc->margins.top}));
    EXPECT_TRUE(request.html->notesAndCaptions && request.html->styling && !request.html->interactiveLayers);
    EXPECT_FALSE(request.html->imageFormat || request.text->imageFormat);
    EXPECT_FALSE(request.report->title);
    EXPECT_EQ(request.report->format, ReportFormat::html);
    EXPECT_TRUE(request.report->restyle && request.report->links.empty());
    EXPECT_FALSE(request.report->excludeTexts || request.report->excludeLogs ||
                 request.report->excludeNotes || request.report->excludeWarnings);
    EXPECT_TRUE(request.pdf->embedBookmarks && request.pdf->embedFonts);
    EXPECT_NEAR(request.ppt->slide.width, 959.976, kClose);
    EXPECT_NEAR(request.ppt->slide.height, 540.0, kClose);
    EXPECT_EQ(request.ppt->margins, request.doc->margins);
    EXPECT_EQ(request.ppt->wideTables, WideTables::wrap);
    EXPECT_TRUE(request.ppt->slideTitles && request.ppt->notesAndCaptions && request.text->notesAndCaptions);
    EXPECT_EQ(request.text->encoding, TextEncoding::locale);
    EXPECT_FALSE(request.text->columnWidth);
    EXPECT_EQ(request.text->separator, TextSeparator::space);
    EXPECT_EQ(request.text->rowBorder + request.text->columnBorder, "-|");
    for (const auto& book : {request.xls, request.xlsx, request.xlsm}) {
        ASSERT_TRUE(book);
        EXPECT_TRUE(book->notesAndCaptions);
        EXPECT_EQ(book->operation, SheetOperation::createFile);
        EXPECT_EQ(book->location, SheetLocation::lastRow);
        EXPECT_EQ(book->sheet, "Output");
        EXPECT_EQ(book->startCell, "");
    }
}

TEST(ExportRequest, HasTheDefaultsOfPictures) {
    const ExportRequest request = requestOf("<bmp/><emf/><eps/><jpg/><png/><tif/>");
    ASSERT_TRUE(request.bmp && request.emf && request.eps && request.jpg && request.png && request.tif);
    for (const SizedPicture* const each : std::initializer_list<const SizedPicture*>{
             &*request.bmp, &*request.emf, &*request.jpg, &*request.png, &*request.tif}) {
        EXPECT_EQ(each->percentSize, 100.0);
        EXPECT_EQ(each->root, "");
    }
    EXPECT_FALSE(request.bmp->compress || request.jpg->grayscale || request.eps->preview ||
                 request.eps->widthPoints);
    EXPECT_EQ(request.eps->widthPercent, 100.0);
    EXPECT_EQ(request.eps->fontHandling, FontHandling::references);
    EXPECT_EQ(request.png->depth, PngDepth::true24Bit);
}

TEST(ExportRequest, ReadsWhatIsCommon) {
    const ExportRequest request = requestOf("",
                                            "<global name=\"R &amp; &lt;D&gt;\" printOption=\"2\"/>"
                                            "<contents export=\"0\" layers=\"1\" modelViews=\"2\"/>");
    EXPECT_EQ(request.name, "R & <D>");
    EXPECT_FALSE(request.namesActive());
    EXPECT_EQ(request.print, PrintRule::errors);
    EXPECT_EQ(request.items, ExportedItems::all);
    EXPECT_EQ(request.layers, ExportedLayers::all);
    EXPECT_EQ(request.modelViews, ExportedLayers::visible);
}

TEST(ExportRequest, ReadsPagesAndSlides) {
    const ExportRequest request =
        requestOf("<doc documentFile=\"C:\\a &amp; b.doc\" notesAndCaptions=\"false\" wideTables=\"0\"" +
                  measure("pageSizeWidth", "8.5", 0) + measure("pageSizeHeight", "254", 1) +
                  measure("topMargin", "0.5", 0) + measure("bottomMargin", "25.4", 1) +
                  measure("leftMargin", "1", 0) + measure("rightMargin", "12.7", 1) +
                  " pageBreaks=\"false\"/><ppt documentFile=\"p\" wideTables=\"1\"" +
                  measure("slideSizeWidth", "10", 0) + measure("slideSizeHeight", "127", 1) +
                  measure("leftMargin", "2", 0) + " notesAndCaptions=\"false\" slideTitles=\"false\"/>");
    const DocExport& doc = *request.doc;
    EXPECT_EQ(doc.file, "C:\\a & b.doc");
    EXPECT_FALSE(doc.notesAndCaptions || doc.pageBreaks);
    EXPECT_EQ(doc.wideTables, WideTables::asIs);
    EXPECT_NEAR(doc.page.width, 612.0, kClose);
    EXPECT_NEAR(doc.page.height, 720.0, kClose);
    EXPECT_NEAR(doc.margins.top, 36.0, kClose);
    EXPECT_NEAR(doc.margins.bottom, 72.0, kClose);
    EXPECT_NEAR(doc.margins.left, 72.0, kClose);
    EXPECT_NEAR(doc.margins.right, 36.0, kClose);
    const PptExport& ppt = *request.ppt;
    EXPECT_EQ(ppt.file, "p");
    EXPECT_EQ(ppt.wideTables, WideTables::shrink);
    EXPECT_NEAR(ppt.slide.width, 720.0, kClose);
    EXPECT_NEAR(ppt.slide.height, 360.0, kClose);
    EXPECT_NEAR(ppt.margins.left, 144.0, kClose);
    EXPECT_EQ(ppt.margins.top, Margins::kUsual);
    EXPECT_FALSE(ppt.notesAndCaptions || ppt.slideTitles);
}

TEST(ExportRequest, ReadsWebPagesAndReports) {
    const ExportRequest request = requestOf(
        "<html documentFile=\"h\" notesAndCaptions=\"false\" imageFormat=\"0\" styling=\"false\" "
        "interactiveLayers=\"true\"/>"
        "<report documentFile=\"r\" title=\"\" mHT=\"true\" excludeTexts=\"true\" excludeLogs=\"true\" "
        "excludeNotes=\"true\" excludeWarnings=\"true\" restyle=\"false\"><url address=\"a&amp;b\" "
        "label=\"c\"/>"
        "<url address=\"\" label=\"\"/></report><pdf documentFile=\"p\" embedBookmarks=\"false\" "
        "embedFonts=\"false\"/>");
    EXPECT_EQ(*request.html, (HtmlExport{{"h"}, false, PageImageFormat::jpg, false, true}));
    EXPECT_EQ(*request.report,
              (ReportExport{
                  {"r"}, "", ReportFormat::mht, true, true, true, true, false, {{"a&b", "c"}, {"", ""}}}));
    EXPECT_EQ(*request.pdf, (PdfExport{{"p"}, false, false}));
    EXPECT_THAT(requestOf("<html imageFormat=\"1\"/>").html->imageFormat, Optional(PageImageFormat::png));
    EXPECT_THAT(requestOf("<text imageFormat=\"2\"/>").text->imageFormat, Optional(PageImageFormat::bmp));
    EXPECT_EQ(requestOf("<report mHT=\"false\"/>").report->format, ReportFormat::html);
}

TEST(ExportRequest, ReadsTextsAndWorkbooks) {
    const ExportRequest request = requestOf(
        "<text documentFile=\"t\" notesAndCaptions=\"false\" encoding=\"2\" columnWidth=\"3000000000\" "
        "columnWidthText=\"3e9\" columnWidthAutofit=\"false\" separator=\"1\" rowBorder=\"\xE2\x94\x80\" "
        "columnBorder=\"&amp;\"/>"
        "<xls documentFile=\"s\" notesAndCaptions=\"false\" operation=\"1\" sheet=\"A &lt; B\" "
        "location=\"0\"/>"
        "<xlsm operation=\"2\" location=\"2\" startCell=\"B7\"/>");
    EXPECT_EQ(*request.text, (TextExport{{"t"},
                                         false,
                                         std::nullopt,
                                         TextEncoding::utf16,
                                         3'000'000'000,
                                         TextSeparator::tab,
                                         "\xE2\x94\x80",
                                         "&"}));
    EXPECT_EQ(
        *request.xls,
        (WorkbookExport{{"s"}, false, SheetOperation::createSheet, "A < B", SheetLocation::lastColumn, ""}));
    EXPECT_EQ(
        *request.xlsm,
        (WorkbookExport{{""}, true, SheetOperation::modifySheet, "Output", SheetLocation::startCell, "B7"}));
    EXPECT_FALSE(request.xlsx);
    EXPECT_EQ(requestOf("<text encoding=\"1\"/>").text->encoding, TextEncoding::utf8);
    EXPECT_FALSE(requestOf("<text columnWidth=\"0\" columnWidthText=\"0\" columnWidthAutofit=\"true\"/>")
                     .text->columnWidth);
}

TEST(ExportRequest, ReadsPictures) {
    const ExportRequest request = requestOf(
        "<bmp imageRoot=\"b\" percentSize=\"50.5\" percentSizeText=\"50.5\" compress=\"true\"/>"
        "<emf imageRoot=\"e\" percentSize=\"200\" percentSizeText=\"\"/>"
        "<eps imageRoot=\"p\"" +
        measure("width", "2.54", 1) +
        " preview=\"true\" fontHandling=\"1\"/>"
        "<jpg imageRoot=\"j &amp; k\" grayscale=\"true\"/><tif imageRoot=\"t\"/>");
    EXPECT_EQ(request.bmp->root, "b");
    EXPECT_EQ(request.bmp->percentSize, 50.5);
    EXPECT_TRUE(request.bmp->compress && request.jpg->grayscale && request.eps->preview);
    EXPECT_EQ(request.emf->percentSize, 200.0);
    EXPECT_EQ(request.emf->root, "e");
    EXPECT_EQ(request.eps->root, "p");
    EXPECT_THAT(request.eps->widthPoints, Optional(DoubleNear(72.0, kClose)));
    EXPECT_EQ(request.eps->fontHandling, FontHandling::curves);
    EXPECT_EQ(request.jpg->root, "j & k");
    EXPECT_EQ(request.tif->root, "t");
    EXPECT_EQ(requestOf("<eps" + measure("width", "40", 0) + "/>").eps->widthPercent, 40.0);
    EXPECT_FALSE(requestOf("<eps" + measure("width", "40", 0) + "/>").eps->widthPoints);
    EXPECT_THAT(requestOf("<eps" + measure("width", "2", 2) + "/>").eps->widthPoints, Optional(144.0));
    EXPECT_THAT(requestOf("<eps" + measure("width", "40", 3) + "/>").eps->widthPoints, Optional(40.0));
}

TEST(ExportRequest, ReadsEveryDepth) {
    const PngDepth depths[] = {PngDepth::true24Bit, PngDepth::blackWhite, PngDepth::grays256,
                               PngDepth::colors16,  PngDepth::colors256,  PngDepth::true24Bit,
                               PngDepth::true32Bit};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(requestOf("<png depth=\"" + std::to_string(i) + "\"/>").png->depth, depths[i]) << i;
    }
}

TEST(ExportRequest, HasTextsInUtf8) {
    installCharacterSet(CharacterSet::find("windows-1252"));
    const ExportRequest request =
        requestOf("<report title=\"\xC3\xA9 &quot;\"><url address=\"\xC3\xA9\" label=\"\"/></report>");
    installCharacterSet(nullptr);
    EXPECT_THAT(request.report->title, Optional(std::string("\xC3\xA9 \"")));
    EXPECT_THAT(request.report->links, ElementsAre(ReportLink{"\xC3\xA9", ""}));
}

TEST(WithoutEntities, KnowsTheFive) {
    EXPECT_THAT(withoutEntities("&quot;&amp;&apos;&lt;&gt;&amp;lt;"), Optional(std::string("\"&'<>&lt;")));
    EXPECT_EQ(withoutEntities("&copy;"), std::nullopt);
    EXPECT_EQ(withoutEntities("a&"), std::nullopt);
}

}  // namespace
}  // namespace vexa::frontend
