#include <editline/readline.h>

#include <algorithm>
#include <clocale>
#include <csetjmp>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "apps/vexa/line_editor.h"
#include "backend/platform/interrupt.h"
#include "backend/session/syntax_completion.h"
#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

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

/// Where an interrupt goes while a line is being read.
sigjmp_buf behindTheLine;
volatile std::sig_atomic_t reading = 0;

void leaveTheLine() {
    if (reading != 0) {
        reading = 0;
        siglongjmp(behindTheLine, 1);
    }
}

/// Holds interrupts off the line for as long as the object lives: nothing may be jumped over.
class NotReading {
  public:
    NotReading() { reading = 0; }
    ~NotReading() { reading = 1; }
    NotReading(const NotReading&) = delete;
    NotReading& operator=(const NotReading&) = delete;
};

/// The bytes of the first `count` characters of `text`, UTF-8.
std::size_t bytesOf(std::string_view text, int count) {
    std::size_t at = 0;
    for (int i = 0; i < count && at < text.size(); ++i) {
        ++at;
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) {
            ++at;
        }
    }
    return at;
}

bool endsInQuotes(std::string_view line) {
    char quote = '\0';
    for (const char c : line) {
        if (quote == '\0' && (c == '\'' || c == '"')) {
            quote = c;
        } else if (c == quote) {
            quote = '\0';
        }
    }
    return quote != '\0';
}

/// `line` without the word that asks for help, behind which a command's name is completed as it is elsewhere.
std::string_view withoutHelp(std::string_view line) {
    const std::size_t word = line.find_first_not_of(" \t");
    if (word == std::string_view::npos || !editor.before.empty()) {
        return line;
    }
    const std::size_t end = std::min(line.find_first_of(" \t", word), line.size());
    const std::string_view first = line.substr(word, end - word);
    const bool asks = end < line.size() && (first == "?" || equalsIgnoringCase(first, "help"));
    return asks ? line.substr(end + 1) : line;
}

/// Called by the editor when the user asks for completion of the characters `start` to `end` of the line,
/// which are `text`.
char** complete(const char* text, int /*start*/, int end) {
    const NotReading untouched;
    rl_attempted_completion_over = 1;  // the editor's own idea is no substitute
    const std::string_view whole = rl_line_buffer;
    const std::string line(whole.substr(0, bytesOf(whole, end)));
    if (endsInQuotes(line)) {
        return rl_completion_matches(text, rl_filename_completion_function);
    }
    const std::string syntax = fromUtf8(editor.before + std::string(withoutHelp(line)));
    const Completion completion = completeSyntax(*editor.session, syntax);
    // The editor replaces its own idea of the word, which may begin before or behind ours.
    const std::size_t ours = toUtf8(std::string_view(syntax).substr(completion.from)).size();
    const std::size_t theirs = std::strlen(text);
    editor.candidates.clear();
    for (const std::string& candidate : completion.candidates) {
        const std::string word = toUtf8(candidate);
        editor.candidates.push_back(theirs < ours ? word.substr(std::min(ours - theirs, word.size()))
                                                  : std::string(text, theirs - ours) + word);
    }
    return rl_completion_matches(text, nextCandidate);
}

/// One line, to be freed; null at the end of the input and after an interrupt. Holds nothing that a jump
/// could leave behind.
char* readLine(const char* prompt) {
    if (sigsetjmp(behindTheLine, 1) != 0) {
        return nullptr;
    }
    reading = 1;
    char* const line = readline(prompt);
    reading = 0;
    return line;
}

}  // namespace

void prepareLineEditor(Session& session) {
    std::setlocale(LC_CTYPE, "");  // the editor measures characters by it
    editor.session = &session;
    catchInterrupts(leaveTheLine);
    rl_attempted_completion_function = complete;
}

SystemText lineEditorWelcome() {
    return "Commands end with a period. The Tab key completes, \"help\" lists the commands, and the end of input (Ctrl-D) quits."_text;
}

EditedLine readEditedLine(const char* prompt, const std::string& before) {
    editor.before = before;
    forgetInterrupt();
    const std::unique_ptr<char, decltype(&std::free)> line(readLine(prompt), &std::free);
    if (line != nullptr) {
        return {EditedLine::Kind::line, line.get()};
    }
    if (wasInterrupted()) {
        std::cout << '\n' << std::flush;
        return {EditedLine::Kind::interrupted};
    }
    return {};
}

void rememberCommand(const std::string& lines) {
    // The editor shows one line; where a line ends, a blank may stand.
    std::string whole = lines.substr(0, lines.find_last_not_of(" \t\n") + 1);
    std::replace(whole.begin(), whole.end(), '\n', ' ');
    if (!whole.empty()) {
        add_history(whole.c_str());
    }
}

}  // namespace vexa::program
