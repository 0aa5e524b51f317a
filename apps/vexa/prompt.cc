#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "apps/vexa/actions.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/line_editor.h"
#include "apps/vexa/surroundings.h"
#include "backend/platform/terminal.h"
#include "backend/session/command_cutter.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

constexpr const char* kPrompt = "vexa> ";
constexpr const char* kContinuation = "....> ";

/// The words behind "help", one blank between them, when that is the command's first word.
std::optional<std::string> helpWords(const std::string& command) {
    std::istringstream rest(command);
    std::string word;
    std::string words;
    if (!(rest >> word) || !equalsIgnoringCase(word.substr(0, word.find('.')), "help")) {
        return std::nullopt;
    }
    while (rest >> word) {
        words.append(words.empty() ? "" : " ").append(word);
    }
    while (words.ends_with('.')) {
        words.pop_back();
    }
    return words;
}

/// Collects the lines of one command; nothing at the end of the input when no line came before it.
std::optional<std::string> readCommand() {
    CommandEndFinder finder;
    std::string before;
    for (;;) {
        std::optional<std::string> line = readEditedLine(before.empty() ? kPrompt : kContinuation, before);
        if (!line) {
            return before.empty() ? std::nullopt : std::optional(before);
        }
        if (before.empty() && helpWords(*line)) {
            return line;
        }
        before += *line + '\n';
        if (finder.addLine(*line) != CommandEndFinder::Ending::none) {
            return before;
        }
    }
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
    while (!surroundings->session().stopped()) {
        std::optional<std::string> command = readCommand();
        if (!command) {
            std::cout << '\n';
            break;
        }
        if (const std::optional<std::string> words = helpWords(*command)) {
            explain(*words, surroundings->session());
        } else {
            surroundings->session().runText(fromUtf8(*command), "");
        }
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
