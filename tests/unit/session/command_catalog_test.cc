#include "backend/session/command_catalog.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vexa {
namespace {

struct NameCase {
    const char* text;
    const char* name;  ///< null for none
    std::size_t end;
};

std::ostream& operator<<(std::ostream& out, const NameCase& value) { return out << value.text; }

class FindNameTest : public ::testing::TestWithParam<NameCase> {};

TEST_P(FindNameTest, FindsTheLongestName) {
    const std::optional<FoundCommand> found = findCommandName(GetParam().text, 0);
    ASSERT_EQ(found.has_value(), GetParam().name != nullptr);
    if (found) {
        EXPECT_EQ(found->command->name, GetParam().name);
        EXPECT_EQ(found->end, GetParam().end);
    }
}

const NameCase kNameCases[] = {
    {"OUTPUT NEW", "OUTPUT NEW", 10},
    {"output new NAME=a", "OUTPUT NEW", 10},
    {"Output  \n\tNew", "OUTPUT NEW", 13},
    {"OUTPUT /* c */ NEW", "OUTPUT NEW", 18},
    {"OUTPUT/**/NEW/x", "OUTPUT NEW", 13},
    {"OUTPUT NAME", "OUTPUT NAME", 11},
    {"OUTPUT NAMES", nullptr, 0},
    {"OUTPUT", nullptr, 0},
    {"OUTPUTNEW", nullptr, 0},
    {"OUTPUT NEW.x", nullptr, 0},
    {"OUTPUT NEW\xC3\xA4", nullptr, 0},
    {"OUTPUT 'NEW'", nullptr, 0},
    {"stb print", "STB PRINT", 9},
    {"CD 'x'", "CD", 2},
    {"CD'x'", "CD", 2},
    {"cd1", nullptr, 0},
    {"FILE HANDLE a", "FILE HANDLE", 11},
    {"FILE", nullptr, 0},
    {"", nullptr, 0},
    {"=", nullptr, 0},
};

INSTANTIATE_TEST_SUITE_P(Texts, FindNameTest, ::testing::ValuesIn(kNameCases));

TEST(CommandCatalog, NamesTheElevenEntriesOnce) {
    std::set<std::string> entries;
    for (const KnownCommand& command : knownCommands()) {
        EXPECT_EQ(command.entry == nullptr, command.own != OwnCommand::none) << command.name;
        if (command.entry != nullptr) {
            EXPECT_TRUE(entries.insert(command.entry).second) << command.entry;
        }
    }
    const std::set<std::string> expected{"OUTNEW",    "OUTOPEN",   "OUTSAVE", "OUTCLOSE",
                                         "OUTACTIV8", "OUTDISP",   "OUTNAME", "OUTCOMNT",
                                         "OUTEXPORT", "OUTMODIFY", "STBPRINT"};
    EXPECT_EQ(entries, expected);
}

TEST(CommandCatalog, FindsCommandsByTheirWholeName) {
    ASSERT_NE(findKnownCommand(" output  save "), nullptr);
    EXPECT_STREQ(findKnownCommand("output save")->entry, "OUTSAVE");
    EXPECT_EQ(findKnownCommand("output save it"), nullptr);
    EXPECT_EQ(findKnownCommand(""), nullptr);
}

TEST(CommandCatalog, SuggestsTheNearestName) {
    const auto nearest = [](std::string_view name) {
        const KnownCommand* const command = nearestCommand(name);
        return std::string(command == nullptr ? "" : command->name);
    };
    EXPECT_EQ(nearest("OUTPUT NWE"), "OUTPUT NEW");
    EXPECT_EQ(nearest("outptu save"), "OUTPUT SAVE");
    EXPECT_EQ(nearest("INSRT FILE"), "INSERT");
    EXPECT_EQ(nearest("TABULATE ITEMS"), "");
    EXPECT_EQ(nearest("save OUTFILE"), "OUTPUT SAVE");
}

TEST(CommandCatalog, ShowsUnknownCommandsShortly) {
    EXPECT_EQ(unknownCommandName("OUTPUT  /*c*/ NEWS NAME=a", 0), "OUTPUT NEWS");
    EXPECT_EQ(unknownCommandName("x=1", 0), "x");
    EXPECT_EQ(unknownCommandName("TABULATE ITEMS = x", 0), "TABULATE");
    EXPECT_EQ(unknownCommandName("=1", 0), "=");
    EXPECT_EQ(unknownCommandName(std::string(500, 'a'), 0), std::string(40, 'a'));
}

}  // namespace
}  // namespace vexa
