#include "module/document/commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexa {
namespace {

using testing::ElementsAre;

std::vector<std::string> parametersOf(const SubcommandRow& row) {
    std::vector<std::string> names;
    for (const ParameterRow& parameter : row.parameters) {
        names.emplace_back(parameter.name);
    }
    return names;
}

TEST(CommentGrammar, AddsLineTwiceOnceBeforeBoldAndOnceAfter) {
    const GrammarTable grammar = outputCommentGrammar();
    ASSERT_EQ(grammar.size(), 3U);
    EXPECT_EQ(grammar[0].name, "");
    EXPECT_THAT(parametersOf(grammar[0]), ElementsAre("COLOR", "BGCOLOR", "WIDTH", "BOLD", "TEXT"));
    EXPECT_EQ(grammar[1].name, "LINE");
    EXPECT_THAT(parametersOf(grammar[1]), ElementsAre("TEXT", "COLOR", "BGCOLOR"));
    EXPECT_EQ(grammar[2].name, "LINE");
    EXPECT_THAT(parametersOf(grammar[2]), ElementsAre("TEXT", "COLOR", "BGCOLOR", "BOLD"));
}

}  // namespace
}  // namespace vexa
