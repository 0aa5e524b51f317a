#include "backend/session/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "backend/adapter/go_to_caller.h"
#include "backend/paths/file_specification.h"
#include "backend/pivot/output_log.h"
#include "backend/session/syntax_completion.h"
#include "backend/syntax/command_spec.h"
#include "backend/syntax/universal_parser.h"
#include "backend/tokens/token_sequence.h"

namespace vexa {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

using UP = UPSpecTypes;

std::vector<std::string> calls;  // what the entries below were called for

CommandDescriptor newGrammar() {
    return CommandDescriptor("OUTPUT NEW")
        .addSubComDesc(SubComDescriptor("", UP::SubComSpec::keywordParameters, false, false)
                           .addParamDesc(ParamDescriptor("NAME", UP::ParamSpec::word, false, true))
                           .addParamDesc(ParamDescriptor("MINIMIZED", UP::ParamSpec::word, false, true)
                                             .addStringValue("YES")
                                             .addStringValue("NO")))
        .addSubComDesc(SubComDescriptor("EXTRA", UP::SubComSpec::keywordParameters, false, false)
                           .addParamDesc(ParamDescriptor("DEEP", UP::ParamSpec::keyword, false, false)));
}

void runNew() {
    const CommandDescriptor grammar = newGrammar();
    const VEXA_TokenSequence tokens(true);
    CommandSpec spec;
    if (UniversalParser(tokens, spec, grammar).getCommandSpecifications() != 0) {
        return;
    }
    std::string call = "NEW";
    for (const TokenInfoObj& token : tokens.tokens()) {
        call.append(" ").append(token.getString());
    }
    calls.push_back(call);
}

class FakeModule : public CommandModule {
  public:
    bool load(std::string& reason) override {
        reason = failure;
        return failure.empty();
    }
    [[nodiscard]] Entry find(const char* entry) const override {
        const auto found = entries.find(entry);
        return found == entries.end() ? nullptr : found->second;
    }

    std::string failure;
    std::map<std::string, Entry> entries{{"OUTNEW", runNew}};
};

/// Writes down what the log says, a line an event.
class LogNotes : public LogListener {
  public:
    LogNotes() { OutputLog::current().addListener(*this); }
    ~LogNotes() override { OutputLog::current().removeListener(*this); }
    LogNotes(const LogNotes&) = delete;
    LogNotes& operator=(const LogNotes&) = delete;

    void receive(const LogEvent& event) override {
        if (const auto* started = std::get_if<CommandStarted>(&event)) {
            lines.push_back("start " + started->entry + " " + std::to_string(started->place.line));
        } else if (std::holds_alternative<CommandFinished>(event)) {
            lines.push_back("finish");
        } else if (const auto* syntax = std::get_if<SyntaxErrorReported>(&event)) {
            lines.push_back("syntax " + std::to_string(syntax->place.line) + ":" +
                            std::to_string(syntax->place.column) + " " + syntax->message);
        } else if (const auto* error = std::get_if<ErrorReported>(&event)) {
            lines.push_back("error " + std::to_string(error->level) + " " + error->message);
        } else if (const auto* text = std::get_if<TextPrinted>(&event)) {
            lines.push_back("text " + text->text);
        }
    }

    std::vector<std::string> lines;
};

class SessionTest : public ::testing::Test {
  protected:
    SessionTest() {
        calls.clear();
        FileLocations::current().reset();
        folder_ = std::filesystem::temp_directory_path() / ("vexa-session-" + std::to_string(::getpid()));
        std::filesystem::remove_all(folder_);  // of a process with this number that was ended amid its tests
        std::filesystem::create_directories(folder_ / "inner");
    }
    ~SessionTest() override {
        FileLocations::current().reset();
        std::filesystem::remove_all(folder_);
    }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ / name, std::ios::binary) << text;
    }
    [[nodiscard]] std::string path(const std::string& name) const { return (folder_ / name).string(); }

    std::filesystem::path folder_;
    FakeModule module_;
    LogNotes log_;
};

TEST_F(SessionTest, CallsTheEntryWithTheCommandsTokens) {
    Session session(module_);
    session.runText("output new name=a.\n\nOUTPUT /* c */ NEW\n  NAME=b", "case.vxs");
    EXPECT_THAT(calls, ElementsAre("NEW name = a", "NEW NAME = b"));
    EXPECT_THAT(log_.lines, ElementsAre("start OUTNEW 1", "finish", "start OUTNEW 3", "finish"));
    EXPECT_FALSE(session.hadErrors());
    EXPECT_FALSE(session.stopped());
}

TEST_F(SessionTest, GoesOnAfterAnUnknownCommand) {
    Session session(module_);
    session.runText("\n  OUTPUT NWE NAME=a.\nOUTPUT NEW.\n", "case.vxs");
    ASSERT_EQ(log_.lines.size(), 3U);
    EXPECT_EQ(log_.lines[0], "syntax 2:3 There is no command \"OUTPUT NWE\". Did you mean OUTPUT NEW?");
    EXPECT_THAT(calls, ElementsAre("NEW"));
    EXPECT_TRUE(session.hadErrors());
}

TEST_F(SessionTest, ComplainsOfAnUnclosedComment) {
    Session session(module_);
    session.runText("OUTPUT NEW NAME=a /* b.\n\n/* c\n\nOUTPUT NEW.\n", "case.vxs");
    ASSERT_EQ(log_.lines.size(), 6U);
    EXPECT_THAT(log_.lines[1], HasSubstr("syntax 1:19 This comment is not closed"));
    EXPECT_THAT(log_.lines[3], HasSubstr("syntax 3:1 This comment is not closed"));
    EXPECT_THAT(calls, ElementsAre("NEW"));
}

TEST_F(SessionTest, StopsAfterAnErrorWhereAsked) {
    SessionOptions options;
    options.stopOnError = true;
    Session session(module_, options);
    session.runText("OUTPUT NEW.\nOUTPUT NEW NMAE=a.\nOUTPUT NEW.\n", "case.vxs");
    EXPECT_THAT(calls, ElementsAre("NEW"));
    EXPECT_TRUE(session.stopped());
}

TEST_F(SessionTest, SaysWhatTheModuleLacks) {
    Session session(module_);
    session.runText("OUTPUT EXPORT.\nOUTPUT NEW.\n", "case.vxs");
    EXPECT_EQ(log_.lines[0], "error 3 This module has no command OUTPUT EXPORT.");
    EXPECT_THAT(calls, ElementsAre("NEW"));
}

TEST_F(SessionTest, StopsWithoutAModule) {
    module_.failure = "no such file";
    Session session(module_);
    session.runText("ECHO 'a'.\nOUTPUT NEW.\nOUTPUT NEW.\n", "case.vxs");
    EXPECT_THAT(log_.lines,
                ElementsAre("text a\n", "error 3 The command library cannot be loaded: no such file"));
    EXPECT_TRUE(session.stopped());
    EXPECT_EQ(session.moduleFailure(), "no such file");
}

TEST_F(SessionTest, ChecksWithoutRunning) {
    SessionOptions options;
    options.checkOnly = true;
    Session session(module_, options);
    session.runText("OUTPUT NEW NAME=a.\nECHO 'b'.\nOUTPUT NEW NMAE=a.\n", "case.vxs");
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_TRUE(session.hadErrors());
    EXPECT_EQ(std::count_if(log_.lines.begin(), log_.lines.end(),
                            [](const std::string& line) { return line.starts_with("syntax 3:12"); }),
              1);
    EXPECT_EQ(std::count(log_.lines.begin(), log_.lines.end(), "text b\n"), 0);
}

TEST_F(SessionTest, CatchesWhatLeavesAnEntry) {
    module_.entries = {{"OUTNEW", [] { throw std::runtime_error("out of paper"); }},
                       {"OUTNAME", [] { throw 1; }},
                       {"OUTDISP", [] { throw VexaGoToCaller(); }}};
    Session session(module_);
    session.runText("OUTPUT DISPLAY.\n", "case.vxs");
    EXPECT_FALSE(session.hadErrors());
    session.runText("OUTPUT NEW.\nOUTPUT NAME a.\n", "case.vxs");
    EXPECT_THAT(log_.lines,
                ElementsAre("start OUTDISP 1", "finish", "start OUTNEW 1",
                            "error 3 The command was interrupted: out of paper", "finish", "start OUTNAME 2",
                            "error 3 The command was interrupted: it failed without saying why.", "finish"));
}

TEST_F(SessionTest, DescribesCommandsSilently) {
    Session session(module_);
    const std::optional<CommandDescriptor> described = session.describe(*findKnownCommand("OUTPUT NEW"));
    ASSERT_TRUE(described);
    EXPECT_NE(described->findSubcommand("")->findParameter("NAME"), nullptr);
    EXPECT_FALSE(session.describe(*findKnownCommand("OUTPUT SAVE")));
    EXPECT_TRUE(session.describe(*findKnownCommand("INSERT")));
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionTest, RunsFilesOfInsert) {
    write("a.vxs", "OUTPUT NEW NAME=one.\nINSERT FILE='inner/b.vxs'.\nOUTPUT NEW NAME=three.\n");
    write("inner/b.vxs", "OUTPUT NEW NAME=two.\n");
    Session session(module_);
    session.runText("CD '" + folder_.string() + "'.\nINSERT FILE='a.vxs'.\n", "case.vxs");
    EXPECT_THAT(calls, ElementsAre("NEW NAME = one", "NEW NAME = two", "NEW NAME = three"));
}

TEST_F(SessionTest, InsertsThroughAHandle) {
    write("inner/b.vxs", "OUTPUT NEW NAME=two.\n");
    Session session(module_);
    session.runText("FILE HANDLE data /NAME='" + path("inner") + "'.\nINSERT FILE='data/b.vxs'.\n",
                    "case.vxs");
    EXPECT_THAT(calls, ElementsAre("NEW NAME = two"));
}

TEST_F(SessionTest, EndsInsertsThatInsertThemselves) {
    write("loop.vxs", "OUTPUT NEW.\nINSERT FILE='loop.vxs'.\n");
    Session session(module_);
    session.runText("CD '" + folder_.string() + "'.\nINSERT FILE='loop.vxs'.\n", "case.vxs");
    EXPECT_EQ(calls.size(), 32U);
    EXPECT_THAT(log_.lines.back(), HasSubstr("INSERT is nested more than 32 files deep"));
}

TEST_F(SessionTest, EndsTheRunWhenTooManyBytesAreInserted) {
    write("a.vxs", "ECHO '0123456789'.\n");
    SessionOptions options;
    options.mostInsertedBytes = 40;
    Session session(module_, options);
    std::string text;
    for (int i = 0; i < 10; ++i) text += "INSERT FILE='" + path("a.vxs") + "'.\n";
    session.runText(text, "case.vxs");
    EXPECT_THAT(log_.lines.back(), HasSubstr("More than 40 bytes were inserted, so the run ends at "));
    EXPECT_EQ(
        std::count_if(log_.lines.begin(), log_.lines.end(),
                      [](const std::string& line) { return line.find("error 3") != std::string::npos; }),
        1);
    // Each run counts for itself.
    log_.lines.clear();
    session.runText("INSERT FILE='" + path("a.vxs") + "'.\n", "case.vxs");
    EXPECT_THAT(log_.lines, Not(Contains(HasSubstr("error"))));
}

/// Keeps the places of messages.
class PlaceNotes : public LogListener {
  public:
    PlaceNotes() { OutputLog::current().addListener(*this); }
    ~PlaceNotes() override { OutputLog::current().removeListener(*this); }
    void receive(const LogEvent& event) override {
        if (const auto* const error = std::get_if<ErrorReported>(&event)) add(error->place, error->message);
        if (const auto* const error = std::get_if<SyntaxErrorReported>(&event))
            add(error->place, error->message);
    }
    void add(const SourcePlace& place, const std::string& message) {
        lines.push_back(place.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) +
                        " " + message);
    }
    std::vector<std::string> lines;
};

TEST_F(SessionTest, NamesThePlaceOfCharactersThatLookLikeOthers) {
    write("b.vxs", "ECHO 'one'.\n  ECHO\u00A0'two'.\n");
    const PlaceNotes places;
    Session session(module_);
    const std::string inner = path("b.vxs");
    EXPECT_TRUE(session.runInput(
        "\nINSERT FILE='" + inner + "'.\n/* \u6F22 */ OUTPUT NEW NAME=\u201Ca\u201D.\n", "outer.vxs"));
    EXPECT_THAT(places.lines,
                ElementsAre(inner + ":2:7 U+00A0 NO-BREAK SPACE is a blank of another kind. Type a plain "
                                    "blank in its place.",
                            "outer.vxs:3:25 U+201C LEFT DOUBLE QUOTATION MARK is a quotation mark of another "
                            "kind. Type \" in its place: texts stand between plain ones."));
}

TEST_F(SessionTest, NamesThePlaceOfBytesThatAreNoText) {
    const PlaceNotes places;
    Session session(module_);
    EXPECT_TRUE(session.runInput("* a.\r\n\r\n* b\xE9.\r\n", "a.vxs"));
    const InputResult refused = session.runInput(std::string("\xFE\xFF\0E", 4), "b.vxs");
    EXPECT_FALSE(refused);
    EXPECT_TRUE(refused.isRead);
    EXPECT_THAT(refused.arguments, ElementsAre("b.vxs", "UTF-16BE", "FE FF"));
    write("wide.vxs", std::string("E\0C\0H\0O\0", 8));
    session.runText("INSERT FILE='" + path("wide.vxs") + "'.", "c.vxs");
    ASSERT_EQ(places.lines.size(), 2U);
    EXPECT_THAT(places.lines[0], HasSubstr("a.vxs:3:4 The byte E9 (at offset 11 of the file)"));
    EXPECT_THAT(places.lines[1], HasSubstr("wide.vxs:1:1 The file " + path("wide.vxs") +
                                           " is UTF-16LE text (a zero byte at offset 1)"));
}

TEST_F(SessionTest, ReadsPipesAndDevicesToTheirEnd) {
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    std::thread writer([this] { write("pipe", "OUTPUT NEW NAME=piped.\n"); });
    Session session(module_);
    EXPECT_TRUE(session.runFile(path("pipe")));
    writer.join();
    EXPECT_TRUE(session.runFile("/dev/null"));
    session.runText("INSERT FILE='/dev/null'.", "case.vxs");
    EXPECT_THAT(calls, ElementsAre("NEW NAME = piped"));
    EXPECT_FALSE(session.hadErrors());
}

TEST_F(SessionTest, SaysWhichFileCannotBeRead) {
    Session session(module_);
    session.runText("INSERT FILE='" + path("none.vxs") + "'.", "case.vxs");
    ASSERT_EQ(log_.lines.size(), 1U);
    EXPECT_THAT(log_.lines[0], HasSubstr("error 3 The file cannot be read: "));
    EXPECT_FALSE(session.runFile(path("none.vxs")));
}

struct OwnErrorCase {
    const char* command;
    const char* place;
    const char* message;
};

TEST_F(SessionTest, RefusesWrongFormsOfItsOwnCommands) {
    const OwnErrorCase cases[] = {
        {"CD.", "", "needs"},
        {"CD folder.", "1:4", "CD needs one quoted folder"},
        {"CD 'a' 'b'.", "1:8", "CD needs one quoted folder"},
        {"ECHO text.", "1:6", "ECHO needs one quoted text"},
        {"INSERT FILE=a.", "1:13", "FILE needs one quoted file"},
        {"FILE HANDLE 'a' /NAME='b'.", "1:13", "FILE HANDLE needs one name"},
        {"FILE HANDLE a_ /NAME='b'.", "1:13", "FILE HANDLE needs one name"},
        {"FILE HANDLE a /NAME=b.", "1:21", "NAME needs one quoted folder"},
        {"FILE HANDLE a /NAME=''.", "1:21", "NAME must not be empty"},
        {"CD 'a.", "1:4", "not closed"},
    };
    for (const OwnErrorCase& own : cases) {
        log_.lines.clear();
        Session session(module_);
        session.runText(own.command, "case.vxs");
        ASSERT_EQ(log_.lines.size(), 1U) << own.command;
        EXPECT_THAT(log_.lines[0], HasSubstr(std::string("syntax ") + own.place)) << own.command;
        EXPECT_THAT(log_.lines[0], HasSubstr(own.message)) << own.command;
        EXPECT_TRUE(session.hadErrors()) << own.command;
    }
}

TEST_F(SessionTest, StaysWhereItIsWithoutTheFolder) {
    const std::string before = FileLocations::current().folder();
    Session session(module_);
    session.runText("CD '" + path("none") + "'.", "case.vxs");
    EXPECT_THAT(log_.lines[0], HasSubstr("The working folder is unchanged."));
    EXPECT_EQ(FileLocations::current().folder(), before);
}

struct CompletionCase {
    const char* text;
    std::size_t from;
    std::vector<std::string> candidates;
};

TEST_F(SessionTest, CompletesWhatIsTyped) {
    const CompletionCase cases[] = {
        {"IN", 0, {"INSERT"}},
        {"output na", 7, {"NAME"}},
        {"OUTPUT NEW ", 11, {"NAME", "MINIMIZED"}},
        {"OUTPUT NEW m", 11, {"MINIMIZED"}},
        {"OUTPUT NEW NAME=a ", 18, {"MINIMIZED"}},
        {"OUTPUT NEW MINIMIZED=", 21, {"YES", "NO"}},
        {"OUTPUT NEW MINIMIZED=n", 21, {"NO"}},
        {"OUTPUT NEW /", 12, {"EXTRA"}},
        {"OUTPUT NEW NAME=a\n /EXTRA ", 26, {"DEEP"}},
        {"OUTPUT NEW NAME='a", 18, {}},
        {"OUTPUT SAVE ", 12, {}},
        {"XYZ", 0, {}},
    };
    Session session(module_);
    for (const CompletionCase& typed : cases) {
        const Completion completion = completeSyntax(session, typed.text);
        EXPECT_EQ(completion.candidates, typed.candidates) << typed.text;
        EXPECT_EQ(completion.from, typed.from) << typed.text;
    }
    EXPECT_THAT(log_.lines, IsEmpty());
}

}  // namespace
}  // namespace vexa
