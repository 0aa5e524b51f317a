#include "backend/adapter/output_controller_messages.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

using Request = VexawMsgOutputControllerRequest;

TEST(Request, TheShortFormLeavesTheRestAtItsDefaults) {
    const Request request(7, OutputControllerCommand::activate, "name", "file", OutputDocumentMinimized::yes);
    EXPECT_EQ(request.form(), Request::Form::shortForm);
    EXPECT_EQ(request.sequence(), 7);
    EXPECT_EQ(request.command(), OutputControllerCommand::activate);
    EXPECT_EQ(request.first(), "name");
    EXPECT_EQ(request.second(), "file");
    EXPECT_EQ(request.minimized(), OutputDocumentMinimized::yes);
    EXPECT_EQ(request.lock(), OutputDocumentLock::notGiven);
    EXPECT_EQ(request.type(), OutputDocumentType::notGiven);
    EXPECT_EQ(request.password(), "");
    EXPECT_EQ(request.encrypted(), OutputDocumentEncryptPW::notGiven);
    EXPECT_EQ(request.yesNo(), YesNoEnum::no);
}

TEST(Request, TheLongFormCarriesEverything) {
    const Request request(-1, OutputControllerCommand::save, "name", "file", OutputDocumentLock::yes,
                          OutputDocumentMinimized::no, OutputDocumentType::vxw, "secret",
                          OutputDocumentEncryptPW::yes, YesNoEnum::yes);
    EXPECT_EQ(request.form(), Request::Form::longForm);
    EXPECT_EQ(request.sequence(), -1);
    EXPECT_EQ(request.command(), OutputControllerCommand::save);
    EXPECT_EQ(request.first(), "name");
    EXPECT_EQ(request.second(), "file");
    EXPECT_EQ(request.lock(), OutputDocumentLock::yes);
    EXPECT_EQ(request.minimized(), OutputDocumentMinimized::no);
    EXPECT_EQ(request.type(), OutputDocumentType::vxw);
    EXPECT_EQ(request.password(), "secret");
    EXPECT_EQ(request.encrypted(), OutputDocumentEncryptPW::yes);
    EXPECT_EQ(request.yesNo(), YesNoEnum::yes);
}

TEST(Request, KeepsItsOwnTextsAndTakesNullForEmpty) {
    std::string name = "name";
    const Request request(1, OutputControllerCommand::name, name.c_str(), nullptr,
                          OutputDocumentMinimized::notGiven);
    name = "changed";
    EXPECT_EQ(request.first(), "name");
    EXPECT_EQ(request.second(), "");
}

TEST(Request, CommandsHaveTheirCodes) {
    const struct {
        OutputControllerCommand command;
        int code;
    } cases[] = {
        {OutputControllerCommand::activate, 0},    {OutputControllerCommand::close, 1},
        {OutputControllerCommand::display, 2},     {OutputControllerCommand::name, 3},
        {OutputControllerCommand::newDocument, 4}, {OutputControllerCommand::open, 5},
        {OutputControllerCommand::save, 6},
    };
    for (const auto& one : cases) EXPECT_EQ(static_cast<int>(one.command), one.code);
}

TEST(Response, IsMadeEmpty) {
    const VexawMsgOutputControllerResponse response;
    EXPECT_EQ(response.GetErrorSeverity(), 0);
    EXPECT_TRUE(response.GetMsgString().empty());
    EXPECT_TRUE(response.GetArgumentString().empty());
    EXPECT_EQ(response.GetOutputDocumentCount(), 0);
    EXPECT_EQ(response.GetOutputDocumentItem(0), nullptr);
}

TEST(Response, GivesBackWhatWasPutIn) {
    VexawMsgOutputControllerResponse response;
    response.setError(3, "No document named ^1.", "report");
    response.addDocument({"first", false});
    response.addDocument({"", true});
    EXPECT_EQ(response.GetErrorSeverity(), 3);
    EXPECT_STREQ(response.GetMsgString(), "No document named ^1.");
    EXPECT_EQ(response.GetArgumentString().str(), "report");
    ASSERT_EQ(response.GetOutputDocumentCount(), 2);
    EXPECT_EQ(response.GetOutputDocumentItem(0)->name.str(), "first");
    EXPECT_FALSE(response.GetOutputDocumentItem(0)->active);
    EXPECT_TRUE(response.GetOutputDocumentItem(1)->name.empty());
    EXPECT_TRUE(response.GetOutputDocumentItem(1)->active);
    EXPECT_EQ(response.GetOutputDocumentItem(2), nullptr);
    EXPECT_EQ(response.GetOutputDocumentItem(-1), nullptr);
}

}  // namespace
}  // namespace vexa
