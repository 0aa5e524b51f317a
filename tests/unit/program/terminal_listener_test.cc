#include "apps/vexa/terminal_listener.h"

#include <gtest/gtest.h>

#include <sstream>

#include "backend/tokens/command_text.h"
#include "tests/unit/strings/installed_texts.h"

namespace vexa::program {
namespace {

struct CaretCase {
    const char* about;
    std::string line;
    int column;
    std::string shown;
};

TEST(SourceWithCaret, LinesUpUnderThePlace) {
    const CaretCase cases[] = {
        {"at the beginning", "OUTPUT", 1, "  OUTPUT\n  ^\n"},
        {"inside", "OUTPUT NEW", 8, "  OUTPUT NEW\n         ^\n"},
        {"behind the end", "OUT", 4, "  OUT\n     ^\n"},
        {"far behind the end", "OUT", 9, "  OUT\n     ^\n"},
        {"behind wide characters", "漢字 x", 4, "  漢字 x\n       ^\n"},
        {"behind a combining character", "e\xCC\x81x", 3, "  e\xCC\x81x\n   ^\n"},
        {"behind tabs", "\ta\tx", 4, "          a       x\n                  ^\n"},
        {"no line", "", 3, ""},
        {"no column", "OUT", 0, ""},
    };
    for (const CaretCase& caret : cases) {
        SourcePlace place;
        place.column = caret.column;
        place.sourceLine = caret.line;
        EXPECT_EQ(sourceWithCaret(place), caret.shown) << caret.about;
    }
}

TEST(SourceWithCaret, ShowsOnlyWhatStandsAround) {
    SourcePlace place;
    place.sourceLine = std::string(1000, 'a') + "!" + std::string(1000, 'b');
    place.column = 1001;
    EXPECT_EQ(sourceWithCaret(place), "  ..." + std::string(60, 'a') + "!" + std::string(39, 'b') +
                                          "...\n  " + std::string(63, ' ') + "^\n");
}

class TerminalListenerTest : public ::testing::Test {
  protected:
    std::ostringstream results_;
    std::ostringstream messages_;
    TerminalListener listener_{results_, messages_, TerminalLook{}};
};

TEST_F(TerminalListenerTest, ShowsSyntaxErrorsWithTheirPlace) {
    listener_.receive(SyntaxErrorReported{"wrong", {"case.vxs", 3, 2, "ab"}});
    EXPECT_EQ(messages_.str(), "case.vxs:3:2: error: wrong\n  ab\n   ^\n");
    EXPECT_EQ(results_.str(), "");
}

TEST_F(TerminalListenerTest, ShowsWarningsOfTheParserWithTheirPlace) {
    listener_.receive(SyntaxWarned{"doubtful", {"case.vxs", 3, 2, "ab"}});
    EXPECT_EQ(messages_.str(), "case.vxs:3:2: warning: doubtful\n  ab\n   ^\n");
    EXPECT_EQ(results_.str(), "");
}

TEST_F(TerminalListenerTest, ShowsMessagesWithTheirCommandAndSeverity) {
    CommandText command;
    command.file = "case.vxs";
    command.line = 3;
    const CurrentCommandScope scope(command);
    listener_.receive(ErrorReported{2, 1, "", {}, "one"});
    listener_.receive(ErrorReported{2, 2, "", {}, "two"});
    listener_.receive(ErrorReported{2, 3, "", {}, "three"});
    listener_.receive(ParserMessageReported{"WrongValueType", {}, "four", false});
    listener_.receive(ParserMessageReported{"IgnoredParamValue", {}, "five", true});
    EXPECT_EQ(
        messages_.str(),
        "case.vxs:3: note: one\ncase.vxs:3: warning: two\ncase.vxs:3: error: three\ncase.vxs:3: error: four\n"
        "case.vxs:3: warning: five\n");
}

TEST_F(TerminalListenerTest, ShowsSeveritiesInTheLanguageOfTheUser) {
    const InstalledTexts texts{{"vexaprog.xlf", "error: ^1", "erreur : ^1"},
                               {"vexaprog.xlf", "warning: ^1", "\u8b66\u544a\uff1a^1"},
                               {"vexaprog.xlf", "note: ^1", "^1 (Hinweis)"}};
    TerminalLook look;
    look.colouredMessages = true;
    TerminalListener coloured{results_, messages_, look};
    for (const int level : {3, 2, 1}) listener_.showMessage(level, "a ^1");
    for (const int level : {3, 2, 1}) coloured.showMessage(level, "a");
    EXPECT_EQ(
        messages_.str(),
        "erreur : a ^1\n\u8b66\u544a\uff1aa ^1\na ^1 (Hinweis)\n"
        "\x1b[1;31merreur :\x1b[0m a\n\x1b[1;35m\u8b66\u544a\uff1a\x1b[0ma\n\x1b[1;36m\x1b[0ma (Hinweis)\n");
}

TEST_F(TerminalListenerTest, KeepsTextFromSteeringTheTerminal) {
    listener_.receive(ErrorReported{2, 3, "", {}, "a\x1b[2Jb\nc"});
    listener_.receive(TextPrinted{"a\x1b[2Jb\nc\n"});
    EXPECT_EQ(messages_.str().find('\x1b'), std::string::npos);
    EXPECT_EQ(results_.str().find('\x1b'), std::string::npos);
    EXPECT_EQ(messages_.str().find('\n'), messages_.str().size() - 1);
    EXPECT_TRUE(results_.str().ends_with("b\nc\n"));
}

TEST_F(TerminalListenerTest, ColoursOnlyWhereTold) {
    TerminalLook look;
    look.colouredMessages = true;
    TerminalListener coloured(results_, messages_, look);
    coloured.receive(ErrorReported{2, 3, "", {}, "red"});
    EXPECT_EQ(messages_.str(), "\x1b[1;31merror:\x1b[0m red\n");
}

}  // namespace
}  // namespace vexa::program
