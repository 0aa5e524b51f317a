#include "frontend/export/slides/slide_text.h"

#include <gtest/gtest.h>

#include "frontend/export/slides/slide_xml.h"

namespace vexa::frontend {
namespace {

std::string joined(const std::vector<std::string_view>& pieces) {
    std::string text;
    for (const std::string_view each : pieces) text.append("[").append(each).append("]");
    return text;
}

TEST(SlideText, IsCutBetweenLines) {
    EXPECT_EQ("[a\nb][c\nd][e]", joined(cutText("a\nb\nc\nd\ne", "Arial", 10, false, {100, 2, 2})));
    EXPECT_EQ("[a][b\nc]", joined(cutText("a\nb\nc", "Arial", 10, false, {100, 2, 1})));
    EXPECT_EQ("[]", joined(cutText("", "Arial", 10, false, {100, 2, 2})));
}

TEST(SlideText, IsCutAtBlanksOfALongParagraph) {
    // Ten letters of a monospaced font in 10 points take 60 points.
    EXPECT_EQ("[aaaa bbbb][cccc dddd][eeee]",
              joined(cutText("aaaa bbbb cccc dddd eeee", "monospace", 10, false, {63, 1, 1})));
    EXPECT_EQ("[aaaa bbbb cccc dddd][eeee]",
              joined(cutText("aaaa bbbb cccc dddd eeee", "monospace", 10, false, {63, 2, 2})));
}

TEST(SlideText, IsCutWithinAWordThatIsWiderThanTheSlide) {
    EXPECT_EQ("[aaaaaaaaaa][aaaaa]", joined(cutText("aaaaaaaaaaaaaaa", "monospace", 10, false, {63, 1, 1})));
    const std::string whole = "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4";
    for (const std::string_view each : cutText(whole, "monospace", 10, false, {19, 1, 1})) {
        EXPECT_EQ(0U, each.size() % 2) << each;
    }
}

TEST(SlideText, IsCutInLittleTime) {
    std::string text;
    for (int i = 0; i < 200'000; ++i) text += "word ";
    EXPECT_GT(cutText(text, "Arial", 10, false, {300, 20, 20}).size(), 100U);
    EXPECT_GT(cutText(std::string(1'000'000, 'w'), "Arial", 10, false, {300, 20, 20}).size(), 100U);
}

TEST(SlideText, IsLeftOutWhereItIsTooMuch) {
    XmlWriter xml(pieceXml);
    xml.begin("a:p");
    EXPECT_FALSE(isTooMuch(xml, std::string(mostSlideBytes / 2, 'x')));
    SlideText("en-US").run(xml, {std::string_view("a\nb"), {}});
    EXPECT_LT(xml.bytes(), 1'000U);
    const std::string lines(mostSlideBytes / 20, '\n');
    SlideText("en-US").run(xml, {lines, {}});
    EXPECT_GT(xml.bytes(), mostSlideBytes);
    EXPECT_LT(xml.bytes(), mostSlideBytes + 1'000U);
    EXPECT_TRUE(isTooMuch(xml, ""));
    xml.end();
}

TEST(SlideText, WritesRunsWithWhatIsSet) {
    constexpr XmlStyle bare{XmlEscapes::replacing, false, false, false, false};
    const SlideText text("de-DE");
    XmlWriter xml(bare);
    SlideRunStyle style;
    style.style.bold = true;
    style.style.size = 10.5;
    text.paragraph(xml, {{{"a & b\nc", style}}, tables::HorizontalAlign::center, 2, false});
    EXPECT_EQ(
        "<a:p><a:pPr lvl=\"2\" algn=\"ctr\"/><a:r><a:rPr lang=\"de-DE\" sz=\"1050\" b=\"1\"/><a:t>a &amp; "
        "b</a:t></a:r>"
        "<a:br><a:rPr lang=\"de-DE\" sz=\"1050\" b=\"1\"/></a:br>"
        "<a:r><a:rPr lang=\"de-DE\" sz=\"1050\" b=\"1\"/><a:t>c</a:t></a:r></a:p>",
        xml.take());
}

TEST(SlideText, OfAnEmptyLineHasItsHeight) {
    constexpr XmlStyle bare{XmlEscapes::replacing, false, false, false, false};
    XmlWriter xml(bare);
    SlideRunStyle style;
    style.style.size = 9;
    SlideText("en-US").paragraph(xml, {{{"", style}}, tables::HorizontalAlign::mixed, 0, false});
    EXPECT_EQ("<a:p><a:pPr/><a:endParaRPr lang=\"en-US\" sz=\"900\"/></a:p>", xml.take());
}

}  // namespace
}  // namespace vexa::frontend
