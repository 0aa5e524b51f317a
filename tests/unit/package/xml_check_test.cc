#include "frontend/package/xml_check.h"

#include <gtest/gtest.h>

#include <ctime>

namespace vexa::frontend {
namespace {

constexpr XmlPolicy everything{true, true, true, true, true};

PackageResult check(std::string_view xml, const XmlPolicy& policy = {}, const XmlLimits& limits = {}) {
    XmlSize size;
    return checkXml(xml, limits, policy, size);
}

TEST(XmlCheck, TakesWellFormedXml) {
    for (const char* xml :
         {"<a/>", " <a ></a > ", "<?xml version='1.0' encoding='utf-8' standalone=\"yes\"?>\n<a/>",
          "\xEF\xBB\xBF<a/>", "<a b='1' c = \"'\">&amp;&lt;&gt;&quot;&apos;&#65;&#x1F600;&#9;</a>",
          "<a><b><c/></b>text<b/></a>", "<ä:ö-1._x/>", "<a>]]></a>", "<a>> \"'</a>",
          "<?xml version=\"1.0\" encoding=\"US-ASCII\"?><a/>", "<a b='\t\n'/>"}) {
        const PackageResult result = check(xml);
        EXPECT_TRUE(result) << xml << ": " << result.shownDetail();
    }
}

TEST(XmlCheck, RefusesWhatIsNotWellFormedWithItsPlace) {
    const struct {
        const char* xml;
        const char* detail;
    } cases[] = {
        {"", "line 1, column 1: no root element"},
        {" \n ", "line 2, column 2: no root element"},
        {"text", "line 1, column 1: something besides the root element"},
        {"<a/>text", "line 1, column 5: something besides the root element"},
        {"<a/>\n<b/>", "line 2, column 1: something besides the root element"},
        {"<a>\n", "line 2, column 1: an element that is not closed"},
        {"<a>\n ä</b>", "line 2, column 3: an end tag without its start tag"},
        {"<a></a></a>", "line 1, column 8: an end tag without its start tag"},
        {"<a><b></a></b>", "line 1, column 7: an end tag without its start tag"},
        {"<a b='1' c='2' b='3'/>", "line 1, column 21: an attribute that appears twice"},
        {"<a>&nbsp;</a>", "line 1, column 4: an entity that is not defined"},
        {"<a b='&x;'/>", "line 1, column 7: an entity that is not defined"},
        {"<a>&amp</a>", "line 1, column 4: an entity that is not defined"},
        {"<a>& </a>", "line 1, column 4: an entity that is not defined"},
        {"<a>&#0;</a>", "line 1, column 4: an entity that is not defined"},
        {"<a>&#xD800;</a>", "line 1, column 4: an entity that is not defined"},
        {"<a>&#x110000;</a>", "line 1, column 4: an entity that is not defined"},
        {"<a>&#;</a>", "line 1, column 4: an entity that is not defined"},
        {"<a>&#-5;</a>", "line 1, column 4: an entity that is not defined"},
        {"<a>\x01</a>", "line 1, column 4: a character that XML cannot hold"},
        {"<a>\xff</a>", "line 1, column 4: a character that XML cannot hold"},
        {"<a b='\xed\xa0\x80'/>", "line 1, column 7: a character that XML cannot hold"},
        {"<a b='<'/>", "line 1, column 7: a broken tag"},
        {"<a b=1/>", "line 1, column 6: a broken tag"},
        {"<a b/>", "line 1, column 5: a broken tag"},
        {"<a b='1'c='2'/>", "line 1, column 9: a broken tag"},
        {"<a b='1", "line 1, column 8: a broken tag"},
        {"<a", "line 1, column 3: a broken tag"},
        {"<a / >", "line 1, column 4: a broken tag"},
        {"< a/>", "line 1, column 2: a broken tag"},
        {"<1/>", "line 1, column 2: a broken tag"},
        {"<a></a b='1'>", "line 1, column 8: a broken tag"},
        {"<?xml version='1.0' encoding='UTF-16'?><a/>", "line 1, column 40: an encoding other than UTF-8"},
        {"<?xml version='1.0' encoding='latin1'?><a/>", "line 1, column 40: an encoding other than UTF-8"},
    };
    for (const auto& one : cases) {
        for (const XmlPolicy& policy : {XmlPolicy{}, everything}) {
            const PackageResult result = check(one.xml, policy);
            EXPECT_EQ(result.problem, PackageProblem::damaged) << one.xml;
            EXPECT_EQ(result.shownDetail(), one.detail) << one.xml;
        }
    }
}

TEST(XmlCheck, RefusesZeroBytesWherever) {
    const std::string whole = "<?xml version='1.0'?><a b='c'>text<d/></a>";
    for (std::size_t at = 0; at <= whole.size(); ++at) {
        std::string changed = whole;
        changed.insert(at, 1, '\0');
        EXPECT_FALSE(check(changed)) << at;
        EXPECT_FALSE(check(changed, everything)) << at;
    }
}

TEST(XmlCheck, TakesByPolicyOnly) {
    const struct {
        const char* xml;
        XmlPolicy policy;
    } cases[] = {
        {"<!DOCTYPE a [<!ENTITY b \"]>\"><!ELEMENT a ANY>]><a/>", {true, false, false, false, false}},
        {"<!DOCTYPE a [<!-- don't < > --> <!ENTITY b \"c\"]<>>]><a/>", {true, false, false, false, false}},
        {"<!DOCTYPE html><a/>", {true, false, false, false, false}},
        {"<!-- ä < & --><a><!----></a><!-- x -->", {false, true, false, false, false}},
        {"<a><![CDATA[< & ]] >]]></a>", {false, false, true, false, false}},
        {"<?xml version=\"1.0\"?><?style x?><a><?y?></a>", {false, false, false, true, false}},
    };
    for (const auto& one : cases) {
        EXPECT_TRUE(check(one.xml, one.policy)) << one.xml << check(one.xml, one.policy).shownDetail();
        EXPECT_TRUE(check(one.xml, everything)) << one.xml;
        const PackageResult refused = check(one.xml);
        EXPECT_EQ(refused.problem, PackageProblem::damaged) << one.xml;
        EXPECT_NE(refused.shownDetail().find("of a kind that is not accepted"), std::string::npos) << one.xml;
    }
}

TEST(XmlCheck, RefusesUnderEveryPolicy) {
    for (const char* xml : {"<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>",
                            "<a><!DOCTYPE a></a>",
                            "<a/><!DOCTYPE a>",
                            "<!DOCTYPE a [",
                            "<!DOCTYPE a><!DOCTYPE a><a/>",
                            "<!DOCTYPE a [<!--",
                            "<!DOCTYPE a \">",
                            "<!-- ",
                            "<a><!-- </a>",
                            "<a><![CDATA[</a>",
                            "<![CDATA[x]]><a/>",
                            "<a><?x</a>",
                            "<a><?0?></a>",
                            "<a><?></a>",
                            "<a><?xml version='1.0'?></a>",
                            " <?xml version='1.0'?><a/>",
                            "<!-- \x01 --><a/>",
                            "<!x><a/>",
                            "<a><!ELEMENT b></a>",
                            "<a><![CDATA[\xff]]></a>"}) {
        EXPECT_EQ(check(xml, everything).problem, PackageProblem::damaged) << xml;
    }
}

TEST(XmlCheck, KnowsTheLimits) {
    const XmlPolicy policy;
    EXPECT_TRUE(check("<a><b/></a>", policy, {3, 0, 2}));
    EXPECT_EQ(check("<a><b/></a>", policy, {2, 0, 2}).problem, PackageProblem::tooLarge);
    EXPECT_EQ(check("<a b=''/>", policy, {3, 1, 2}).problem, PackageProblem::tooLarge);
    EXPECT_EQ(check("<a><b/></a>", policy, {3, 0, 1}).shownDetail(),
              "line 1, column 4: elements that are nested too deeply");
    EXPECT_FALSE(check("<a><b></b></a>", policy, {4, 0, 1}));
}

TEST(XmlCheck, HugeAndDeepOnesEndSoon) {
    const std::clock_t begun = std::clock();
    std::string deep;
    std::string attributes = "<a";
    std::string open = "<a>";
    for (int i = 0; i < 1'000'000; ++i) {
        deep += "<a>";
        attributes += " a" + std::to_string(i) + "=''";
        open += "&#65;";
    }
    EXPECT_FALSE(check(deep));
    EXPECT_TRUE(check(attributes + "/>"));
    EXPECT_FALSE(check(attributes + " a7=''/>"));
    EXPECT_TRUE(check(open + "</a>"));
    EXPECT_TRUE(check("<a b='" + std::string(20U << 20U, 'x') + "'/>"));
    EXPECT_FALSE(check("<a>" + std::string(5U << 20U, '&')));
    EXPECT_LT(std::clock() - begun, 60 * CLOCKS_PER_SEC) << "of the processor, whatever else goes on";
}

}  // namespace
}  // namespace vexa::frontend
