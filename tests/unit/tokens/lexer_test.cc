// How a command's text is cut into tokens.

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "backend/text/character_set.h"
#include "backend/tokens/command_text.h"
#include "backend/tokens/token_sequence.h"
#include "tests/unit/processor_time.h"

namespace vexa {
namespace {

CommandText commandOf(std::string text) {
    CommandText command;
    command.text = std::move(text);
    return command;
}

/// One token as "w:text", "l:text", "n:text" or "CODE:text".
std::string show(const TokenInfoObj& token) {
    const std::string text(token.getString());
    switch (token.kind()) {
        case TokenKind::word:
            return "w:" + text;
        case TokenKind::literal:
            return "l:" + text;
        case TokenKind::number:
            return "n:" + text;
        case TokenKind::operatorToken:
            return std::to_string(token.getOperatorCode()) + ":" + text;
    }
    return {};
}

std::vector<std::string> lex(const std::string& text) {
    const CommandText command = commandOf(text);
    const CommandTokens tokens(command);
    std::vector<std::string> shown;
    for (const TokenInfoObj& token : tokens.tokens()) {
        shown.push_back(show(token));
    }
    if (tokens.error()) {
        shown.push_back("error at " + std::to_string(tokens.error()->offset));
    }
    return shown;
}

struct LexCase {
    std::string text;
    std::vector<std::string> tokens;
};

void PrintTo(const LexCase& each, std::ostream* out) { *out << each.text; }

class LexerTest : public testing::TestWithParam<LexCase> {};

TEST_P(LexerTest, CutsText) { EXPECT_EQ(lex(GetParam().text), GetParam().tokens); }

INSTANTIATE_TEST_SUITE_P(
    Words, LexerTest,
    testing::Values(LexCase{"", {}}, LexCase{" \t\r\n\f\v", {}},
                    LexCase{"a F8.2 doc.1", {"w:a", "w:F8.2", "w:doc.1"}},
                    LexCase{"@a #b $c _d a@#$_9", {"w:@a", "w:#b", "w:$c", "w:_d", "w:a@#$_9"}},
                    LexCase{"Größe 名前", {"w:Größe", "w:名前"}},
                    LexCase{"\xC3\x84 \xFF", {"w:\xC3\x84", "w:\xFF"}},
                    LexCase{"a.b.c. x", {"w:a.b.c.", "w:x"}}, LexCase{".a", {"55:.", "w:a"}},
                    LexCase{"all ALL aLl all1 xall", {"35:all", "35:ALL", "35:aLl", "w:all1", "w:xall"}}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, LexerTest,
    testing::Values(
        LexCase{"12 2.5 .5 5. 1e3 1E-3 2e+4", {"n:12", "n:2.5", "n:.5", "n:5.", "n:1e3", "n:1E-3", "n:2e+4"}},
        LexCase{"-3", {"n:-3"}}, LexCase{"+3", {"n:+3"}}, LexCase{"-.5", {"n:-.5"}},
        LexCase{"X=-3", {"w:X", "3:=", "n:-3"}}, LexCase{"a -3", {"w:a", "n:-3"}},
        LexCase{"a-3", {"w:a", "41:-", "n:3"}}, LexCase{"a - 3", {"w:a", "41:-", "n:3"}},
        LexCase{"1 -3", {"n:1", "41:-", "n:3"}}, LexCase{"'a' -3", {"l:a", "41:-", "n:3"}},
        LexCase{"(-3)", {"13:(", "n:-3", "14:)"}},
        LexCase{"(10, -5)", {"13:(", "n:10", "17:,", "n:-5", "14:)"}}, LexCase{"ALL -3", {"35:ALL", "n:-3"}},
        LexCase{"- 3", {"41:-", "n:3"}}, LexCase{"--3", {"41:-", "n:-3"}}, LexCase{"-a", {"41:-", "w:a"}},
        LexCase{"3a", {"error at 0"}}, LexCase{"x 1e", {"w:x", "error at 2"}}, LexCase{"1.x", {"error at 0"}},
        LexCase{"3'a'", {"n:3", "l:a"}}, LexCase{"1-2", {"n:1", "41:-", "n:2"}}));

INSTANTIATE_TEST_SUITE_P(
    Literals, LexerTest,
    testing::Values(LexCase{"'a' \"b\"", {"l:a", "l:b"}}, LexCase{"'' \"\"", {"l:", "l:"}},
                    LexCase{"'it''s' \"a\"\"b\"", {"l:it's", "l:a\"b"}}, LexCase{"''''", {"l:'"}},
                    LexCase{"'a\"b' \"a'b\"", {"l:a\"b", "l:a'b"}}, LexCase{"'/* x */'", {"l:/* x */"}},
                    LexCase{"'a' + 'b'", {"l:ab"}}, LexCase{"'a'\n + /* c */\n \"b\"", {"l:ab"}},
                    LexCase{"'a'+'b'+'c''d'+\"e\"", {"l:abc'de"}}, LexCase{"'x''y'+'z'", {"l:x'yz"}},
                    LexCase{"''+''+'a'", {"l:a"}}, LexCase{"''''+''''", {"l:''"}},
                    LexCase{"'a' 'b'+'c' 'd'", {"l:a", "l:bc", "l:d"}},
                    LexCase{"a + 'b'", {"w:a", "40:+", "l:b"}}, LexCase{"'a' + b", {"l:a", "40:+", "w:b"}},
                    LexCase{"'a' + 5", {"l:a", "40:+", "n:5"}}, LexCase{"+ 'b'", {"40:+", "l:b"}},
                    LexCase{"X='abc", {"w:X", "3:=", "error at 2"}},
                    LexCase{"X='abc\nd'", {"w:X", "3:=", "error at 2"}},
                    LexCase{"'a' + 'b", {"l:a", "40:+", "error at 6"}}, LexCase{"\"abc'", {"error at 0"}}));

INSTANTIATE_TEST_SUITE_P(Comments, LexerTest,
                         testing::Values(LexCase{"a /* b */ c", {"w:a", "w:c"}},
                                         LexCase{"a/**/b", {"w:a", "w:b"}},
                                         LexCase{"/* one\ntwo */ a", {"w:a"}},
                                         LexCase{"a /* ' \" */ b", {"w:a", "w:b"}},
                                         LexCase{"a /* b", {"w:a", "error at 2"}},
                                         LexCase{"a */ b", {"w:a", "10:*", "42:/", "w:b"}},
                                         LexCase{"a /*/ b", {"w:a", "error at 2"}}));

INSTANTIATE_TEST_SUITE_P(
    Operators, LexerTest,
    testing::Values(LexCase{"= * ( ) , [ ]", {"3:=", "10:*", "13:(", "14:)", "17:,", "36:[", "37:]"}},
                    LexCase{"+ - / ** <", {"40:+", "41:-", "42:/", "43:**", "44:<"}},
                    LexCase{"<= > >= <> ~=", {"45:<=", "46:>", "47:>=", "48:<>", "48:~="}},
                    LexCase{"~ & | ! ; :", {"49:~", "50:&", "51:|", "52:!", "53:;", "54::"}},
                    LexCase{". ? % ^ { } \\ `",
                            {"55:.", "56:?", "57:%", "58:^", "59:{", "60:}", "61:\\", "62:`"}},
                    LexCase{"<==>*** =<", {"45:<=", "3:=", "46:>", "43:**", "10:*", "3:=", "44:<"}},
                    LexCase{"[>=10]", {"36:[", "47:>=", "n:10", "37:]"}},
                    LexCase{"a\x01", {"w:a", "error at 1"}},
                    LexCase{std::string("a\0b", 3), {"w:a", "error at 1"}}, LexCase{"\x7F", {"error at 0"}}));

/// Installs a character set for as long as it lives.
struct CharacterSetScope {
    explicit CharacterSetScope(const char* name) { installCharacterSet(CharacterSet::find(name)); }
    ~CharacterSetScope() { installCharacterSet(nullptr); }
    CharacterSetScope(const CharacterSetScope&) = delete;
    CharacterSetScope& operator=(const CharacterSetScope&) = delete;
};

TEST(LexerCharacterSets, TakesTrailBytesForPartsOfTheirCharacters) {
    const CharacterSetScope scope("Shift_JIS");
    // 0x83 0x5C, 0x83 0x5B and 0x83 0x5D are letters whose second bytes look like \ [ and ].
    EXPECT_EQ(lex("\x83\x5C\x83\x5B a"), (std::vector<std::string>{"w:\x83\x5C\x83\x5B", "w:a"}));
    EXPECT_EQ(lex("[\x83\x5D]"), (std::vector<std::string>{"36:[", "w:\x83\x5D", "37:]"}));
    EXPECT_EQ(lex("'\x83\x5C'"), (std::vector<std::string>{"l:\x83\x5C"}));
}

TEST(LexerCharacterSets, ClosesALiteralBehindABrokenLeadByte) {
    const CharacterSetScope scope("Shift_JIS");
    EXPECT_EQ(lex("'\x83' a"), (std::vector<std::string>{"l:\x83", "w:a"}));
}

TEST(LexerCharacterSets, SingleByteSetsHaveWordsOfEveryByteAbove127) {
    const CharacterSetScope scope("windows-1252");
    EXPECT_EQ(lex("Gr\xF6\xDF"
                  "e"),
              (std::vector<std::string>{"w:Gr\xF6\xDF"
                                        "e"}));
}

struct FailCase {
    std::string text;
    std::string message;
};

void PrintTo(const FailCase& each, std::ostream* out) { *out << each.text; }

class LexerMessageTest : public testing::TestWithParam<FailCase> {};

TEST_P(LexerMessageTest, SaysWhatIsWrong) {
    const CommandText command = commandOf(GetParam().text);
    const CommandTokens tokens(command);
    ASSERT_TRUE(tokens.error());
    EXPECT_EQ(tokens.error()->message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Messages, LexerMessageTest,
    testing::Values(
        FailCase{"'a",
                 "This text is not closed before the end of its line: ' is missing. A longer text is "
                 "written in pieces: 'one ' + 'two'."},
        FailCase{"\"a",
                 "This text is not closed before the end of its line: \" is missing. A longer text is "
                 "written in pieces: 'one ' + 'two'."},
        FailCase{"/* a", "This comment is not closed: \"*/\" is missing."},
        FailCase{"5x",
                 "A number runs into a word here. Put a blank between them, or put the text in quotes."},
        FailCase{std::string("'a\0b'", 5),
                 "There is a control character (code 0) here. It has no meaning in a command; delete it."},
        FailCase{std::string("'a' + \"\0", 8),
                 "There is a control character (code 0) here. It has no meaning in a command; delete it."},
        FailCase{"\x02",
                 "There is a control character (code 2) here. It has no meaning in a command; delete it."}));

TEST(LexerPlaces, KnowsWhereTokensStand) {
    const CommandText command = commandOf("ab 'c''d'\n +\n'e' 12");
    const CommandTokens tokens(command);
    ASSERT_EQ(tokens.tokens().size(), 3U);
    EXPECT_EQ(tokens.tokens()[0].offset(), 0U);
    EXPECT_EQ(tokens.tokens()[0].length(), 2U);
    EXPECT_EQ(tokens.tokens()[1].offset(), 3U);  // a joined literal stands from its first to its last quote
    EXPECT_EQ(tokens.tokens()[1].length(), 13U);
    EXPECT_EQ(tokens.tokens()[2].offset(), 17U);
}

TEST(LexerPlaces, PointsAtAZeroByteInALiteral) {
    const CommandText command = commandOf(std::string("w 'ab\0c'", 8));
    const CommandTokens tokens(command);
    ASSERT_TRUE(tokens.error());
    EXPECT_EQ(tokens.error()->offset, 5U);
}

TEST(LexerPlaces, BeginsBehindTheName) {
    CommandText command = commandOf("OUTPUT NEW NAME=a");
    command.arguments = 10;
    const CommandTokens tokens(command);
    ASSERT_EQ(tokens.tokens().size(), 3U);
    EXPECT_EQ(tokens.tokens()[0].offset(), 11U);
}

TEST(LexerPlaces, CountsLinesAndCharacters) {
    CommandText command = commandOf("OUTPUT NEW\r\n\tNAME='Größe' X\nY");
    command.file = "a.vx";
    command.line = 7;
    const SourcePlace place = placeOf(command, command.text.find('X'));
    EXPECT_EQ(place.file, "a.vx");
    EXPECT_EQ(place.line, 8);
    EXPECT_EQ(place.column, 15);
    EXPECT_EQ(place.sourceLine, "\tNAME='Größe' X");
    EXPECT_EQ(placeOf(command, command.text.find('Y')).line, 9);
    EXPECT_EQ(placeOf(command, 10000).column, 2);
}

TEST(LexerPlaces, CountsDoubleByteCharactersOnce) {
    const CharacterSetScope scope("Shift_JIS");
    const CommandText command = commandOf("'\x83\x5C\x83\x5C' X");
    const SourcePlace place = placeOf(command, command.text.find('X'));
    EXPECT_EQ(place.column, 6);
    EXPECT_EQ(place.sourceLine, "'ソソ' X");
}

TEST(CurrentCommand, IsTheSequenceOfTheInstalledCommand) {
    EXPECT_TRUE(VEXA_TokenSequence(true).tokens().empty());
    const CommandText outer = commandOf("a b");
    const CommandText inner = commandOf("c");
    const CurrentCommandScope outerScope(outer);
    {
        const CurrentCommandScope innerScope(inner);
        EXPECT_EQ(VEXA_TokenSequence(true).tokens().size(), 1U);
    }
    EXPECT_EQ(VEXA_TokenSequence(true).tokens().size(), 2U);
    EXPECT_EQ(currentCommand(), &outer);
}

/// Seconds of the processor that cutting `text` into tokens takes, and how many tokens there are.
std::pair<double, std::size_t> timeOf(const std::string& text) {
    const CommandText command = commandOf(text);
    std::size_t count = 0;
    const double taken = processorSeconds([&] {
        const CommandTokens tokens(command);
        EXPECT_FALSE(tokens.error());
        count = tokens.tokens().size();
    });
    return {taken, count};
}

std::string repeat(std::string_view piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

TEST(LexerCost, GrowsWithTheTextAlone) {
    constexpr double kFarTooLong = 30;  // seconds; a cost that grows with the square takes many minutes
    const auto [tokens, tokenCount] = timeOf(repeat("a = ", 500'000));
    EXPECT_EQ(tokenCount, 1'000'000U);
    EXPECT_LT(tokens, kFarTooLong);
    const auto [joined, joinedCount] = timeOf(repeat("'a''b' + ", 100'000) + "'c'");
    EXPECT_EQ(joinedCount, 1U);
    EXPECT_LT(joined, kFarTooLong);
    EXPECT_LT(timeOf("'" + std::string(10'000'000, 'x') + "'").first, kFarTooLong);
    EXPECT_LT(timeOf("'" + std::string(10'000'000, '\'') + "'").first, kFarTooLong);
}

}  // namespace
}  // namespace vexa
