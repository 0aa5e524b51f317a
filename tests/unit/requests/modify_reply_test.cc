// Replies to modifications, read as the command reads them.

#include "frontend/requests/modify_reply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "module/modify/modify_reply.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

TEST(WriteModifyReply, BeginsWithTheCounts) {
    EXPECT_EQ(writeModifyReply({3, 2, 1, {}, {}}), "Output modified (3,2,1).");
    EXPECT_EQ(writeModifyReply({}), "Output modified (0,0,0).");
}

TEST(WriteModifyReply, HasALineForEachComplaint) {
    const std::string reply = writeModifyReply({3, 2, 1, {"F99", "X1"}, {"SERFI"}});
    EXPECT_EQ(reply,
              "Output modified (3,2,1).\nInvalid format (F99)\nInvalid format (X1)\nInvalid font (SERFI)");
    const vexa::ModifyReply read = readModifyReply(reply);
    EXPECT_THAT(read.rejectedFormats, ElementsAre("F99", "X1"));
    EXPECT_THAT(read.missingFonts, ElementsAre("SERFI"));
    ASSERT_TRUE(read.counts);
    EXPECT_EQ(read.counts->selected, 3);
    EXPECT_EQ(read.counts->modified, 2);
    EXPECT_EQ(read.counts->deleted, 1);
}

TEST(WriteModifyReply, LeavesOutWhatWouldEndAValue) {
    const std::string reply = writeModifyReply({1, 0, 0, {"F(8)\n2"}, {")"}});
    EXPECT_EQ(reply, "Output modified (1,0,0).\nInvalid format (F(82)\nInvalid font ()");
    EXPECT_THAT(readModifyReply(reply).rejectedFormats, ElementsAre("F(82"));
    EXPECT_THAT(readModifyReply(reply).missingFonts, ElementsAre(""));
}

}  // namespace
}  // namespace vexa::frontend
