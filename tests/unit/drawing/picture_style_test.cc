#include "frontend/drawing/picture_style.h"

#include <gtest/gtest.h>

#include "tests/unit/drawing/sample_pictures.h"

using namespace vexa::frontend;
using namespace vexa::frontend::test;

namespace {

ShownPicture withTemplates(std::vector<std::string> templates) {
    return {nullptr, {}, std::move(templates), {}};
}

TEST(PictureStyle, RulesAreThoseOfTheTemplatesAndThenTheStyleSheet) {
    const ShownPicture picture = withTemplates(
        {R"(<template name="a"><style>rect{fill:red}</style><other><style>no</style></other></template>)",
         R"(<template><style><![CDATA[a>b{fill:blue}]]></style><style>c{}</style></template>)"});
    EXPECT_EQ("rect{fill:red}\na>b{fill:blue}\nc{}\nd{}", appliedRules(picture, "d{}"));
}

TEST(PictureStyle, TemplatesThatCannotBeReadHaveNoRules) {
    EXPECT_EQ("a{}", appliedRules(withTemplates({"", "no XML", "<template><style>b{}</template>"}), "a{}"));
}

TEST(PictureStyle, TheStyleStandsLast) {
    EXPECT_EQ(R"(<svg><g/><style xmlns="http://www.w3.org/2000/svg"><![CDATA[g{}]]></style></svg>)",
              applyRules("<svg><g/></svg>", "g{}"));
}

TEST(PictureStyle, ThePictureStaysAsItCameAroundTheStyle) {
    const std::string svg =
        "<!DOCTYPE svg [<!ENTITY e \"<g/>\">]><svg>&e; a &amp;&#65; <text> b </text><![CDATA[<]]></svg>";
    const std::string styled = applyRules(svg, "g{}");
    EXPECT_EQ(svg, applyRules(svg, " \n"));
    EXPECT_EQ(svg.substr(0, svg.size() - 6), styled.substr(0, svg.size() - 6));
}

TEST(PictureStyle, RulesCannotEndTheirSection) {
    const std::string styled = applyRules("<svg/>", "a]]></style><script/>");
    EXPECT_NE(std::string::npos, styled.find("a]] ></style><script/>]]></style></svg>"));
}

TEST(PictureStyle, WhatIsNoXmlStaysAsItIs) { EXPECT_EQ("<svg", applyRules("<svg", "a{}")); }

TEST(PictureStyle, IsAppliedWhenThePictureIsDrawn) {
    // A class is stronger than an attribute, and weaker than what an element says of itself.
    const DrawnPicture picture =
        drawn(twoBars(), orderOf(DrawnForm::png), ".left{fill:#00ff00} #right{fill:#00ff00}");
    EXPECT_EQ("", picture.reason);
    EXPECT_EQ("PNG RGB 80x40 dots=96 bits=8 colors=3 0,255,0,255 255,255,255,255 0,0,255,255",
              judged(picture.bytes, ".png", "5,5 40,20 75,35"));
}

TEST(PictureStyle, WinsOverThePicturesOwnRules) {
    const Picture own = svgOf("<style>rect{fill:#ff0000}</style><rect width='80' height='40'/>");
    EXPECT_EQ("PNG RGB 80x40 dots=96 bits=8 colors=1 0,255,0,255",
              judged(drawn(own, orderOf(DrawnForm::png), "rect{fill:#00ff00}").bytes, ".png", "5,5"));
}

}  // namespace
