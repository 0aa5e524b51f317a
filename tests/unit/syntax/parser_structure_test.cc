// Subcommands, slashes, groups, required and repeated parts, descriptions that replace each other.

#include <optional>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "backend/pivot/output_log.h"
#include "backend/syntax/parse_mode.h"
#include "backend/syntax/universal_parser.h"
#include "tests/unit/syntax/example_grammars.h"
#include "tests/unit/syntax/parse_picture.h"

namespace vexa {
namespace {

using Spec = UPSpecTypes::ParamSpec;
using SubSpec = UPSpecTypes::SubComSpec;

/// FILE is required; NAME takes any word, SPARE an optional one; SUB repeats not, LINE does.
CommandDescriptor tryGrammar() {
    CommandDescriptor command("TRY");
    SubComDescriptor leading("", SubSpec::keywordParameters, true, false);
    leading.addParamDesc(ParamDescriptor("FILE", Spec::tokens, true, true).setValueLabel("file"));
    leading.addParamDesc({"NAME", Spec::word, false, true});
    leading.addParamDesc(ParamDescriptor("LOCK", Spec::word, false, true).addStringValue("YES"));
    SubComDescriptor sub("SUB", SubSpec::keywordParameters, false, false);
    sub.addParamDesc({"TEXT", Spec::literalOrWord, false, true});
    SubComDescriptor line("LINE", SubSpec::keywordParameters, false, true);
    line.addParamDesc({"TEXT", Spec::literalOrWord, true, true});
    return command.addSubComDesc(leading).addSubComDesc(sub).addSubComDesc(line);
}

struct StructureCase {
    std::string text;
    std::string outcome;
};

void PrintTo(const StructureCase& each, std::ostream* out) { *out << each.text; }

class StructureTest : public testing::TestWithParam<StructureCase> {};

TEST_P(StructureTest, IsTakenOrRefused) {
    EXPECT_EQ(parsed(tryGrammar(), GetParam().text), GetParam().outcome);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, StructureTest,
    testing::Values(
        StructureCase{"FILE='x'", "{FILE='x'}"}, StructureCase{"file 'x' name y", "{FILE='x'; NAME=y}"},
        StructureCase{"FILE='x' /SUB TEXT=a", "{FILE='x'}SUB{TEXT=a}"},
        StructureCase{"FILE='x' SUB TEXT=a", "{FILE='x'}SUB{TEXT=a}"},
        StructureCase{"FILE='x' /SUB", "{FILE='x'}SUB{}"},
        StructureCase{"FILE='x' /LINE TEXT=a /LINE TEXT=b", "{FILE='x'}LINE{TEXT=a}LINE{TEXT=b}"},
        StructureCase{"FILE='x' /LINE TEXT=a LINE TEXT=b", "{FILE='x'}LINE{TEXT=a}LINE{TEXT=b}"},
        StructureCase{"FILE='x' NAME=SUB", "{FILE='x'; NAME=SUB}"},
        StructureCase{"FILE='x' NAME SUB /SUB", "{FILE='x'; NAME=SUB}SUB{}"},
        StructureCase{"FILE='x' NAME=LOCK", "{FILE='x'; NAME=LOCK}"},
        StructureCase{"", "1: FILE is missing: TRY needs it, with a file."},
        StructureCase{"NAME=a", "7: FILE is missing: TRY needs it, with a file."},
        StructureCase{"SUB", "1: FILE is missing: TRY needs it, with a file."},
        StructureCase{"/FILE='x'",
                      "2: FILE belongs to TRY itself: write it before the first subcommand, without \"/\"."},
        StructureCase{"FILE='x' /SUB /NAME=a",
                      "16: NAME belongs to TRY itself: write it before the first subcommand, without \"/\"."},
        StructureCase{"FILE='x' FILE='y'", "10: FILE is given twice; it can be given once in TRY."},
        StructureCase{"FILE='x' /SUB TEXT=a /SUB",
                      "23: Subcommand SUB is given twice; it can be given once."},
        StructureCase{"FILE='x' /SUB TEXT=a TEXT=b",
                      "22: TEXT is given twice; it can be given once in subcommand SUB."},
        StructureCase{"FILE='x' /LINE",
                      "15: TEXT is missing: subcommand LINE needs it, with one quoted text or one word."},
        StructureCase{"FILE='x' NAMED=a",
                      "10: Found \"NAMED\" where a keyword of TRY was expected. Did you mean NAME?"},
        StructureCase{"FILE=x NAMED", "{FILE=x NAMED}"},  // the command sees that this is no file
        StructureCase{"NAMED=a",
                      "1: Found \"NAMED\" where a keyword of TRY was expected. Did you mean NAME?"},
        StructureCase{"QQQQ=a",
                      "1: Found \"QQQQ\" where a keyword of TRY was expected. It takes FILE, NAME or LOCK."},
        StructureCase{
            "NAME LOCK=YES",
            "6: NAME needs a value: one word or one quoted text. Without \"=\", \"LOCK\" is read as "
            "the next keyword; "
            "if it is the value, write NAME=LOCK."},
        StructureCase{"NAME= LOCK=YES",
                      "7: The value of NAME is missing: LOCK was read as its value, and \"=\" followed."},
        StructureCase{"NAME=a 'b'",
                      "8: NAME takes one word or one quoted text. Only one can be given; found \"'b'\" after "
                      "the first."},
        StructureCase{"FILE='x' /SUBB",
                      "11: Found \"SUBB\" where a subcommand of TRY was expected. Did you mean SUB?"},
        StructureCase{"FILE='x' /OTHERS",
                      "11: Found \"OTHERS\" where a subcommand of TRY was expected. It accepts SUB or LINE."},
        StructureCase{"FILE='x' //SUB",
                      "11: The name of a subcommand must follow \"/\". Found \"/\". If this is a file name, "
                      "put it in quotes."},
        StructureCase{"FILE='x'\n  NAME=5",
                      "line 2, 8: NAME takes one word or one quoted text. Found \"5\"."},
        StructureCase{"FILE='x",
                      "6: This text is not closed before the end of its line: ' is missing. A longer text is "
                      "written in pieces: 'one ' + 'two'."}));

TEST(Structure, CommandWithoutSubcommandsTakesNothing) {
    EXPECT_EQ(parsed(CommandDescriptor("TRY"), ""), "");
    EXPECT_EQ(parsed(CommandDescriptor("TRY"), "a"),
              "1: Found \"a\" where the command ends. TRY takes nothing more.");
}

TEST(Structure, FreeTokensGoToTheNextSlash) {
    CommandDescriptor command("TRY");
    command.addSubComDesc({"", SubSpec::freeTokens, true, false});
    EXPECT_EQ(parsed(command, "NAME = a 'b' 3, [ ("), "{NAME = a 'b' 3 , [ (}");
    EXPECT_EQ(parsed(command, ""), "{}");
    command.addSubComDesc({"SUB", SubSpec::freeTokens, false, false});
    EXPECT_EQ(parsed(command, "a /SUB b c"), "{a}SUB{b c}");
    EXPECT_EQ(parsed(command, "a SUB b SUB c"), "{a}SUB{b SUB c}")
        << "before the first one it may be left out";
    EXPECT_EQ(parsed(command, "SUB /SUB b"), "{SUB}SUB{b}");
}

TEST(Structure, RequiredSubcommandMustBeThere) {
    CommandDescriptor command("TRY");
    command.addSubComDesc({"NEEDED", SubSpec::keywordParameters, true, false});
    EXPECT_EQ(parsed(command, "/NEEDED"), "NEEDED{}");
    EXPECT_EQ(parsed(command, ""), "1: Subcommand NEEDED is missing: TRY needs it.");
}

TEST(Structure, GroupNeedsItsRequiredSubcommands) {
    GroupComDescriptor group(UPSpecTypes::GroupSpec::selection, false, "");
    group.addSubComDesc({"OPEN", SubSpec::keywordParameters, true, false}, true);
    group.addSubComDesc({"NEEDED", SubSpec::keywordParameters, true, false}, false);
    CommandDescriptor command("TRY");
    command.addGroupComDesc(group);
    EXPECT_EQ(parsed(command, ""), "");
    EXPECT_EQ(parsed(command, "/OPEN /NEEDED"), "<OPEN{}NEEDED{}>");
    EXPECT_EQ(parsed(command, "/OPEN /NEEDED /OPEN"),
              "16: Subcommand NEEDED is missing: every OPEN needs it.");
}

TEST(Structure, AddingUnderTheSameNameReplaces) {
    SubComDescriptor line("LINE", SubSpec::keywordParameters, false, true);
    line.addParamDesc({"TEXT", Spec::tokens, false, true});
    CommandDescriptor command("TRY");
    command.addSubComDesc(line);
    line.addParamDesc({"BOLD", Spec::keyword, false, true});
    line.addParamDesc({"TEXT", Spec::number, false, true});
    command.addSubComDesc(line);
    ASSERT_EQ(command.subcommands().size(), 1U);
    ASSERT_EQ(command.subcommands()[0].parameters().size(), 2U);
    EXPECT_EQ(command.subcommands()[0].parameters()[0].spec(), Spec::number);  // in the place of the first
    EXPECT_EQ(parsed(command, "/LINE BOLD TEXT=1 /LINE"), "LINE{BOLD; TEXT=1}LINE{}");
}

TEST(Structure, SettersChangeWhatTheConstructorSaid) {
    SubComDescriptor sub("SUB", SubSpec::keywordParameters, false, false);
    CommandDescriptor command("TRY");
    command.addSubComDesc(sub.setSubComRequired(true).setSubComRepeatable(true));
    EXPECT_EQ(parsed(command, ""), "1: Subcommand SUB is missing: TRY needs it.");
    EXPECT_EQ(parsed(command, "/SUB /SUB"), "SUB{}SUB{}");
}

TEST(StringValues, ReferToConstantsUntilOneIsAdded) {
    static constexpr std::string_view kValues[] = {"ONE", "TWO"};
    ParamDescriptor parameter("P", Spec::word, false, true);
    parameter.setStringValues(kValues);
    EXPECT_TRUE(parameter.hasStringValue("two"));
    EXPECT_FALSE(parameter.hasStringValue("THREE"));
    parameter.addStringValue("THREE");
    EXPECT_EQ(parameter.stringValues(), (std::vector<std::string_view>{"ONE", "TWO", "THREE"}));
    EXPECT_FALSE(spellsKeyword("ONE", "ON"));
    EXPECT_FALSE(spellsKeyword("ON\xC3\x8B", "ONE"));
}

int parseIn(ParseMode mode, const std::string& text, std::optional<CommandDescriptor>& description) {
    const CommandText command{text, 0, "", 1};
    const CommandTokens tokens(command);
    CommandSpec spec;
    const CommandDescriptor descriptor = tryGrammar();
    const ParseModeScope scope(mode);
    const int result = UniversalParser(tokens, spec, descriptor).getCommandSpecifications();
    description = scope.description();
    return result;
}

TEST(ParseModes, StopTheCommandBehindTheParser) {
    std::optional<CommandDescriptor> description;
    EXPECT_EQ(parseIn(ParseMode::run, "FILE=x", description), 0);
    EXPECT_EQ(parseIn(ParseMode::checkOnly, "FILE=x", description), 1);
    EXPECT_FALSE(description);
    EXPECT_EQ(parseIn(ParseMode::describe, "what ever 'unclosed", description), 1);
    ASSERT_TRUE(description);
    EXPECT_EQ(description->name(), "TRY");
    EXPECT_EQ(description->subcommands().size(), 3U);
    EXPECT_EQ(ParseModeScope::current(), nullptr);
}

}  // namespace
}  // namespace vexa
