#include "frontend/controller/document_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontend/document/walk.h"
#include "tests/unit/frontend/sample_documents.h"
#include "tests/unit/strings/installed_texts.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;

TableFinished tableTitled(const std::string& title) {
    tables::TableView view;
    view.title = title;
    return {std::make_shared<const PivotTable>(),
            tables::makeTable(tables::TableDataBuilder(std::vector<tables::TableDimension>()).finish(), view),
            title + " Subtype"};
}

class Recorder : public testing::Test {
  protected:
    ViewerDocument& open() { return documents_.add(std::make_unique<ViewerDocument>()); }
    void receive(const LogEvent& event) { recorder_.receive(event); }
    void run(const std::string& command, const std::vector<LogEvent>& events) {
        receive(CommandStarted{command, "", {}});
        for (const LogEvent& event : events) receive(event);
        receive(CommandFinished{command});
    }
    /// What a document holds: an item a line, indented, type and label.
    static std::vector<std::string> linesOf(const ViewerDocument& document) {
        struct Writer : OutlineVisitor {
            bool enter(const WalkPlace& place) override {
                lines.push_back(std::string(place.depth, ' ') + std::string(typeWord(place.item())) + ' ' +
                                place.item().label);
                return true;
            }
            std::vector<std::string> lines;
        } writer;
        walk(document.outline(), writer);
        return writer.lines;
    }

    OpenDocuments documents_;
    std::vector<std::string> lockedReports_;
    DocumentRecorder recorder_{documents_,
                               [this](const std::string& name) { lockedReports_.push_back(name); }};
};

TEST_F(Recorder, PutsARunUnderAHeader) {
    const ViewerDocument& document = open();
    receive(CommandStarted{"MEANS", "MEANS", {}});
    receive(ProcedureBegan{"Means", 2});
    EXPECT_TRUE(document.outline().isEmpty());
    receive(ErrorReported{2, 2, "^1", {"x"}, "x"});
    receive(tableTitled("Report"));
    receive(ProcedureEnded{"Means"});
    receive(CommandFinished{"MEANS"});
    receive(TextPrinted{"printed\n"});

    EXPECT_THAT(linesOf(document),
                ElementsAre("header Means", " warning Warning", " table Report", "log Log"));
    EXPECT_EQ(itemAt(document, 1).command, "MEANS");
    EXPECT_EQ(itemAt(document, 2).content, ItemContent(WarningContent{2, "x"}));
    EXPECT_EQ(itemAt(document, 2).command, "") << "it is its run's";
    EXPECT_EQ(itemAt(document, 3).subtype, "Report Subtype");
    EXPECT_EQ(itemAt(document, 4).content, ItemContent(LogContent{"printed"}));
    EXPECT_TRUE(document.isModified());
    const auto runs = runsOf(document.outline());
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].title, "Means");
}

TEST_F(Recorder, LabelsItemsInTheLanguageOfTheSession) {
    const InstalledTexts texts{{"outctrl.xlf", "Error", "Fehler"},
                               {"outctrl.xlf", "Warning", "Warnung"},
                               {"outctrl.xlf", "Notes", "Notizen"},
                               {"outctrl.xlf", "Log", "Protokoll"}};
    const ViewerDocument& document = open();
    for (const int level : {3, 2, 1}) receive(ErrorReported{2, level, "", {}, "x"});
    receive(NotesAdded{1, "label", "value"});
    EXPECT_THAT(linesOf(document),
                ElementsAre("warning Fehler", "warning Warnung", "log Protokoll", "notes Notizen"));
}

TEST_F(Recorder, GathersTheNotesOfARun) {
    const ViewerDocument& document = open();
    for (const char* run : {"One", "Two"}) {
        receive(ProcedureBegan{run, 2});
        receive(NotesAdded{1, "Label", "Value"});
        receive(NotesAdded{1, "Other", run});
        receive(ProcedureEnded{run});
    }
    EXPECT_EQ(document.outline().size(), 4U);
    EXPECT_EQ(itemAt(document, 4).content,
              ItemContent(NotesContent{{{1, "Label", "Value"}, {1, "Other", "Two"}}}));
}

TEST_F(Recorder, TheLogGoesOnUntilSomethingElseComes) {
    const ViewerDocument& document = open();
    receive(TextPrinted{"one\n"});
    receive(TextPrinted{"two\n"});
    receive(ErrorReported{2, 1, "", {}, "three"});
    receive(tableTitled("T"));
    receive(TextPrinted{"four\n"});
    EXPECT_THAT(linesOf(document), ElementsAre("log Log", "table T", "log Log"));
    EXPECT_EQ(itemAt(document, 1).content, ItemContent(LogContent{"one\ntwo\nthree"}));
}

TEST_F(Recorder, NestsTheHeadersOfNestedRuns) {
    const ViewerDocument& document = open();
    receive(ProcedureBegan{"Outer", 2});
    receive(ProcedureBegan{"Inner", 2});
    receive(TextPrinted{"deep"});
    receive(ProcedureEnded{"Inner"});
    receive(TextPrinted{"shallow"});
    EXPECT_THAT(linesOf(document), ElementsAre("header Outer", " header Inner", "  log Log", " log Log"));
}

TEST_F(Recorder, ARunThatChangesTheActiveDocumentGoesOnInTheNewOne) {
    const ViewerDocument& first = open();
    receive(ProcedureBegan{"Run", 2});
    receive(TextPrinted{"before"});
    const ViewerDocument& second = open();
    receive(TextPrinted{"after"});
    EXPECT_THAT(linesOf(first), ElementsAre("header Run", " log Log"));
    EXPECT_THAT(linesOf(second), ElementsAre("header Run", " log Log"));
}

TEST_F(Recorder, OnlyATableMakesADocument) {
    receive(ProcedureBegan{"Run", 2});
    receive(ErrorReported{2, 3, "bad", {}, "bad"});
    receive(NotesAdded{1, "a", "b"});
    receive(TextPrinted{"text"});
    receive(SyntaxErrorReported{"syntax", {}});
    EXPECT_TRUE(documents_.all().empty());
    receive(tableTitled("T"));
    ASSERT_EQ(documents_.all().size(), 1U);
    EXPECT_THAT(linesOf(*documents_.active()), ElementsAre("header Run", " table T"));
}

TEST_F(Recorder, ALockedDocumentTakesNothingAndIsReportedOnceAnActivation) {
    ViewerDocument& locked = open();
    locked.setLock({true, {}});
    receive(TextPrinted{"lost"});
    receive(tableTitled("lost"));
    EXPECT_TRUE(locked.outline().isEmpty());
    EXPECT_THAT(lockedReports_, ElementsAre("(unnamed)"));
    documents_.activate(locked);
    receive(TextPrinted{"lost"});
    EXPECT_EQ(lockedReports_.size(), 2U);
    locked.setLock({false, "/its/file.vxv"});
    receive(TextPrinted{"taken"});
    EXPECT_EQ(locked.outline().size(), 1U) << "the lock of the file is none of the document";
}

TEST_F(Recorder, MessagesOfTheParserAreTaken) {
    const ViewerDocument& document = open();
    receive(SyntaxErrorReported{"syntax", {}});
    receive(ParserMessageReported{"WrongValueType", {}, "value", false});
    receive(ParserMessageReported{"WrongValueType", {}, "dropped", true});
    receive(SyntaxWarned{"doubtful", {}});
    ASSERT_EQ(document.outline().size(), 4U);
    EXPECT_EQ(itemAt(document, 1).content, ItemContent(WarningContent{3, "syntax"}));
    EXPECT_EQ(itemAt(document, 2).content, ItemContent(WarningContent{3, "value"}));
    EXPECT_EQ(itemAt(document, 3).content, ItemContent(WarningContent{2, "dropped"}));
    EXPECT_EQ(itemAt(document, 4).content, ItemContent(WarningContent{2, "doubtful"}));
}

/// Everything that a command can say.
std::vector<LogEvent> everything(const std::string& title) {
    return {ProcedureBegan{title, 2},
            SyntaxErrorReported{"syntax", {}},
            ErrorReported{2, 1, "", {}, "x"},
            NotesAdded{1, "a", "b"},
            tableTitled(title),
            ProcedureEnded{title}};
}

TEST_F(Recorder, WhatDocumentCommandsSayOfThemselvesStaysOut) {
    const ViewerDocument& document = open();
    for (const char* command : {"OUTPUT NEW", "OUTPUT OPEN", "OUTPUT SAVE", "OUTPUT CLOSE", "OUTPUT ACTIVATE",
                                "OUTPUT DISPLAY", "OUTPUT NAME", "OUTPUT MODIFY", "OUTPUT EXPORT"}) {
        run(command, everything(command));
    }
    EXPECT_TRUE(document.outline().isEmpty());
    EXPECT_FALSE(document.isModified());
    run("OUTPUT COMMENT", everything("Comment"));
    run("STB PRINT", everything("Strings"));
    EXPECT_THAT(linesOf(document),
                ElementsAre("header Comment", " table Comment", "header Strings", " table Strings"));
    run("MEANS", everything("Means"));
    EXPECT_EQ(document.outline().size(), 9U);
}

TEST_F(Recorder, RecordsAllOnDemand) {
    DocumentRecorder all(documents_, nullptr, Recording::all);
    const ViewerDocument& document = open();
    all.receive(CommandStarted{"OUTPUT DISPLAY", "", {}});
    for (const LogEvent& event : everything("Output Display")) all.receive(event);
    EXPECT_THAT(linesOf(document), ElementsAre("header Output Display", " warning Error", " log Log",
                                               " notes Notes", " table Output Display"));
}

}  // namespace
}  // namespace vexa::frontend
