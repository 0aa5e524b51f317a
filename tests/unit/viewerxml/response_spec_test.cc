#include "backend/viewerxml/response_spec.h"

#include <gtest/gtest.h>

namespace {

using vexa::ResponseSpec;
using Code = ResponseSpec::WARNING_CODE;

TEST(ResponseSpec, ReadsEverythingThatAnAnswerHolds) {
    ResponseSpec response;
    ASSERT_TRUE(
        response.processResponse("<exportResponse success=\"true\" errorCode=\"1\" name=\"n&amp;m\" "
                                 "documentFile=\"d\" imageCount=\"2\" "
                                 "imageRoot=\"r\" imageFormat=\"f\"><warnings code=\"1\"><warning "
                                 "first=\"a\" second=\"b\"/></warnings>"
                                 "</exportResponse>"))
        << response.getParserError();
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
    EXPECT_EQ(response.getWarnings(Code::MAX_COLUMNS), (std::vector<ResponseSpec::Warning>{{"a", "b"}}));
    EXPECT_EQ(response.getParserError(), "");
}

TEST(ResponseSpec, SaysWhatIsWrongAndWhere) {
    ResponseSpec response;
    EXPECT_FALSE(response.processResponse("<exportResponse success=\"true\">\n<other/></exportResponse>"));
    EXPECT_EQ(response.getParserError(),
              "Line 2, column 9: The element \"other\" may not stand in exportResponse");
    EXPECT_FALSE(response.getSuccessCode());
}

}  // namespace
