#include "frontend/package/xml_writer.h"

#include <gtest/gtest.h>

#include "frontend/package/xml_reader.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view start = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string escaped(std::string_view text, XmlEscapes escapes, bool value) {
    std::string out;
    value ? appendXmlValue(out, text, escapes) : appendXmlText(out, text, escapes);
    return out;
}

TEST(XmlWriter, WritesElementsAttributesAndText) {
    XmlWriter xml(documentFileXml);
    xml.begin("root").attribute("a", "1 < 2").attribute("n", -5).flag("yes", true).flag("no", false);
    xml.begin("empty").optional("x", "").end();
    xml.begin("text").attribute("d", 0.1).text("a & b").end();
    xml.end();
    EXPECT_EQ(xml.take(), std::string(start) +
                              "<root a=\"1 &lt; 2\" n=\"-5\" yes=\"true\">\n<empty/>\n"
                              "<text d=\"0.1\">a &amp; b</text>\n</root>\n");
}

TEST(XmlWriter, WritesWithoutLinesForMixedText) {
    XmlWriter xml(officeXml);
    xml.begin("p").text("one ").element("b", "two").text(" three").begin("br").end();
    xml.raw("<i>four</i>").end();
    EXPECT_EQ(xml.take(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
              "<p>one <b>two</b> three<br/><i>four</i></p>");
    XmlWriter html(htmlXml);
    html.begin("div").begin("td").end();
    html.begin("br").endShort();
    html.end();
    EXPECT_EQ(html.take(), "<div><td></td><br/></div>");
}

TEST(XmlWriter, CountsAsItsReaderDoes) {
    for (const XmlStyle& style : {documentFileXml, officeXml, htmlXml}) {
        XmlWriter xml(style);
        xml.begin("a").attribute("x", "\"<&>'").attribute("y", 1.5).begin("b").end();
        xml.element("c", "<\"text\">").end();
        const std::size_t tags = xml.tags();
        const std::size_t quotes = xml.quotes();
        XmlReader reader;
        ASSERT_TRUE(reader.parse(xml.take(), "a"));
        EXPECT_EQ(reader.size().tags, tags);
        EXPECT_EQ(reader.size().quotes, quotes);
    }
}

TEST(XmlWriter, HandsFinishedPiecesOn) {
    std::string whole;
    std::size_t pieces = 0;
    std::size_t largest = 0;
    XmlWriter xml(officeXml, [&](std::string_view piece) {
        whole += piece;
        ++pieces;
        largest = std::max(largest, piece.size());
        return PackageResult();
    });
    XmlWriter kept(officeXml);
    for (XmlWriter* writer : {&xml, &kept}) {
        writer->begin("rows");
        for (int i = 0; i < 100'000; ++i) {
            writer->begin("c").attribute("r", i).text("value").end();
        }
        writer->end();
    }
    EXPECT_TRUE(xml.finish());
    EXPECT_TRUE(whole == kept.take());
    EXPECT_GT(pieces, 5U);
    EXPECT_LT(largest, 300'000U);
}

TEST(XmlWriter, AFailureOfTheSinkIsTheResult) {
    int calls = 0;
    XmlWriter xml(officeXml, [&](std::string_view) {
        return ++calls == 2 ? PackageResult::named(PackageProblem::cannotWrite, "full") : PackageResult();
    });
    xml.begin("a");
    for (int i = 0; i < 5; ++i) {
        xml.text(std::string(300'000, 'x'));
    }
    xml.end();
    EXPECT_EQ(xml.finish().problem, PackageProblem::cannotWrite);
    EXPECT_EQ(calls, 2);
}

TEST(XmlEscapes, OfTheDocumentFileKeepEveryByte) {
    EXPECT_EQ(escaped("a\\b\n\x7f\t\"<>&'", XmlEscapes::backslashes, false),
              "a\\5Cb\\0A\\7F\\09&quot;&lt;&gt;&amp;'");
    EXPECT_EQ(escaped("\xff\xef\xbf\xbf\xed\xa0\x80", XmlEscapes::backslashes, true),
              "\\FF\\EF\\BF\\BF\\ED\\A0\\80");
    for (unsigned first = 0; first < 256; ++first) {
        for (unsigned second = 0; second < 256; ++second) {
            const std::string text{static_cast<char>(first), static_cast<char>(second), 'x'};
            XmlWriter xml(documentFileXml);
            xml.begin("r").attribute("a", text).text(text).end();
            XmlReader reader;
            ASSERT_TRUE(reader.parse(xml.take(), "r"));
            std::string value;
            std::string content;
            ASSERT_TRUE(readText(reader.root(), "a", value) && readContent(reader.root(), content));
            ASSERT_EQ(value, text);
            ASSERT_EQ(content, text);
        }
    }
}

TEST(XmlEscapes, ForOtherProgramsReplaceWhatXmlCannotHold) {
    const std::string mark = "\xEF\xBF\xBD";
    EXPECT_EQ(escaped("a\\b\t\n\r\"", XmlEscapes::replacing, false), "a\\b\t\n&#13;\"");
    EXPECT_EQ(escaped("\t\n\r\"<>&", XmlEscapes::replacing, true), "&#9;&#10;&#13;&quot;&lt;&gt;&amp;");
    EXPECT_EQ(escaped(std::string("\0\x01\x7f", 3), XmlEscapes::replacing, false), mark + mark + "\x7f");
    EXPECT_EQ(escaped("\xff"
                      "a\xc3",
                      XmlEscapes::replacing, false),
              mark + "a" + mark);
    EXPECT_EQ(escaped("\xef\xbf\xbe|\xef\xbf\xbf", XmlEscapes::replacing, true), mark + "|" + mark);
    EXPECT_EQ(escaped("ä文😀", XmlEscapes::replacing, true), "ä文😀");
}

TEST(XmlEscapes, ForOtherProgramsAlwaysGiveXml) {
    for (unsigned first = 0; first < 256; ++first) {
        for (unsigned second = 0; second < 256; ++second) {
            const std::string text{'<', static_cast<char>(first), static_cast<char>(second), '\xEF', 'x'};
            XmlWriter xml(officeXml);
            xml.begin("r").attribute("a", text).text(text).end();
            XmlReader reader;
            ASSERT_TRUE(reader.parse(xml.take(), "r", {}, foreignXml)) << first << ' ' << second;
        }
    }
}

TEST(XmlEscapes, ABackslashWithoutTwoDigitsIsNone) {
    for (std::string bad : {"\\", "a\\4", "\\4g", "\\4a", "\\ 41"}) {
        EXPECT_FALSE(decodeBackslashes(bad));
    }
    std::string good = "a\\41\\5C41";
    EXPECT_TRUE(decodeBackslashes(good));
    EXPECT_EQ(good, "aA\\41");
}

}  // namespace
}  // namespace vexa::frontend
