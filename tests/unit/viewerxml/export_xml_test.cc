#include "backend/viewerxml/export_xml.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "backend/text/character_set.h"
#include "tests/unit/viewerxml/whole_specification.h"
#include "tests/unit/viewerxml/xml_judge.h"

namespace {

using vexa::ExportSpec;
using vexa::ExportXML;
using vexa::testing::attributeIn;
using vexa::testing::complaintsAbout;
using vexa::testing::Schema;
using namespace std::string_literals;

/// Installs a character set for one test.
class InCharacterSet {
  public:
    explicit InCharacterSet(std::string_view name) {
        auto set = vexa::CharacterSet::find(name);
        EXPECT_NE(set, nullptr) << name;
        vexa::installCharacterSet(std::move(set));
    }
    InCharacterSet(const InCharacterSet&) = delete;
    InCharacterSet& operator=(const InCharacterSet&) = delete;
    ~InCharacterSet() { vexa::installCharacterSet(nullptr); }
};

std::string xmlOfSheet(std::string_view sheet) {
    ExportSpec spec;
    spec.xls().setSheet(sheet);
    spec.xls().setOptionPresent(true);
    return ExportXML::convertToXML(spec);
}

std::string xmlOfName(std::string_view name) {
    ExportSpec spec;
    spec.global().setName(name);
    return ExportXML::convertToXML(spec);
}

TEST(ExportXml, WritesGlobalAndContentsAlways) {
    EXPECT_EQ(ExportXML::convertToXML(ExportSpec()),
              "<exportSpecification><global/><contents/></exportSpecification>");
}

TEST(ExportXml, WritesOnlyFormatsThatArePresent) {
    ExportSpec spec;
    vexa::testing::setEverything(spec);
    for (vexa::ExportFormat* format : std::initializer_list<vexa::ExportFormat*>{
             &spec.html(), &spec.report(), &spec.pdf(), &spec.ppt(), &spec.text(), &spec.xls(), &spec.xlsx(),
             &spec.xlsm(), &spec.bmp(), &spec.emf(), &spec.eps(), &spec.jpg(), &spec.png(), &spec.doc()}) {
        EXPECT_TRUE(format->isOptionPresent());
        format->setOptionPresent(false);
    }
    EXPECT_EQ(ExportXML::convertToXML(spec),
              "<exportSpecification><global name=\"Output1\" printOption=\"2\"/>"
              "<contents export=\"1\" layers=\"1\" modelViews=\"2\"/>"
              "<tif imageRoot=\"t\" percentSize=\"200\" percentSizeText=\"200\"/></exportSpecification>");
}

TEST(ExportXml, WritesEverythingInItsOrder) {
    ExportSpec spec;
    vexa::testing::setEverything(spec);
    const std::string xml = ExportXML::convertToXML(spec);
    EXPECT_EQ(xml, vexa::testing::kEverything);
    EXPECT_EQ(complaintsAbout(xml, Schema::exportSpecification), "");
    EXPECT_EQ(ExportXML::convertToXML(spec), xml);
}

TEST(ExportXml, KeepsTheLastOfSeveralCallsOfOneSetter) {
    ExportSpec spec;
    spec.doc().setTopMargin(vexa::MEASUREMENT_TYPE::MM, 1, "1");
    spec.doc().setPageBreaks(true);
    spec.doc().setTopMargin(vexa::MEASUREMENT_TYPE::INCHES, 2, "2.");
    spec.doc().setPageBreaks(false);
    spec.doc().setOptionPresent(true);
    EXPECT_EQ(ExportXML::convertToXML(spec),
              "<exportSpecification><global/><contents/><doc topMargin=\"2\" topMarginUnit=\"0\" "
              "topMarginText=\"2.\" pageBreaks=\"false\"/></exportSpecification>");
}

TEST(ExportXml, TellsThePrintOption) {
    using Print = vexa::ExportGlobalSpec::PRINT_OPTION;
    ExportSpec spec;
    EXPECT_EQ(spec.global().getPrintOption(), Print::ALWAYS);
    spec.global().setPrintOption(Print::ERRORS);
    EXPECT_EQ(spec.global().getPrintOption(), Print::ERRORS);
}

TEST(ExportXml, HasTheSchemaSeeWhatIsWrong) {
    for (const char* xml :
         {"<exportSpecification/>", "<exportSpecification><contents/><global/></exportSpecification>",
          "<exportSpecification><global/><contents/><doc other=\"1\"/></exportSpecification>",
          "<exportSpecification><global printOption=\"3\"/><contents/></exportSpecification>",
          "<exportSpecification><global/><contents/><doc pageBreaks=\"1\"/></exportSpecification>",
          "<exportSpecification><global/><contents/><doc/><doc/></exportSpecification>",
          "<exportSpecification><global/><contents/></exportSpecification"}) {
        EXPECT_NE(complaintsAbout(xml, Schema::exportSpecification), "") << xml;
    }
}

TEST(ExportXml, EscapesTextsOnce) {
    const std::string text = "&amp; < > \" ' \\ / %41\t\r\n ]]>";
    const std::string xml = xmlOfSheet(text);
    EXPECT_NE(xml.find("sheet=\"&amp;amp; &lt; > &quot; ' \\ / %41&#x9;&#xD;&#xA; ]]>\""), std::string::npos)
        << xml;
    EXPECT_EQ(complaintsAbout(xml, Schema::exportSpecification), "");
    EXPECT_EQ(attributeIn(xml, "sheet"), text);
}

TEST(ExportXml, WritesTextsThatComeEscapedAsTheyAre) {
    ExportSpec spec;
    spec.global().setName("&lt;&amp;&gt;&quot;&apos;>'&#65;");
    spec.report().setDocumentFile("a&amp;b");
    spec.report().setTitle("c&amp;amp;d");
    spec.report().setOptionPresent(true);
    const std::string xml = ExportXML::convertToXML(spec);
    EXPECT_NE(xml.find("name=\"&lt;&amp;&gt;&quot;&apos;>'&#65;\""), std::string::npos) << xml;
    EXPECT_NE(xml.find("documentFile=\"a&amp;b\" title=\"c&amp;amp;d\""), std::string::npos) << xml;
    EXPECT_EQ(attributeIn(xml, "name"), "<&>\"'>'A");
}

TEST(ExportXml, EscapesAddressesAndLabels) {
    ExportSpec spec;
    spec.report().addURL("?a&b", "\"<\"");
    spec.report().addURL("", "");
    spec.report().setOptionPresent(true);
    const std::string xml = ExportXML::convertToXML(spec);
    EXPECT_NE(xml.find("<report><url address=\"?a&amp;b\" label=\"&quot;&lt;&quot;\"/>"
                       "<url address=\"\" label=\"\"/></report>"),
              std::string::npos)
        << xml;
    EXPECT_EQ(complaintsAbout(xml, Schema::exportSpecification), "");
}

TEST(ExportXml, WritesNumbersInTheirShortestForm) {
    struct Case {
        double number;
        const char* written;
    };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    static constexpr Case kCases[] = {{210, "210"},
                                      {0.01, "0.01"},
                                      {200, "200"},
                                      {0.1 + 0.2, "0.30000000000000004"},
                                      {8.27, "8.27"},
                                      {-1.5, "-1.5"},
                                      {0, "0"},
                                      {1e100, "1e+100"},
                                      {5e-324, "5e-324"},
                                      {1e-7, "1e-07"},
                                      {123456789, "123456789"},
                                      {kInfinity, "INF"},
                                      {-kInfinity, "-INF"},
                                      {std::numeric_limits<double>::quiet_NaN(), "NaN"}};
    for (const auto& [number, written] : kCases) {
        ExportSpec spec;
        spec.jpg().setPercentSize(number, "n");
        spec.jpg().setOptionPresent(true);
        const std::string xml = ExportXML::convertToXML(spec);
        EXPECT_EQ(attributeIn(xml, "percentSize"), written);
        EXPECT_EQ(complaintsAbout(xml, Schema::exportSpecification), "") << written;
    }
}

TEST(ExportXml, WritesUtf8WhateverTheCharacterSet) {
    struct Case {
        const char* set;
        std::string text;
        std::string utf8;
    };
    const Case cases[] = {
        {"UTF-8", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {"windows-1252", "\xE4\x80&", "\xC3\xA4\xE2\x82\xAC&"},
        // The second byte of the first character is a backslash in ASCII.
        {"Shift_JIS", "\x95\x5C\x8E\xA6<", "\xE8\xA1\xA8\xE7\xA4\xBA<"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.set);
        const InCharacterSet installed(one.set);
        const std::string xml = xmlOfSheet(one.text);
        EXPECT_EQ(complaintsAbout(xml, Schema::exportSpecification), "");
        EXPECT_EQ(attributeIn(xml, "sheet"), one.utf8);
    }
}

TEST(ExportXml, WritesTextsThatComeEscapedInUtf8) {
    const InCharacterSet installed("Shift_JIS");
    const std::string xml = xmlOfName("\x95\x5C &amp; \x8E\xA6");
    EXPECT_NE(xml.find("name=\"\xE8\xA1\xA8 &amp; \xE7\xA4\xBA\""), std::string::npos) << xml;
}

TEST(ExportXml, ReplacesWhatXmlCannotHold) {
    const std::string kReplaced = "\xEF\xBF\xBD";
    for (int code = 0; code < 0x20; ++code) {
        if (code == '\t' || code == '\n' || code == '\r') continue;
        SCOPED_TRACE(code);
        const std::string text = "a" + std::string(1, static_cast<char>(code)) + "b";
        EXPECT_EQ(attributeIn(xmlOfSheet(text), "sheet"), "a" + kReplaced + "b");
        EXPECT_EQ(attributeIn(xmlOfName(text), "name"), "a" + kReplaced + "b");
    }
    EXPECT_EQ(attributeIn(xmlOfSheet("\xEF\xBF\xBE\xEF\xBF\xBF"), "sheet"), kReplaced + kReplaced);
    EXPECT_EQ(attributeIn(xmlOfSheet("\x7F\xC2\x85"), "sheet"), "\x7F\xC2\x85");
}

TEST(ExportXml, ReplacesBytesThatAreNoCharacters) {
    const std::string kReplaced = "\xEF\xBF\xBD";
    EXPECT_EQ(attributeIn(xmlOfSheet("a\xFF"), "sheet"), "a" + kReplaced);
    EXPECT_EQ(attributeIn(xmlOfSheet("\xC3"), "sheet"), kReplaced);
    for (const char* surrogate : {"\xED\xA0\x80", "\xED\xBF\xBF"}) {
        const std::string xml = xmlOfSheet(surrogate);
        EXPECT_EQ(complaintsAbout(xml, Schema::exportSpecification), "");
        EXPECT_EQ(attributeIn(xml, "sheet").find_first_not_of(kReplaced), std::string::npos);
    }
}

// The formatter works in portions; a character of two units must not be torn where one ends.
TEST(ExportXml, WritesLongTextsWhole) {
    const std::string character = "\xF0\x9F\x98\x80";
    for (const char* beginning : {"", "a"}) {
        std::string text = beginning;
        for (int i = 0; i < 100000; ++i) text += character;
        EXPECT_EQ(attributeIn(xmlOfSheet(text), "sheet"), text);
        EXPECT_EQ(attributeIn(xmlOfSheet(text + '&' + text), "sheet"), text + '&' + text);
        EXPECT_EQ(attributeIn(xmlOfName(text), "name"), text);
    }
}

}  // namespace
