#include "frontend/looks/look_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vexa::frontend {
namespace {

using namespace tables;
using testing::HasSubstr;

std::shared_ptr<const TableLook> lookOf(std::string_view content) {
    const ReadLook read = readLook("<tableProperties>" + std::string(content) + "</tableProperties>");
    EXPECT_EQ(read.problem, "");
    return read.look;
}

std::string problemOf(std::string_view xml) {
    const ReadLook read = readLook(xml);
    EXPECT_EQ(read.look, nullptr);
    return read.problem;
}

TEST(LookReader, AnEmptyLookIsThePlainOneWithoutLines) {
    const ReadLook read = readLook("<tableProperties/>");
    ASSERT_NE(read.look, nullptr);
    EXPECT_EQ(read.look->areas, plainLook()->areas);
    for (const BorderLine& line : read.look->borders) EXPECT_EQ(line, BorderLine{});
    EXPECT_EQ(read.look->name, "");
    EXPECT_EQ(read.look->source, "<tableProperties/>");
}

TEST(LookReader, ReadsEveryAttributeOfAnArea) {
    const auto look = lookOf(
        R"(<area name="data" font="Serif" size="7.5" bold="true" italic="true" underline="true" color="#0A0b0C"
           background="#ffffff" align="right" verticalAlign="center" marginLeft="1" marginRight="2" marginTop="3"
           marginBottom="0.5"/>)");
    const AreaLook expected{"Serif",
                            7.5,
                            true,
                            true,
                            true,
                            {0x0A0B0C},
                            Color{0xFFFFFF},
                            HorizontalAlign::right,
                            VerticalAlign::center,
                            1,
                            2,
                            3,
                            0.5};
    EXPECT_EQ(look->area(Area::data), expected);
}

TEST(LookReader, ABackgroundMayBeNone) {
    const auto look =
        lookOf(R"(<area name="data" background="#ffffff"/><area name="data" background="none"/>)");
    EXPECT_EQ(look->area(Area::data).background, std::nullopt);
}

TEST(LookReader, ReadsLinesBandsAndWidths) {
    const auto look = lookOf(
        R"(<border place="dataRows" style="double" color="#ff0000"/><border place="top"/>
           <rowBanding rows="2" background="#eeeeee" color="none" labels="true"/>
           <widths minColumn="20" maxColumn="80.5" maxLabel="100"/>)");
    EXPECT_EQ(look->border(Border::dataRows), (BorderLine{LineStyle::twofold, Color{0xFF0000}}));
    EXPECT_EQ(look->border(Border::top).style, LineStyle::thin);
    EXPECT_EQ(look->border(Border::bottom).style, LineStyle::none);
    EXPECT_EQ(look->banding, (RowBanding{2, Color{0xEEEEEE}, std::nullopt, true}));
    EXPECT_EQ(look->minColumnWidth, 20);
    EXPECT_EQ(look->maxColumnWidth, 80.5);
    EXPECT_EQ(look->maxLabelWidth, 100);
}

struct BadLook {
    const char* xml;
    const char* problem;
};

class BadLooks : public testing::TestWithParam<BadLook> {};

TEST_P(BadLooks, AreRefusedWithTheirPlace) {
    EXPECT_THAT(problemOf(GetParam().xml), HasSubstr(GetParam().problem));
}

INSTANTIATE_TEST_SUITE_P(
    All, BadLooks,
    testing::Values(
        BadLook{"", "cannot be read as XML"}, BadLook{"plain", "cannot be read as XML"},
        BadLook{"<tableProperties>", "cannot be read as XML"},
        BadLook{"<!DOCTYPE a><tableProperties/>", "cannot be read as XML"},
        BadLook{"<tableProperties name='&what;'/>", "cannot be read as XML"},
        BadLook{"<tableProperties/>text", "cannot be read as XML"},
        BadLook{"<look/>", "line 1, column 2: \"look\" does not fit here. Possible: tableProperties."},
        BadLook{"<tableProperties size='3'/>",
                "\"size\" is not an attribute of \"tableProperties\". Possible: name."},
        BadLook{"<tableProperties>\n  <cell/></tableProperties>",
                "line 2, column 4: \"cell\" does not fit here. Possible: area, border, rowBanding, widths."},
        BadLook{"<tableProperties>text</tableProperties>", "\"text\" does not fit here"},
        BadLook{"<tableProperties><area/></tableProperties>",
                "\"area\" needs the attribute \"name\". Possible: title, caption, corner"},
        BadLook{"<tableProperties><area name='cells'/></tableProperties>",
                "\"cells\" does not fit here. Possible: title"},
        BadLook{"<tableProperties><area name='data'>x</area></tableProperties>",
                "\"area\" holds nothing but attributes"},
        BadLook{"<tableProperties><area name='data' size='0'/></tableProperties>",
                "\"0\" is not a number from 1 to 400"},
        BadLook{"<tableProperties><area name='data' size='nan'/></tableProperties>",
                "\"nan\" is not a number"},
        BadLook{"<tableProperties><area name='data' size='9pt'/></tableProperties>",
                "\"9pt\" is not a number"},
        BadLook{"<tableProperties><area name='data' bold='yes'/></tableProperties>",
                "\"yes\" does not fit here. Possible: false, true."},
        BadLook{"<tableProperties><area name='data' color='red'/></tableProperties>",
                "\"red\" is not a color"},
        BadLook{"<tableProperties><area name='data' color='#12345g'/></tableProperties>",
                "\"#12345g\" is not a color"},
        BadLook{"<tableProperties><area name='data' color='none'/></tableProperties>",
                "\"none\" is not a color"},
        BadLook{"<tableProperties><area name='data' weight='1'/></tableProperties>",
                "\"weight\" is not an attribute of \"area\". Possible: align, background"},
        BadLook{"<tableProperties><border/></tableProperties>", "\"border\" needs the attribute \"place\""},
        BadLook{"<tableProperties><border place='top' style='bold'/></tableProperties>",
                "\"bold\" does not fit here. Possible: none, thin"},
        BadLook{"<tableProperties><rowBanding rows='1.5'/></tableProperties>",
                "\"1.5\" is not a whole number from 0 to 1000"},
        BadLook{"<tableProperties><rowBanding rows='-1'/></tableProperties>", "\"-1\" is not a whole number"},
        BadLook{"<tableProperties><widths maxLabel='0'/></tableProperties>",
                "\"0\" is not a number from 1 to 5000"}));

TEST(LookReader, WhatIsWrittenReadsAsTheSameLook) {
    TableLook look = *plainLook();
    look.name = "my \"own\" <look>";
    look.area(Area::layers).background = Color{0x010203};
    look.border(Border::groupColumns) = {LineStyle::dotted, Color{0xABCDEF}};
    look.banding = {3, std::nullopt, Color{0xFF}, true};
    look.maxLabelWidth = 12.25;
    const ReadLook read = readLook(writeLook(look));
    ASSERT_EQ(read.problem, "");
    TableLook back = *read.look;
    back.source.clear();
    EXPECT_EQ(back, look);
}

TEST(LookReader, RefusesALookOfMoreThanAMegabyte) {
    EXPECT_THAT(problemOf("<tableProperties name='" + std::string(2'000'000, 'a') + "'/>"),
                HasSubstr("cannot be read"));
}

TEST(LookReader, RefusesDeepNestingAtOnce) {
    std::string deep = "<tableProperties>";
    for (int i = 0; i < 50'000; ++i) deep += "<area>";
    EXPECT_THAT(problemOf(deep), HasSubstr("cannot be read"));
}

}  // namespace
}  // namespace vexa::frontend
