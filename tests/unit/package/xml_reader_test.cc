#include "frontend/package/xml_reader.h"

#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

TEST(XmlReader, GivesTheTree) {
    XmlReader reader;
    ASSERT_TRUE(reader.parse("<r a='1' b='-2' c='0.5' t='x\\0Ay'><e>&lt;\\41</e><e> </e></r>", "r"));
    int number = 0;
    std::optional<int> perhaps;
    std::optional<double> real;
    std::string text;
    EXPECT_TRUE(readInteger(reader.root(), "a", number));
    EXPECT_EQ(number, 1);
    EXPECT_TRUE(readInteger(reader.root(), "b", perhaps));
    EXPECT_EQ(perhaps, -2);
    EXPECT_TRUE(readNumber(reader.root(), "c", real));
    EXPECT_EQ(real, 0.5);
    EXPECT_TRUE(readText(reader.root(), "t", text));
    EXPECT_EQ(text, "x\ny");
    EXPECT_TRUE(readContent(reader.root().child("e"), text));
    EXPECT_EQ(text, "<A");
    EXPECT_TRUE(readContent(reader.root().last_child(), text));
    EXPECT_EQ(text, " ");
}

TEST(XmlReader, ValuesThatAreNotThereOrNotRight) {
    XmlReader reader;
    ASSERT_TRUE(reader.parse("<r n='1x' t='\\' big='99999999999'><e/></r>", "r"));
    int number = 7;
    std::string text = "before";
    EXPECT_TRUE(readInteger(reader.root(), "none", number) && readText(reader.root(), "none", text));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(text, "before");
    EXPECT_FALSE(readInteger(reader.root(), "n", number));
    EXPECT_FALSE(readInteger(reader.root(), "big", number));
    EXPECT_FALSE(readText(reader.root(), "t", text));
    EXPECT_FALSE(readContent(reader.root(), text)) << "an element stands in it";
}

TEST(XmlReader, WantsTheRootThatIsExpected) {
    XmlReader reader;
    EXPECT_EQ(reader.parse("<a/>", "b").shownDetail(), "a different root element than expected");
    EXPECT_TRUE(reader.parse("<a/>", ""));
    EXPECT_EQ(reader.parse("<a>", "a").shownDetail(), "line 1, column 4: an element that is not closed");
}

TEST(XmlReader, KeepsMixedTextInItsOrder) {
    XmlReader reader;
    ASSERT_TRUE(
        reader.parse("<?xml version='1.0'?><p>one <b>two</b> <i>three</i><!-- no -->\r\n<![CDATA[<4>]]></p>",
                     "p", {}, foreignXml));
    std::string order;
    for (const pugi::xml_node node : reader.root().children()) {
        order +=
            node.type() == pugi::node_element ? std::string("[") + node.child_value() + ']' : node.value();
    }
    EXPECT_EQ(order, "one [two] [three]\n<4>");
}

TEST(XmlReader, WhatTheCheckTakesTheParserTakes) {
    // Otherwise errors would be told without their place.
    for (const char* xml :
         {"<a/>", "<a b='&#x41;'>&#65;</a>", "<ä/>", "<a.b-c:d_e/>", "<a ></a >", "<a>]]></a>",
          "<!DOCTYPE a [<!ENTITY b \"]>\">]><a/>", "<a><?x y?></a>", "<a>&lt;&#13;</a>"}) {
        XmlReader reader;
        const PackageResult result = reader.parse(xml, "", {}, {true, true, true, true, true});
        EXPECT_TRUE(result) << xml << ": " << result.shownDetail();
    }
}

}  // namespace
}  // namespace vexa::frontend
