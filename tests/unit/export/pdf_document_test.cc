// PDF as others read it: qpdf, pikepdf, poppler. What needs a reader that is not installed is skipped.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/import/random_documents.h"

namespace vexa::frontend {
namespace {

struct WrittenPdf {
    std::string bytes;
    std::vector<std::string> warnings;
    ExportResponse response;
};

WrittenPdf pdfOf(const ViewerDocument& document, const ExportFolder& folder, PdfExport pdf = {},
                 const std::string& name = "a.pdf") {
    ExportRequest request;
    pdf.file = folder.file(name);
    request.pdf = pdf;
    ExportSurroundings surroundings;
    surroundings.language = "pt_BR";
    const ExportOutcome outcome = exportDocument(document, request, surroundings);
    EXPECT_TRUE(outcome.response.success) << outcome.reason;
    return {folder.read(name), outcome.warnings, outcome.response};
}

ViewerDocument namedDocument(const std::string& items) {
    ViewerDocument document;
    document.setName("March & April");
    fill(document, items);
    return document;
}

/// What a program of this system prints; nothing in a quick run or without that program.
std::string printed(const ExportFolder& folder, const std::string& command) {
    const std::string whole = "/usr/bin/env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 " + command + " > \"" +
                              folder.file("out") + "\" 2>&1";
    static_cast<void>(std::system(whole.c_str()));
    return folder.read("out");
}

bool isInstalled(const char* program) {
    return std::system(("command -v " + std::string(program) + " > /dev/null 2>&1").c_str()) == 0;
}

std::string pdfComplaints(const ExportFolder& folder, const std::string& name = "a.pdf") {
    return printed(
        folder, "python3 \"" VEXA_SOURCE_FOLDER "/tests/judges/check_pdf.py\" \"" + folder.file(name) + "\"");
}

/// The words of the pages in the order in which they are read, with one blank between.
std::string wordsOf(const ExportFolder& folder) {
    std::istringstream text(printed(folder, "pdftotext \"" + folder.file("a.pdf") + "\" -"));
    std::string words;
    for (std::string word; text >> word;) words += (words.empty() ? "" : " ") + word;
    return words;
}

/// A table of so many rows in groups of ten, and columns in groups of four.
std::string largeTable(int rows, int columns) {
    std::ostringstream json;
    json
        << R"({"type": "table", "label": "L", "title": "Large", "caption": "Caption.", "footnotes": ["Note."], "rows": [{"label": "R", "categories": [)";
    for (int row = 0; row < rows; ++row) {
        json << (row == 0 ? "" : ",")
             << (row % 10 == 0 ? R"({"group": "G)" + std::to_string(row / 10) + R"(", "categories": [)" : "")
             << "\"r" << row << '"' << (row % 10 == 9 || row + 1 == rows ? "]}" : "");
    }
    json << R"(]}], "columns": [{"label": "C", "categories": [)";
    for (int column = 0; column < columns; ++column) {
        json << (column == 0 ? "" : ",")
             << (column % 4 == 0 ? R"({"group": "H)" + std::to_string(column / 4) + R"(", "categories": [)"
                                 : "")
             << "\"c" << column << '"' << (column % 4 == 3 || column + 1 == columns ? "]}" : "");
    }
    json << R"(]}], "cells": [{"value": 0, "footnotes": [1]})";
    for (int cell = 1; cell < rows * columns; ++cell) json << ',' << cell;
    json << "]}";
    return json.str();
}

TEST(PdfDocument, IsTaggedWithEverythingInIt) {
    const ExportFolder folder;
    const ViewerDocument document = namedDocument(everything());
    pdfOf(document, folder);
    EXPECT_EQ(pdfComplaints(folder), "");
    PdfExport bare;
    bare.embedBookmarks = false;
    bare.embedFonts = false;
    const WrittenPdf written = pdfOf(document, folder, bare);
    EXPECT_EQ(pdfComplaints(folder), "");
    EXPECT_EQ(written.bytes.find("/Outlines"), std::string::npos);
}

TEST(PdfDocument, IsTaggedWhereTablesAreBrokenOverPages) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    const ExportFolder folder;
    pdfOf(
        namedDocument(largeTable(150, 40) +
                      R"(,{"type": "table", "label": "T", "rows": [{"label": "R", "categories": ["a", "b"]}],
        "columns": [{"label": "C", "categories": ["c", "d"]}], "cells": [")" +
                      std::string(20'000, 'w') + R"(", 1, 2, 3]})"),
        folder);
    EXPECT_EQ(pdfComplaints(folder), "");
}

TEST(PdfDocument, IsTaggedWhateverDocumentsHold) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    const ExportFolder folder;
    std::string files;
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        ViewerDocument document;
        document.edit(RandomDocuments(seed).document(25, true));
        ExportRequest request;
        request.items = ExportedItems::all;
        request.layers = ExportedLayers::all;
        request.pdf = PdfExport{};
        request.pdf->file = folder.file(std::to_string(seed));
        if (exportDocument(document, request, {}).response.success) files += " \"" + request.pdf->file + "\"";
    }
    EXPECT_EQ(printed(folder, "python3 \"" VEXA_SOURCE_FOLDER "/tests/judges/check_pdf.py\"" + files), "");
}

TEST(PdfDocument, HasTheSameBytesEveryTime) {
    const ExportFolder folder;
    const ViewerDocument document = namedDocument(everything() + "," + largeTable(60, 4));
    const WrittenPdf first = pdfOf(document, folder, {}, "a.pdf");
    EXPECT_EQ(first.bytes, pdfOf(document, folder, {}, "b.pdf").bytes);
    EXPECT_EQ(first.bytes.find("CreationDate"), std::string::npos);
}

TEST(PdfDocument, GivesItsTextInReadingOrder) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const ExportFolder folder;
    pdfOf(namedDocument(R"json(
      {"type": "header", "label": "Office affairs", "items": [
        {"type": "text", "text": "Efficient flow, AVATAR To We: naïve Ελλάδα Привет."},
        {"type": "table", "label": "T", "title": "Title of it", "caption": "Caption of it.",
         "rows": [{"label": "R", "categories": ["first", {"label": "second", "footnotes": [1]}]}],
         "columns": [{"label": "C", "categories": [{"label": "x", "format": "F8.2"}]}], "cells": [1.5, -0.5], "footnotes": ["Footnote of it."]},
        {"type": "log", "text": "MEANS a\n  BY b."}]},
      {"type": "warning", "level": 2, "text": "Last words."})json"),
          folder);
    EXPECT_EQ(
        wordsOf(folder),
        "Office affairs Efficient flow, AVATAR To We: naïve Ελλάδα Привет. Title of it C R x first 1.50 "
        "second a -0.50 Caption of it. a Footnote of it. MEANS a BY b. Last words. 1");
}

TEST(PdfDocument, GivesTheCaptionOfATableWithoutRows) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    ExportFolder folder;
    static_cast<void>(pdfOf(
        namedDocument(
            R"({"type": "table", "title": "Title", "caption": "Caption", "footnotes": ["Footnote"], "rows": [{"label": "R", "categories": []}],
                "columns": [{"label": "C", "categories": ["a"]}]})"),
        folder));
    EXPECT_EQ(wordsOf(folder).substr(0, 22), "Title Caption Footnote");
}

TEST(PdfDocument, NumbersStandBelowEachOtherWithMarksAndWithout) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const ExportFolder folder;
    pdfOf(namedDocument(
              R"({"type": "table", "label": "T", "rows": [{"label": "R", "categories": ["a", "b"]}],
         "columns": [{"label": "C", "categories": [{"label": "x", "format": "F8.2"}]}],
         "cells": [{"value": 71.25, "footnotes": [1]}, 71.25], "footnotes": ["Note."]})"),
          folder);
    std::istringstream lines(printed(folder, "pdftotext -bbox \"" + folder.file("a.pdf") + "\" -"));
    std::vector<double> left;
    for (std::string line; std::getline(lines, line);) {
        if (line.find(">71.25") == std::string::npos) continue;
        left.push_back(std::stod(line.substr(line.find("xMin=") + 6)));
    }
    ASSERT_EQ(left.size(), 2U);
    EXPECT_NEAR(left[0], left[1], 0.2);
}

TEST(PdfDocument, GivesTextFromRightToLeftAsItIsRead) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const ExportFolder folder;
    pdfOf(
        namedDocument(R"({"type": "text", "text": "שלום עולם"}, {"type": "text", "text": "لا إله السلام"})"),
        folder);
    std::string words = wordsOf(folder);
    // The program itself adds marks of direction.
    for (const std::string mark : {"\u202B", "\u202C", "\u202A"}) {
        for (std::size_t at = words.find(mark); at != std::string::npos; at = words.find(mark))
            words.erase(at, mark.size());
    }
    EXPECT_EQ(words, "שלום עולם لا إله السلام 1");
}

TEST(PdfDocument, RepeatsHeadersAndLabelsOnEveryPart) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const ExportFolder folder;
    pdfOf(namedDocument(largeTable(95, 3)), folder);
    const std::string words = " " + wordsOf(folder);
    const auto count = [&words](const std::string& word) {
        std::size_t found = 0;
        for (std::size_t at = words.find(" " + word + " "); at != std::string::npos;
             at = words.find(" " + word + " ", at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(count("H0"), 2U);
    EXPECT_EQ(count("c1"), 2U);
    EXPECT_EQ(count("G0"), 1U);
    EXPECT_EQ(count("r60"), 1U);
    // The group that goes on is named on both pages, and its footnote stands with the part that refers to it.
    std::size_t named = 0;
    for (int group = 0; group < 10; ++group) named += count("G" + std::to_string(group));
    EXPECT_EQ(named, 11U);
    EXPECT_LT(words.find("a Note."), words.rfind(" H0 "));
    EXPECT_GT(words.find("Caption."), words.rfind(" H0 "));
}

TEST(PdfDocument, SaysOnFurtherPagesWhichTableGoesOn) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const ExportFolder folder;
    pdfOf(namedDocument(largeTable(200, 3)), folder);
    EXPECT_EQ(pdfComplaints(folder), "");
    // A form feed stands between pages.
    std::istringstream text(printed(folder, "pdftotext -layout \"" + folder.file("a.pdf") + "\" -"));
    std::vector<std::string> pages;
    for (std::string page; std::getline(text, page, '\f');) pages.push_back(page);
    ASSERT_GT(pages.size(), 2U);
    EXPECT_EQ(pages[0].find("(continued)"), std::string::npos);
    for (std::size_t i = 1; i < pages.size(); ++i) {
        EXPECT_EQ(pages[i].find("Large (continued)\n"), 0U) << pages[i];
    }
}

TEST(PdfDocument, LongTextsGiveWayBeforeShortLabels) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const ExportFolder folder;
    std::string longText;
    for (int i = 0; i < 30; ++i) longText += "word ";
    pdfOf(namedDocument(R"({"type":"table","rows":[{"label":"R","categories":["Case 128 of all"]}],
        "columns":[{"label":"C","categories":["Alpha","Remark"]}],"cells":[1,")" +
                        longText + "\"]}"),
          folder);
    const std::string page = printed(folder, "pdftotext -layout \"" + folder.file("a.pdf") + "\" -");
    EXPECT_NE(page.find("Case 128 of all"), std::string::npos) << page;  // on one line
}

TEST(PdfDocument, DividesWideTablesBetweenGroups) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const ExportFolder folder;
    pdfOf(namedDocument(largeTable(3, 48)), folder);
    const std::string words = " " + wordsOf(folder) + " ";
    std::size_t parts = 0;
    for (std::size_t at = words.find(" r1 "); at != std::string::npos; at = words.find(" r1 ", at + 1))
        ++parts;
    EXPECT_GT(parts, 1U);
    for (int group = 0; group < 12; ++group) {
        const std::string label = " H" + std::to_string(group) + " ";
        EXPECT_EQ(words.find(label), words.rfind(label)) << label;
        EXPECT_NE(words.find(label), std::string::npos) << label;
    }
}

TEST(PdfDocument, NamesFontsWithoutTheirOutlinesWhereThatSuffices) {
    if (!isInstalled("pdffonts")) GTEST_SKIP() << "pdffonts is not installed";
    const ExportFolder folder;
    PdfExport request;
    request.embedFonts = false;
    WrittenPdf written =
        pdfOf(namedDocument(R"({"type": "text", "text": "Ça suffit – “oui”, office."})"), folder, request);
    EXPECT_TRUE(written.warnings.empty());
    std::string fonts = printed(folder, "pdffonts \"" + folder.file("a.pdf") + "\"");
    EXPECT_NE(fonts.find("WinAnsi          no  no"), std::string::npos) << fonts;
    EXPECT_EQ(fonts.find("Identity-H"), std::string::npos) << fonts;
    EXPECT_EQ(wordsOf(folder), "Ça suffit – “oui”, office. 1");
    const auto chartWith = [](const std::string& text) {
        return R"({"type": "chart", "svg": "<svg width='80' height='40'><text y='20'>)" + text +
               R"(</text></svg>"})";
    };
    written = pdfOf(namedDocument(chartWith("Één")), folder, request);
    EXPECT_TRUE(written.warnings.empty());
    fonts = printed(folder, "pdffonts \"" + folder.file("a.pdf") + "\"");
    EXPECT_EQ(fonts.find("yes yes"), std::string::npos) << fonts;
    EXPECT_EQ(fonts.find('+'), std::string::npos) << fonts;
    EXPECT_EQ(wordsOf(folder), "Één 1");
    // Greek and Cyrillic letters and signs stand alone as Latin ones do.
    const std::string others = "Ελλάδα Россия – ő ≤ Łódź";
    written = pdfOf(namedDocument(R"({"type": "text", "text": ")" + others + R"("})"), folder, request);
    EXPECT_TRUE(written.warnings.empty());
    fonts = printed(folder, "pdffonts \"" + folder.file("a.pdf") + "\"");
    EXPECT_EQ(fonts.find("yes yes"), std::string::npos) << fonts;
    EXPECT_EQ(wordsOf(folder), others + " 1");
    written = pdfOf(namedDocument(chartWith("Ω")), folder, request);
    EXPECT_EQ(written.warnings.size(), 1U);
    written = pdfOf(namedDocument(R"({"type": "text", "text": "مرحبا"})"), folder, request);
    ASSERT_EQ(written.warnings.size(), 1U);
    EXPECT_NE(written.warnings[0].find("EMBEDFONTS=NO"), std::string::npos);
    fonts = printed(folder, "pdffonts \"" + folder.file("a.pdf") + "\"");
    EXPECT_NE(fonts.find("Identity-H       yes yes yes"), std::string::npos) << fonts;
}

TEST(PdfDocument, KeepsLettersThatNoFontHasInTheText) {
    const ExportFolder folder;
    const WrittenPdf written =
        pdfOf(namedDocument(R"({"type": "text", "text": "first \ud81b\udf00 and last"})"), folder);
    ASSERT_EQ(written.warnings.size(), 1U);
    EXPECT_NE(written.warnings[0].find("U+16F00"), std::string::npos);
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    EXPECT_EQ(wordsOf(folder), "first \U00016F00 and last 1");
}

TEST(PdfDocument, PutsPageTitlesOnThePagesBehindThem) {
    if (!isInstalled("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const ExportFolder folder;
    const std::string next = R"({"type": "text", "text": "next", "pageBreakBefore": true})";
    const WrittenPdf written =
        pdfOf(namedDocument(R"({"type": "text", "text": "begin"}, {"type": "pageTitle", "text": "First"},
        {"type": "pageTitle", "text": "Second"}, {"type": "text", "text": "same"},)" +
                            next + R"(,{"type": "pageTitle", "text": "Third"},)" + next +
                            R"(,{"type": "pageTitle", "text": "Unseen"})"),
              folder);
    EXPECT_EQ(wordsOf(folder), "begin same 1 First Second next 2 Third next 3");
    ASSERT_EQ(written.warnings.size(), 1U);
    EXPECT_NE(written.warnings[0].find("page titles"), std::string::npos);
}

TEST(PdfDocument, WarnsOfLongRowLabels) {
    const ExportFolder folder;
    const auto table = [](const std::string& label) {
        return R"({"type": "table", "label": "T", "rows": [{"label": "R", "categories": [")" + label +
               R"("]}], "columns": [{"label": "C", "categories": ["c"]}], "cells": [1]})";
    };
    EXPECT_TRUE(pdfOf(namedDocument(table("short")), folder).response.warnings[0].empty());
    const ExportResponse response = pdfOf(namedDocument(table(std::string(100, 'm'))), folder).response;
    ASSERT_EQ(response.warnings[0].size(), 1U);
    EXPECT_EQ(response.warnings[0][0].second, "T");
}

}  // namespace
}  // namespace vexa::frontend
