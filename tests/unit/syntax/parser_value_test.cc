// Every form of a parameter's value: what it takes, what it refuses, with which words and where.

#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "tests/unit/syntax/example_grammars.h"
#include "tests/unit/syntax/parse_picture.h"

namespace vexa {
namespace {

using Spec = UPSpecTypes::ParamSpec;
using Brackets = UPSpecTypes::BracketOptions;
using Bound = UPSpecTypes::BoundaryOption;

struct ValueCase {
    ParamDescriptor parameter;
    std::string text;
    std::string outcome;
};

void PrintTo(const ValueCase& each, std::ostream* out) { *out << each.text; }

class ValueTest : public testing::TestWithParam<ValueCase> {};

TEST_P(ValueTest, IsTakenOrRefused) {
    EXPECT_EQ(parsed(grammarOf(GetParam().parameter), GetParam().text), GetParam().outcome);
}

ParamDescriptor p(Spec spec, Brackets brackets = Brackets::none) {
    return {"P", spec, false, true, brackets};
}

ParamDescriptor yesNo(Spec spec) { return p(spec).addStringValue("YES").addStringValue("NO"); }

ParamDescriptor bounded(Spec spec, Bound lower, Bound upper) {
    return p(spec).setLowerBoundary(1, lower).setUpperBoundary(10, upper);
}

INSTANTIATE_TEST_SUITE_P(Keyword, ValueTest,
                         testing::Values(ValueCase{p(Spec::keyword), "p", "{P}"},
                                         ValueCase{
                                             p(Spec::keyword), "P=1",
                                             "2: P takes no value. Leave out \"=\" and what follows it."}));

const std::string kIgnored = " The value is ignored.";
const std::string kOneText = ": P takes one quoted text or one word.";

ParamDescriptor oneText() { return p(Spec::tokens).readOnly(UPSpecTypes::ReadValue::text); }

INSTANTIATE_TEST_SUITE_P(
    ReadAsOneText, ValueTest,
    testing::Values(
        ValueCase{oneText(), "P=a", "{P=a}"}, ValueCase{oneText(), "P='a b'", "{P='a b'}"},
        ValueCase{oneText(), "P=''", "{P=''}"}, ValueCase{oneText(), "P=all", "{P=all}"},
        ValueCase{oneText(), "P=", "{P}; warned at 3: P needs a value: one quoted text or one word."},
        ValueCase{oneText(), "P=5", "{P=5}; warned at 3" + kOneText + " Found \"5\"." + kIgnored},
        ValueCase{oneText(), "P=*", "{P=*}; warned at 3" + kOneText + " Found \"*\"." + kIgnored},
        ValueCase{oneText(), "P=(a)", "{P=( a )}; warned at 3" + kOneText + " Found \"(\"." + kIgnored},
        ValueCase{oneText(), "P=ALL all",
                  "{P=ALL all}; warned at 7" + kOneText +
                      " Only one can be given; found \"all\" after the first." + kIgnored},
        ValueCase{oneText(), "P='a' b c",
                  "{P='a' b c}; warned at 7" + kOneText +
                      " Only one can be given; found \"b\" after the first." + kIgnored}));

const std::string kUnquoted = " Without quotes, this word is not taken as text.";

ParamDescriptor readOnly(UPSpecTypes::ReadValue what) { return p(Spec::literalOrWord).readOnly(what); }

INSTANTIATE_TEST_SUITE_P(
    ReadOnly, ValueTest,
    testing::Values(
        ValueCase{readOnly(UPSpecTypes::ReadValue::textButAll), "P=a", "{P=a}"},
        ValueCase{readOnly(UPSpecTypes::ReadValue::textButAll), "P='ALL'", "{P='ALL'}"},
        ValueCase{readOnly(UPSpecTypes::ReadValue::textButAll), "P=ALL",
                  "{P=ALL}; warned at 3" + kOneText + kUnquoted + kIgnored},
        ValueCase{p(Spec::tokens).readOnly(UPSpecTypes::ReadValue::textOrOperator), "P=*", "{P=*}"},
        ValueCase{p(Spec::tokens).readOnly(UPSpecTypes::ReadValue::textOrOperator), "P=all", "{P=all}"},
        ValueCase{p(Spec::tokens).readOnly(UPSpecTypes::ReadValue::textOrOperator), "P=5",
                  "{P=5}; warned at 3" + kOneText + " Found \"5\"." + kIgnored},
        ValueCase{readOnly(UPSpecTypes::ReadValue::quotedTextOrOwnKeyword).addStringValue("NONE"), "P=none",
                  "{P=none}"},
        ValueCase{readOnly(UPSpecTypes::ReadValue::quotedTextOrOwnKeyword).addStringValue("NONE"), "P='a'",
                  "{P='a'}"},
        ValueCase{readOnly(UPSpecTypes::ReadValue::quotedTextOrOwnKeyword).addStringValue("NONE"), "P=a",
                  "{P=a}; warned at 3: P takes one quoted text, or NONE." + kUnquoted + kIgnored}));

INSTANTIATE_TEST_SUITE_P(
    FreeTokens, ValueTest,
    testing::Values(
        ValueCase{p(Spec::tokens), "P=a 'b' 3, *", "{P=a 'b' 3 , *}"}, ValueCase{p(Spec::tokens), "P", "{P}"},
        ValueCase{p(Spec::tokens), "P=", "{P}"}, ValueCase{p(Spec::tokens), "P=P", "{P=P}"},
        ValueCase{p(Spec::tokens), "P=('a' 'P')", "{P=( 'a' 'P' )}"},
        ValueCase{p(Spec::tokens), "P(a P b)", "{P=( a P b )}"},
        ValueCase{p(Spec::tokens), "P=[a (b]", "{P=[ a ( b ]}"},
        ValueCase{p(Spec::tokens), "P=[a (b", "{P=[ a ( b}"}, ValueCase{p(Spec::tokens), "P=)]", "{P=) ]}"},
        ValueCase{p(Spec::tokens), "P=(a/b)", "{P=( a / b )}"},
        ValueCase{p(Spec::tokens), "P=a P=b", "5: P is given twice; it can be given once in TRY."},
        ValueCase{p(Spec::tokens), "P=/tmp/x",
                  "4: Found \"tmp\" where a subcommand would be, but TRY has none. If \"/\" is part of a "
                  "file name, put the name in quotes."},
        ValueCase{p(Spec::tokens), "P='x' /", "7: The name of a subcommand must follow \"/\"."},
        ValueCase{p(Spec::tokens), "P='x' / 5",
                  "9: The name of a subcommand must follow \"/\". Found \"5\". If this is a file name, put "
                  "it in quotes."}));

INSTANTIATE_TEST_SUITE_P(
    Word, ValueTest,
    testing::Values(
        ValueCase{yesNo(Spec::word), "P=yes", "{P=yes}"}, ValueCase{yesNo(Spec::word), "P NO", "{P=NO}"},
        ValueCase{yesNo(Spec::word), "P=YSE", "3: P takes YES or NO. Found \"YSE\". Did you mean YES?"},
        ValueCase{yesNo(Spec::word), "P='YES'", "3: P takes YES or NO. Found \"'YES'\"."},
        ValueCase{yesNo(Spec::word), "P=1", "3: P takes YES or NO. Found \"1\"."},
        ValueCase{yesNo(Spec::word), "P=(YES)", "3: P takes YES or NO. Found \"(\"."},
        ValueCase{yesNo(Spec::word), "P", "2: P needs a value: YES or NO."},
        ValueCase{yesNo(Spec::word), "P=", "3: P needs a value: YES or NO."},
        ValueCase{yesNo(Spec::word), "P=YES 1",
                  "7: P takes YES or NO. Only one can be given; found \"1\" after the first."},
        ValueCase{p(Spec::word), "P=any.1", "{P=any.1}"}, ValueCase{p(Spec::word), "P='a b'", "{P='a b'}"},
        ValueCase{p(Spec::word), "P=ALL", "{P=ALL}"},
        ValueCase{p(Spec::word), "P=5", "3: P takes one word or one quoted text. Found \"5\"."},
        ValueCase{p(Spec::word), "P=*", "3: P takes one word or one quoted text. Found \"*\"."},
        ValueCase{yesNo(Spec::word).checkedByCommand(), "P=OTHER", "{P=OTHER}"},
        ValueCase{yesNo(Spec::word).checkedByCommand(), "P=5", "{P=5}"},
        ValueCase{yesNo(Spec::word).checkedByCommand(), "P=*", "{P=*}"},
        ValueCase{yesNo(Spec::word).checkedByCommand(), "P=(1 2)", "{P=( 1 2 )}"},
        ValueCase{yesNo(Spec::word).checkedByCommand(), "P", "2: P needs a value: YES or NO."}));

INSTANTIATE_TEST_SUITE_P(LiteralOrWord, ValueTest,
                         testing::Values(ValueCase{p(Spec::literalOrWord), "P='a'", "{P='a'}"},
                                         ValueCase{p(Spec::literalOrWord), "P'a'", "{P='a'}"},
                                         ValueCase{p(Spec::literalOrWord), "P=F8.2", "{P=F8.2}"},
                                         ValueCase{p(Spec::literalOrWord), "P=''", "{P=''}"},
                                         ValueCase{p(Spec::literalOrWord), "P=8",
                                                   "3: P takes one quoted text or one word. Found \"8\"."},
                                         ValueCase{p(Spec::literalOrWord).addStringValue("NONE"), "P=abc",
                                                   "{P=abc}"},
                                         ValueCase{p(Spec::literalOrWord).addStringValue("NONE"), "P=8",
                                                   "3: P takes one quoted text, or NONE. Found \"8\"."}));

INSTANTIATE_TEST_SUITE_P(
    Lists, ValueTest,
    testing::Values(
        ValueCase{yesNo(Spec::words), "P=YES no", "{P=YES no}"},
        ValueCase{yesNo(Spec::words), "P=YES, NO", "{P=YES NO}"},
        ValueCase{yesNo(Spec::words), "P=YES MAYBE", "7: P takes one or more of YES or NO. Found \"MAYBE\"."},
        ValueCase{yesNo(Spec::words), "P=,", "3: P needs a value: one or more of YES or NO."},
        ValueCase{yesNo(Spec::words).checkedByCommand(), "P=MAYBE 'no'", "{P=MAYBE 'no'}"},
        ValueCase{yesNo(Spec::words).checkedByCommand(), "P=MAYBE 5",
                  "9: P takes one or more of YES or NO. Found \"5\"."},
        ValueCase{p(Spec::literals), "P='a' 'b','c'", "{P='a' 'b' 'c'}"},
        ValueCase{p(Spec::literals), "P='a' b", "7: P takes one or more quoted texts. Found \"b\"."},
        ValueCase{p(Spec::numbers), "P=1, 2.5 -3", "10: P takes one or more numbers. Found \"-\"."},
        ValueCase{p(Spec::numbers), "P=1, 2.5, -3", "{P=1 2.5 -3}"},
        ValueCase{p(Spec::numbers), "P=1 a", "5: P takes one or more numbers. Found \"a\"."}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, ValueTest,
    testing::Values(
        ValueCase{p(Spec::number), "P=2.5", "{P=2.5}"}, ValueCase{p(Spec::number), "P=-2.5", "{P=-2.5}"},
        ValueCase{p(Spec::number), "P=x", "3: P takes a number. Found \"x\"."},
        ValueCase{p(Spec::number), "P='5'", "3: P takes a number. Found \"'5'\"."},
        ValueCase{p(Spec::number), "P=1e999", "3: P takes a number. Found \"1e999\"."},
        ValueCase{p(Spec::number).checkedByCommand(), "P=x", "{P=x}"},
        ValueCase{p(Spec::number).checkedByCommand(), "P='x'", "{P='x'}"},
        ValueCase{bounded(Spec::number, Bound::inclusive, Bound::inclusive), "P=1", "{P=1}"},
        ValueCase{bounded(Spec::number, Bound::inclusive, Bound::inclusive), "P=10", "{P=10}"},
        ValueCase{bounded(Spec::number, Bound::inclusive, Bound::inclusive), "P=0.99",
                  "3: P takes a number of at least 1 and at most 10. Found \"0.99\"."},
        ValueCase{bounded(Spec::number, Bound::inclusive, Bound::inclusive), "P=10.01",
                  "3: P takes a number of at least 1 and at most 10. Found \"10.01\"."},
        ValueCase{bounded(Spec::number, Bound::exclusive, Bound::exclusive), "P=1",
                  "3: P takes a number above 1 and below 10. Found \"1\"."},
        ValueCase{bounded(Spec::number, Bound::exclusive, Bound::exclusive), "P=10",
                  "3: P takes a number above 1 and below 10. Found \"10\"."},
        ValueCase{bounded(Spec::number, Bound::exclusive, Bound::exclusive), "P=1.01", "{P=1.01}"},
        ValueCase{bounded(Spec::number, Bound::inclusive, Bound::inclusive).checkedByCommand(), "P=11",
                  "{P=11}"},
        ValueCase{p(Spec::number).setUpperBoundary(5, Bound::inclusive), "P=6",
                  "3: P takes a number of at most 5. Found \"6\"."},
        ValueCase{bounded(Spec::numbers, Bound::inclusive, Bound::inclusive), "P=2 11",
                  "5: P takes one or more numbers, each of at least 1 and at most 10. Found \"11\"."},
        ValueCase{p(Spec::integer), "P=7", "{P=7}"},
        ValueCase{p(Spec::integer), "P=7.5", "3: P takes a whole number. Found \"7.5\"."},
        ValueCase{p(Spec::integer), "P=99999999999", "3: P takes a whole number. Found \"99999999999\"."},
        ValueCase{p(Spec::integer).addStringValue("AUTOFIT"), "P=autofit", "{P=autofit}"},
        ValueCase{p(Spec::integer).addStringValue("AUTOFIT"), "P=AUTOFT",
                  "3: P takes a whole number, or AUTOFIT. Found \"AUTOFT\". Did you mean AUTOFIT?"}));

INSTANTIATE_TEST_SUITE_P(
    BracketOptions, ValueTest,
    testing::Values(ValueCase{p(Spec::literals), "P=['a']",
                              "3: P takes one or more quoted texts. Found \"[\"."},
                    ValueCase{p(Spec::literals, Brackets::optional), "P=['a', 'b']", "{P='a' 'b'}"},
                    ValueCase{p(Spec::literals, Brackets::optional), "P 'a' 'b'", "{P='a' 'b'}"},
                    ValueCase{p(Spec::literals, Brackets::required), "P['a']", "{P='a'}"},
                    ValueCase{p(Spec::literals, Brackets::required), "P='a'",
                              "3: Write the value of P in square brackets: P=[...]. Found \"'a'\"."},
                    ValueCase{p(Spec::literals, Brackets::required), "P",
                              "2: Write the value of P in square brackets: P=[...]."},
                    ValueCase{p(Spec::literals, Brackets::required).checkedByCommand(), "P='a'", "{P='a'}"},
                    ValueCase{p(Spec::literals, Brackets::required), "P=['a' 'b'",
                              "3: The list of P is not closed: \"]\" is missing."},
                    ValueCase{p(Spec::literals, Brackets::required), "P=[]",
                              "3: P needs a value: one or more quoted texts."},
                    ValueCase{p(Spec::tokens, Brackets::required), "P=[]", "{P}"},
                    ValueCase{p(Spec::tokens, Brackets::required), "P=[a [b] (c) P]", "{P=a [ b ] ( c ) P}"},
                    ValueCase{p(Spec::tokens), "P=[a]", "{P=[ a ]}"},
                    ValueCase{p(Spec::number, Brackets::optional), "P=[1 2]",
                              "6: P takes a number. Only one can be given; found \"2\" after the first."}));

ParamDescriptor qualified(Spec spec, Spec qualifierSpec) {
    return p(spec)
        .addQualifDesc({"FIRST", qualifierSpec, false, true})
        .addQualifDesc({"SECOND", qualifierSpec, false, true})
        .addQualifDesc({"BARE", Spec::keyword, false, true})
        .addStringValue("LAST");
}

constexpr const char* kLists =
    "P takes LAST, FIRST, SECOND or BARE, each with a list in parentheses, such as FIRST('...').";

INSTANTIATE_TEST_SUITE_P(
    QualifierList, ValueTest,
    testing::Values(
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P(FIRST=2, SECOND=3)",
                  "{P=( FIRST = 2 , SECOND = 3 )}"},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P=(first=2)", "{P=( first = 2 )}"},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P", "{P}"},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P()", "{P=( )}"},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P=()", "{P=( )}"},
        ValueCase{
            qualified(Spec::qualifierList, Spec::integer), "P=5",
            "3: P takes a list in parentheses, such as (FIRST=...), of LAST, FIRST, SECOND or BARE. Found "
            "\"5\"."},
        ValueCase{
            qualified(Spec::qualifierList, Spec::integer).checkedByCommand(), "P(5)",
            "3: P takes a list in parentheses, such as (FIRST=...), of LAST, FIRST, SECOND or BARE. Found "
            "\"5\"."},
        ValueCase{
            qualified(Spec::qualifierList, Spec::integer), "P((FIRST=2))",
            "3: P takes a list in parentheses, such as (FIRST=...), of LAST, FIRST, SECOND or BARE. Found "
            "\"(\"."},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P(FIRST=2",
                  "2: The list of P is not closed: \")\" is missing."},
        ValueCase{
            qualified(Spec::qualifierList, Spec::integer), "P(FRIST=2)",
            "3: P takes a list in parentheses, such as (FIRST=...), of LAST, FIRST, SECOND or BARE. Found "
            "\"FRIST\". Did you mean FIRST?"},
        ValueCase{qualified(Spec::qualifierList, Spec::integer).checkedByCommand(),
                  "P(FRIST=2 FIRST=x SECOND)", "{P=( FRIST = 2 FIRST = x SECOND )}"},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P(FIRST=x)",
                  "9: FIRST takes a whole number. Found \"x\"."},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P(FIRST SECOND=1)",
                  "3: FIRST needs a value: a whole number."},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P(BARE LAST)", "{P=( BARE LAST )}"},
        ValueCase{qualified(Spec::qualifierList, Spec::integer), "P(BARE=1)", "3: BARE takes no value."},
        ValueCase{p(Spec::qualifierList)
                      .addQualifDesc(ParamDescriptor("OWN", Spec::integer, false, true).checkedByCommand())
                      .addQualifDesc({"FIRST", Spec::integer, false, true}),
                  "P(OWN=x FIRST=x)", "15: FIRST takes a whole number. Found \"x\"."}));

INSTANTIATE_TEST_SUITE_P(
    QualifiedValue, ValueTest,
    testing::Values(
        ValueCase{qualified(Spec::qualifiedValue, Spec::numbers), "P=FIRST(1, -2)", "{P=FIRST ( 1 , -2 )}"},
        ValueCase{qualified(Spec::qualifiedValue, Spec::numbers), "P FIRST 1 2", "{P=FIRST 1 2}"},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=FIRST 1 2",
                  "11: FIRST takes a number. Only one can be given; found \"2\" after the first."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=BARE", "{P=BARE}"},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=last", "{P=last}"},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=last(1)", "3: LAST takes no value."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=FIRST",
                  "3: FIRST needs a value: a number."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=FIRST()",
                  "3: FIRST needs a value: a number."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=5",
                  "3: P takes LAST, FIRST, SECOND or BARE with its value, such as FIRST(...). Found \"5\"."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=FIRST=1",
                  "8: P takes LAST, FIRST, SECOND or BARE with its value, such as FIRST(...). Found \"=\"."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=FIRST(1) 2",
                  "12: P takes LAST, FIRST, SECOND or BARE with its value, such as FIRST(...). Found \"2\"."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=(5)",
                  "3: P takes LAST, FIRST, SECOND or BARE with its value, such as FIRST(...). Found \"(\"."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=(5",
                  "3: The list of P is not closed: \")\" is missing."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=((5) 6",
                  "3: The list of P is not closed: \")\" is missing."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number).checkedByCommand(), "P=(5)", "{P=( 5 )}"},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number).checkedByCommand(), "P=(5",
                  "3: The list of P is not closed: \")\" is missing."},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number), "P=FIRST(1",
                  "8: The list of P is not closed: \")\" is missing."},
        ValueCase{
            qualified(Spec::qualifiedValue, Spec::number), "P=SECON(1)",
            "3: P takes LAST, FIRST, SECOND or BARE with its value, such as FIRST(...). Found \"SECON\". Did "
            "you mean SECOND?"},
        ValueCase{qualified(Spec::qualifiedValue, Spec::number).checkedByCommand(), "P=5", "{P=5}"},
        ValueCase{qualified(Spec::qualifiedValue, Spec::tokens), "P=FIRST()", "{P=FIRST ( )}"}));

INSTANTIATE_TEST_SUITE_P(
    QualifiedLists, ValueTest,
    testing::Values(ValueCase{qualified(Spec::qualifiedLists, Spec::literals), "P=FIRST('a' 'b') SECOND('c')",
                              "{P=FIRST ( 'a' 'b' ) SECOND ( 'c' )}"},
                    ValueCase{qualified(Spec::qualifiedLists, Spec::literals), "P=FIRST(a)",
                              "9: FIRST takes one or more quoted texts. Found \"a\"."},
                    ValueCase{qualified(Spec::qualifiedLists, Spec::literals), "P=FIRST 'a'",
                              std::string("9: ") + kLists + " Found \"'a'\"."},
                    ValueCase{qualified(Spec::qualifiedLists, Spec::literals), "P=FIRST",
                              std::string("8: ") + kLists},
                    ValueCase{qualified(Spec::qualifiedLists, Spec::literals), "P=THIRD('a')",
                              std::string("3: ") + kLists + " Found \"THIRD\"."},
                    ValueCase{qualified(Spec::qualifiedLists, Spec::literals), "P=(FIRST('a'))",
                              std::string("3: ") + kLists + " Found \"(\"."},
                    ValueCase{qualified(Spec::qualifiedLists, Spec::literals), "P=FIRST('a') ('b')",
                              std::string("14: ") + kLists + " Found \"(\"."},
                    ValueCase{qualified(Spec::qualifiedLists, Spec::literals), "P=FIRST('a' 'b'",
                              "8: The list of P is not closed: \")\" is missing."},
                    ValueCase{qualified(Spec::qualifiedLists, Spec::literals).checkedByCommand(),
                              "P=THIRD('a')", "{P=THIRD ( 'a' )}"}));

TEST(FreeQualifiers, KeepTheirBoundsAndNothingElse) {
    const ParamDescriptor top =
        p(Spec::tokens)
            .addQualifDesc(
                ParamDescriptor("TOP", Spec::integer, false, true).setLowerBoundary(1, Bound::inclusive));
    EXPECT_EQ(parsed(grammarOf(top), "P=TOP(5)"), "{P=TOP ( 5 )}");
    EXPECT_EQ(parsed(grammarOf(top), "P=TOP(x)"), "{P=TOP ( x )}");
    EXPECT_EQ(parsed(grammarOf(top), "P=TOP(1.5)"), "{P=TOP ( 1.5 )}");
    EXPECT_EQ(parsed(grammarOf(top), "P=[> 0]"), "{P=[ > 0 ]}");
    EXPECT_EQ(parsed(grammarOf(top), "P=TOP(0)"), "7: TOP takes a whole number of at least 1. Found \"0\".");
}

TEST(LongValues, AreShownShortened) {
    const std::string long1 = std::string(46, 'x') + "ääää";
    EXPECT_EQ(parsed(grammarOf(yesNo(Spec::word)), "P=" + long1),
              "3: P takes YES or NO. Found \"" + std::string(46, 'x') + "ä...\".");
}

}  // namespace
}  // namespace vexa
