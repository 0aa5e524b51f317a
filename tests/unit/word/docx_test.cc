// Text documents of Office Open XML.
#include <gtest/gtest.h>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/word/word_samples.h"

namespace vexa::frontend {
namespace {

using test::warned;
using test::WordFile;

constexpr const char* smallTable = R"({"type":"table","label":"Report","title":"Income","caption":"Weighted.",
    "rows":[{"label":"Region","categories":[{"group":"Europe","categories":["North","South"]},
        {"label":"Total","footnotes":[1]}]}],
    "columns":[{"label":"Statistics","categories":[{"label":"Mean","format":"F8.2"},"N"]}],
    "layers":[{"label":"Sex","categories":["Female","Male"]}],
    "cells":[1.5,12,2.25,14,1.9,26,1.4,10,2.5,9,null,19],"footnotes":["Without abroad."]})";

TEST(Docx, HoldsEverythingInItsPlace) {
    const WordFile file(everything());
    EXPECT_EQ(file.page(), R"(TOCHeading: Contents
TOC1: Means & more
TOC2: Income & growth
Heading1: Means & more
Heading2: Income & growth
Normal: Two lines/of text with </p><script>alert(1)</script>.
Notes: Input: income.csv
TableTitle: Income by region
TableLayer: Sex: Male
#|>|Statistics|>
#Region|>|Mean|N
Europe|North|1.40|10
^|South|2.50|9
Totala|>||19
Caption: Weighted.
TableFootnote: a Without abroad.
TableGap
Picture: [Income rises to the "north".]
Picture: [Again]
Log: MEANS income
Log: )"
                           "\t"
                           R"(BY region.
Warning: There are empty cells.
(page) Picture: [A dot]
TableTitle: Plain grid
#|a|b
x|1|2
TableGap
Normal: first view
)");
    EXPECT_NE(file.part("word/header1.xml").find("<w:t>Annual &lt;figures&gt;</w:t>"), std::string::npos);
    EXPECT_NE(file.part("word/footer1.xml").find(" PAGE "), std::string::npos);
}

TEST(Docx, AsksForThePagesOfItsContents) {
    constexpr const char* asks =
        R"(<w:characterSpacingControl w:val="doNotCompress"/><w:updateFields w:val="true"/><w:compat>)";
    EXPECT_NE(WordFile(everything()).part("word/settings.xml").find(asks), std::string::npos);
    const std::string plain = WordFile(R"({"type":"text","text":"a"})").part("word/settings.xml");
    EXPECT_NE(plain.find("<w:compat>"), std::string::npos);
    EXPECT_EQ(plain.find("updateFields"), std::string::npos);
}

TEST(Docx, KnowsItsNameAndItsLanguage) {
    const WordFile file(R"({"type":"text","text":"a"})", {}, ".docx", "pt-BR");
    EXPECT_NE(file.part("docProps/core.xml").find("<dc:title>March &amp; April</dc:title>"),
              std::string::npos);
    EXPECT_NE(file.part("word/styles.xml").find(R"(<w:lang w:val="pt-BR")"), std::string::npos);
    const WordFile japanese(R"({"type":"text","text":"a"})", {}, ".docx", "ja");
    EXPECT_NE(japanese.part("word/styles.xml").find(R"(<w:lang w:val="ja-JP" w:eastAsia="ja-JP")"),
              std::string::npos);
}

TEST(Docx, TakesAnyNameButThoseOfTheOtherForm) {
    EXPECT_TRUE(WordFile(R"({"type":"text","text":"a"})", {}, ".dat").bytes().starts_with("PK"));
    EXPECT_TRUE(WordFile(R"({"type":"text","text":"a"})", {}, "").bytes().starts_with("PK"));
    EXPECT_TRUE(WordFile(R"({"type":"text","text":"a"})", {}, ".DOC").bytes().starts_with("{\\rtf1"));
    EXPECT_TRUE(WordFile(R"({"type":"text","text":"a"})", {}, ".Rtf").bytes().starts_with("{\\rtf1"));
}

TEST(Docx, LeavesOutNotesAndCaptions) {
    DocExport request;
    request.notesAndCaptions = false;
    EXPECT_EQ(WordFile(std::string(smallTable) + R"(,{"type":"notes","lines":[{"label":"a","value":"b"}]})",
                       request)
                  .page(),
              R"(TableTitle: Income
TableLayer: Sex: Female
#|>|Statistics|>
#Region|>|Mean|N
Europe|North|1.50|12
^|South|2.25|14
Total|>|1.90|26
TableGap
Notes: a: b
)");
}

TEST(Docx, BeginsSectionsWithPageTitles) {
    const WordFile file(R"({"type":"text","text":"one"},{"type":"pageTitle","text":"first"},
        {"type":"pageTitle","text":"second"},{"type":"text","text":"two"},{"type":"pageTitle","text":"third"})");
    EXPECT_EQ(file.page(), R"(Normal: one (section ends)
Normal: two (section ends)
TableGap
)");
    EXPECT_EQ(file.count("//w:sectPr"), 3U);
    EXPECT_EQ(file.count("//w:type[@w:val='nextPage']"), 2U);
    EXPECT_EQ(file.count("//w:headerReference"), 2U);
    const std::string head = file.part("word/header1.xml");
    EXPECT_LT(head.find("first"), head.find("second"));
    EXPECT_EQ(file.part("word/header2.xml").find("second"), std::string::npos);
}

TEST(Docx, BeginsPagesWhereItemsDo) {
    const std::string items = R"({"type":"text","text":"a","pageBreakBefore":true},
        {"type":"text","text":"b","pageBreakBefore":true},
        {"type":"table","titleHidden":true,"pageBreakBefore":true,"rows":[],"columns":[],"cells":[1]},
        {"type":"pageTitle","text":"t"},{"type":"text","text":"c","pageBreakBefore":true},
        {"type":"header","label":"h","pageBreakBefore":true,"items":[{"type":"text","text":"d"}]})";
    EXPECT_EQ(WordFile(items).page(), R"(TOCHeading: Contents
TOC1: h
(page) Normal: a
(page) Normal: b
(page) TableGap
1
TableGap (section ends)
Normal: c
(page) Heading1: h
Normal: d
)");
    DocExport request;
    request.pageBreaks = false;
    EXPECT_EQ(WordFile(items, request).count("//w:pageBreakBefore"), 0U);
}

TEST(Docx, HasThePageThatIsAskedFor) {
    DocExport request;
    request.page = {842, 595};
    request.margins = {20, 30, 40, 50};
    const WordFile file(smallTable, request);
    EXPECT_EQ(file.attribute("//w:pgSz", "w:w"), "16840");
    EXPECT_EQ(file.attribute("//w:pgSz", "w:h"), "11900");
    EXPECT_EQ(file.attribute("//w:pgSz", "w:orient"), "landscape");
    EXPECT_EQ(file.attribute("//w:pgMar", "w:top"), "400");
    EXPECT_EQ(file.attribute("//w:pgMar", "w:bottom"), "600");
    EXPECT_EQ(file.attribute("//w:pgMar", "w:left"), "800");
    EXPECT_EQ(file.attribute("//w:pgMar", "w:right"), "1000");
    EXPECT_NE(file.part("word/styles.xml").find(R"(w:leader="dot" w:pos="15040")"), std::string::npos);
    EXPECT_TRUE(file.outcome().warnings.empty());
    EXPECT_EQ(WordFile(smallTable).attribute("//w:pgSz", "w:orient"), "(none)");
}

TEST(Docx, AdaptsPagesThatCannotBe) {
    DocExport request;
    request.page = {10, 100'000};
    const WordFile file(smallTable, request);
    EXPECT_EQ(file.attribute("//w:pgSz", "w:w"), "720");
    EXPECT_EQ(file.attribute("//w:pgSz", "w:h"), "31680");
    EXPECT_EQ(file.attribute("//w:pgMar", "w:left"), "252");
    EXPECT_EQ(file.outcome().warnings.size(), 1U);
}

std::string wideTable(int columns) {
    std::string labels;
    std::string cells;
    for (int i = 0; i < columns; ++i) {
        labels += std::string(i == 0 ? "" : ",") + "\"Column " + std::to_string(i) + "\"";
        cells += std::string(i == 0 ? "" : ",") + std::to_string(100'000 + i);
    }
    return R"({"type":"table","label":"Wide","title":"Wide","rows":[{"label":"Row","categories":["one"]}],
        "columns":[{"label":"Columns","labelHidden":true,"categories":[)" +
           labels + R"(]}],"cells":[)" + cells + "]}";
}

TEST(Docx, WrapsShrinksAndLeavesWideTables) {
    DocExport request;
    const WordFile wrapped(wideTable(20), request);
    EXPECT_GT(wrapped.count("//w:tbl"), 1U);
    EXPECT_EQ(wrapped.count("//w:t[.='one']"), wrapped.count("//w:tbl"));
    EXPECT_EQ(wrapped.count("//w:tbl[sum(w:tblGrid/w:gridCol/@w:w) > 9072]"), 0U);
    EXPECT_EQ(warned(wrapped.outcome(), ExportWarning::columnsCut), "");

    request.wideTables = WideTables::shrink;
    const WordFile shrunk(wideTable(20), request);
    EXPECT_EQ(shrunk.count("//w:tbl"), 1U);
    EXPECT_EQ(shrunk.count("//w:tbl[sum(w:tblGrid/w:gridCol/@w:w) > 9090]"), 0U);
    constexpr const char* cell = "//w:tc[.//w:t='one']//w:pStyle";
    EXPECT_NE(wrapped.styleOf(cell).find("<w:sz w:val=\"18\"/>"), std::string::npos);
    EXPECT_EQ(shrunk.styleOf(cell).find("<w:sz w:val=\"18\"/>"), std::string::npos);
    EXPECT_NE(shrunk.styleOf(cell), "(none)");

    request.wideTables = WideTables::asIs;
    const WordFile left(wideTable(20), request);
    EXPECT_EQ(left.count("//w:tbl"), 1U);
    EXPECT_EQ(left.count("//w:tbl[sum(w:tblGrid/w:gridCol/@w:w) > 12000]"), 1U);
    EXPECT_EQ(warned(left.outcome(), ExportWarning::columnsCut), "Wide ");

    request.wideTables = WideTables::shrink;
    request.page = {100, 842};
    const WordFile tiny(wideTable(60), request);
    EXPECT_EQ(warned(tiny.outcome(), ExportWarning::textsCut), "Wide ");
}

TEST(Docx, WarnsOfLongRowLabels) {
    const std::string label(120, 'x');
    const WordFile file(R"({"type":"table","label":"Long","rows":[{"label":"Row","categories":[")" + label +
                        R"("]}],"columns":[],"cells":[1]})");
    EXPECT_EQ(warned(file.outcome(), ExportWarning::longRowLabel), "Long ");
    EXPECT_EQ(warned(WordFile(smallTable).outcome(), ExportWarning::longRowLabel), "");
}

TEST(Docx, ShowsStylesOfCells) {
    const WordFile file(
        R"({"type":"table","rows":[{"label":"R","categories":[{"label":"a","bold":true},"b"]}],
        "columns":[{"label":"C","categories":["c"]}],
        "cells":[{"value":1,"bold":true,"italic":true,"underline":true,"font":"Georgia","size":12.5,
            "color":"#112233","background":"#ffee88"},"text"]})");
    EXPECT_EQ(file.count("//w:tc[.//w:t='1']//w:shd[@w:fill='FFEE88']"), 1U);
    const std::string style = file.styleOf("//w:tc[.//w:t='1']//w:pStyle");
    for (const char* const word :
         {"<w:jc w:val=\"right\"/>", "w:ascii=\"Georgia\"", "<w:b/>", "<w:i/>", "<w:u w:val=\"single\"/>",
          "<w:sz w:val=\"25\"/>", "<w:color w:val=\"112233\"/>"}) {
        EXPECT_NE(style.find(word), std::string::npos) << word << style;
    }
    EXPECT_NE(file.styleOf("//w:tc[.//w:t='text']//w:pStyle"), style);
    EXPECT_EQ(file.count("//w:tr[1]/w:tc//w:top[@w:val='single'][@w:sz='8']"), 2U);
}

TEST(Docx, KeepsTablesTogether) {
    const WordFile low(smallTable);
    EXPECT_EQ(low.count("//w:tr"), low.count("//w:tr[.//w:cantSplit]"));
    EXPECT_EQ(low.count("//w:tbl//w:p"), low.count("//w:tbl//w:keepNext"));
    std::string rows;
    std::string cells;
    for (int i = 0; i < 80; ++i) {
        rows += std::string(i == 0 ? "" : ",") + "\"r" + std::to_string(i) + "\"";
        cells += i == 0 ? "1" : ",1";
    }
    const WordFile high(R"({"type":"table","rows":[{"label":"R","categories":[)" + rows +
                        R"(]}],"columns":[],"cells":[)" + cells + "]}");
    EXPECT_GT(high.count("//w:tr"), high.count("//w:tr[.//w:keepNext]") + 70);
}

TEST(Docx, WritesRightToLeft) {
    const WordFile file("{\"type\":\"text\",\"text\":\"\u0634\u0645\u0627\u0644 123\"}");
    EXPECT_EQ(file.count("//w:pPr/w:bidi"), 1U);
    EXPECT_EQ(file.count("//w:rPr/w:rtl"), 1U);
}

TEST(Docx, GivesTheSameBytesAgain) {
    EXPECT_EQ(WordFile(everything()).bytes(), WordFile(everything()).bytes());
}

TEST(Docx, SaysWhatItDoesNotKnow) {
    const WordFile file(R"({"type":"future","label":"Item of later","x":1})");
    EXPECT_EQ(file.page(), "Normal: Item of later\n");
    ASSERT_EQ(file.outcome().warnings.size(), 1U);
    EXPECT_NE(file.outcome().warnings.front().find("items of later versions"), std::string::npos);
}

TEST(Docx, ReplacesWhatIsThere) {
    const ExportFolder folder;
    folder.write("a.docx", "something else");
    ViewerDocument document;
    fill(document, R"({"type":"text","text":"a"})");
    ExportRequest request;
    request.doc = DocExport{};
    request.doc->file = folder.file("a.docx");
    EXPECT_TRUE(exportDocument(document, request, {}).response.success);
    EXPECT_TRUE(folder.read("a.docx").starts_with("PK"));
    ExportSurroundings surroundings;
    surroundings.progress = [](std::size_t, std::size_t) { return false; };
    folder.write("a.docx", "kept");
    EXPECT_FALSE(exportDocument(document, request, surroundings).response.success);
    EXPECT_EQ(folder.read("a.docx"), "kept");
    EXPECT_EQ(folder.names(), "a.docx ");
}

}  // namespace
}  // namespace vexa::frontend
