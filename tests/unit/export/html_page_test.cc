#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "backend/platform/file_system.h"
#include "frontend/drawing/picture_drawing.h"
#include "frontend/export/html/css_scope.h"
#include "frontend/export/html/html_text.h"
#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {
namespace {

using testing::HasSubstr;
using testing::Not;

ViewerDocument documentOf(const std::string& items) {
    ViewerDocument document;
    document.setName("March & April");
    fill(document, items);
    return document;
}

TEST(HtmlPage, EscapesTexts) {
    const std::string page = htmlOf(documentOf(everything()));
    EXPECT_THAT(page, HasSubstr("<title>March &amp; April</title>"));
    EXPECT_THAT(page, HasSubstr("Two lines<br>of text with &lt;/p&gt;&lt;script&gt;"));
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, Not(HasSubstr("hidden text")));
    EXPECT_THAT(page, HasSubstr("<h1 id=\"i2\">Means &amp; more</h1>"));
}

TEST(HtmlPage, NestsLabelsAndLinksFootnotes) {
    const std::string page = htmlOf(documentOf(everything()));
    EXPECT_THAT(page, HasSubstr("rowspan=\"2\">Europe</th>"));
    EXPECT_THAT(page, HasSubstr("scope=\"row\""));
    EXPECT_THAT(page, HasSubstr("<a href=\"#i6n-a\" id=\"i6r-a\">a</a>"));
    EXPECT_THAT(page, HasSubstr("<li id=\"i6n-a\"><sup><a href=\"#i6r-a\">a</a></sup> Without abroad.</li>"));
}

TEST(HtmlPage, LeavesOutNotesAndCaptions) {
    HtmlExport request;
    request.notesAndCaptions = false;
    const std::string page = htmlOf(documentOf(everything()), request);
    EXPECT_THAT(page, Not(HasSubstr("Weighted.")));
    EXPECT_THAT(page, Not(HasSubstr("Without abroad.")));
    EXPECT_THAT(page, HasSubstr("income.csv"));
}

TEST(HtmlPage, HasNoStyleWithoutStyling) {
    HtmlExport request;
    request.styling = false;
    const std::string page =
        htmlOf(documentOf(R"({"type": "text", "text": "a", "style": {"bold": true}})"), request);
    EXPECT_THAT(page, Not(HasSubstr("style")));
    EXPECT_THAT(page, Not(HasSubstr("class")));
}

TEST(HtmlPage, WritesEveryLayerForLists) {
    HtmlExport request;
    request.interactiveLayers = true;
    const std::string page = htmlOf(documentOf(everything()), request);
    EXPECT_THAT(page, HasSubstr("<option value=\"1\" selected>Male</option>"));
    EXPECT_THAT(page, HasSubstr("data-layer=\"0\""));
    EXPECT_THAT(page, HasSubstr("data-layer=\"1\""));
    EXPECT_THAT(page, HasSubstr("id=\"i6l1n-a\""));
}

TEST(HtmlPage, TakesOutOfDrawingsWhatRunsOrFetches) {
    const std::string page = htmlOf(documentOf(everything()));
    for (const char* const each : {"alert(2)", "javascript:", "onload", "http://a.b", "x.css",
                                   "foreignObject", "<!DOCTYPE svg", "<?xml", "o:meta"}) {
        EXPECT_THAT(page, Not(HasSubstr(each)));
    }
    EXPECT_THAT(page, HasSubstr("fill=\"url(#i7-g)\""));
    EXPECT_THAT(page, HasSubstr("<linearGradient id=\"i7-g\">"));
    EXPECT_THAT(page, HasSubstr("<g id=\"i8-g\">"));
    EXPECT_THAT(page, HasSubstr("<use href=\"#i8-g\">"));
    EXPECT_THAT(page, HasSubstr(".i7-title:where(#i7 *){fill:red;}"));
    EXPECT_THAT(
        page, HasSubstr("aria-label=\"Income rises to the &quot;north&quot;.\" width=\"160\" height=\"80\""));
    EXPECT_THAT(page, HasSubstr("viewBox=\"0 0 320 160\""));
}

TEST(HtmlPage, SaysTheSameInTheSameBytes) {
    const ViewerDocument document = documentOf(everything());
    EXPECT_EQ(htmlOf(document), htmlOf(document));
    EXPECT_EQ(reportOf(document), reportOf(document));
}

TEST(HtmlPage, KeepsLinesAndBlanksOfTexts) {
    const std::string page = htmlOf(documentOf(
        R"({"type": "log", "text": "\n first\r\nsecond\rthird"}, {"type": "text", "text": "a   b\r\nc"})"));
    EXPECT_THAT(page, HasSubstr("<pre class=\"log\">\n\n first\nsecond\nthird</pre>"));
    EXPECT_THAT(page, HasSubstr("<p class=\"text\">a   b<br>c</p>"));
    EXPECT_THAT(page, HasSubstr(".text,.warning,th,td{white-space:pre-wrap}"));
}

TEST(HtmlPage, KeepsTheWidthsOfColumns) {
    const std::string page = htmlOf(documentOf(
        R"({"type": "table", "minColumnWidth": 90, "maxColumnWidth": 100, "rows": [{"label": "R", "categories": ["a"]}],
            "columns": [{"label": "", "categories": ["x", {"label": "y", "width": 40}]}], "cells": [1, 2]})"));
    EXPECT_THAT(page, HasSubstr("<table style=\"--least:90pt;--most:100pt;\">"));
    EXPECT_THAT(page, HasSubstr("<colgroup><col><col><col style=\"width:40pt\"></colgroup>"));
    EXPECT_THAT(page, HasSubstr("style=\"min-width:0;max-width:none\">2</td>"));
    EXPECT_THAT(page, testing::ContainsRegex("<td class=\"s.?.?\">1</td>"));
}

TEST(HtmlPage, ShowsFilesOfPicturesInTheirSize) {
    if (!canDraw()) GTEST_SKIP();
    const ViewerDocument document = documentOf(
        R"({"type": "chart", "svg": "<svg xmlns='http://www.w3.org/2000/svg' width='80' height='41'/>"})");
    const ExportFolder folder;
    ExportRequest request;
    request.html = HtmlExport{};
    request.html->file = folder.file("a.html");
    request.jpg = JpgExport{};
    request.jpg->percentSize = 50;
    EXPECT_TRUE(exportDocument(document, request, {}).response.success);
    EXPECT_THAT(folder.read("a.html"),
                HasSubstr("<img src=\"a1.jpg\" alt=\"chart\" width=\"40\" height=\"21\""));
}

TEST(ReportPage, PacksPicturesAlsoWhereFilesAreWritten) {
    const ViewerDocument document = documentOf(everything());
    const ExportFolder folder;
    ExportRequest request;
    request.report = ReportExport{};
    request.report->file = folder.file("a.mht");
    request.report->format = ReportFormat::mht;
    request.png = PngExport{};
    EXPECT_TRUE(exportDocument(document, request, {}).response.success);
    EXPECT_THAT(folder.names(), HasSubstr("a3.png"));
    EXPECT_THAT(folder.read("a.mht"), HasSubstr("src=3D\"cid:picture1@report\""));
    EXPECT_THAT(folder.read("a.mht"), Not(HasSubstr("a3.png")));
}

TEST(ReportPage, PacksWhatImageSubcommandsDraw) {
    if (!canDraw()) GTEST_SKIP();
    const ViewerDocument document = documentOf(
        R"({"type": "chart", "svg": "<svg xmlns='http://www.w3.org/2000/svg' width='80' height='41'/>"})");
    const ExportFolder folder;
    ExportRequest request;
    request.report = ReportExport{};
    request.report->file = folder.file("a.mht");
    request.report->format = ReportFormat::mht;
    request.jpg = JpgExport{};
    request.jpg->percentSize = 50;
    EXPECT_TRUE(exportDocument(document, request, {}).response.success);
    const std::string packed = folder.read("a.mht");
    EXPECT_THAT(packed, HasSubstr("<img src=3D\"cid:picture1@report\" alt=3D\"chart\""));
    EXPECT_THAT(packed, HasSubstr(" height=3D\"21\"></figure>"));
    EXPECT_THAT(packed, HasSubstr("Content-Type: image/jpeg\r\nContent-Transfer-Encoding: base64\r\n"));
    EXPECT_THAT(packed, Not(HasSubstr("<svg")));
    EXPECT_THAT(folder.names(), HasSubstr("a1.jpg"));
}

TEST(ReportPage, NamesTheFileAsTheSystemDoes) {
    ReportExport request;
    const ExportFolder folder;
    ExportRequest whole;
    request.file = folder.file("a");
    std::replace(request.file.begin(), request.file.end(), '/', '\\');
    request.title = request.file;
    whole.report = request;
    EXPECT_TRUE(exportDocument(documentOf(everything()), whole, {}).response.success);
    EXPECT_THAT(folder.read("a"), HasSubstr("<title>" + toNativePath(request.file) + "</title>"));
}

TEST(CssScope, KeepsRulesWithinThePicture) {
    const PictureScope scope{"i1"};
    EXPECT_EQ(scopedRules("a, #b .c::before{color:red}", scope),
              "a:where(#i1 *),#i1-b .i1-c:where(#i1 *)::before{color:red;}");
    EXPECT_EQ(scopedRules("/* x */ @media print{g{fill:#fff}} @font-face{src:url(x)}", scope),
              "@media print{g:where(#i1 *){fill:#fff;}}");
    EXPECT_EQ(scopedRules(":root{fill:red}", scope), "#i1>svg{fill:red;}");
    EXPECT_EQ(scopedRules("a{", scope), "");
    EXPECT_EQ(scopedRules("@import url(x);b{c:d}", scope), "b:where(#i1 *){c:d;}");
}

TEST(CssScope, DropsDeclarationsThatFetch) {
    const PictureScope scope{"i1"};
    EXPECT_EQ(safeDeclarations("fill:url(#a);mask:url('#b')", scope), "fill:url(#i1-a);mask:url('#i1-b');");
    EXPECT_EQ(safeDeclarations("fill:url(http://x/);color:red", scope), "color:red;");
    EXPECT_EQ(safeDeclarations("f\\69ll:red;position:fixed;x:EXPRESSION(1);a:b</style>", scope), "");
}

TEST(HtmlText, ReplacesWhatAPageCannotHold) {
    std::string html;
    appendHtml(html, std::string("a\x01\xFF\xC2\x85\xEF\xBF\xBE<\"", 10));
    EXPECT_EQ(html, "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD&lt;&quot;");
}

}  // namespace
}  // namespace vexa::frontend
