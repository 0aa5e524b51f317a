// Each report of a refused value: its method and arguments as the trace shows them, and its words.

#include "backend/syntax/parser_message.h"

#include <functional>
#include <ostream>
#include <string>
#include <variant>

#include <gtest/gtest.h>

#include "backend/pivot/output_log.h"

namespace vexa {
namespace {

/// Keeps what was reported as "method(arguments)" and its message.
class ReportCatcher : public LogListener {
  public:
    ReportCatcher() { OutputLog::current().addListener(*this); }
    ~ReportCatcher() override { OutputLog::current().removeListener(*this); }
    ReportCatcher(const ReportCatcher&) = delete;
    ReportCatcher& operator=(const ReportCatcher&) = delete;

    void receive(const LogEvent& event) override {
        if (const auto* const report = std::get_if<ParserMessageReported>(&event)) {
            call = report->method + "(";
            for (const auto& argument : report->arguments) {
                call += call.back() == '(' ? "" : "|";
                const auto* const text = std::get_if<std::string>(&argument);
                call +=
                    text != nullptr ? *text : "#" + std::to_string(std::get<double>(argument)).substr(0, 5);
            }
            call += ")";
            message = report->message;
            warning = report->warning;
        }
    }

    std::string call;
    std::string message;
    bool warning = false;
};

struct MessageCase {
    std::function<void(ParserMessage&)> report;
    std::string call;
    std::string message;
    bool warning = false;
};

void PrintTo(const MessageCase& each, std::ostream* out) { *out << each.call; }

class ParserMessageTest : public testing::TestWithParam<MessageCase> {};

TEST_P(ParserMessageTest, Reports) {
    ParserMessage messages;
    messages.SetCommandName("TRY");
    messages.SetProcedureTitle("Try");
    const ReportCatcher catcher;
    GetParam().report(messages);
    EXPECT_EQ(catcher.call, GetParam().call);
    EXPECT_EQ(catcher.message, "TRY: " + GetParam().message);
    EXPECT_EQ(catcher.warning, GetParam().warning);
}

using Messages = ParserMessage;

INSTANTIATE_TEST_SUITE_P(
    Methods, ParserMessageTest,
    testing::Values(
        MessageCase{[](Messages& m) { m.WrongValueType("NAME", ""); }, "WrongValueType(NAME|)",
                    "The value of NAME is not of the kind that it takes."},
        MessageCase{[](Messages& m) { m.WrongValueType("P", "S"); }, "WrongValueType(P|S)",
                    "The value of P in subcommand S is not of the kind that it takes."},
        MessageCase{[](Messages& m) { m.WrongValueType("FILE", GivenTokens{"a b"}); },
                    "WrongValueType(FILE|a b)", "FILE takes one file name, in quotes. Found: a b"},
        MessageCase{[](Messages& m) { m.WrongValueType("FILE", GivenTokens{""}); }, "WrongValueType(FILE|)",
                    "FILE takes one file name, in quotes. Nothing was given."},
        MessageCase{[](Messages& m) { m.InvalidParam("SIZE", "OBJECTPROPERTIES"); },
                    "InvalidParam(SIZE|OBJECTPROPERTIES)",
                    "Subcommand OBJECTPROPERTIES: SIZE is not valid here."},
        MessageCase{[](Messages& m) { m.InvalidParamValue("FOO", "EXCEPT", "SELECT"); },
                    "InvalidParamValue(FOO|EXCEPT|SELECT)",
                    "\"FOO\" is not a valid value of EXCEPT in subcommand SELECT."},
        MessageCase{[](Messages& m) { m.InvalidParamValue(0.5, "COLUMNWIDTH", "TABLECELLS"); },
                    "InvalidParamValue(#0.500|COLUMNWIDTH|TABLECELLS)",
                    "0.5 is not a valid value of COLUMNWIDTH in subcommand TABLECELLS."},
        MessageCase{[](Messages& m) { m.ParamExclusive("A", "B", "SORT"); }, "ParamExclusive(A|B|SORT)",
                    "A and B cannot both be given in SORT."},
        MessageCase{[](Messages& m) { m.ParamNeedParam("SHEET", "OPERATION", "MODIFYSHEET"); },
                    "ParamNeedParam(SHEET|OPERATION|MODIFYSHEET)",
                    "SHEET is needed where OPERATION is MODIFYSHEET."},
        MessageCase{
            [](Messages& m) { m.ParamNeedInteger("COLPOSITION", "TABLE"); },
            "ParamNeedInteger(COLPOSITION|TABLE)",
            "Subcommand TABLE: COLPOSITION needs a whole number. Positions and instances count from 1."},
        MessageCase{[](Messages& m) { m.ParamNeedIntegerList("POSITION", "TABLECELLS"); },
                    "ParamNeedIntegerList(POSITION|TABLECELLS)",
                    "Subcommand TABLECELLS: POSITION needs a list of whole numbers, each 1 or greater."},
        MessageCase{[](Messages& m) { m.ParamRequiredForSubCom("SELECT", "TABLECELLS"); },
                    "ParamRequiredForSubCom(SELECT|TABLECELLS)", "Subcommand TABLECELLS needs SELECT."},
        MessageCase{[](Messages& m) { m.ParamNoSubCom("FOO"); }, "ParamNoSubCom(FOO)",
                    "FOO is not known here."},
        MessageCase{[](Messages& m) { m.ParenRequired("URL"); }, "ParenRequired(URL)",
                    "URL: a list in parentheses is needed, such as (1 2)."},
        MessageCase{
            [](Messages& m) { m.SquareBracketRequired("SELECT", "TABLECELLS"); },
            "SquareBracketRequired(SELECT|TABLECELLS)",
            "Subcommand TABLECELLS: write the value of SELECT in square brackets, as in SELECT=[...]."},
        MessageCase{[](Messages& m) {
                        m.SubComRequired({"DOC", "PDF", "XLS"});
                    },
                    "SubComRequired(DOC|PDF|XLS)",
                    "At least one of these subcommands is needed: DOC, PDF or XLS."},
        MessageCase{[](Messages& m) { m.IgnoredParamValue("COLOR", "", "Red"); },
                    "IgnoredParamValue(COLOR||Red)", "\"Red\" is not a valid value of COLOR and is ignored.",
                    true},
        MessageCase{[](Messages& m) { m.ParamValueBreakBdry(5, 10, 1, 1000, 1, "WIDTH", ""); },
                    "ParamValueBreakBdry(#5.000|#10.00|#1.000|#1000.|#1.000|WIDTH|)",
                    "WIDTH takes a number from 10 to 1000. Found 5."},
        MessageCase{[](Messages& m) { m.FileNameInvalid("a.tlk"); }, "FileNameInvalid(a.tlk)",
                    "There is no readable file \"a.tlk\"."},
        MessageCase{[](Messages& m) {
                        m.GenericError("^1 and ^2 in ^3 of ^4"_text, {"a", "b", "c", "d"});
                    },
                    "GenericError(^1 and ^2 in ^3 of ^4|a|b|c|d)", "a and b in c of d"},
        MessageCase{[](Messages& m) { m.GenericWarning("Only ^1"_text, {"a"}); }, "GenericWarning(Only ^1|a)",
                    "Only a", true}));

TEST(ParserMessageWithoutName, ShowsTheMessageAlone) {
    const ReportCatcher catcher;
    ParserMessage().ParamNoSubCom("X");
    EXPECT_EQ(catcher.message, "X is not known here.");
}

}  // namespace
}  // namespace vexa
