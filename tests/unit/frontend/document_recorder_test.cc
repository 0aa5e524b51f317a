#include "frontend/controller/document_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/strings/installed_texts.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

std::shared_ptr<const PivotTable> tableTitled(const std::string& title) {
    PivotTable table;
    table.title = title;
    table.subtype = title + " Subtype";
    return std::make_shared<const PivotTable>(table);
}

class Recorder : public testing::Test {
  protected:
    ViewerDocument& open() { return documents_.add(std::make_unique<ViewerDocument>()); }
    void receive(const LogEvent& event) { recorder_.receive(event); }
    static const std::vector<ViewerItem>& under(const ViewerItem& item) {
        return std::get<HeadingContent>(item.content).children;
    }

    OpenDocuments documents_;
    std::vector<std::string> lockedReports_;
    DocumentRecorder recorder_{documents_,
                               [this](const std::string& name) { lockedReports_.push_back(name); }};
};

TEST_F(Recorder, PutsARunUnderAHeading) {
    ViewerDocument& document = open();
    receive(CommandStarted{"OUTPUT DISPLAY", "OUTDISP", {}});
    receive(ProcedureBegan{"Output Display", 2});
    EXPECT_TRUE(document.items().empty());
    receive(ErrorReported{2, 2, "^1", {"x"}, "x"});
    receive(TableFinished{tableTitled("Output Document")});
    receive(ProcedureEnded{"Output Display"});
    receive(CommandFinished{"OUTPUT DISPLAY"});
    receive(TextPrinted{"printed"});

    ASSERT_EQ(document.items().size(), 2U);
    const ViewerItem& heading = document.items()[0];
    EXPECT_EQ(heading.label, "Output Display");
    EXPECT_EQ(heading.command, "OUTPUT DISPLAY");
    ASSERT_EQ(under(heading).size(), 2U);
    EXPECT_EQ(under(heading)[0].content, ItemContent(MessageContent{2, "x"}));
    EXPECT_EQ(under(heading)[0].label, "Warning");
    EXPECT_EQ(under(heading)[1].label, "Output Document");
    EXPECT_EQ(under(heading)[1].subtype, "Output Document Subtype");
    EXPECT_EQ(document.items()[1].content, ItemContent(TextContent{"printed"}));
    EXPECT_EQ(document.items()[1].command, "");
    EXPECT_TRUE(document.isModified());
}

TEST_F(Recorder, LabelsItemsInTheLanguageOfTheSession) {
    const InstalledTexts texts{{"outctrl.xlf", "Error", "Fehler"},
                               {"outctrl.xlf", "Warning", "Warnung"},
                               {"outctrl.xlf", "Message", "Meldung"},
                               {"outctrl.xlf", "Notes", "Notizen"},
                               {"outctrl.xlf", "Text", "Reiner Text"}};
    const ViewerDocument& document = open();
    for (const int level : {3, 2, 1}) receive(ErrorReported{2, level, "", {}, "x"});
    receive(NotesAdded{1, "label", "value"});
    receive(TextPrinted{"printed"});
    std::vector<std::string> labels;
    for (const ViewerItem& item : document.items()) labels.push_back(item.label);
    EXPECT_THAT(labels, ElementsAre("Fehler", "Warnung", "Meldung", "Notizen", "Reiner Text"));
}

TEST_F(Recorder, GathersTheNotesOfARun) {
    ViewerDocument& document = open();
    for (const char* run : {"One", "Two"}) {
        receive(ProcedureBegan{run, 2});
        receive(NotesAdded{1, "Label", "Value"});
        receive(NotesAdded{1, "Other", run});
        receive(ProcedureEnded{run});
    }
    ASSERT_EQ(document.items().size(), 2U);
    ASSERT_EQ(under(document.items()[1]).size(), 1U);
    EXPECT_EQ(under(document.items()[1])[0].content,
              ItemContent(NotesContent{{{1, "Label", "Value"}, {1, "Other", "Two"}}}));
}

TEST_F(Recorder, NestsTheHeadingsOfNestedRuns) {
    ViewerDocument& document = open();
    receive(ProcedureBegan{"Outer", 2});
    receive(ProcedureBegan{"Inner", 2});
    receive(TextPrinted{"deep"});
    receive(ProcedureEnded{"Inner"});
    receive(TextPrinted{"shallow"});
    ASSERT_EQ(document.items().size(), 1U);
    ASSERT_EQ(under(document.items()[0]).size(), 2U);
    EXPECT_EQ(under(document.items()[0])[0].label, "Inner");
    EXPECT_EQ(under(document.items()[0])[1].content, ItemContent(TextContent{"shallow"}));
}

TEST_F(Recorder, ARunThatChangesTheActiveDocumentGoesOnInTheNewOne) {
    const ViewerDocument& first = open();
    receive(ProcedureBegan{"Output New", 2});
    receive(TextPrinted{"before"});
    const ViewerDocument& second = open();
    receive(TextPrinted{"after"});
    ASSERT_EQ(first.items().size(), 1U);
    EXPECT_EQ(under(first.items()[0]).size(), 1U);
    ASSERT_EQ(second.items().size(), 1U);
    EXPECT_EQ(second.items()[0].label, "Output New");
}

TEST_F(Recorder, OnlyATableMakesADocument) {
    receive(ProcedureBegan{"Output Close", 2});
    receive(ErrorReported{2, 3, "bad", {}, "bad"});
    receive(NotesAdded{1, "a", "b"});
    receive(TextPrinted{"text"});
    receive(SyntaxErrorReported{"syntax", {}});
    EXPECT_TRUE(documents_.all().empty());
    receive(TableFinished{tableTitled("T")});
    ASSERT_EQ(documents_.all().size(), 1U);
    EXPECT_EQ(under(documents_.active()->items()[0])[0].label, "T");
}

TEST_F(Recorder, ALockedDocumentTakesNothingAndIsReportedOnceAnActivation) {
    ViewerDocument& locked = open();
    locked.setLock({true, false});
    receive(TextPrinted{"lost"});
    receive(TableFinished{tableTitled("lost")});
    EXPECT_TRUE(locked.items().empty());
    EXPECT_THAT(lockedReports_, ElementsAre("(unnamed)"));
    documents_.activate(locked);
    receive(TextPrinted{"lost"});
    EXPECT_EQ(lockedReports_.size(), 2U);
}

TEST_F(Recorder, MessagesOfTheParserAreTaken) {
    ViewerDocument& document = open();
    receive(SyntaxErrorReported{"syntax", {}});
    receive(ParserMessageReported{"WrongValueType", {}, "value", false});
    receive(ParserMessageReported{"WrongValueType", {}, "dropped", true});
    receive(SyntaxWarned{"doubtful", {}});
    ASSERT_EQ(document.items().size(), 4U);
    EXPECT_EQ(document.items()[0].content, ItemContent(MessageContent{3, "syntax"}));
    EXPECT_EQ(document.items()[1].content, ItemContent(MessageContent{3, "value"}));
    EXPECT_EQ(document.items()[2].content, ItemContent(MessageContent{2, "dropped"}));
    EXPECT_EQ(document.items()[3].content, ItemContent(MessageContent{2, "doubtful"}));
}

}  // namespace
}  // namespace vexa::frontend
