#include "apps/vexa/scripted_answers.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "apps/vexa/plain_adapters.h"
#include "backend/adapter/go_to_caller.h"
#include "tests/unit/strings/installed_texts.h"

namespace vexa::program {
namespace {

using Request = VexawMsgOutputControllerRequest;

ScriptedAnswers readAll(std::string_view content) {
    std::string message;
    std::optional<ScriptedAnswers> answers = readScriptedAnswers(content, "a.jsonl", message);
    EXPECT_TRUE(answers) << message;
    return answers ? *std::move(answers) : ScriptedAnswers();
}

struct WrongCase {
    const char* content;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const WrongCase& value) { return out << value.content; }

class WrongAnswersTest : public ::testing::TestWithParam<WrongCase> {};

TEST_P(WrongAnswersTest, SaysWhatIsWrongAndWhere) {
    std::string message;
    EXPECT_FALSE(readScriptedAnswers(GetParam().content, "a.jsonl", message));
    EXPECT_EQ(message, GetParam().message);
}

const WrongCase kWrongCases[] = {
    {"{", "a.jsonl:1: this is not JSON at byte 2 of the line"},
    {"{\"send\":1e999}", "a.jsonl:1: this line has a number that is too large"},
    {"{}\n\nnonsense", "a.jsonl:3: this is not JSON at byte 2 of the line"},
    {"[]", "a.jsonl:1: a line must be an object in braces, but is of type array"},
    {R"({"sned":{}})", "a.jsonl:1: a line has no key \"sned\"; it takes send, modify or export"},
    {R"({"send":1})", "a.jsonl:1: \"send\" must be an object in braces, but is of type number"},
    {R"({"send":{"ok":1}})", "a.jsonl:1: \"ok\" of \"send\" must be true or false, but is of type number"},
    {R"({"send":{"severity":"3"}})",
     "a.jsonl:1: \"severity\" of \"send\" must be a whole number, but is of type string"},
    {R"({"send":{"severity":2.5}})",
     "a.jsonl:1: \"severity\" of \"send\" must be a whole number, but is of type number"},
    {R"({"send":{"severity":9999999999}})",
     "a.jsonl:1: \"severity\" of \"send\" is a number that is too large"},
    {R"({"send":{"message":null}})",
     "a.jsonl:1: \"message\" of \"send\" must be a text in quotes, but is of type null"},
    {R"({"send":{"documents":{}}})",
     "a.jsonl:1: \"documents\" must be a list in brackets, but is of type object"},
    {R"({"send":{"documents":["a"]}})",
     "a.jsonl:1: a document must be an object in braces, but is of type string"},
    {R"({"send":{"documents":[{"nmae":"a"}]}})",
     "a.jsonl:1: a document has no key \"nmae\"; it takes name or active"},
    {R"({"modify":{"throw":"up"}})",
     "a.jsonl:1: \"throw\" must be \"standard\", \"text\", \"other\" or \"goToCaller\", but is \"up\""},
    {R"({"export":{"answer":""}})",
     "a.jsonl:1: \"export\" has no key \"answer\"; it takes reply, throw or what"},
};

INSTANTIATE_TEST_SUITE_P(Contents, WrongAnswersTest, ::testing::ValuesIn(kWrongCases));

TEST(ScriptedAnswers, ComplainsInTheLanguageOfTheUser) {
    const InstalledTexts texts{
        {"vexaprog.xlf", "a document", "un document"},
        {"vexaprog.xlf", "^1 of ^2 must be true or false, but is of type ^3", "^2 : ^1 (^3) vrai ou faux"},
    };
    std::string message;
    EXPECT_FALSE(readScriptedAnswers(R"({"send":{"documents":[{"active":1}]}})", "a.jsonl", message));
    EXPECT_EQ(message, "a.jsonl:1: un document : \"active\" (number) vrai ou faux");
}

TEST(ScriptedAnswers, KeepsTheOrderOfEachKind) {
    const ScriptedAnswers answers = readAll(
        "{\"send\":{\"message\":\"1\"}}\r\n\n{\"modify\":{\"reply\":\"m\"}}\n{\"send\":{\"message\":\"2\"}}\n"
        "{\"export\":{\"reply\":\"e\"}}");
    ASSERT_EQ(answers.send.size(), 2U);
    EXPECT_EQ(answers.send[0].message, "1");
    EXPECT_EQ(answers.send[1].message, "2");
    EXPECT_TRUE(answers.send[1].ok);
    ASSERT_EQ(answers.modify.size(), 1U);
    EXPECT_EQ(answers.modify[0].reply, "m");
    ASSERT_EQ(answers.exportAnswers.size(), 1U);
    EXPECT_EQ(answers.exportAnswers[0].reply, "e");
}

TEST(ScriptedAnswers, TakesNothingForNothing) {
    EXPECT_TRUE(readAll("").send.empty());
    EXPECT_TRUE(readAll("\n \t\n{}\n").send.empty());
}

TEST(ScriptedAdapter, AnswersRequestsInOrderAndThenAgrees) {
    ScriptedAdapter adapter(readAll(R"({"send":{"ok":false,"severity":2,"message":"^1 no","argument":"a"}})"
                                    "\n"
                                    R"({"send":{"ok":false}})"
                                    "\n"
                                    R"({"send":{"documents":[{"name":"a","active":true},{}]}})"),
                            true);
    EXPECT_TRUE(adapter.isLocalMode());
    const Request request(1, OutputControllerCommand::display, "", "", OutputDocumentMinimized::notGiven);
    VexawMsgOutputControllerResponse first;
    EXPECT_FALSE(adapter.outputController()->Send(request, first));
    EXPECT_EQ(first.GetErrorSeverity(), 2);
    EXPECT_EQ(first.GetMsgString().str(), "^1 no");
    EXPECT_EQ(first.GetArgumentString().str(), "a");
    VexawMsgOutputControllerResponse second;
    EXPECT_FALSE(adapter.outputController()->Send(request, second));
    EXPECT_EQ(second.GetErrorSeverity(), 3);
    VexawMsgOutputControllerResponse third;
    EXPECT_TRUE(adapter.outputController()->Send(request, third));
    ASSERT_EQ(third.GetOutputDocumentCount(), 2);
    EXPECT_EQ(third.GetOutputDocumentItem(0)->name.str(), "a");
    EXPECT_TRUE(third.GetOutputDocumentItem(0)->active);
    EXPECT_TRUE(third.GetOutputDocumentItem(1)->name.empty());
    VexawMsgOutputControllerResponse last;
    EXPECT_TRUE(adapter.outputController()->Send(request, last));
    EXPECT_EQ(last.GetOutputDocumentCount(), 0);
}

TEST(ScriptedAdapter, ThrowsAsTold) {
    ScriptedAdapter adapter(readAll("{\"modify\":{\"throw\":\"standard\",\"what\":\"s\"}}\n"
                                    "{\"modify\":{\"throw\":\"text\",\"what\":\"t\"}}\n"
                                    "{\"modify\":{\"throw\":\"other\"}}\n"
                                    "{\"modify\":{\"throw\":\"goToCaller\"}}\n"),
                            false);
    try {
        adapter.exchangeModify("");
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "s");
    }
    try {
        adapter.exchangeModify("");
        FAIL() << "nothing was thrown";
    } catch (const char* text) {
        EXPECT_STREQ(text, "t");
    }
    EXPECT_THROW(adapter.exchangeModify(""), int);
    EXPECT_THROW(adapter.exchangeModify(""), VexaGoToCaller);
    EXPECT_EQ(adapter.exchangeModify(""), "(0,0,0)");
    EXPECT_EQ(adapter.exchangeExport(""), "");
}

TEST(NoControllerAdapter, HasNoController) {
    NoControllerAdapter adapter(false);
    EXPECT_EQ(adapter.outputController(), nullptr);
    EXPECT_FALSE(adapter.isLocalMode());
    EXPECT_EQ(adapter.exchangeModify(""), "(0,0,0)");
    EXPECT_EQ(adapter.exchangeExport(""), "");
}

}  // namespace
}  // namespace vexa::program
