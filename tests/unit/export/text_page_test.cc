#include <gtest/gtest.h>

#include "backend/text/character_set.h"
#include "frontend/drawing/picture_drawing.h"
#include "frontend/export/report/mime_file.h"
#include "frontend/export/text/encoded_text.h"
#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {
namespace {

constexpr const char* twoRows =
    R"({"type": "table", "title": "T", "rows": [{"label": "R", "categories": ["a", "long label"]}],
  "columns": [{"label": "", "labelHidden": true, "categories": [{"label": "Mean", "format": "F8.2"}, "N"]}], "cells": [1, 2, "x\ny", null]})";

/// A text in an encoding, cut into two pieces.
std::string encodedText(const std::string& first, const std::string& second, TextEncoding encoding,
                        ExportReport& report) {
    std::string bytes;
    EncodedText text(encoding, gatherInto(bytes), report);
    EXPECT_TRUE(text.write(first));
    EXPECT_TRUE(text.write(second));
    return bytes;
}

ViewerDocument documentWith(const std::string& items) {
    ViewerDocument document;
    fill(document, items);
    return document;
}

TEST(TextPage, PutsABlankLineBetweenItems) {
    EXPECT_EQ(
        textOf(documentWith(
            R"({"type": "heading", "text": "a"}, {"type": "log", "text": "b\n\tc"}, {"type": "header", "label": "no", "items": [{"type": "warning", "text": "d"}]})")),
        "a\n\nb\n        c\n\nd\n");
}

TEST(TextPage, DividesLabelsAndValuesOfNotesWhereThereAreBoth) {
    EXPECT_EQ(textOf(documentWith(
                  R"({"type": "notes", "lines": [{"level": 1, "label": "a", "value": "b"},
                      {"level": 1, "label": "", "value": "value"}, {"level": 1, "label": "label", "value": ""}]})")),
              "a: b\nvalue\nlabel\n");
}

TEST(TextPage, DrawsTablesAsGrids) {
    EXPECT_EQ(textOf(documentWith(twoRows)),
              "T\n"
              "-------------------------\n"
              "| R          | Mean | N |\n"
              "-------------------------\n"
              "| a          | 1.00 | 2 |\n"
              "| long label |    x |   |\n"
              "|            |    y |   |\n"
              "-------------------------\n");
}

/// Rows of so many letters are put together in another way.
TEST(TextPage, WritesRowsThatAreVeryLong) {
    constexpr std::size_t bytes = 3'000'000;
    std::string letters;
    while (letters.size() < bytes) letters += "äöü ";
    letters += "x  ";  // blanks at the end of a line are left out, those of a cell are not
    const std::string table =
        R"({"type": "table", "rows": [{"label": "R", "categories": ["a"]}], "columns": [{"label": "C", "labelHidden": true, "categories": ["b", "c"]}], "cells": [")" +
        letters + R"(", 2]})";
    const std::string text = textOf(documentWith(table));
    EXPECT_NE(text.find("| a | " + letters + " | 2 |\n"), std::string::npos);
    TextExport request;
    request.rowBorder = request.columnBorder = "";
    const std::string plain = textOf(documentWith(table), request);
    const std::size_t second = plain.find('\n') + 1;
    EXPECT_TRUE(plain.substr(second) == " a  " + letters + "  2\n");
    EXPECT_TRUE(plain.starts_with(" R   ")) << plain.substr(0, 20);
}

TEST(TextPage, WrapsInColumnsOfOneWidth) {
    TextExport request;
    request.columnWidth = 5;
    request.rowBorder = "=";
    request.columnBorder = "!";
    EXPECT_EQ(textOf(documentWith(twoRows), request),
              "T\n"
              "=========================\n"
              "! R     ! Mean  !   N   !\n"
              "=========================\n"
              "! a     !  1.00 !     2 !\n"
              "! long  !     x !       !\n"
              "! label !     y !       !\n"
              "=========================\n");
}

TEST(TextPage, NumbersStandBelowEachOtherWithMarksAndWithout) {
    EXPECT_EQ(textOf(documentWith(
                  R"({"type": "table", "rows": [{"label": "R", "categories": ["a", "b", "c"]}],
                "columns": [{"label": "", "categories": [{"label": "Mean", "format": "F8.2"}]}],
                "cells": [1.5, {"value": 12.25, "footnotes": [1]}, {"value": 2, "footnotes": [1, 2]}],
                "footnotes": ["One.", "Two."]})")),
              "-------------------\n"
              "| R |    Mean     |\n"
              "-------------------\n"
              "| a |  1.50       |\n"
              "| b | 12.25 [a]   |\n"
              "| c |  2.00 [a,b] |\n"
              "-------------------\n"
              "[a] One.\n"
              "[b] Two.\n");
}

TEST(TextPage, DividesByTabsInOneLineARow) {
    TextExport request;
    request.separator = TextSeparator::tab;
    EXPECT_EQ(textOf(documentWith(twoRows), request), "T\nR\tMean\tN\na\t1.00\t2\nlong label\tx y\t\n");
}

TEST(TextPage, MarksUnicodeEncodings) {
    ExportReport report;
    EXPECT_EQ(encodedText("\xC3\xA4", "b", TextEncoding::utf8, report),
              "\xEF\xBB\xBF\xC3\xA4"
              "b");
    EXPECT_EQ(encodedText("\xC3\xA4", "b", TextEncoding::utf16, report), std::string("\xFF\xFE\xE4\x00"
                                                                                     "b\x00",
                                                                                     6));
    EXPECT_EQ(encodedText("\xC3\xA4", "", TextEncoding::locale, report), "\xC3\xA4");
    EXPECT_TRUE(report.logTexts().empty());
}

TEST(TextPage, WarnsOfWhatTheCharacterSetLacks) {
    installCharacterSet(CharacterSet::find("ISO-8859-1"));
    ExportReport report;
    EXPECT_EQ(encodedText("\xC3\xA4", "", TextEncoding::locale, report), "\xE4");
    EXPECT_TRUE(report.logTexts().empty());
    EXPECT_EQ(encodedText("\xE2\x82\xAC", "\xE2\x82\xAC", TextEncoding::locale, report), "??");
    EXPECT_EQ(report.logTexts().size(), 1U);
    installCharacterSet(nullptr);
}

TEST(TextPage, PutsPicturesBesideItWhenAsked) {
    const ViewerDocument document = documentWith(everything());
    const ExportFolder folder;
    ExportRequest request;
    request.text = TextExport{};
    request.text->file = folder.file("a.txt");
    request.text->imageFormat = PageImageFormat::png;
    const ExportOutcome outcome = exportDocument(document, request, {});
    EXPECT_TRUE(outcome.response.success);
    EXPECT_EQ(outcome.response.imageCount, canDraw() ? 3 : 1);
    EXPECT_EQ(outcome.response.imageFormat, "PNG");
    EXPECT_EQ(outcome.response.imageRoot, folder.file("a"));
    EXPECT_EQ(folder.names(), canDraw() ? "a.txt a1.png a2.png a3.png " : "a.txt a3.png ");
    EXPECT_NE(folder.read("a.txt").find("[A dot: a3.png]"), std::string::npos);
    if (!canDraw()) return;
    // The dot is a PNG that can be transparent and says nothing of its size.
    EXPECT_NE(folder.read("a3.png").find("\x08\x02"), std::string::npos);
    EXPECT_NE(folder.read("a3.png").find("pHYs"), std::string::npos);
}

TEST(ExportDocument, ReplacesNothingOnFailure) {
    const ViewerDocument document = documentWith(everything());
    const ExportFolder folder;
    folder.write("a.txt", "old");
    ExportRequest request;
    request.text = TextExport{};
    request.text->file = folder.file("a.txt");
    ExportSurroundings surroundings;
    surroundings.progress = [](std::size_t done, std::size_t /*all*/) { return done < 3; };
    EXPECT_FALSE(exportDocument(document, request, surroundings).response.success);
    EXPECT_EQ(folder.read("a.txt"), "old");
    EXPECT_EQ(folder.names(), "a.txt ");
}

TEST(ExportDocument, NumbersFailures) {
    const ExportFolder folder;
    ExportRequest request;
    request.html = HtmlExport{};
    request.html->file = folder.file("a.htm");
    const auto codeOf = [&request](const std::string& items) {
        return exportDocument(documentWith(items), request, {}).response.errorCode;
    };
    EXPECT_EQ(codeOf(""), 3);
    EXPECT_EQ(codeOf(R"({"type": "text", "text": "a", "visible": false})"), 4);
    request.html->file = folder.file("none/a.htm");
    EXPECT_EQ(codeOf(R"({"type": "text", "text": "a"})"), 6);
    request.html->file = folder.file("a.htm");
    request.png = PngExport{};
    request.png->root = folder.file("none/a");
    EXPECT_EQ(codeOf(R"({"type": "text", "text": "a"})"), 7);
    request.html.reset();
    EXPECT_EQ(codeOf(R"({"type": "text", "text": "a"})"), 5);
    EXPECT_EQ(folder.names(), "");
}

std::string quotedPrintable(std::string_view text) {
    QuotedPrintable quoted;
    std::string whole = quoted.add(text);
    return whole + quoted.finish();
}

TEST(MimeFile, QuotesForMail) {
    EXPECT_EQ(quotedPrintable("a=\xC3\xA4 \n.b "), "a=3D=C3=A4=20\r\n=2Eb=20");
    EXPECT_EQ(quotedPrintable(std::string(80, 'x')), std::string(75, 'x') + "=\r\n" + std::string(5, 'x'));
}

TEST(MimeFile, QuotesPiecesAsTheirWhole) {
    std::string text;
    for (int i = 0; i < 40; ++i) text += "ab \n.x" + std::string(static_cast<std::size_t>(i), ' ') + "=";
    QuotedPrintable quoted;
    std::string pieces;
    for (const char each : text) pieces += quoted.add(std::string_view(&each, 1));
    EXPECT_EQ(pieces + quoted.finish(), quotedPrintable(text));
}

TEST(MimeFile, HoldsEachPictureOnce) {
    MimeFile file;
    EXPECT_EQ(file.addPicture("one", "image/png"), "cid:picture1@report");
    EXPECT_EQ(file.addPicture("two", "image/png"), "cid:picture2@report");
    EXPECT_EQ(file.addPicture("one", "image/png"), "cid:picture1@report");
    std::string text;
    EXPECT_TRUE(file.write(gatherInto(text), "T", [](const ByteSink& page) { return page("<p>"); }));
    EXPECT_EQ(text.find('\n'), text.find("\r\n") + 1);
    EXPECT_NE(text.find("Content-ID: <picture2@report>\r\n\r\ndHdv\r\n--=_vexa_report--\r\n"),
              std::string::npos);
}

}  // namespace
}  // namespace vexa::frontend
