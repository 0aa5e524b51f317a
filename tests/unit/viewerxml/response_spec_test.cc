#include "backend/viewerxml/response_spec.h"

#include <gtest/gtest.h>

#include <string>

#include "backend/text/character_set.h"
#include "tests/unit/strings/installed_texts.h"
#include "tests/unit/text/installed_character_set.h"
#include "tests/unit/viewerxml/xml_judge.h"

namespace {

using vexa::ResponseSpec;
using vexa::testing::complaintsAbout;
using vexa::testing::Schema;
using Code = ResponseSpec::WARNING_CODE;
using Warnings = std::vector<ResponseSpec::Warning>;

constexpr Code kCodes[] = {Code::LONG_ROW_LABEL, Code::MAX_COLUMNS, Code::CELL_CHARACTERS};

/// Reads an answer that both the reader and the schema must accept.
ResponseSpec accepted(const std::string& answer) {
    ResponseSpec response;
    EXPECT_TRUE(response.processResponse(answer)) << answer << "\n" << response.getParserError();
    EXPECT_EQ(response.getParserError(), "");
    EXPECT_EQ(complaintsAbout(answer, Schema::exportResponse), "") << answer;
    return response;
}

void expectNothing(const ResponseSpec& response) {
    EXPECT_FALSE(response.getSuccessCode());
    EXPECT_EQ(response.getErrorCode(), 0);
    EXPECT_EQ(response.getName(), "");
    EXPECT_EQ(response.getDocumentFile(), "");
    EXPECT_EQ(response.getImageCount(), 0);
    EXPECT_FALSE(response.isImageCountPresent());
    EXPECT_EQ(response.getImageRoot(), "");
    EXPECT_EQ(response.getImageFormat(), "");
    EXPECT_FALSE(response.warningsFound());
    for (const Code code : kCodes) EXPECT_TRUE(response.getWarnings(code).empty());
}

TEST(ResponseSpec, IsEmptyBeforeAnyAnswer) {
    const ResponseSpec response;
    expectNothing(response);
    EXPECT_EQ(response.getParserError(), "");
}

TEST(ResponseSpec, ReadsEverythingThatAnAnswerHolds) {
    const ResponseSpec response = accepted(
        R"(<exportResponse success="true" errorCode="1" name="n&amp;m" documentFile="d" imageCount="2")"
        R"( imageRoot="r" imageFormat="f"><warnings code="1"><warning first="a" second="b"/></warnings>)"
        R"(</exportResponse>)");
    EXPECT_TRUE(response.getSuccessCode());
    EXPECT_EQ(response.getErrorCode(), 1);
    EXPECT_EQ(response.getName(), "n&m");
    EXPECT_EQ(response.getDocumentFile(), "d");
    EXPECT_TRUE(response.isImageCountPresent());
    EXPECT_EQ(response.getImageCount(), 2);
    EXPECT_EQ(response.getImageRoot(), "r");
    EXPECT_EQ(response.getImageFormat(), "f");
    EXPECT_TRUE(response.warningsFound());
    EXPECT_TRUE(response.getWarnings(Code::LONG_ROW_LABEL).empty());
    EXPECT_EQ(response.getWarnings(Code::MAX_COLUMNS), (Warnings{{"a", "b"}}));
    EXPECT_TRUE(response.getWarnings(Code::CELL_CHARACTERS).empty());
}

TEST(ResponseSpec, RefusesInTheLanguageAndTheCharacterSetOfTheSession) {
    const vexa::InstalledTexts texts{
        {"viewxml.xlf", "Line ^1, column ^2: ^3", "^3 (Zeile ^1, Spalte ^2)"},
        {"viewxml.xlf", "The element ^1 has no attribute ^2", "^2 geh\u00f6rt nicht zu ^1"},
        {"viewxml.xlf", "There is a zero byte", "Ein Nullbyte"},
        {"viewxml.xlf", "The answer is longer than 16 MiB", "Zu lang f\u00fcr eine Antwort"},
    };
    const vexa::InstalledCharacterSet installed("windows-1252");
    ResponseSpec response;
    EXPECT_FALSE(response.processResponse("<exportResponse\nsuccess=\"true\" \u00e9=\"1\"/>"));
    EXPECT_EQ(response.getParserError(), "\"\xE9\" geh\xF6rt nicht zu exportResponse (Zeile 2, Spalte 23)");
    EXPECT_FALSE(response.processResponse(std::string("<a>\n\0", 5)));
    EXPECT_EQ(response.getParserError(), "Ein Nullbyte (Zeile 2, Spalte 1)");
    EXPECT_FALSE(response.processResponse(std::string((16U << 20U) + 1, ' ')));
    EXPECT_EQ(response.getParserError(), "Zu lang f\xFCr eine Antwort");
}

TEST(ResponseSpec, TakesAbsentAttributesForEmptyOnes) {
    expectNothing(accepted(R"(<exportResponse success="false"/>)"));
    expectNothing(accepted(R"(<exportResponse success="false" errorCode="0" name="" documentFile="")"
                           R"( imageRoot="" imageFormat=""></exportResponse>)"));
    const ResponseSpec counted = accepted(R"(<exportResponse success="false" imageCount="0"/>)");
    EXPECT_TRUE(counted.isImageCountPresent());
    EXPECT_EQ(counted.getImageCount(), 0);
    const ResponseSpec bare = accepted(
        R"(<exportResponse success="true"><warnings code="0"><warning/></warnings></exportResponse>)");
    EXPECT_TRUE(bare.warningsFound());
    EXPECT_EQ(bare.getWarnings(Code::LONG_ROW_LABEL), (Warnings{{"", ""}}));
}

TEST(ResponseSpec, KeepsWarningsInTheirOrder) {
    const ResponseSpec response = accepted(
        R"(<exportResponse success="true"><warnings code="2"><warning first="1" second="a"/><warning second="b"/>)"
        R"(</warnings><warnings code="0"><warning first="x"/></warnings><warnings code="1"/>)"
        R"(<warnings code="2"><warning first="3" second="c"/></warnings></exportResponse>)");
    EXPECT_EQ(response.getWarnings(Code::CELL_CHARACTERS), (Warnings{{"1", "a"}, {"", "b"}, {"3", "c"}}));
    EXPECT_EQ(response.getWarnings(Code::LONG_ROW_LABEL), (Warnings{{"x", ""}}));
    EXPECT_TRUE(response.getWarnings(Code::MAX_COLUMNS).empty());
}

TEST(ResponseSpec, FindsNoWarningsInEmptyLists) {
    const ResponseSpec response = accepted(
        R"(<exportResponse success="true"><warnings code="0"/><warnings code="1"></warnings></exportResponse>)");
    EXPECT_FALSE(response.warningsFound());
}

TEST(ResponseSpec, PassesOverWhatSaysNothing) {
    const ResponseSpec response = accepted(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- a --> <?p q?>\n"
        "<exportResponse\tsuccess='true' errorCode=' 7 '>\n  <!-- b -->\n  <warnings code='0'>\n"
        "    <warning first='a'></warning>\n  </warnings>\n</exportResponse>\n<!-- c -->\n");
    EXPECT_TRUE(response.getSuccessCode());
    EXPECT_EQ(response.getErrorCode(), 7);
    EXPECT_EQ(response.getWarnings(Code::LONG_ROW_LABEL), (Warnings{{"a", ""}}));
    EXPECT_TRUE(accepted("\xEF\xBB\xBF<exportResponse success=\"true\"/>").getSuccessCode());
    // Blanks in an element without content: a schema cannot allow them.
    ResponseSpec lenient;
    EXPECT_TRUE(
        lenient.processResponse("<exportResponse success=\"true\"><warnings code=\"0\"><warning> "
                                "\n</warning></warnings></exportResponse>"));
}

TEST(ResponseSpec, ReadsWholeNumbers) {
    struct Case {
        const char* written;
        int number;
    };
    static constexpr Case kCases[] = {{"0", 0},
                                      {"15", 15},
                                      {"16", 16},
                                      {"-1", -1},
                                      {"007", 7},
                                      {"-0", 0},
                                      {"2147483647", 2147483647},
                                      {"-2147483648", -2147483647 - 1}};
    for (const auto& [written, number] : kCases) {
        const std::string answer =
            R"(<exportResponse success="false" errorCode=")" + std::string(written) + "\"/>";
        EXPECT_EQ(accepted(answer).getErrorCode(), number);
    }
}

TEST(ResponseSpec, UndoesEscapes) {
    const ResponseSpec response = accepted(
        R"(<exportResponse success="true" name="&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;&#10;&amp;amp;"/>)");
    EXPECT_EQ(response.getName(), "<>&\"'A\xF0\x9F\x98\x80\n&amp;");
}

TEST(ResponseSpec, GivesTextsInTheCharacterSetOfTheBackEnd) {
    struct Case {
        const char* set;
        const char* text;
    };
    static constexpr Case kCases[] = {{"windows-1252", "\xE4\x80?"}, {"Shift_JIS", "??\x95\x5C"}};
    for (const auto& [set, text] : kCases) {
        vexa::installCharacterSet(vexa::CharacterSet::find(set));
        const ResponseSpec response = accepted(
            "<exportResponse success=\"true\" name=\"\xC3\xA4\xE2\x82\xAC\xE8\xA1\xA8\">"
            "<warnings code=\"0\"><warning second=\"\xC3\xA4\xE2\x82\xAC\xE8\xA1\xA8\"/></warnings>"
            "</exportResponse>");
        vexa::installCharacterSet(nullptr);
        EXPECT_EQ(response.getName(), text) << set;
        EXPECT_EQ(response.getWarnings(Code::LONG_ROW_LABEL), (Warnings{{"", text}})) << set;
    }
}

TEST(ResponseSpec, ForgetsTheAnswerBefore) {
    ResponseSpec response;
    ASSERT_TRUE(response.processResponse(
        R"(<exportResponse success="true" errorCode="3" name="n" documentFile="d" imageCount="2" imageRoot="r")"
        R"( imageFormat="f"><warnings code="1"><warning/></warnings></exportResponse>)"));
    ASSERT_TRUE(response.processResponse(R"(<exportResponse success="false"/>)"));
    expectNothing(response);
    ASSERT_FALSE(response.processResponse("no answer"));
    EXPECT_NE(response.getParserError(), "");
    ASSERT_TRUE(response.processResponse(R"(<exportResponse success="true"/>)"));
    EXPECT_EQ(response.getParserError(), "");
    // What was read before the error is gone too.
    ASSERT_FALSE(response.processResponse(
        R"(<exportResponse success="true" name="n"><warnings code="1"><warning/></warnings>)"));
    expectNothing(response);
}

}  // namespace
