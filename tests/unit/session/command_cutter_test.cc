#include "backend/session/command_cutter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/processor_time.h"

namespace vexa {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<CommandText> cutAll(const std::string& text) {
    const std::string plain = withPlainLineEnds(text);
    CommandCutter cutter(plain, "case.vxs");
    std::vector<CommandText> commands;
    CommandText command;
    while (cutter.next(command)) {
        commands.push_back(command);
    }
    return commands;
}

std::vector<std::string> textsOf(const std::string& text) {
    std::vector<std::string> texts;
    for (const CommandText& command : cutAll(text)) {
        texts.push_back(command.text.substr(command.arguments));
    }
    return texts;
}

struct CutCase {
    const char* about;
    std::string text;
    std::vector<std::string> commands;
};

std::ostream& operator<<(std::ostream& out, const CutCase& value) { return out << value.about; }

class CutTest : public ::testing::TestWithParam<CutCase> {};

TEST_P(CutTest, CutsIntoCommands) { EXPECT_EQ(textsOf(GetParam().text), GetParam().commands); }

const CutCase kCutCases[] = {
    {"nothing", "", {}},
    {"a period ends a command", "A.\nB.\n", {"A", "B"}},
    {"without a final line end", "A.\nB", {"A", "B"}},
    {"without a period at the end", "A b\n", {"A b"}},
    {"blanks behind the period", "A. \t \nB.\n", {"A", "B"}},
    {"a blank before the period stays", "A .\n", {"A "}},
    {"a period inside a line ends nothing", "A 2.5 b.c\nd.\n", {"A 2.5 b.c\nd"}},
    {"only the last of two periods is the end", "A..\n", {"A."}},
    {"a blank line ends a command", "A\nb\n\nC\n", {"A\nb", "C"}},
    {"a line of blanks is blank", "A\n \t\nB\n", {"A", "B"}},
    {"many blank lines", "\n\n\nA.\n\n\n\nB.\n\n", {"A", "B"}},
    {"a lone period is no command", ".\n . \nA.\n", {"A"}},
    {"carriage return and line feed", "A\r\nb.\r\nC.\r\n", {"A\nb", "C"}},
    {"carriage return alone", "A\rb.\rC.\r", {"A\nb", "C"}},
    {"blank line in carriage returns", "A\r\rB\r", {"A", "B"}},
    {"byte order mark",
     "\xEF\xBB\xBF"
     "A.\n",
     {"A"}},
    {"a literal may end in a period", "A 'b.'\nc.\n", {"A 'b.'\nc"}},
    {"a period ends the command whatever precedes", "A 'b.\nC.\n", {"A 'b", "C"}},
    {"comment behind the period", "A. /* c */\nB.\n", {"A", "B"}},
    {"several comments behind the period", "A./*c*/ /*d*/ \nB.\n", {"A", "B"}},
    {"a period inside a comment ends nothing", "A /* c.\nd */ e.\nB.\n", {"A /* c.\nd */ e", "B"}},
    {"a period at the end of a comment's line", "A /* c. */\ne.\n", {"A /* c. */\ne"}},
    {"a comment before the command", "/* c */ A.\n", {"A"}},
    {"lines of comment before the command", "/* c\n d. */\nA.\n", {"A"}},
    {"a comment alone is no command", "/* c */\n\n/* d */.\nA.\n", {"A"}},
    {"a line of comment is no blank line", "A\n/* c */\nb.\n", {"A\n/* c */\nb"}},
    {"a blank line ends a comment's command too", "A /* c\n\nB.\n", {"A /* c", "B"}},
    {"an unclosed comment alone is given", "/* c\n\nA.\n", {"/* c", "A"}},
    {"no comment inside a literal", "A '/*'.\nB.\n", {"A '/*'", "B"}},
    {"no literal inside a comment", "A /* ' */.\nB.\n", {"A /* ' */", "B"}},
    {"a quote of the other kind", "A \"'/*\".\nB.\n", {"A \"'/*\"", "B"}},
    {"an asterisk comment", "* anything 'at all.\nA.\n", {"A"}},
    {"an asterisk comment of several lines", "* one\ntwo\nthree.\nA.\n", {"A"}},
    {"an asterisk comment up to a blank line", "* one\ntwo\n\nA.\n", {"A"}},
    {"an asterisk behind blanks", "  * one.\nA.\n", {"A"}},
    {"an asterisk behind a comment", "/* c */ * one.\nA.\n", {"A"}},
    {"an apostrophe in an asterisk comment", "* don't /* do */ this. /* ' */\nA.\n", {"A"}},
    {"an open comment in an asterisk comment", "* see /* there.\nA.\n", {"A"}},
    {"an asterisk elsewhere", "A *.\n", {"A *"}},
    {"zero bytes", std::string("A \0.\nB.\n", 8), {std::string("A \0", 3), "B"}},
    {"bytes that are no character", "A \xFF\xFE.\nB.\n", {"A \xFF\xFE", "B"}},
};

INSTANTIATE_TEST_SUITE_P(Rules, CutTest, ::testing::ValuesIn(kCutCases));

TEST(CommandCutter, TellsWhereCommandsBegin) {
    const std::vector<CommandText> commands = cutAll("\n  A\n b.\n/* c\n d */ B\n x.\nC");
    ASSERT_EQ(commands.size(), 3U);
    EXPECT_EQ(commands[0].text, "  A\n b");
    EXPECT_EQ(commands[0].arguments, 2U);
    EXPECT_EQ(commands[0].line, 2);
    EXPECT_EQ(commands[1].text, " d */ B\n x");
    EXPECT_EQ(commands[1].arguments, 6U);
    EXPECT_EQ(commands[1].line, 5);
    EXPECT_EQ(commands[2].line, 7);
    EXPECT_EQ(commands[2].file, "case.vxs");
}

TEST(CommandCutter, CountsFromTheGivenLine) {
    CommandCutter cutter("\nA.", "", 10);
    CommandText command;
    ASSERT_TRUE(cutter.next(command));
    EXPECT_EQ(command.line, 11);
}

/// Of the processor, the seconds to cut `text`: the best of three.
double timeToCut(const std::string& text, std::size_t expected) {
    double best = 1e9;
    for (int i = 0; i < 3; ++i) {
        best = std::min(best, processorSeconds([&] { EXPECT_EQ(cutAll(text).size(), expected); }));
    }
    return best;
}

std::string repeated(std::string_view piece, std::size_t times) {
    std::string text;
    for (std::size_t i = 0; i < times; ++i) {
        text += piece;
    }
    return text;
}

struct HugeCase {
    const char* about;
    std::string before;
    std::string piece;
    std::string after;
    bool pieceIsCommand;
};

/// Ten times the text may take no more than about ten times as long; quadratic work would take a hundred
/// times.
TEST(CommandCutter, TakesTimeInProportion) {
    const HugeCase cases[] = {
        {"many commands", "", "OUTPUT NEW NAME=a.\n", "", true},
        {"one long line", "A ", "b 'c' /* d */ ", ".", false},
        {"one command of many lines", "A ", "b 'c' /* d */\n", ".", false},
        {"one comment of many lines", "A /*", " c.\n", "*/", false},
        {"opened comments in an asterisk comment", "* ", "/* ", ".\nA.", false},
    };
    for (const HugeCase& huge : cases) {
        const std::size_t small = 20000;
        const auto textOf = [&huge](std::size_t times) {
            return huge.before + repeated(huge.piece, times) + huge.after;
        };
        const double once = timeToCut(textOf(small), huge.pieceIsCommand ? small : 1);
        const double tenfold = timeToCut(textOf(small * 10), huge.pieceIsCommand ? small * 10 : 1);
        EXPECT_LT(tenfold, once * 50 + 0.05) << huge.about;
    }
}

TEST(PlainLineEnds, LeavesOtherTextAlone) {
    EXPECT_EQ(withPlainLineEnds("a\nb"), "a\nb");
    EXPECT_EQ(withPlainLineEnds("a\r\r\nb\r"), "a\n\nb\n");
    EXPECT_EQ(withPlainLineEnds("a\xEF\xBB\xBF"), "a\xEF\xBB\xBF");
    EXPECT_EQ(withPlainLineEnds(""), "");
}

TEST(CommandEndFinder, FollowsACommandLineByLine) {
    CommandEndFinder finder;
    EXPECT_EQ(finder.addLine("OUTPUT NEW /* a"), CommandEndFinder::Ending::none);
    EXPECT_TRUE(finder.inComment());
    EXPECT_EQ(finder.addLine("b. */ NAME=a ."), CommandEndFinder::Ending::period);
    EXPECT_EQ(finder.lengthBeforePeriod(), 13U);
    EXPECT_EQ(finder.addLine("  "), CommandEndFinder::Ending::blankLine);
    finder.reset();
    EXPECT_FALSE(finder.hasContent());
}

}  // namespace
}  // namespace vexa
