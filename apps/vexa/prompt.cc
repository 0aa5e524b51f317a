#include <editline/readline.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "apps/vexa/actions.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/surroundings.h"
#include "backend/platform/character_set.h"
#include "backend/platform/terminal.h"
#include "backend/session/command_cutter.h"
#include "backend/session/syntax_completion.h"
#include "backend/strings/dictionary.h"

namespace vexa::program {

namespace {

constexpr const char* kPrompt = "vexa> ";
constexpr const char* kContinuation = "....> ";
constexpr SystemText kWelcome =
    "Commands end with a period. The tabulator key completes, \"help\" lists the commands, the end of input "
    "(Ctrl-D) leaves."_text;

/// What the line editor's callbacks, which take no context, have to know.
struct EditorState {
    Session* session = nullptr;
    std::string before;  // the lines of the command that stand before the one being edited, UTF-8
    std::vector<std::string> candidates;
};
EditorState editor;

/// Gives the candidates one after the other, as copies that the editor frees.
char* nextCandidate(const char* /*text*/, int state) {
    static std::size_t next = 0;
    next = state == 0 ? 0 : next + 1;
    return next < editor.candidates.size() ? strdup(editor.candidates[next].c_str()) : nullptr;
}

/// Called by the editor when the user asks for completion of the bytes `start` to `end` of the line.
char** complete(const char* text, int start, int end) {
    rl_attempted_completion_over = 1;  // file names are no substitute
    const std::string line(rl_line_buffer, static_cast<std::size_t>(end));
    const std::string whole = fromUtf8(editor.before + line);
    const Completion completion = completeSyntax(*editor.session, whole);
    // The editor replaces its own idea of the word, which may begin before or behind ours.
    const std::size_t ours = whole.size() - completion.from;
    const auto theirs = static_cast<std::size_t>(end - start);
    editor.candidates.clear();
    for (const std::string& candidate : completion.candidates) {
        const std::string word = toUtf8(candidate);
        editor.candidates.push_back(theirs < ours ? word.substr(std::min(ours - theirs, word.size()))
                                                  : std::string(text, theirs - ours) + word);
    }
    return rl_completion_matches(text, nextCandidate);
}

/// One line from the terminal, without its end; nothing at the end of the input.
std::optional<std::string> readTerminalLine(const char* prompt) {
    const std::unique_ptr<char, decltype(&std::free)> line(readline(prompt), &std::free);
    if (line == nullptr) {
        return std::nullopt;
    }
    if (line.get()[0] != '\0') {
        add_history(line.get());
    }
    return std::string(line.get());
}

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
    editor.before.clear();
    for (;;) {
        std::optional<std::string> line = readTerminalLine(editor.before.empty() ? kPrompt : kContinuation);
        if (!line) {
            return editor.before.empty() ? std::nullopt : std::optional(editor.before);
        }
        if (editor.before.empty() && helpWords(*line)) {
            return line;
        }
        editor.before += *line + '\n';
        if (finder.addLine(*line) != CommandEndFinder::Ending::none) {
            return editor.before;
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
    std::setlocale(LC_CTYPE, "");  // the line editor measures characters by it
    editor.session = &surroundings->session();
    rl_attempted_completion_function = complete;
    std::cout << translated(kWelcome) << '\n' << std::flush;
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
