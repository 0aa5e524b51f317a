#include "module/modify/modify_reply.h"

#include <gtest/gtest.h>

#include <ctime>
#include <ostream>

namespace vexa {

static std::ostream& operator<<(std::ostream& out, const ModifyCounts& counts) {
    return out << counts.selected << ',' << counts.modified << ',' << counts.deleted;
}

namespace {

using Texts = std::vector<std::string_view>;
using Counts = std::optional<ModifyCounts>;

struct ReplyCase {
    std::string_view reply;
    Texts formats;
    Texts fonts;
    Counts counts;
};

TEST(ModifyReply, CountsStandInTheFirstParentheses) {
    const std::pair<std::string_view, Counts> cases[] = {
        {"", std::nullopt},
        {"()", std::nullopt},
        {"( )", ModifyCounts{}},
        {"(3,2,1)", ModifyCounts{3, 2, 1}},
        {"done (3,2,1) items (9,9,9)", ModifyCounts{3, 2, 1}},
        {"(3,2)", ModifyCounts{3, 2, 0}},
        {"(3)", ModifyCounts{3, 0, 0}},
        {"(3,2,1,4)", ModifyCounts{3, 2, 1}},
        {"(,,)", ModifyCounts{}},
        {"(,,7)", ModifyCounts{0, 0, 7}},
        {"( 3, 2 ,\t1 )", ModifyCounts{3, 2, 1}},
        {"(3x,y2,-1)", ModifyCounts{3, 0, -1}},
        {"(99999999999,-99999999999,2147483647)", ModifyCounts{2147483647, -2147483647 - 1, 2147483647}},
        {"(3,2,1", std::nullopt},
        {"3,2,1)", std::nullopt},
        {")3,2,1(", std::nullopt},
        {")(3,2,1)", std::nullopt},
        {"((3,2,1))", ModifyCounts{0, 2, 1}},
        {"(3,2,1))", ModifyCounts{3, 2, 1}},
        {"Invalid format (7,8,9) (3,2,1)", ModifyCounts{7, 8, 9}},
        {"Invalid format () (3,2,1)", std::nullopt},
    };
    for (const auto& [reply, counts] : cases) {
        EXPECT_EQ(readModifyReply(reply).counts, counts) << reply;
    }
}

TEST(ModifyReply, ComplaintsCarryTheValueBehindThem) {
    const ReplyCase cases[] = {
        {"Invalid format (A1)", {"A1"}, {}, ModifyCounts{}},
        {"Invalid font (Sans)", {}, {"Sans"}, ModifyCounts{}},
        {"Invalid format (A1) Invalid format (B2)", {"A1", "B2"}, {}, ModifyCounts{}},
        {"Invalid font (a)Invalid format (b)Invalid font (c)", {"b"}, {"a", "c"}, ModifyCounts{}},
        {"(3,2,1) Invalid format (A1)", {"A1"}, {}, ModifyCounts{3, 2, 1}},
        {"Invalid format", {}, {}, {}},
        {"Invalid format (A1", {}, {}, {}},
        {"Invalid format A1)", {}, {}, {}},
        {"(3,2,1) Invalid format", {}, {}, ModifyCounts{3, 2, 1}},
        {"(3,2,1) Invalid format (A1", {}, {}, ModifyCounts{3, 2, 1}},
        {"Invalid format )A1(", {""}, {}, {}},
        {"Invalid format ()", {""}, {}, {}},
        {"Invalid format ( )", {" "}, {}, ModifyCounts{}},
        {"Invalid format Invalid format (A1)", {"A1", "A1"}, {}, ModifyCounts{}},
        {"Invalid format, Invalid font (A1)", {"A1"}, {"A1"}, ModifyCounts{}},
        {"Invalid format (Invalid font (A1))", {"Invalid font (A1"}, {"A1"}, ModifyCounts{}},
        {"invalid format (A1)", {}, {}, ModifyCounts{}},
        {"Invalid  format (A1) Invalid formats (B2)", {"B2"}, {}, ModifyCounts{}},
        {"(x) Invalid format ) (A1)", {""}, {}, ModifyCounts{}},
        {"Invalid forma", {}, {}, {}},
        {"Invalid format (\xFF\x80)", {"\xFF\x80"}, {}, ModifyCounts{}},
    };
    for (const ReplyCase& each : cases) {
        const ModifyReply reply = readModifyReply(each.reply);
        EXPECT_EQ(reply.rejectedFormats, each.formats) << each.reply;
        EXPECT_EQ(reply.missingFonts, each.fonts) << each.reply;
        EXPECT_EQ(reply.counts, each.counts) << each.reply;
    }
}

TEST(ModifyReply, ZeroBytesAreCharactersLikeOthers) {
    const std::string text("Invalid format (\0A\0)\0(1,2,3)", 28);
    ASSERT_EQ(readModifyReply(text).rejectedFormats.size(), 1U);
    EXPECT_EQ(readModifyReply(text).rejectedFormats[0], std::string_view("\0A\0", 3));
}

/// `count` times `piece`, between the two other texts.
std::string repeated(std::string_view before, std::string_view piece, std::size_t count,
                     std::string_view behind) {
    std::string text(before);
    for (std::size_t i = 0; i < count; ++i) {
        text += piece;
    }
    return text.append(behind);
}

TEST(ModifyReply, AMillionMarkersTakeTimeInProportionToTheirNumber) {
    constexpr std::size_t kMany = 1000000;
    const std::clock_t begin = std::clock();
    EXPECT_EQ(readModifyReply(repeated("", "Invalid format", kMany, "")).rejectedFormats.size(), 0U);
    EXPECT_EQ(readModifyReply(repeated("(", "Invalid format", kMany, "")).rejectedFormats.size(), 0U);
    EXPECT_EQ(readModifyReply(repeated("", "Invalid font(", kMany, "")).missingFonts.size(), 0U);
    EXPECT_EQ(readModifyReply(repeated("", "Invalid font)", kMany, "")).missingFonts.size(), 0U);
    EXPECT_EQ(readModifyReply(repeated("", "Invalid format", kMany, "(A1)")).rejectedFormats.size(), kMany);
    EXPECT_EQ(readModifyReply(repeated("", "Invalid font()", kMany, "")).missingFonts.size(), kMany);
    EXPECT_EQ(readModifyReply(repeated("", "Invalid font(", kMany, ")")).missingFonts.size(), kMany);
    EXPECT_EQ(readModifyReply(repeated("(", "1,", kMany, ")")).counts, (ModifyCounts{1, 1, 1}));
    // In the square of their number these would take hours.
    EXPECT_LT(std::clock() - begin, 60 * CLOCKS_PER_SEC) << "of the processor, whatever else goes on";
}

}  // namespace
}  // namespace vexa
