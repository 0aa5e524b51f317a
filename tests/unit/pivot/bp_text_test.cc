#include "backend/pivot/bp_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "backend/pivot/bp_procedure.h"
#include "backend/strings/dictionary.h"
#include "tests/unit/pivot/collected_log.h"
#include "tests/unit/strings/installed_texts.h"

namespace vexa {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ReplaceMarkers, PutsEachArgumentInThePlaceOfItsMarker) {
    struct Case {
        const char* text;
        std::vector<std::string> arguments;
        const char* expected;
    };
    const Case cases[] = {
        {"", {}, ""},
        {"plain", {"unused"}, "plain"},
        {"^1 is too long.", {"name"}, "name is too long."},
        {"^2 before ^1", {"one", "two"}, "two before one"},
        {"^1 and ^1", {"x"}, "x and x"},
        {"^1 ^2", {"only"}, "only ^2"},
        {"^1", {}, "^1"},
        {"^1 ^2", {"^2", "^1"}, "^2 ^1"},
        {"^10", {"x"}, "x0"},
        {"^0 ^ ^x ^", {"x"}, "^0 ^ ^x ^"},
        {"^^1", {"x"}, "^x"},
        {"[^1]", {""}, "[]"},
        {"^9", {"1", "2", "3", "4", "5", "6", "7", "8", "nine"}, "nine"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(replaceMarkers(each.text, each.arguments), each.expected) << each.text;
}

TEST(BpNumber, WritesACountWithoutLocaleOrSeparators) {
    struct Case {
        double value;
        const char* expected;
    };
    const Case cases[] = {
        {0, "0"},
        {-0.0, "0"},
        {-0.4, "0"},
        {3, "3"},
        {-12, "-12"},
        {2.5, "3"},
        {1234567, "1234567"},
        {9007199254740993.0, "9007199254740992"},
        {std::numeric_limits<double>::infinity(), "."},
        {std::nan(""), "."},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(BpNumber(each.value, BpProcedure::Count).shown(), each.expected) << each.value;
    }
    EXPECT_EQ(BpNumber(1e300, BpProcedure::Count).shown().size(), 301U);
    EXPECT_EQ(BpNumber(2.5, BpProcedure::Count).number(), 2.5);
    EXPECT_EQ(BpString("5", 0).number(), std::nullopt);
}

class TranslatedText : public testing::Test {
  protected:
    const InstalledTexts installed_{{"outnew.xlf", "Name ^1", "Bezeichnung ^1"},
                                    {"outnew.xlf", "inner", "innen"}};
};

TEST_F(TranslatedText, IsLookedUpUnderTheCurrentProcedureWhenItIsShown) {
    const BpString text("Name ^1", 1);
    EXPECT_EQ(text.shown(), "Name ^1");
    const BpProcedure procedure("Output New", 2);
    EXPECT_EQ(text.text(), "Name ^1");
    EXPECT_EQ(text.shown(), "Bezeichnung ^1");
    EXPECT_EQ(BpString("Name ^1", 0).shown(), "Name ^1");
    EXPECT_EQ(BpString("unknown", 1).shown(), "unknown");
}

TEST_F(TranslatedText, TakesItsArgumentsAsTheyAreShown) {
    const BpProcedure procedure("Output New", 2);
    BpComposite message("Name ^1", 1);
    message.Add(BpString("inner", 1)).Add(BpString("inner", 0)).Finish();
    EXPECT_EQ(message.text(), "Name ^1");
    EXPECT_THAT(message.arguments(), ElementsAre("innen", "inner"));
    EXPECT_EQ(message.shown(), "Bezeichnung innen");
}

TEST_F(TranslatedText, LeavesTheProcedureAroundItInPlace) {
    const BpProcedure outer("Output New", 2);
    { const BpProcedure inner("Output Open", 2); }
    EXPECT_EQ(BpString("inner", 1).shown(), "innen");
}

TEST(BpError, PublishesTheTextAsGivenAndTheMessageAsShown) {
    const CollectedLog log;
    BpComposite message("^1 currently not implemented.", 1);
    message.Add(BpString("OUTPUT NEW", 0)).Finish();
    BpError(message, 2, 3);
    BpError(BpString("No output documents are open.", 1), 2, 2);

    const auto errors = log.all<ErrorReported>();
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].show, 2);
    EXPECT_EQ(errors[0].level, 3);
    EXPECT_EQ(errors[0].text, "^1 currently not implemented.");
    EXPECT_THAT(errors[0].arguments, ElementsAre("OUTPUT NEW"));
    EXPECT_EQ(errors[0].message, "OUTPUT NEW currently not implemented.");
    EXPECT_EQ(errors[1].level, 2);
    EXPECT_THAT(errors[1].arguments, IsEmpty());
    EXPECT_EQ(errors[1].message, "No output documents are open.");
}

}  // namespace
}  // namespace vexa
