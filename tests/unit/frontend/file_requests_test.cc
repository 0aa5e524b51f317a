#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontend/controller/messages.h"
#include "frontend/store/password.h"
#include "tests/unit/frontend/memory_file_system.h"
#include "tests/unit/frontend/requests.h"
#include "tests/unit/frontend/sample_documents.h"
#include "tests/unit/pivot/collected_log.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using enum OutputControllerCommand;

/// What a long-form request says beyond command, name and file; the defaults are those of the commands.
struct Wish {
    OutputDocumentLock lock = OutputDocumentLock::notGiven;
    OutputDocumentMinimized minimized = OutputDocumentMinimized::no;
    OutputDocumentType type = OutputDocumentType::notGiven;
    std::string password = {};
    OutputDocumentEncryptPW encrypted = OutputDocumentEncryptPW::no;
    YesNoEnum dataModel = YesNoEnum::yes;
};

class FileRequests : public testing::Test {
  protected:
    Answer save(const std::string& file, const std::string& name = "", const Wish& wish = {}) {
        return exchange(controller_, {1, OutputControllerCommand::save, name.c_str(), file.c_str(), wish.lock,
                                      OutputDocumentMinimized::notGiven, wish.type, wish.password.c_str(),
                                      wish.encrypted, wish.dataModel});
    }
    Answer open(const std::string& file, const std::string& name = "", const Wish& wish = {}) {
        return exchange(controller_, {1, OutputControllerCommand::open, name.c_str(), file.c_str(), wish.lock,
                                      wish.minimized, OutputDocumentType::notGiven, wish.password.c_str(),
                                      OutputDocumentEncryptPW::notGiven, YesNoEnum::no});
    }
    void makeNew(const std::string& name) { sendShort(controller_, newDocument, name); }
    void closeAll() { sendShort(controller_, close, "ALL"); }
    ViewerDocument& active() { return *controller_.documents().active(); }
    static void expectRefused(const Answer& answer, std::string_view message, const std::string& argument) {
        EXPECT_FALSE(answer.ok);
        EXPECT_EQ(answer.severity, 3);
        EXPECT_EQ(answer.message, message);
        EXPECT_EQ(answer.argument, argument);
    }

    MemoryFileSystem files_;
    EmbeddedController controller_;
};

Wish withLock(OutputDocumentLock lock) {
    Wish wish;
    wish.lock = lock;
    return wish;
}

Wish withPassword(const std::string& password,
                  OutputDocumentEncryptPW encrypted = OutputDocumentEncryptPW::no) {
    Wish wish;
    wish.password = password;
    wish.encrypted = encrypted;
    return wish;
}

TEST_F(FileRequests, SavesAndOpensAgain) {
    makeNew("a");
    active().add(makeItem("Text", plainText("hello")));
    EXPECT_TRUE(save("\\out\\a.vxv").ok);
    EXPECT_FALSE(active().isModified());
    EXPECT_EQ(active().file(), "/out/a.vxv");
    const Outline outline = active().outline();
    closeAll();
    EXPECT_TRUE(open("\\out\\a.vxv").ok);
    EXPECT_THAT(listed(controller_), ElementsAre("*a"));
    EXPECT_TRUE(active().outline() == outline);
    EXPECT_FALSE(active().isModified());
    EXPECT_FALSE(active().isLocked());
}

TEST_F(FileRequests, ARelativeFileStandsInTheWorkingFolder) {
    makeNew("a");
    EXPECT_TRUE(save("sub\\..\\a.vxv").ok);
    EXPECT_TRUE(files_.isFile("/docs/a.vxv"));
}

TEST_F(FileRequests, SavesTheNamedOrTheActiveDocument) {
    expectRefused(save("\\a.vxv"), messages::noDocumentOpen, "");
    makeNew("a");
    makeNew("b");
    expectRefused(save("\\a.vxv", "c"), messages::noSuchDocument, "c (open: a, b)");
    expectRefused(save("", "a"), messages::fileMissing, "");
    EXPECT_TRUE(save("\\a.vxv", "A").ok);
    EXPECT_TRUE(save("\\b.vxv", "*").ok);
    EXPECT_EQ(controller_.documents().find("a")->file(), "/a.vxv");
    EXPECT_EQ(active().file(), "/b.vxv");
}

TEST_F(FileRequests, OneFileIsOneOpenDocument) {
    makeNew("a");
    save("\\a.vxv");
    expectRefused(open("\\x\\..\\a.vxv"), messages::fileOpenAlready, "/x/../a.vxv (open as a)");
    makeNew("b");
    expectRefused(save("\\a.vxv"), messages::fileOpenAlready, "/a.vxv (open as a)");
    EXPECT_TRUE(save("\\a.vxv", "a").ok);
    sendShort(controller_, activate, "a");
    EXPECT_TRUE(sendShort(controller_, name, "").ok);
    sendShort(controller_, activate, "b");
    expectRefused(save("\\a.vxv"), messages::fileOpenAlready, "/a.vxv (open as an unnamed document)");
}

TEST_F(FileRequests, AFileBehindALinkIsOneOpenDocument) {
    files_.links["/link.vxv"] = "/good.vxv";
    makeNew("good");
    EXPECT_TRUE(save("\\link.vxv").ok);
    EXPECT_EQ(active().file(), "/good.vxv");
    EXPECT_TRUE(save("\\good.vxv").ok);
    const std::string before = files_.files["/good.vxv"];
    makeNew("other");
    active().add(makeItem("Text", plainText("other")));
    for (const char* file : {"good.vxv", "link.vxv"}) {
        const std::string shown = std::string("/") + file;
        expectRefused(save(toBackslashPath(shown)), messages::fileOpenAlready, shown + " (open as good)");
        expectRefused(open(toBackslashPath(shown)), messages::fileOpenAlready, shown + " (open as good)");
    }
    EXPECT_EQ(files_.files["/good.vxv"], before);
}

TEST_F(FileRequests, TheTypeIsThatOfTheNameThatWasGiven) {
    files_.links["/link.vxw"] = "/whole.vxv";
    makeNew("a");
    active().add(makeItem("Warning", WarningContent{2, "x"}));
    EXPECT_TRUE(save("\\link.vxw").ok);
    EXPECT_TRUE(opened(files_.files["/whole.vxv"])->outline().isEmpty());
}

TEST_F(FileRequests, NamesOfOpenedDocuments) {
    makeNew("a");
    save("\\a.vxv");
    closeAll();
    makeNew("A");
    expectRefused(open("\\a.vxv", "a"), messages::nameTaken, "a");
    EXPECT_TRUE(open("\\a.vxv").ok);
    EXPECT_THAT(listed(controller_), ElementsAre("A", "*"));
    sendShort(controller_, close, "*");
    EXPECT_TRUE(open("\\a.vxv", "b").ok);
    EXPECT_THAT(listed(controller_), ElementsAre("A", "*b"));
}

TEST_F(FileRequests, TheLockOfOpenProtectsTheFileAndNotTheDocument) {
    makeNew("a");
    save("\\a.vxv");
    closeAll();
    open("\\a.vxv", "", withLock(OutputDocumentLock::yes));
    EXPECT_EQ(active().lock(), (DocumentLock{false, "/a.vxv"}));
    EXPECT_TRUE(sendShort(controller_, name, "b").ok) << "the document takes changes";
    const std::string before = files_.files["/a.vxv"];
    expectRefused(save("\\a.vxv"), messages::fileLocked, "/a.vxv");
    expectRefused(save("\\a.vxv", "", withLock(OutputDocumentLock::yes)), messages::fileLocked, "/a.vxv");
    EXPECT_EQ(files_.files["/a.vxv"], before);
    EXPECT_TRUE(save("\\b.vxv").ok);
    expectRefused(save("\\a.vxv"), messages::fileLocked, "/a.vxv");
    EXPECT_TRUE(save("\\a.vxv", "", withLock(OutputDocumentLock::no)).ok);
    EXPECT_NE(files_.files["/a.vxv"], before);
    EXPECT_TRUE(save("\\a.vxv").ok) << "LOCK=NO counts from then on";
    closeAll();
    open("\\a.vxv", "", withLock(OutputDocumentLock::no));
    EXPECT_TRUE(save("\\a.vxv").ok);
}

TEST_F(FileRequests, AReadersCopyOverAProtectedFileIsRefusedToo) {
    makeNew("a");
    save("\\a.vxw");
    closeAll();
    open("\\a.vxw", "", withLock(OutputDocumentLock::yes));
    expectRefused(save("\\a.vxw"), messages::fileLocked, "/a.vxw");
}

TEST_F(FileRequests, TheMarkOfTheFileLocksTheDocument) {
    makeNew("a");
    EXPECT_TRUE(save("\\a.vxv", "", withLock(OutputDocumentLock::yes)).ok);
    EXPECT_TRUE(active().isLocked());
    EXPECT_TRUE(save("\\a.vxv").ok);
    closeAll();
    open("\\a.vxv", "", withLock(OutputDocumentLock::no));
    EXPECT_TRUE(active().isLocked()) << "the file's own mark wins";
    expectRefused(sendShort(controller_, name, "b"), messages::documentLocked, "a");
    EXPECT_TRUE(save("\\b.vxv").ok) << "it can be saved";
    EXPECT_TRUE(opened(files_.files["/b.vxv"])->isLocked());
    EXPECT_TRUE(save("\\a.vxv", "", withLock(OutputDocumentLock::no)).ok);
    EXPECT_FALSE(active().isLocked());
    closeAll();
    open("\\a.vxv");
    EXPECT_FALSE(active().isLocked());
}

TEST_F(FileRequests, ALockedReadersCopyIsUnlockedByASaveToItself) {
    makeNew("a");
    save("\\a.vxw", "", withLock(OutputDocumentLock::yes));
    EXPECT_FALSE(active().isLocked()) << "a copy elsewhere locks nothing";
    closeAll();
    open("\\a.vxw", "", withLock(OutputDocumentLock::no));
    EXPECT_TRUE(active().isLocked());
    EXPECT_TRUE(save("\\b.vxw", "", withLock(OutputDocumentLock::no)).ok);
    EXPECT_TRUE(active().isLocked()) << "another copy unlocks nothing";
    EXPECT_TRUE(save("\\a.vxw", "", withLock(OutputDocumentLock::no)).ok);
    EXPECT_FALSE(active().isLocked());
    EXPECT_FALSE(opened(files_.files["/a.vxw"])->isLocked());
    EXPECT_TRUE(save("\\a.vxw", "", withLock(OutputDocumentLock::yes)).ok);
    EXPECT_TRUE(active().isLocked());
}

TEST_F(FileRequests, ReadersCopiesByTypeAndByExtension) {
    makeNew("a");
    active().add(makeItem("Warning", WarningContent{2, "x"}));
    Wish reader;
    reader.type = OutputDocumentType::vxw;
    EXPECT_TRUE(save("\\a.doc", "", reader).ok);
    EXPECT_TRUE(save("\\b.VXW").ok);
    Wish whole;
    whole.type = OutputDocumentType::vxv;
    EXPECT_TRUE(active().isModified()) << "a copy is not the document";
    EXPECT_EQ(active().file(), "");
    EXPECT_TRUE(save("\\c.vxw", "", whole).ok);
    EXPECT_TRUE(opened(files_.files["/a.doc"])->outline().isEmpty());
    EXPECT_TRUE(opened(files_.files["/b.VXW"])->outline().isEmpty());
    EXPECT_EQ(opened(files_.files["/c.vxw"])->outline().size(), 1U);
}

TEST_F(FileRequests, WithoutTheDataModelTheDocumentStaysUnsaved) {
    makeNew("a");
    active().add(makeItem("Table", TableContent{makeTable(2, 2)}));
    Wish wish;
    wish.dataModel = YesNoEnum::no;
    EXPECT_TRUE(save("\\a.vxv", "", wish).ok);
    EXPECT_TRUE(active().isModified());
    EXPECT_EQ(itemAt(*opened(files_.files["/a.vxv"]), 1).type(), ItemType::grid);
}

TEST_F(FileRequests, Passwords) {
    makeNew("a");
    EXPECT_TRUE(save("\\a.vxv", "", withPassword("secret")).ok);
    const std::string form = encryptedPassword("secret");
    EXPECT_TRUE(save("\\b.vxv", "", withPassword(form, OutputDocumentEncryptPW::yes)).ok);
    expectRefused(save("\\c.vxv", "", withPassword("secret", OutputDocumentEncryptPW::yes)),
                  messages::passwordForm, "/c.vxv");
    closeAll();
    expectRefused(open("\\a.vxv"), messages::passwordMissing, "/a.vxv");
    expectRefused(open("\\a.vxv", "", withPassword("wrong")), messages::passwordWrong, "/a.vxv");
    EXPECT_TRUE(open("\\a.vxv", "x", withPassword("secret")).ok);
    EXPECT_TRUE(open("\\b.vxv", "y", withPassword(form)).ok);
    EXPECT_FALSE(files_.isFile("/c.vxv"));
}

/// What the log says meanwhile: the texts of warnings with their arguments.
std::vector<std::string> warningsOf(const CollectedLog& log) {
    std::vector<std::string> warnings;
    for (const ErrorReported& error : log.all<ErrorReported>()) {
        EXPECT_EQ(error.level, 2);
        warnings.push_back(error.text + " | " + (error.arguments.empty() ? "" : error.arguments[0]));
    }
    return warnings;
}

std::string withArgument(SystemText text, const std::string& argument) {
    return std::string(text) + " | " + argument;
}

TEST_F(FileRequests, WarnsOnceWhenAFileIsNotProtectedAnyMore) {
    const CollectedLog log;
    makeNew("a");
    EXPECT_TRUE(save("\\a.vxv", "", withPassword("secret")).ok);
    closeAll();
    EXPECT_TRUE(open("\\a.vxv", "", withPassword("secret")).ok);
    EXPECT_TRUE(save("\\a.vxv", "", withPassword("other")).ok);
    EXPECT_THAT(warningsOf(log), ElementsAre());
    Wish reader;
    reader.type = OutputDocumentType::vxw;
    EXPECT_TRUE(save("\\copy.vxw", "", reader).ok);
    EXPECT_TRUE(save("\\a.vxv").ok);
    EXPECT_TRUE(save("\\a.vxv").ok);
    EXPECT_THAT(warningsOf(log), ElementsAre(withArgument(messages::standsOpen, "/copy.vxw"),
                                             withArgument(messages::standsOpen, "/a.vxv")));
}

TEST_F(FileRequests, WarnsOfAPasswordThatNothingAskedFor) {
    const CollectedLog log;
    makeNew("a");
    save("\\a.vxv");
    closeAll();
    EXPECT_TRUE(open("\\a.vxv", "", withPassword("secret")).ok);
    EXPECT_THAT(warningsOf(log), ElementsAre(withArgument(messages::notProtected, "/a.vxv")));
}

TEST_F(FileRequests, WhatOthersHaveSavedIsReplacedOnlyWhenAskedTwice) {
    makeNew("a");
    save("\\a.vxv");
    closeAll();
    open("\\a.vxv");
    EXPECT_TRUE(save("\\a.vxv").ok) << "by ourselves it may be";
    makeNew("b");
    save("\\b.vxv");
    files_.files["/a.vxv"] = files_.files["/b.vxv"];
    const std::string theirs = files_.files["/a.vxv"];
    expectRefused(save("\\a.vxv", "a"), messages::fileChanged, "/a.vxv (2026-03-05 10:07:09)");
    EXPECT_EQ(files_.files["/a.vxv"], theirs);
    EXPECT_TRUE(save("\\c.vxv", "b").ok) << "another file is nobody's concern";
    EXPECT_TRUE(save("\\a.vxv", "a").ok);
    EXPECT_NE(files_.files["/a.vxv"], theirs);
    EXPECT_TRUE(save("\\a.vxv", "a").ok);
    files_.files.erase("/a.vxv");
    EXPECT_TRUE(save("\\a.vxv", "a").ok) << "nothing is lost";
}

TEST_F(FileRequests, WarnsWhenTheRightsOfAFileAreNotKept) {
    const CollectedLog log;
    makeNew("a");
    files_.losesRights = true;
    save("\\a.vxv");
    EXPECT_THAT(warningsOf(log), ElementsAre()) << "there was no file";
    files_.rights["/a.vxv"] = "mine";
    save("\\a.vxv");
    EXPECT_THAT(warningsOf(log), ElementsAre(withArgument(messages::otherRights, "/a.vxv")));
}

TEST_F(FileRequests, FilesThatCannotBeOpened) {
    files_.folder = "/folder";
    files_.files["/text"] = "no zip at all";
    makeNew("a");
    expectRefused(open(""), messages::fileMissing, "");
    expectRefused(open("\\none"), messages::noSuchFile, "/none (cannot be read)");
    expectRefused(open("\\folder"), messages::fileIsFolder, "/folder");
    expectRefused(open("\\text"), messages::notADocument, "/text");
    expectRefused(save("\\folder"), messages::fileIsFolder, "/folder");
    EXPECT_THAT(listed(controller_), ElementsAre("*a"));
}

TEST_F(FileRequests, ASaveThatFailsAtAnyOperationLeavesTheOldFile) {
    makeNew("a");
    save("\\a.vxv");
    const std::string before = files_.files["/a.vxv"];
    files_.operations = 0;
    active().add(makeItem("Text", plainText("new")));
    int failing = 0;
    for (bool ok = false; !ok;) {
        files_.operations = 0;
        files_.failingOperation = ++failing;
        const Answer answer = save("\\a.vxv");
        ok = answer.ok;
        ASSERT_LT(failing, 20);
        ASSERT_EQ(files_.files.size(), 1U) << "no temporary file stays";
        if (!ok) {
            expectRefused(answer, messages::cannotWrite, "/a.vxv (disk full)");
            EXPECT_EQ(files_.files["/a.vxv"], before);
            EXPECT_TRUE(active().isModified());
        }
    }
    EXPECT_GT(failing, 4);
    EXPECT_EQ(opened(files_.files["/a.vxv"])->outline().size(), 1U);
}

}  // namespace
}  // namespace vexa::frontend
