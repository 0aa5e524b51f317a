// Text documents in the Rich Text Format.
#include <gtest/gtest.h>

#include <algorithm>

#include "frontend/drawing/picture_drawing.h"
#include "frontend/export/word/rtf/rtf_text.h"
#include "tests/unit/export/export_samples.h"
#include "tests/unit/word/word_samples.h"

namespace vexa::frontend {
namespace {

using test::warned;
using test::WordFile;

std::string rtfOf(const std::string& items, const DocExport& request = {}) {
    return WordFile(items, request, ".rtf").bytes();
}

std::string text(std::string_view utf8) {
    std::string rtf;
    appendRtfText(rtf, utf8);
    return rtf;
}

std::size_t count(const std::string& rtf, std::string_view what) {
    std::size_t found = 0;
    for (std::size_t at = rtf.find(what); at != std::string::npos; at = rtf.find(what, at + 1)) ++found;
    return found;
}

TEST(Rtf, WritesCharactersByTheirNumbers) {
    EXPECT_EQ(text("a{b}\\c"), "a\\{b\\}\\\\c");
    EXPECT_EQ(text("\u00e4\u20ac"), "\\u228?\\u8364?");
    EXPECT_EQ(text("\uac00"), "\\u-21504?");
    EXPECT_EQ(text("\U0001F600"), "\\u-10179?\\u-8704?");
    EXPECT_EQ(text("a\tb\nc\r\nd\re"), "a\\tab b\\line c\\line d\\line e");
    EXPECT_EQ(text("\x01\xFF"), "\\u-3?\\u-3?");
    EXPECT_EQ(text(""), "");
}

TEST(Rtf, NumbersLanguagesAsSystemsDo) {
    EXPECT_EQ(languageNumber("de-DE"), 1031);
    EXPECT_EQ(languageNumber("zh-TW"), 1028);
    EXPECT_EQ(languageNumber("tlh"), 1024);
    EXPECT_NE(WordFile(R"({"type":"text","text":"a"})", {}, ".rtf", "ja").bytes().find("\\deflang1041"),
              std::string::npos);
}

TEST(Rtf, TurnsWordsForFonts) {
    EXPECT_EQ(turnedWords("\\s1\\b\\f2\\fs20\\brdrl\\fi3"), "\\rtlch\\fcs1\\ab\\af2\\afs20");
    EXPECT_EQ(turnedWords(""), "\\rtlch\\fcs1");
}

TEST(Rtf, BracesMatchWhateverIsInIt) {
    const std::string rtf = rtfOf(everything());
    long depth = 0;
    for (std::size_t i = 0; i < rtf.size(); ++i) {
        if (rtf[i] == '\\') {
            ++i;
        } else if (rtf[i] == '{') {
            ++depth;
        } else if (rtf[i] == '}') {
            ASSERT_GT(depth--, 0);
        }
    }
    EXPECT_EQ(depth, 0);
    EXPECT_TRUE(rtf.ends_with("}\n"));
    EXPECT_TRUE(std::all_of(rtf.begin(), rtf.end(), [](char each) { return each == '\n' || each >= ' '; }));
}

TEST(Rtf, HoldsEverything) {
    const std::string rtf = rtfOf(everything());
    for (const char* const what : {"{\\info{\\title March & April}}",
                                   "\\paperw11906\\paperh16838\\margl1417",
                                   "{\\stylesheet",
                                   "\\outlinelevel0",
                                   " heading 1;}",
                                   " caption;}",
                                   "{\\header \\pard\\plain",
                                   "Annual <figures>",
                                   "\\fldinst  PAGE }",
                                   "{\\field\\flddirty{\\*\\fldinst  TOC \\\\o \"1-3\"",
                                   "HYPERLINK \\\\l \"_Toc100000002\"",
                                   "{\\*\\bkmkstart _Toc100000002}Means & more",
                                   "Two lines\\line of text",
                                   "\\trhdr",
                                   "\\trkeep",
                                   "\\clvmgf",
                                   "\\clvmrg",
                                   "Total{\\super a}\\cell",
                                   "{\\super a} Without abroad.",
                                   "\\clcbpat",
                                   "\\brdrs\\brdrw20",
                                   "\\qr",
                                   "\\pngblip",
                                   "\\tab BY region.",
                                   "\\pagebb"}) {
        EXPECT_NE(rtf.find(what), std::string::npos) << what;
    }
    // A build that cannot draw has the text of an SVG in its place.
    EXPECT_EQ(count(rtf, "\\pngblip"), canDraw() ? 3U : 1U);
    EXPECT_EQ(count(rtf, "{\\sn wzDescription}{\\sv Income rises to the \"north\".}"), canDraw() ? 1U : 0U);
    EXPECT_NE(rtf.find("Income rises to the \"north\"."), std::string::npos);
    EXPECT_EQ(rtf, rtfOf(everything()));
}

TEST(Rtf, EveryRowHasAnEndForEachOfItsCells) {
    const std::string rtf = rtfOf(everything());
    EXPECT_GT(count(rtf, "\\trowd"), 5U);
    EXPECT_EQ(count(rtf, "\\trowd"), count(rtf, "\\row\n"));
    EXPECT_EQ(count(rtf, "\\cellx"), count(rtf, "\\cell\n"));
}

TEST(Rtf, BeginsSectionsWithoutEmptyParagraphs) {
    const std::string rtf = rtfOf(R"({"type":"text","text":"one"},{"type":"pageTitle","text":"first"},
        {"type":"text","text":"two"})");
    EXPECT_NE(rtf.find("one\\sect\\sectd\\sbkpage"), std::string::npos);
    EXPECT_LT(rtf.find("one"), rtf.find("{\\header"));
    EXPECT_EQ(count(rtf, "{\\footer"), 2U);
}

TEST(Rtf, KnowsPagesAndWideTables) {
    DocExport request;
    request.page = {842, 595};
    request.pageBreaks = false;
    const std::string rtf =
        rtfOf(R"({"type":"text","text":"a"},{"type":"text","text":"b","pageBreakBefore":true})", request);
    EXPECT_NE(rtf.find("\\paperw16840\\paperh11900"), std::string::npos);
    EXPECT_NE(rtf.find("\\landscape"), std::string::npos);
    EXPECT_EQ(rtf.find("\\pagebb"), std::string::npos);
}

TEST(Rtf, NamesFontsThatCannotEndTheirTable) {
    const std::string rtf =
        rtfOf(R"({"type":"text","text":"a","style":{"font":"A;}{B\\C and a name that is much too long"}})");
    EXPECT_NE(rtf.find(" A\\}\\{B\\\\C and a name that is much;}"), std::string::npos) << rtf;
}

TEST(Rtf, WarnsAsTheOtherForm) {
    const WordFile file(R"({"type":"table","label":"Long","rows":[{"label":"Row","categories":[")" +
                            std::string(120, 'x') + R"("]}],"columns":[],"cells":[1]})",
                        {}, ".rtf");
    EXPECT_EQ(warned(file.outcome(), ExportWarning::longRowLabel), "Long ");
}

}  // namespace
}  // namespace vexa::frontend
