#include "frontend/export/xlsx/xml_stream.h"

#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

/// The text in pieces of so many bytes.
ByteSource inPieces(const std::string& text, std::size_t bytes) {
    return [&text, bytes, at = std::size_t{0}](std::string_view& piece) mutable {
        piece = std::string_view(text).substr(at, bytes);
        at += piece.size();
        return PackageResult();
    };
}

TEST(XmlStream, GivesBackWhatItTook) {
    const std::string xml =
        "<?xml version='1.0' encoding='utf-8'?>\n<!-- > --><x:a b='1 > 0' c=\"'\"> text &amp; more<d/>"
        "<e><![CDATA[<]]></e >\n</x:a>\n";
    for (std::size_t bytes = 1; bytes <= xml.size(); ++bytes) {
        XmlStream stream(inPieces(xml, bytes));
        std::string copy;
        std::string names;
        while (stream.next()) {
            copy += stream.raw();
            if (stream.isStart()) names += std::string(stream.localName()) + std::to_string(stream.depth());
            if (stream.isEnd()) names += "/" + std::to_string(stream.depth());
        }
        EXPECT_TRUE(stream.result()) << bytes << stream.result().text;
        EXPECT_EQ(copy, xml);
        EXPECT_EQ(names, "a0d1e1/1/0");
    }
}

TEST(XmlStream, TakesTheInsideOfAnElement) {
    const std::string xml = "<a><row r='1'><c>1</c>text</row><row><!-- </row> --></row><row>open</a>";
    for (const std::size_t bytes : {std::size_t{1}, std::size_t{7}, xml.size()}) {
        XmlStream stream(inPieces(xml, bytes));
        ASSERT_TRUE(stream.next() && stream.next());
        EXPECT_EQ(stream.takeInside(), "<c>1</c>text</row>");
        EXPECT_TRUE(stream.isEnd());
        EXPECT_EQ(stream.localName(), "row");
        EXPECT_EQ(stream.depth(), 1U);
        ASSERT_TRUE(stream.next());
        EXPECT_EQ(stream.takeInside(), "");
        ASSERT_TRUE(stream.next());
        EXPECT_EQ(stream.raw(), "<!-- </row> -->");
        ASSERT_TRUE(stream.next() && stream.next());
        EXPECT_EQ(stream.takeInside(), "");
        EXPECT_TRUE(stream.next());
        EXPECT_FALSE(stream.next());
        EXPECT_FALSE(stream.result());
    }
}

TEST(XmlStream, ReadsAttributes) {
    const std::string xml = "<a r = '1&lt;2' x:r=\"3\"/>";
    XmlStream stream(textSource(xml));
    ASSERT_TRUE(stream.next());
    EXPECT_TRUE(stream.isWhole());
    EXPECT_EQ(stream.attribute("r"), "1&lt;2");
    EXPECT_EQ(stream.attribute("x:r"), "3");
    EXPECT_FALSE(stream.attribute("s"));
    EXPECT_EQ(plainText("1&lt;2&#65;&#x42;&quot;&none;&"), "1<2AB\"&none;&");
}

TEST(XmlStream, RefusesWhatIsNotWellFormed) {
    for (const std::string xml :
         {"", "text", "<a>", "<a></b>", "<a/><b/>", "<a", "<a b='>", "</a>", "<a><!--", "<a>]]><![CDATA[",
          "<!DOCTYPE a><a/>", "<?xml version='1.0' encoding='UTF-16'?><a/>", "\xFF\xFE<\0a\0", "<a/>text"}) {
        XmlStream stream(textSource(xml));
        while (stream.next()) {
        }
        EXPECT_FALSE(stream.result()) << xml;
    }
    std::string deep;
    for (int i = 0; i < 300; ++i) deep += "<a>";
    XmlStream stream(textSource(deep));
    while (stream.next()) {
    }
    EXPECT_EQ(stream.result().problem, PackageProblem::damaged);
}

}  // namespace
}  // namespace vexa::frontend
