#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "apps/vexa/actions.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/line_editor.h"
#include "apps/vexa/surroundings.h"
#include "backend/platform/interrupt.h"
#include "backend/platform/terminal.h"
#include "backend/session/command_cutter.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

constexpr const char* kPrompt = "vexa> ";
constexpr const char* kContinuation = "....> ";

/// The words of a line, one blank between them, without the period at its end.
std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream rest(line.substr(0, line.find_last_not_of(" \t\n.") + 1));
    return {std::istream_iterator<std::string>(rest), std::istream_iterator<std::string>()};
}

/// The words behind "help" or "?", one blank between them, when that is the command's first word.
std::optional<std::string> helpWords(const std::string& command) {
    const std::vector<std::string> words = wordsOf(command);
    if (words.empty() || (words[0] != "?" && !equalsIgnoringCase(words[0], "help"))) {
        return std::nullopt;
    }
    std::string behind;
    for (std::size_t i = 1; i < words.size(); ++i) {
        behind.append(behind.empty() ? "" : " ").append(words[i]);
    }
    return behind;
}

bool asksToLeave(const std::string& line) {
    const std::vector<std::string> words = wordsOf(line);
    return words.size() == 1 &&
           (equalsIgnoringCase(words[0], "exit") || equalsIgnoringCase(words[0], "quit"));
}

/// Collects the lines of one command. The end of the input behind a part of a command ends that first.
EditedLine readCommand() {
    using Kind = EditedLine::Kind;
    CommandEndFinder finder;
    std::string before;
    for (;;) {
        EditedLine line = readEditedLine(before.empty() ? kPrompt : kContinuation, before);
        if (line.kind == Kind::endOfInput && !before.empty()) {
            return {Kind::line, before};
        }
        if (line.kind != Kind::line) {
            return line;
        }
        if (before.empty() && asksToLeave(line.text)) {
            return {Kind::endOfInput, line.text};
        }
        if (before.empty() && helpWords(line.text)) {
            return line;
        }
        before += line.text + '\n';
        if (finder.addLine(line.text) != CommandEndFinder::Ending::none) {
            return {Kind::line, before};
        }
    }
}

/// Runs one command of a user.
void carryOut(const std::string& command, Surroundings& surroundings) {
    constexpr int kNoteLevel = 1;
    rememberCommand(command);
    if (const std::optional<std::string> words = helpWords(command)) {
        explain(*words, surroundings.session());
        return;
    }
    surroundings.session().runText(fromUtf8(command), "");
    if (wasInterrupted()) {
        surroundings.terminal().showMessage(
            kNoteLevel, translated("Interrupted; the commands that were left did not run."_text));
    }
}

/// False, with a warning, when there are documents that would be lost and the user was not told of them just
/// now.
bool mayLeave(Surroundings& surroundings, bool told) {
    constexpr int kWarningLevel = 2;
    std::string unsaved;
    for (const std::string& name : surroundings.unsavedDocuments()) {
        unsaved.append(unsaved.empty() ? "" : ", ").append(name);
    }
    if (told || unsaved.empty()) {
        return true;
    }
    surroundings.terminal().showMessage(
        kWarningLevel,
        composed("Not saved: ^1. OUTPUT SAVE saves it; leave once more if its changes may be lost."_text,
                 {unsaved}));
    return false;
}

int runOnTerminal(const Options& options) {
    std::string problem;
    const std::unique_ptr<Surroundings> surroundings = Surroundings::make(options.session, problem);
    if (surroundings == nullptr) {
        complain(problem);
        return exit_status::kUsage;
    }
    prepareLineEditor(surroundings->session());
    std::cout << translated(lineEditorWelcome()) << '\n' << std::flush;
    bool told = false;
    while (!surroundings->session().stopped()) {
        const EditedLine command = readCommand();
        if (command.kind == EditedLine::Kind::endOfInput) {
            if (command.text.empty()) {
                std::cout << '\n' << std::flush;
            }
            if (mayLeave(*surroundings, told)) {
                break;
            }
            std::cin.clear();
        } else if (command.kind == EditedLine::Kind::line) {
            carryOut(command.text, *surroundings);
        }
        told = command.kind == EditedLine::Kind::endOfInput;
        std::cout << std::flush;
    }
    return surroundings->finish();
}

}  // namespace

int runPrompt(const Options& options) {
    if (isTerminal(StandardStream::input)) {
        return runOnTerminal(options);
    }
    Options standardInput = options;
    standardInput.files = {"-"};
    return runFiles(standardInput);
}

}  // namespace vexa::program
