#include <editline/readline.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "apps/vexa/line_editor.h"
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

}  // namespace

void prepareLineEditor(Session& session) {
    std::setlocale(LC_CTYPE, "");  // the editor measures characters by it
    editor.session = &session;
    rl_attempted_completion_function = complete;
}

SystemText lineEditorWelcome() {
    return "Commands end with a period. The Tab key completes, \"help\" lists the commands, and the end of input (Ctrl-D) quits."_text;
}

std::optional<std::string> readEditedLine(const char* prompt, const std::string& before) {
    editor.before = before;
    const std::unique_ptr<char, decltype(&std::free)> line(readline(prompt), &std::free);
    if (line == nullptr) {
        return std::nullopt;
    }
    if (line.get()[0] != '\0') {
        add_history(line.get());
    }
    return std::string(line.get());
}

}  // namespace vexa::program
