#include "module/document/positional_name.h"

#include <gtest/gtest.h>

#include <optional>

#include "backend/tokens/token_sequence.h"

namespace vexa {
namespace {

struct Case {
    const char* tokens;
    LoneEquals loneEquals;
    std::optional<std::string> name;  ///< nothing: refused
    bool minimized = false;
};

const Case kCases[] = {
    {"", LoneEquals::isName, ""},
    {"a", LoneEquals::isName, "a"},
    {"'two words'", LoneEquals::isName, "two words"},
    {"*", LoneEquals::isName, "*"},
    {"12", LoneEquals::isName, "12"},
    {"NAME=a", LoneEquals::isName, "a"},
    {"name = a", LoneEquals::isName, "a"},
    {"'name'", LoneEquals::isName, "name"},
    {"NAME=ALL", LoneEquals::isName, "ALL"},
    {"NAME=a NAME=b", LoneEquals::isName, "b"},
    {"a NAME=b", LoneEquals::isName, "b"},
    {"a MINIMIZED=YES", LoneEquals::isName, "a", true},
    {"MINIMIZED=yes NAME=a", LoneEquals::isName, "a", true},
    {"MINIMIZED=NO a", LoneEquals::isName, "a"},
    {"a MINIMIZED='yes'", LoneEquals::isName, "a", true},
    {"MINIMIZED=MAYBE a", LoneEquals::isName, "a"},
    {"a b", LoneEquals::isName, std::nullopt},
    {"NAME=a b", LoneEquals::isName, std::nullopt},
    {"NAME a", LoneEquals::isName, std::nullopt},
    {"NAME=", LoneEquals::isName, std::nullopt},
    {"NAME", LoneEquals::isName, std::nullopt},
    {"a MINIMIZED", LoneEquals::isName, std::nullopt},
    {"a MINIMIZED YES", LoneEquals::isName, std::nullopt},
    {"=", LoneEquals::isName, "="},
    {"= a", LoneEquals::isName, std::nullopt},
    {"= a", LoneEquals::isSkipped, "a"},
    {"=", LoneEquals::isSkipped, std::nullopt},
    {"= a b", LoneEquals::isSkipped, std::nullopt},
    {"a = b", LoneEquals::isSkipped, std::nullopt},
};

TEST(PositionalName, ReadsEveryForm) {
    ParserMessage messages;
    for (const Case& each : kCases) {
        const CommandText text{each.tokens, 0, "", 1};
        const CommandTokens tokens(text);
        const auto read =
            readPositionalName(ParamObj({}, nullptr, tokens.tokens()), each.loneEquals, messages);
        ASSERT_EQ(read.has_value(), each.name.has_value()) << each.tokens;
        if (read) {
            EXPECT_EQ(read->name, *each.name) << each.tokens;
            EXPECT_EQ(read->minimized == OutputDocumentMinimized::yes, each.minimized) << each.tokens;
        }
    }
}

}  // namespace
}  // namespace vexa
