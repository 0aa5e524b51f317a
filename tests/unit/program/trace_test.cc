#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "apps/vexa/json_lines.h"
#include "apps/vexa/plain_adapters.h"
#include "apps/vexa/trace_listener.h"
#include "apps/vexa/tracing_adapter.h"

namespace vexa::program {
namespace {

class TraceTest : public ::testing::Test {
  protected:
    TraceTest()
        : path_(std::filesystem::temp_directory_path() / ("vexa-trace-" + std::to_string(::getpid()))) {
        EXPECT_TRUE(lines_.open(path_.string()));
    }
    ~TraceTest() override { std::filesystem::remove(path_); }

    std::string written() {
        lines_.flush();
        std::ostringstream content;
        content << std::ifstream(path_, std::ios::binary).rdbuf();
        return content.str();
    }

    std::filesystem::path path_;
    JsonLines lines_;
    TraceListener listener_{lines_};
};

struct EventCase {
    LogEvent event;
    const char* line;
};

TEST_F(TraceTest, WritesEachEventWithItsKeysInOrder) {
    const EventCase cases[] = {
        {CommandStarted{"OUTPUT NEW", "OUTNEW", {"a.vxs", 3, 1, "x"}},
         R"({"event":"command","name":"OUTPUT NEW","entry":"OUTNEW","line":3})"},
        {CommandFinished{"OUTPUT NEW"}, ""},
        {ProcedureBegan{"Output New", 2}, R"({"event":"procedure","title":"Output New","value":2})"},
        {ProcedureEnded{"Output New"}, R"({"event":"procedureEnd","title":"Output New"})"},
        {LogFlushed{}, R"({"event":"flush"})"},
        {SyntaxErrorReported{"wrong", {"a.vxs", 3, 4, "x"}},
         R"({"event":"syntaxError","message":"wrong","line":3,"column":4})"},
        {SyntaxWarned{"doubtful", {"a.vxs", 3, 4, "x"}}, ""},
        {ParserMessageReported{"InvalidParamValue", {std::string("NAME"), 2.0, 2.5}, "m", false},
         R"({"event":"parserMessage","method":"InvalidParamValue","arguments":["NAME",2,2.5],"message":"m"})"},
        {ErrorReported{2, 3, "^1 no", {"a"}, "a no"},
         R"({"event":"error","show":2,"level":3,"text":"^1 no","arguments":["a"],"message":"a no"})"},
        {NotesAdded{1, "l", "v"}, R"({"event":"notes","level":1,"label":"l","value":"v"})"},
        {TextPrinted{"text"}, ""},
    };
    std::string expected;
    for (const EventCase& traced : cases) {
        listener_.receive(traced.event);
        expected.append(traced.line).append(*traced.line != '\0' ? "\n" : "");
    }
    EXPECT_EQ(written(), expected);
}

TEST_F(TraceTest, WritesTables) {
    auto table = std::make_shared<PivotTable>();
    table->title = "T";
    table->minDataColumnWidth = 150;
    PivotDimension rows;
    rows.label = "R";
    rows.kind = 2;
    rows.position = {0, 1, 1, 1};
    rows.groups = {{"g", -1}};
    rows.categories = {{"0", -1}, {"1", 0}};
    table->dimensions = {rows};
    table->extras = {{{"n"}, true, "RED", "BLUE"}};
    table->cells = {{0, "a", std::nullopt, 0}, {1, "b", std::nullopt, 1}};
    listener_.receive(TableFinished{table});
    EXPECT_EQ(
        written(),
        R"({"event":"table","title":"T","caption":"","subtype":"","flag":false,"titleHidden":false,)"
        R"("minDataColumnWidth":150,"maxDataColumnWidth":null,"dimensions":[{"label":"R","kind":2,)"
        R"("position":[0,1,1,1],"categories":[{"label":"0"},{"label":"1","group":"g"}]}],)"
        R"("cells":[{"category":["0"],"value":"a"},{"category":["1"],"value":"b","notes":["n"],"bold":true,)"
        R"("color":"RED","background":"BLUE"}]})"
        "\n");
}

TEST_F(TraceTest, ReplacesWhatIsNoUtf8) {
    listener_.receive(ProcedureEnded{"a\xFF"});
    EXPECT_EQ(written(), "{\"event\":\"procedureEnd\",\"title\":\"a\xEF\xBF\xBD\"}\n");
}

TEST_F(TraceTest, WritesBothFormsOfRequests) {
    ScriptedAnswers answers;
    answers.send.emplace_back();
    answers.send.back().documents = {{"a", true}};
    ScriptedAdapter inner(answers, true);
    TracingAdapter adapter(inner, lines_);
    EXPECT_TRUE(adapter.isLocalMode());
    VexawMsgOutputControllerResponse first;
    EXPECT_TRUE(adapter.outputController()->Send(
        {1, OutputControllerCommand::newDocument, "a", "", OutputDocumentMinimized::no}, first));
    VexawMsgOutputControllerResponse second;
    EXPECT_TRUE(adapter.outputController()->Send(
        {2, OutputControllerCommand::save, "a", "c:\\x.vxv", OutputDocumentLock::notGiven,
         OutputDocumentMinimized::notGiven, OutputDocumentType::vxw, "p", OutputDocumentEncryptPW::no,
         YesNoEnum::yes},
        second));
    EXPECT_EQ(
        written(),
        R"({"event":"request","form":"short","sequence":1,"command":4,"first":"a","second":"","minimized":0})"
        "\n"
        R"({"event":"response","ok":true,"severity":0,"message":"","argument":"","documents":[{"name":"a","active":true}]})"
        "\n"
        R"({"event":"request","form":"long","sequence":2,"command":6,"first":"a","second":"c:\\x.vxv","minimized":2,)"
        R"("lock":2,"type":1,"password":"p","encrypted":0,"yesNo":1})"
        "\n"
        R"({"event":"response","ok":true,"severity":0,"message":"","argument":"","documents":[]})"
        "\n");
}

TEST_F(TraceTest, WritesExchangesAndTheirExceptions) {
    ScriptedAnswers answers;
    answers.modify.push_back({"", ScriptedExchange::Throw::standard, "broken"});
    answers.exportAnswers.push_back({"<e/>", ScriptedExchange::Throw::nothing, ""});
    ScriptedAdapter inner(answers, false);
    TracingAdapter adapter(inner, lines_);
    EXPECT_THROW(adapter.exchangeModify("<m/>"), std::runtime_error);
    EXPECT_EQ(adapter.exchangeModify("<n/>"), "(0,0,0)");
    EXPECT_EQ(adapter.exchangeExport("<x/>"), "<e/>");
    EXPECT_EQ(
        written(),
        "{\"event\":\"modify\",\"text\":\"<m/>\"}\n{\"event\":\"modifyReply\",\"exception\":\"broken\"}\n"
        "{\"event\":\"modify\",\"text\":\"<n/>\"}\n{\"event\":\"modifyReply\",\"text\":\"(0,0,0)\"}\n"
        "{\"event\":\"export\",\"text\":\"<x/>\"}\n{\"event\":\"exportReply\",\"text\":\"<e/>\"}\n");
}

TEST_F(TraceTest, HasNoControllerWhereTheInnerOneHasNone) {
    NoControllerAdapter inner(false);
    TracingAdapter adapter(inner, lines_);
    EXPECT_EQ(adapter.outputController(), nullptr);
}

TEST(JsonLines, SaysWhyItCannotWrite) {
    JsonLines lines;
    const FileResult result = lines.open("/nowhere/at/all/trace.jsonl");
    EXPECT_FALSE(result);
    EXPECT_FALSE(result.reason.empty());
}

}  // namespace
}  // namespace vexa::program
