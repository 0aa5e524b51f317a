// Answers that are none: each ends in a text that says what is wrong and where.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "backend/text/character_set.h"
#include "backend/text/utf8.h"
#include "backend/viewerxml/response_spec.h"
#include "tests/unit/viewerxml/xml_judge.h"

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using vexa::ResponseSpec;
using vexa::testing::complaintsAbout;
using vexa::testing::Schema;
using namespace std::string_literals;

const std::string kWhole =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?><exportResponse success=\"true\" errorCode=\"1\" "
    "name=\"\xC3\xA4&amp;\" documentFile=\"d\" imageCount=\"2\" imageRoot=\"r\" imageFormat=\"f\">"
    "<warnings code=\"1\"><warning first=\"a\" second=\"b\"/></warnings></exportResponse>";

/// The error text of an answer that must be refused.
std::string refusal(const std::string& answer) {
    ResponseSpec response;
    EXPECT_FALSE(response.processResponse(answer)) << answer.substr(0, 200);
    EXPECT_FALSE(response.getSuccessCode());
    EXPECT_EQ(response.getName(), "");
    EXPECT_FALSE(response.warningsFound());
    return response.getParserError();
}

struct Refusal {
    const char* answer;
    const char* refusal;
};

TEST(HostileResponse, IsRefusedForWhatTheFormLacks) {
    static constexpr Refusal kCases[] = {
        {R"(<other success="true"/>)",
         R"(Line 1, column 24: The answer is not an exportResponse but "other")"},
        {R"(<exportresponse success="true"/>)",
         R"(Line 1, column 33: The answer is not an exportResponse but "exportresponse")"},
        {R"(<exportResponse/>)",
         R"(Line 1, column 18: The element exportResponse lacks the attribute "success")"},
        {"<exportResponse success=\"true\">\n<other/></exportResponse>",
         R"(Line 2, column 9: The element "other" is not allowed in exportResponse)"},
        {R"(<exportResponse success="true"><warning/></exportResponse>)",
         R"(Line 1, column 42: The element "warning" is not allowed in exportResponse)"},
        {R"(<exportResponse success="true"><exportResponse success="true"/></exportResponse>)",
         R"(Line 1, column 64: The element "exportResponse" is not allowed in exportResponse)"},
        {R"(<exportResponse success="true"><warnings code="0"><warnings code="0"/></warnings></exportResponse>)",
         R"(Line 1, column 71: The element "warnings" is not allowed in warnings)"},
        {R"(<exportResponse success="true"><warnings code="0"><warning><warning/></warning></warnings></exportResponse>)",
         R"(Line 1, column 70: The element "warning" is not allowed in warning)"},
        {R"(<exportResponse success="true" Name="a"/>)",
         R"(Line 1, column 42: The element exportResponse has no attribute "Name")"},
        {R"(<exportResponse success="true" xmlns="urn:a"/>)",
         R"(Line 1, column 47: The element exportResponse has no attribute "xmlns")"},
        {R"(<exportResponse success="true" xml:space="preserve"/>)",
         R"(Line 1, column 54: The element exportResponse has no attribute "xml:space")"},
        {R"(<a:exportResponse xmlns:a="urn:a" success="true"/>)",
         R"(Line 1, column 51: The answer is not an exportResponse but "a:exportResponse")"},
        {R"(<exportResponse success="true"><warnings/></exportResponse>)",
         R"(Line 1, column 43: The element warnings lacks the attribute "code")"},
        {R"(<exportResponse success="true"><warnings code="0" first=""/></exportResponse>)",
         R"(Line 1, column 61: The element warnings has no attribute "first")"},
        {R"(<exportResponse success="true"><warnings code="0"><warning third=""/></warnings></exportResponse>)",
         R"(Line 1, column 70: The element warning has no attribute "third")"},
    };
    for (const Refusal& one : kCases) {
        EXPECT_EQ(refusal(one.answer), one.refusal);
        EXPECT_NE(complaintsAbout(one.answer, Schema::exportResponse), "") << one.answer;
    }
}

TEST(HostileResponse, IsRefusedForValues) {
    static constexpr Refusal kCases[] = {
        {R"(success="")", R"(The attribute "success" is neither true nor false but "")"},
        {R"(success="1")", R"(The attribute "success" is neither true nor false but "1")"},
        {R"(success="TRUE")", R"(The attribute "success" is neither true nor false but "TRUE")"},
        {R"(success=" true")", R"(The attribute "success" is neither true nor false but " true")"},
        {R"(success="true" errorCode="")", R"(The attribute "errorCode" is not a whole number but "")"},
        {R"(success="true" errorCode=" ")", R"(The attribute "errorCode" is not a whole number but " ")"},
        {R"(success="true" errorCode="one")", R"(The attribute "errorCode" is not a whole number but "one")"},
        {R"(success="true" errorCode="1.0")", R"(The attribute "errorCode" is not a whole number but "1.0")"},
        {R"(success="true" errorCode="+1")", R"(The attribute "errorCode" is not a whole number but "+1")"},
        {R"(success="true" errorCode="0x1")", R"(The attribute "errorCode" is not a whole number but "0x1")"},
        {R"(success="true" errorCode="1 2")", R"(The attribute "errorCode" is not a whole number but "1 2")"},
        {R"(success="true" errorCode="--1")", R"(The attribute "errorCode" is not a whole number but "--1")"},
        {R"(success="true" errorCode="2147483648")",
         R"(The attribute "errorCode" is not a whole number but "2147483648")"},
        {R"(success="true" imageCount="many")",
         R"(The attribute "imageCount" is not a whole number but "many")"},
        {R"(success="true" imageCount="-1")", R"(The attribute "imageCount" is below 0)"},
    };
    for (const Refusal& one : kCases) {
        const std::string answer = "<exportResponse " + std::string(one.answer) + "/>";
        const std::string place = "Line 1, column " + std::to_string(answer.size() + 1) + ": ";
        EXPECT_EQ(refusal(answer), place + one.refusal);
        EXPECT_NE(complaintsAbout(answer, Schema::exportResponse), "") << answer;
    }
}

TEST(HostileResponse, IsRefusedForCodesOfWarnings) {
    for (const char* code : {"-1", "3", "99999", "", "x", "4294967296"}) {
        const std::string answer = "<exportResponse success=\"true\"><warnings code=\"" + std::string(code) +
                                   "\"><warning/></warnings></exportResponse>";
        EXPECT_THAT(refusal(answer), HasSubstr("\"" + std::string(code) + "\""));
        EXPECT_NE(complaintsAbout(answer, Schema::exportResponse), "") << answer;
    }
}

TEST(HostileResponse, IsRefusedForText) {
    for (const char* text : {"a", "&amp;", "<![CDATA[a]]>", "&#160;"}) {
        const std::string written = text;
        EXPECT_THAT(refusal("<exportResponse success=\"true\">" + written + "</exportResponse>"),
                    HasSubstr("There is text between the elements"));
    }
}

TEST(HostileResponse, IsRefusedWhereItEndsTooEarly) {
    ResponseSpec response;
    ASSERT_TRUE(response.processResponse(kWhole)) << response.getParserError();
    for (std::size_t length = 0; length < kWhole.size(); ++length) {
        const std::string error = refusal(kWhole.substr(0, length));
        EXPECT_THAT(error, StartsWith("Line 1, column ")) << length;
    }
}

// The declaration is left whole: what encoding it names does not matter to the reader.
TEST(HostileResponse, IsRefusedWhenAByteIsMissing) {
    for (std::size_t place = kWhole.find("<exportResponse"); place < kWhole.size(); ++place) {
        ResponseSpec response;
        std::string answer = kWhole;
        answer.erase(place, 1);
        const bool read = response.processResponse(answer);
        EXPECT_EQ(read, response.getParserError().empty()) << place;
        EXPECT_EQ(read, complaintsAbout(answer, Schema::exportResponse).empty()) << answer << "\n"
                                                                                 << response.getParserError();
    }
}

TEST(HostileResponse, IsRefusedWhenItIsNotWellFormed) {
    for (const std::string& answer :
         {""s,
          " "s,
          "yes"s,
          "0"s,
          "{}"s,
          "<"s,
          "<exportResponse success=\"true\">"s,
          "<exportResponse success=true/>"s,
          "<exportResponse success=\"true\" success=\"true\"/>"s,
          "<exportResponse success=\"true\"/><exportResponse success=\"true\"/>"s,
          "<exportResponse success=\"true\"/>more"s,
          "more<exportResponse success=\"true\"/>"s,
          "<exportResponse success=\"true\" name=\"a&b\"/>"s,
          "<exportResponse success=\"true\" name=\"<\"/>"s,
          "<exportResponse success=\"true\" name=\"&other;\"/>"s,
          "<exportResponse success=\"true\" name=\"&#0;\"/>"s,
          "<exportResponse success=\"true\" name=\"&#xD800;\"/>"s,
          "<exportResponse success=\"true\" name=\"\x01\"/>"s,
          "<exportResponse success=\"true\" name=\"\0\"/>"s,
          "<exportResponse success=\"true\" name=\"\xFF\"/>"s,
          "<exportResponse success=\"true\" name=\"\xC3\"/>"s,
          "<exportResponse success=\"true\" name=\"\xED\xA0\x80\"/>"s,
          "<exportResponse success=\"true\" name=\"\xC0\x80\"/>"s,
          "<exportResponse success=\"true\"/>\0"s,
          "<exportResponse success=\"true\"/>\0more"s,
          " <?xml version=\"1.0\"?><exportResponse success=\"true\"/>"s,
          "<?xml version=\"2.0\"?><exportResponse success=\"true\"/>"s,
          "<?xml version=\"1.0\" encoding=\"\"?><exportResponse success=\"true\"/>"s}) {
        EXPECT_THAT(refusal(answer), StartsWith("Line 1, column ")) << answer;
    }
}

TEST(HostileResponse, MayNotHoldAZeroByte) {
    EXPECT_EQ(refusal("\0"s), "Line 1, column 1: There is a zero byte");
    EXPECT_EQ(refusal("<exportResponse success=\"true\"/>\n\xC3\xA4x\0<"s),
              "Line 2, column 3: There is a zero byte");
}

TEST(HostileResponse, MayNotDeclareADocumentType) {
    for (const char* declaration :
         {"<!DOCTYPE exportResponse>", "<!DOCTYPE other>", "<!DOCTYPE exportResponse []>",
          "<!DOCTYPE exportResponse SYSTEM \"http://127.0.0.1:9/a.dtd\">",
          "<!DOCTYPE exportResponse PUBLIC \"-//A//B\" \"file:///etc/passwd\">",
          "<!DOCTYPE exportResponse [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>",
          "<!DOCTYPE exportResponse [<!ENTITY % e SYSTEM \"file:///etc/passwd\"> %e;]>",
          "<!DOCTYPE exportResponse [<!ATTLIST exportResponse success CDATA \"true\">]>"}) {
        const std::string answer = declaration + std::string("<exportResponse success=\"true\"/>");
        EXPECT_THAT(refusal(answer), HasSubstr("There is a document type declaration")) << declaration;
        EXPECT_THAT(refusal(answer), StartsWith("Line 1, column ")) << declaration;
    }
}

TEST(HostileResponse, MayNotMultiplyEntities) {
    std::string answer = "<!DOCTYPE a [<!ENTITY e0 \"ha\">";
    for (int i = 1; i < 100; ++i) {
        const std::string before = "&e" + std::to_string(i - 1) + ";";
        answer += "<!ENTITY e" + std::to_string(i) + " \"" + before + before + "\">";
    }
    answer += "]><exportResponse success=\"true\" name=\"&e99;\"/>";
    EXPECT_THAT(refusal(answer), HasSubstr("There is a document type declaration"));
}

TEST(HostileResponse, IsUtf8WhateverItsDeclarationSays) {
    const std::string rest = "<exportResponse success=\"true\" name=\"\xC3\xA4\"/>";
    for (const char* encoding :
         {"UTF-8", "utf-8", "ISO-8859-1", "UTF-16", "Shift_JIS", "IBM037", "no-such-set"}) {
        ResponseSpec response;
        const std::string answer =
            "<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?>" + rest;
        EXPECT_TRUE(response.processResponse(answer)) << encoding << ": " << response.getParserError();
        EXPECT_EQ(response.getName(), "\xC3\xA4") << encoding;
    }
    for (const std::string& other :
         {"\xFF\xFE<\0e\0x\0"s, "\xFE\xFF\0<\0e\0x"s, "<\0e\0x\0p\0o\0"s, "\x4C\xA7\x94\x93"s}) {
        EXPECT_THAT(refusal(other), StartsWith("Line 1, column "));
    }
}

TEST(HostileResponse, MayHoldALongText) {
    const std::string text(10 << 20, 'x');
    ResponseSpec response;
    ASSERT_TRUE(response.processResponse("<exportResponse success=\"true\" name=\"" + text + "\"/>"))
        << response.getParserError();
    EXPECT_EQ(response.getName(), text);
}

TEST(HostileResponse, MayNotBeLongerThanTheLimit) {
    const std::string beginning = "<exportResponse success=\"true\" name=\"";
    const std::string end = "\"/>";
    const std::size_t room = (std::size_t{16} << 20) - beginning.size() - end.size();
    ResponseSpec response;
    EXPECT_TRUE(response.processResponse(beginning + std::string(room, 'x') + end))
        << response.getParserError();
    EXPECT_EQ(refusal(beginning + std::string(room + 1, 'x') + end), "The answer is longer than 16 MiB");
}

TEST(HostileResponse, IsRefusedAtTheFirstElementThatIsTooDeep) {
    std::string answer = "<exportResponse success=\"true\">";
    for (int i = 0; i < 1000000; ++i) answer += "<warnings>";
    EXPECT_THAT(refusal(answer), HasSubstr("lacks the attribute \"code\""));
    EXPECT_THAT(refusal(std::string(1000000, '<')), StartsWith("Line 1, column "));
}

TEST(HostileResponse, MayHoldManyAttributesAndElements) {
    std::string attributes;
    for (int i = 0; i < 50000; ++i) attributes += " a" + std::to_string(i) + "=\"\"";
    EXPECT_THAT(refusal("<exportResponse" + attributes + "/>"), HasSubstr("has no attribute \"a0\""));
    std::string answer = "<exportResponse success=\"true\"><warnings code=\"0\">";
    for (int i = 0; i < 100000; ++i) answer += "<warning/>";
    ResponseSpec response;
    ASSERT_TRUE(response.processResponse(answer + "</warnings></exportResponse>"));
    EXPECT_EQ(response.getWarnings(ResponseSpec::WARNING_CODE::LONG_ROW_LABEL).size(), 100000U);
}

TEST(HostileResponse, IsRepeatedInMessagesOnlyInPart) {
    EXPECT_EQ(refusal("<a" + std::string(1000000, 'b') + "/>"),
              "Line 1, column 1000005: The answer is not an exportResponse but \"a" + std::string(59, 'b') +
                  "...\"");
    std::string name;
    for (int i = 0; i < 100; ++i) name += "\xC3\xA4";
    EXPECT_THAT(refusal("<" + name + "/>"), HasSubstr("\"" + name.substr(0, 120) + "...\""));
    EXPECT_LT(refusal("<exportResponse success=\"true\"></a" + std::string(1000000, 'b') + ">").size(),
              5000U);
}

TEST(HostileResponse, IsTalkedOfInTheCharacterSetOfTheBackEnd) {
    vexa::installCharacterSet(vexa::CharacterSet::find("windows-1252"));
    const std::string error = refusal("<\xC3\xA4/>");
    vexa::installCharacterSet(nullptr);
    EXPECT_EQ(error, "Line 1, column 5: The answer is not an exportResponse but \"\xE4\"");
}

}  // namespace
