#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontend/controller/embedded_adapter.h"
#include "frontend/controller/messages.h"
#include "frontend/controller/store_messages.h"
#include "tests/unit/frontend/requests.h"
#include "tests/unit/strings/installed_texts.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum OutputControllerCommand;

class DocumentRequests : public testing::Test {
  protected:
    Answer send(OutputControllerCommand command, const std::string& name = "",
                OutputDocumentMinimized minimized = OutputDocumentMinimized::no) {
        return sendShort(controller_, command, name, minimized);
    }
    void expectRefused(const Answer& answer, std::string_view message, const std::string& argument) {
        EXPECT_FALSE(answer.ok);
        EXPECT_EQ(answer.severity, 3);
        EXPECT_EQ(answer.message, message);
        EXPECT_EQ(answer.argument, argument);
    }

    EmbeddedController controller_;
};

TEST_F(DocumentRequests, NewMakesTheDocumentActive) {
    EXPECT_TRUE(send(newDocument, "a").ok);
    EXPECT_TRUE(send(newDocument).ok);
    EXPECT_TRUE(send(newDocument).ok);
    EXPECT_THAT(listed(controller_), ElementsAre("a", "", "*"));
    EXPECT_FALSE(controller_.documents().active()->isModified());
}

TEST_F(DocumentRequests, NamesAreTakenWithoutRegardToCase) {
    send(newDocument, "Ärger");
    expectRefused(send(newDocument, "äRGER"), messages::nameTaken, "äRGER");
    send(newDocument, "b");
    expectRefused(send(name, "ärger"), messages::nameTaken, "ärger");
    EXPECT_THAT(listed(controller_), ElementsAre("Ärger", "*b"));
}

TEST_F(DocumentRequests, WordsThatCommandsUseAreNoNames) {
    expectRefused(send(newDocument, "all"), messages::nameReserved, "all");
    expectRefused(send(newDocument, "*"), messages::nameReserved, "*");
    EXPECT_THAT(listed(controller_), IsEmpty());
}

TEST_F(DocumentRequests, NamesOfManyDocumentsAreFoundAtOnce) {
    constexpr int many = 20'000;
    for (int i = 0; i < many; ++i) send(newDocument, "doc" + std::to_string(i));
    ASSERT_EQ(controller_.documents().all().size(), static_cast<std::size_t>(many));
    expectRefused(send(newDocument, "DOC0"), messages::nameTaken, "DOC0");
    EXPECT_TRUE(send(activate, "Doc17").ok);
    send(name, "other");
    EXPECT_EQ(controller_.documents().find("doc17"), nullptr);
    EXPECT_NE(controller_.documents().find("OTHER"), nullptr);
    EXPECT_TRUE(send(newDocument, "doc17").ok);
    EXPECT_TRUE(send(close, "other").ok);
    EXPECT_EQ(controller_.documents().find("other"), nullptr);
}

TEST_F(DocumentRequests, ActivateByNameAndByStar) {
    send(newDocument, "a");
    send(newDocument, "b");
    EXPECT_TRUE(send(activate, "A").ok);
    EXPECT_THAT(listed(controller_), ElementsAre("*a", "b"));
    EXPECT_TRUE(send(activate, "*", OutputDocumentMinimized::yes).ok);
    EXPECT_THAT(listed(controller_), ElementsAre("*a", "b"));
    EXPECT_TRUE(controller_.documents().active()->isMinimized());
}

TEST_F(DocumentRequests, ActivateRefusesWhatIsNotOpen) {
    expectRefused(send(activate, "a"), messages::noDocumentOpen, "");
    expectRefused(send(activate, "*"), messages::noDocumentOpen, "");
    expectRefused(send(activate), messages::nameMissing, "");
    send(newDocument, "a");
    send(newDocument);
    expectRefused(send(activate, "c"), messages::noSuchDocument, "c (open: a, (unnamed))");
    for (const char* each : {"d", "e", "f", "g"}) {
        send(newDocument, each);
    }
    expectRefused(send(activate, "c"), messages::noSuchDocument, "c");
}

TEST_F(DocumentRequests, NameGivesChangesAndTakesAway) {
    expectRefused(send(name, "a"), messages::noDocumentOpen, "");
    send(newDocument);
    EXPECT_TRUE(send(name, "a").ok);
    EXPECT_TRUE(send(name, "A").ok);
    EXPECT_THAT(listed(controller_), ElementsAre("*A"));
    EXPECT_TRUE(controller_.documents().active()->isModified());
    EXPECT_TRUE(send(name).ok);
    EXPECT_THAT(listed(controller_), ElementsAre("*"));
}

TEST_F(DocumentRequests, NameBringsNoDocumentBackFromItsMinimisedState) {
    send(newDocument, "a", OutputDocumentMinimized::yes);
    send(name, "b");
    EXPECT_TRUE(controller_.documents().active()->isMinimized());
    send(activate, "b");
    EXPECT_FALSE(controller_.documents().active()->isMinimized());
}

TEST_F(DocumentRequests, ALockedDocumentKeepsItsName) {
    send(newDocument, "a");
    controller_.documents().active()->setLock({true, {}});
    expectRefused(send(name, "b"), messages::documentLocked, "a");
    EXPECT_THAT(listed(controller_), ElementsAre("*a"));
}

TEST_F(DocumentRequests, ClosingTheActiveOneActivatesTheMostRecentOfTheOthers) {
    for (const char* each : {"a", "b", "c"}) {
        send(newDocument, each);
    }
    send(activate, "a");
    send(activate, "c");
    EXPECT_TRUE(send(close, "*").ok);
    EXPECT_THAT(listed(controller_), ElementsAre("*a", "b"));
    EXPECT_TRUE(send(close, "B").ok);
    EXPECT_TRUE(send(close, "*").ok);
    EXPECT_THAT(listed(controller_), IsEmpty());
}

TEST_F(DocumentRequests, CloseAllAndCloseOfNothing) {
    expectRefused(send(close, "*"), messages::noDocumentOpen, "");
    EXPECT_TRUE(send(close, "ALL").ok);
    send(newDocument, "a");
    send(newDocument, "b");
    expectRefused(send(close, "c"), messages::noSuchDocument, "c (open: a, b)");
    expectRefused(send(close, ""), messages::nameToCloseMissing, "");
    EXPECT_THAT(listed(controller_), ElementsAre("a", "*b"));
    EXPECT_TRUE(send(close, "All").ok);
    EXPECT_THAT(listed(controller_), IsEmpty());
}

// The command looks the message up and shows the argument as it came.
TEST_F(DocumentRequests, OnlyTheArgumentOfARefusalIsTranslated) {
    const InstalledTexts texts{
        {"outctrl.xlf", "^1 (open: ^2)", "^2, nicht ^1"},
        {"outctrl.xlf", "(unnamed)", "(ohne Namen)"},
        {"outctrl.xlf", "No open output document is named ^1. OUTPUT DISPLAY lists the open ones.",
         "Kein ^1."},
    };
    send(newDocument, "a");
    send(newDocument);
    expectRefused(send(close, "c"), messages::noSuchDocument, "a, (ohne Namen), nicht c");
    controller_.documents().active()->setLock({true, {}});
    expectRefused(send(name, "b"), messages::documentLocked, "(ohne Namen)");
}

TEST(StoreMessages, DescribeInTheLanguageOfTheUser) {
    const InstalledTexts texts{
        {"outctrl.xlf", "^1 (format ^2)", "^1 (Format ^2)"},
        {"outctrl.xlf", "^1 (^2)", "^1: ^2"},
        {"outctrl.xlf", "the archive", "das Archiv"},
    };
    EXPECT_EQ(describe({StoreProblem::newerFormat, "2"}, "a.vxv").argument, "a.vxv (Format 2)");
    const StoreMessage damaged = describe({StoreProblem::damaged, "the archive"_text}, "a.vxv");
    EXPECT_EQ(damaged.text.key(), messages::damaged.key());
    EXPECT_EQ(damaged.argument, "a.vxv: das Archiv");
    EXPECT_EQ(describe(StoreProblem::damaged, "a.vxv").argument, "a.vxv");
}

TEST(EmbeddedAdapter, AnswersWhatItCanAndSaysWhatItCannot) {
    EmbeddedAdapter local({true, Carrying::out, {}});
    EmbeddedAdapter remote({});
    EXPECT_TRUE(local.isLocalMode());
    EXPECT_FALSE(remote.isLocalMode());
    // Without an open document, which is what the code says.
    const std::string nothingOpen = local.exchangeExport(
        "<exportSpecification><global/><contents/><text "
        "documentFile=\"/nowhere/a.txt\"/></exportSpecification>");
    EXPECT_NE(nothingOpen.find("success=\"false\" errorCode=\"1\""), std::string::npos) << nothingOpen;
    EXPECT_NE(local.exchangeModify("<modifyOutputObject/>").find("(0,0,0)"), std::string::npos);
    ASSERT_NE(local.outputController(), nullptr);
}

}  // namespace
}  // namespace vexa::frontend
