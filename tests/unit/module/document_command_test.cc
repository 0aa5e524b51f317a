#include "module/frame/document_command.h"

#include <gtest/gtest.h>

#include "module/document/commands.h"
#include "tests/unit/module/command_fixture.h"

namespace vexa {
namespace {

using DocumentCommands = CommandFixture;

constexpr void (*kAllCommands[])() = {outputNew,     outputActivate, outputName, outputClose,
                                      outputDisplay, outputOpen,     outputSave};

TEST_F(DocumentCommands, RequestNumbersCountOnOverCommands) {
    run(outputNew, "NAME=a");
    run(outputClose, "a");
    run(outputDisplay, "");
    ASSERT_EQ(controller.requests.size(), 3U);
    EXPECT_EQ(controller.requests[1].sequence(), controller.requests[0].sequence() + 1);
    EXPECT_EQ(controller.requests[2].sequence(), controller.requests[1].sequence() + 1);
}

TEST_F(DocumentCommands, ProcedureEnclosesEverythingAndTheLogIsFlushedOnce) {
    run(outputNew, "NAME=a");
    ASSERT_EQ(events.size(), 3U);
    EXPECT_EQ(std::get<ProcedureBegan>(events[0]).title, "Output New");
    EXPECT_EQ(std::get<ProcedureBegan>(events[0]).value, 2);
    EXPECT_TRUE(std::holds_alternative<LogFlushed>(events[1]));
    EXPECT_EQ(std::get<ProcedureEnded>(events[2]).title, "Output New");
}

TEST_F(DocumentCommands, MessagesCarryTheCommandsNames) {
    DocumentCommand command({"OUTPUT CLOSE", "Output Close"_text, "Output Title"}, {});
    EXPECT_EQ(command.messages().commandName(), "OUTPUT CLOSE");
    EXPECT_EQ(command.messages().procedureTitle(), "Output Title");
    EXPECT_EQ(all<ProcedureBegan>()[0].title, "Output Close");
}

TEST_F(DocumentCommands, SyntaxErrorFlushesTheLogAndSendsNothing) {
    for (const auto command : kAllCommands) {
        events.clear();
        run(command, "NAME='open");
        EXPECT_TRUE(controller.requests.empty());
        EXPECT_EQ(all<SyntaxErrorReported>().size(), 1U);
        EXPECT_EQ(all<LogFlushed>().size(), 1U);
        EXPECT_EQ(events.size(), 4U) << "nothing of the command's own";
    }
}

TEST_F(DocumentCommands, WithoutControllerOrAdapterEveryCommandSaysSo) {
    adapter.controller = nullptr;
    const char* const arguments[] = {"", "", "", "a", "", "FILE=a", "OUTFILE=a"};
    const char* const names[] = {"OUTPUT NEW",     "OUTPUT ACTIVATE", "OUTPUT NAME", "OUTPUT CLOSE",
                                 "OUTPUT DISPLAY", "OUTPUT OPEN",     "OUTPUT SAVE"};
    for (const bool hasAdapter : {true, false}) {
        installAdapter(hasAdapter ? &adapter : nullptr);
        for (std::size_t i = 0; i < std::size(kAllCommands); ++i) {
            events.clear();
            run(kAllCommands[i], arguments[i]);
            const auto errors = all<ErrorReported>();
            ASSERT_EQ(errors.size(), 1U) << names[i];
            EXPECT_EQ(errors[0].message, std::string(names[i]) + " currently not implemented.");
            EXPECT_EQ(errors[0].level, 3);
            EXPECT_EQ(errors[0].show, 2);
        }
    }
}

TEST_F(DocumentCommands, RefusalIsReportedAtTheControllersSeverity) {
    controller.accept = false;
    controller.answer.setError(4, "No ^1 here.", "a");
    run(outputActivate, "a");
    ASSERT_EQ(all<ErrorReported>().size(), 1U);
    EXPECT_EQ(all<ErrorReported>()[0].level, 4);
    EXPECT_EQ(all<ErrorReported>()[0].message, "No a here.");
    EXPECT_EQ(all<ErrorReported>()[0].arguments, std::vector<std::string>{"a"});
}

TEST_F(DocumentCommands, RefusalWithoutArgumentIsTheMessageAlone) {
    controller.accept = false;
    controller.answer.setError(2, "No ^1 here.", "");
    run(outputNew, "");
    ASSERT_EQ(all<ErrorReported>().size(), 1U);
    EXPECT_EQ(all<ErrorReported>()[0].message, "No ^1 here.");
    EXPECT_TRUE(all<ErrorReported>()[0].arguments.empty());
}

TEST_F(DocumentCommands, RefusedCloseIsNotReported) {
    controller.accept = false;
    controller.answer.setError(3, "No.", "");
    run(outputClose, "a");
    EXPECT_EQ(controller.requests.size(), 1U);
    EXPECT_TRUE(all<ErrorReported>().empty());
}

TEST(RequestSequence, BeginsWithOne) {
    RequestSequence sequence;
    EXPECT_EQ(sequence.next(), 1);
    EXPECT_EQ(sequence.next(), 2);
}

TEST(RequestSequence, BeginsAgainAfterTwoThousandMillion) {
    RequestSequence sequence(1'999'999'999);
    EXPECT_EQ(sequence.next(), 2'000'000'000);
    EXPECT_EQ(sequence.next(), 1);
    EXPECT_EQ(sequence.next(), 2);
}

}  // namespace
}  // namespace vexa
