// Answers that are written, and read as the command reads them.

#include "backend/viewerxml/response_writer.h"

#include <gtest/gtest.h>

#include "backend/text/character_set.h"
#include "backend/viewerxml/response_reader.h"
#include "tests/unit/viewerxml/xml_judge.h"

namespace {

using vexa::ExportResponse;
using vexa::writeExportResponse;

ExportResponse wholeResponse() {
    ExportResponse response;
    response.success = true;
    response.errorCode = 3;
    response.name = "R & \"D\" <1>";
    response.documentFile = "C:\\\xC3\xA9\t'.htm";
    response.imageCount = 2;
    response.imageCountPresent = true;
    response.imageRoot = "root";
    response.imageFormat = "PNG";
    response.warnings[0] = {{"item 3", "Table of \xC3\xA9"}, {"", ""}};
    response.warnings[2] = {{"item 4", "x"}};
    return response;
}

void expectReadBack(const ExportResponse& response) {
    const std::string xml = writeExportResponse(response);
    EXPECT_EQ(vexa::testing::complaintsAbout(xml, vexa::testing::Schema::exportResponse), "") << xml;
    ExportResponse read;
    EXPECT_EQ(vexa::readExportResponse(xml, read), "") << xml;
    EXPECT_EQ(read, response) << xml;
}

TEST(WriteExportResponse, WritesWhatIsThere) {
    EXPECT_EQ(writeExportResponse({}), "<exportResponse success=\"false\" errorCode=\"0\"></exportResponse>");
    ExportResponse response;
    response.success = true;
    response.imageCountPresent = true;
    response.name = "a";
    response.warnings[1] = {{"item 1", "b"}};
    EXPECT_EQ(
        writeExportResponse(response),
        "<exportResponse success=\"true\" errorCode=\"0\" name=\"a\" imageCount=\"0\"><warnings code=\"1\">"
        "<warning first=\"item 1\" second=\"b\"/></warnings></exportResponse>");
}

TEST(WriteExportResponse, IsReadBack) {
    expectReadBack({});
    expectReadBack(wholeResponse());
    vexa::installCharacterSet(vexa::CharacterSet::find("windows-1252"));
    ExportResponse response = wholeResponse();
    response.documentFile = "\xE9";
    response.warnings[0][0].second = "\xE8";
    expectReadBack(response);
    vexa::installCharacterSet(nullptr);
}

TEST(WriteExportResponse, PutsTheReplacementCharacterForWhatXmlCannotHold) {
    ExportResponse response;
    response.name = "a\x01\xFF";
    ExportResponse read;
    EXPECT_EQ(vexa::readExportResponse(writeExportResponse(response), read), "");
    EXPECT_EQ(read.name, "a\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
