#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "apps/vexa/actions.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/diagnostics.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/line_editor.h"
#include "apps/vexa/surroundings.h"
#include "backend/platform/interrupt.h"
#include "backend/platform/terminal.h"
#include "backend/session/command_cutter.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "frontend/document/compared_text.h"

namespace vexa::program {

namespace {

constexpr const char* kPrompt = "vexa> ";
constexpr const char* kContinuation = "....> ";
constexpr const char* kAnswer = "vexa? ";

/// The words of a line, one blank between them, without the period at its end.
std::vector<std::string> wordsOfLine(const std::string& line) {
    std::istringstream rest(line.substr(0, line.find_last_not_of(" \t\n.") + 1));
    return {std::istream_iterator<std::string>(rest), std::istream_iterator<std::string>()};
}

/// The words behind "help" or "?", one blank between them, when that is the command's first word.
std::optional<std::string> helpWords(const std::string& command) {
    const std::vector<std::string> words = wordsOfLine(command);
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
    const std::vector<std::string> words = wordsOfLine(line);
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

std::string listOfDocuments(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list.append(list.empty() ? "" : ", ").append(name);
    }
    return list;
}

/// Whether a typed line means yes, in English or in the user's language.
bool meansYes(const std::string& line) {
    const std::string given = frontend::comparedText(line);
    // Words that mean yes, with a comma and a blank between them.
    std::string words = "y, yes, " + translated("y, yes"_text) + ", ";
    for (std::size_t end = words.find(", "); end != std::string::npos; end = words.find(", ")) {
        if (!given.empty() && given == frontend::comparedText(words.substr(0, end))) {
            return true;
        }
        words.erase(0, end + 2);
    }
    return false;
}

/// Whether nothing would be lost, or the user says that it may be.
bool mayLeave(Surroundings& surroundings) {
    using Kind = EditedLine::Kind;
    const std::vector<std::string> unsaved = surroundings.unsavedDocuments();
    if (unsaved.empty()) {
        return true;
    }
    surroundings.terminal().showMessage(
        kWarningLevel,
        composed(
            "These output documents have changes that were not saved: ^1. Leave without saving? [y/N]"_text,
            {listOfDocuments(unsaved)}));
    std::cin.clear();
    const EditedLine answer = readEditedLine(kAnswer, "");
    if (answer.kind == Kind::endOfInput) {
        std::cout << '\n' << std::flush;
    }
    return answer.kind == Kind::endOfInput || (answer.kind == Kind::line && meansYes(answer.text));
}

int runOnTerminal(const Options& options) {
    std::string problem;
    const std::unique_ptr<Surroundings> surroundings = Surroundings::make(options.session, problem);
    if (surroundings == nullptr) {
        complain(problem);
        return exit_status::kUsage;
    }
    surroundings->beginTrace();
    prepareLineEditor(surroundings->session());
    std::cout << translated(lineEditorWelcome()) << '\n' << std::flush;
    while (!surroundings->session().stopped()) {
        const EditedLine command = readCommand();
        if (command.kind == EditedLine::Kind::endOfInput) {
            if (command.text.empty()) {
                std::cout << '\n' << std::flush;
            }
            if (mayLeave(*surroundings)) {
                break;
            }
            std::cin.clear();
        } else if (command.kind == EditedLine::Kind::line) {
            carryOut(command.text, *surroundings);
        }
        std::cout << std::flush;
    }
    if (surroundings->session().stopped()) {
        warnOfUnsaved(*surroundings);
    }
    return surroundings->finish();
}

}  // namespace

void warnOfUnsaved(Surroundings& surroundings) {
    const std::vector<std::string> unsaved = surroundings.unsavedDocuments();
    if (!unsaved.empty()) {
        surroundings.terminal().showMessage(
            kWarningLevel,
            composed("Changes of these output documents were not saved, and are lost: ^1."_text,
                     {listOfDocuments(unsaved)}));
    }
}

int runPrompt(const Options& options) {
    if (isTerminal(StandardStream::input)) {
        return runOnTerminal(options);
    }
    Options standardInput = options;
    standardInput.files = {"-"};
    return runFiles(standardInput);
}

}  // namespace vexa::program
