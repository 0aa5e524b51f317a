#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontend/modify/modification.h"
#include "tests/unit/import/import_samples.h"
#include "tests/unit/modify/modify_samples.h"

namespace vexa::frontend {
namespace {

constexpr char kTable[] = R"({"items": [{"type": "table", "rows": [{"categories": ["a"]}], "cells": [1]}]})";

std::string withLook(const std::string& xml) {
    return "<modifyEvent tables=\"true\"><modifyTable><tableLook>" + xml +
           "</tableLook></modifyTable></modifyEvent>";
}

TEST(PreparedRequest, SharesTheLookThatIsKnownByItsName) {
    FewLooks looks;
    const auto banded = looks.find("banded").look;
    const ModifyRequest request = requestOf(withLook(writeLook(*banded)));
    const PreparedRequest prepared(request, looks);
    const Outline outline = resultsOf(kTable);
    const Modification first = prepared.plan(outline);
    EXPECT_EQ(tableAt(first.outline, 0).style->look(), banded);
    EXPECT_EQ(tableAt(first.outline, 0).style->look()->source, "");
}

TEST(PreparedRequest, GivesAllTablesOneLook) {
    FewLooks looks;
    const ModifyRequest request = requestOf(withLook("<tableProperties name=\"own\"/>"));
    const PreparedRequest prepared(request, looks);
    const Outline outline = resultsOf(kTable);
    EXPECT_EQ(tableAt(prepared.plan(outline).outline, 0).style->look(),
              tableAt(prepared.plan(outline).outline, 0).style->look());
}

TEST(PreparedRequest, ComplainsOnceOfFormatsAndFonts) {
    const ModifyRequest request = requestOf(
        "<modifyEvent all=\"true\"><modifyTable format=\"F99\"/>"
        "<tableCells body=\"true\" selectColumns=\"both\" format=\"F98\" font=\"NO SUCH FONT OF ALL\"/>"
        "<tableCells body=\"true\" selectColumns=\"both\" format=\"F99\" font=\"NO SUCH FONT OF ALL\"/>"
        "<modifyText fontFamily=\"No such font of all\"/></modifyEvent>");
    FewLooks looks;
    const PreparedRequest prepared(request, looks);
    EXPECT_THAT(prepared.complaints().formats(), testing::ElementsAre("F99", "F98"));
    EXPECT_THAT(prepared.complaints().fonts(),
                testing::ElementsAre("NO SUCH FONT OF ALL", "No such font of all"));
}

TEST(PreparedRequest, RefusesLooksAndTemplatesThatCannotBeRead) {
    FewLooks looks;
    const ModifyRequest look = requestOf(withLook("<tableProperties><no/></tableProperties>"));
    EXPECT_THAT(PreparedRequest(look, looks).problem(), testing::HasSubstr("\"no\" does not fit here"));
    const ModifyRequest chart = requestOf(
        "<modifyEvent "
        "charts=\"true\"><modifyGraph><chartTemplate></chartTemplate></modifyGraph></modifyEvent>");
    EXPECT_THAT(PreparedRequest(chart, looks).problem(),
                testing::HasSubstr("The chart template cannot be read as XML"));
}

}  // namespace
}  // namespace vexa::frontend
