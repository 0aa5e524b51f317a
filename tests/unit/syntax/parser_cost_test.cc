// Hostile commands cost no more than their length.

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/unit/processor_time.h"
#include "tests/unit/syntax/example_grammars.h"
#include "tests/unit/syntax/parse_picture.h"

namespace vexa {
namespace {

constexpr double kFarTooLong =
    30;  // seconds of the processor; a cost that grows with the square takes many minutes

std::string repeat(std::string_view piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

/// The outcome of parsing, which must not take long.
std::string quickly(const std::string& text) {
    std::string outcome;
    EXPECT_LT(processorSeconds([&] { outcome = parsed(modifyGrammar(), text); }), kFarTooLong);
    return outcome;
}

TEST(ParserCost, GrowsWithTheCommandAlone) {
    constexpr std::size_t kMany = 100'000;
    EXPECT_EQ(quickly(repeat("/SELECT TABLES /TABLE ", kMany)).substr(0, 26), "{}<SELECT{TABLES}TABLE{}><");
    EXPECT_EQ(quickly("/SELECT ALL " + repeat("/TABLECELLS SELECT=[BODY] ", kMany)).substr(0, 14),
              "{}<SELECT{ALL}");
    const std::string nested = "/SELECT ALL /TABLECELLS SELECT=";
    EXPECT_EQ(quickly(nested + repeat("[", kMany) + repeat("]", kMany)).substr(0, 14), "{}<SELECT{ALL}");
    EXPECT_EQ(quickly(nested + repeat("(", kMany) + repeat("]", kMany)).substr(0, 14), "{}<SELECT{ALL}");
    EXPECT_EQ(quickly(nested + repeat("([", kMany)).substr(0, 14), "{}<SELECT{ALL}");
    EXPECT_EQ(quickly("/SELECT ALL /TABLE SORT" + repeat("(", kMany)).substr(0, 3), "24:");
    EXPECT_EQ(quickly("/SELECT ALL /TABLE SORT(" + repeat("A=(1 2) ", kMany) + ")").substr(0, 14),
              "{}<SELECT{ALL}");
    EXPECT_EQ(quickly("/SELECT ALL /IF LABELS=[" + repeat("EXACT(", kMany) + "]").substr(0, 3), "30:");
    EXPECT_EQ(quickly("NAME=" + repeat("a ", 1'000'000) + "/SELECT").substr(0, 8), "{NAME=a ");
}

}  // namespace
}  // namespace vexa
