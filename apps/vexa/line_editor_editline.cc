#include <editline/readline.h>
#include <langinfo.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csetjmp>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/vexa/line_editor.h"
#include "backend/paths/file_specification.h"
#include "backend/platform/file_system.h"
#include "backend/platform/interrupt.h"
#include "backend/session/command_catalog.h"
#include "backend/session/syntax_completion.h"
#include "backend/text/character_set.h"
#include "backend/text/text_width.h"

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
/// Whether a signal ended the line, or has to end it as soon as it may be jumped out of.
volatile std::sig_atomic_t lineIsLost = 0;

void leaveTheLine() {
    lineIsLost = 1;
    if (reading != 0) {
        reading = 0;
        siglongjmp(behindTheLine, 1);
    }
}

volatile std::sig_atomic_t wasContinued = 0;
/// What a stop did before the editor: the system's own way, or nothing.
struct sigaction usualStop {};

extern "C" void rememberContinuing(int /*signal*/) { wasContinued = 1; }

/// Stops the program, as Ctrl-Z asks. Where no shell could bring it back (in a terminal of its own), the
/// system stops nothing, and tells nobody. The editor has given the terminal back by now and would wait for
/// a line's end, whatever keys come: the line is given up instead.
extern "C" void stopOrLeaveTheLine(int signal) {
    const int errorBefore = errno;
    struct sigaction ours {};
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, signal);
    wasContinued = 0;
    sigaction(signal, &usualStop, &ours);
    raise(signal);
    sigprocmask(SIG_UNBLOCK, &stop, nullptr);  // here it stops
    sigprocmask(SIG_BLOCK, &stop, nullptr);
    sigaction(signal, &ours, nullptr);
    errno = errorBefore;
    if (wasContinued == 0) leaveTheLine();
}

void catchStops() {
    struct sigaction action {};
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    action.sa_handler = rememberContinuing;
    sigaction(SIGCONT, &action, nullptr);
    action.sa_handler = stopOrLeaveTheLine;
    sigaction(SIGTSTP, &action, &usualStop);
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

/// The quotation mark that is open at the end of a line, and the offset behind it.
struct OpenQuote {
    char quote = '\0';  ///< none is open
    std::size_t behind = 0;
};

OpenQuote openQuote(std::string_view line) {
    OpenQuote open;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (open.quote == '\0' && (line[at] == '\'' || line[at] == '"')) {
            open = {line[at], at + 1};
        } else if (line[at] == open.quote) {
            // A doubled one closes the text and opens it again, which comes to the same.
            const bool isDoubled = at + 1 < line.size() && line[at + 1] == open.quote;
            at += isDoubled ? 1U : 0U;
            open = isDoubled ? open : OpenQuote{};
        }
    }
    return open;
}

/// `name` with every `quote` in it doubled, or with doubled ones as one.
std::string withDoubled(std::string_view name, char quote) {
    std::string text;
    for (const char c : name) text.append(c == quote ? 2U : 1U, c);
    return text;
}

std::string withSingle(std::string_view text, char quote) {
    std::string name;
    for (std::size_t at = 0; at < text.size(); ++at) {
        name += text[at];
        at += text[at] == quote ? 1U : 0U;
    }
    return name;
}

/// Names of files that begin with `typed`, as they stand in quotes; relative ones from the folder of CD. One
/// with a control character or broken letters is none: it cannot be typed, and would steer the terminal.
std::vector<std::string> filesInQuotes(std::string_view typed, char quote) {
    const std::string name = withSingle(typed, quote);
    std::string folder;
    if (!name.starts_with('/') && !name.starts_with('~')) {
        folder = toNativePath(toUtf8(FileLocations::current().folder()));
        folder += folder.empty() || folder.ends_with('/') ? "" : "/";
    }
    std::vector<std::string> names;
    for (int state = 0;; ++state) {
        const std::unique_ptr<char, decltype(&std::free)> file(
            rl_filename_completion_function((folder + name).c_str(), state), &std::free);
        if (file == nullptr) break;
        const std::string_view whole = file.get();
        if (!whole.starts_with(folder) || printableText(whole) != whole) continue;
        names.push_back(withDoubled(whole.substr(folder.size()), quote));
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// What `help` can show of a command: its subcommands and the parameters of each.
std::vector<std::string> partsOf(const CommandDescriptor& descriptor) {
    std::vector<std::string> parts;
    const auto add = [&parts](std::string_view name) {
        const bool isNew = std::find(parts.begin(), parts.end(), name) == parts.end();
        if (!name.empty() && isNew) parts.emplace_back(name);
    };
    for (const SubComDescriptor& subcommand : descriptor.subcommands()) {
        add(subcommand.name());
        for (const ParamDescriptor& parameter : subcommand.parameters()) add(parameter.name());
    }
    return parts;
}

/// What stands behind the word that asks for help; nothing where none does.
std::optional<std::string_view> behindHelp(std::string_view line) {
    const std::size_t word = line.find_first_not_of(" \t");
    if (word == std::string_view::npos || !editor.before.empty()) {
        return std::nullopt;
    }
    const std::size_t end = std::min(line.find_first_of(" \t", word), line.size());
    const std::string_view first = line.substr(word, end - word);
    const bool asks = end < line.size() && (first == "?" || equalsIgnoringCase(first, "help"));
    return asks ? std::optional(line.substr(end + 1)) : std::nullopt;
}

/// What may follow `words`, which stand behind "help".
Completion completeHelp(std::string_view words) {
    const std::size_t first = std::min(words.find_first_not_of(" \t"), words.size());
    const std::optional<FoundCommand> found = findCommandName(words, first);
    if (!found || found->end == words.size()) {
        return completeSyntax(*editor.session, words);
    }
    Completion completion;
    completion.from = std::max(found->end, words.find_last_of(" \t/") + 1);
    const std::string typed = toUpperCase(words.substr(completion.from));
    const std::optional<CommandDescriptor> descriptor = editor.session->describe(*found->command);
    for (const std::string& part : descriptor ? partsOf(*descriptor) : std::vector<std::string>()) {
        if (part.starts_with(typed)) completion.candidates.push_back(part);
    }
    return completion;
}

/// Offers `words`, which take the place of the last `ours` bytes of the line. The editor replaces its own
/// idea of the word, `text`, which may begin before or behind ours.
char** offer(const char* text, std::size_t ours, const std::vector<std::string>& words) {
    const std::size_t theirs = std::strlen(text);
    editor.candidates.clear();
    for (const std::string& word : words) {
        editor.candidates.push_back(theirs < ours ? word.substr(std::min(ours - theirs, word.size()))
                                                  : std::string(text, theirs - ours) + word);
    }
    return rl_completion_matches(text, nextCandidate);
}

/// A folder goes on with what is in it; behind anything else the text ends.
int behindFile(const std::vector<std::string>& files, char quote) {
    if (files.size() != 1) return 0;
    const std::string name = withSingle(files.front(), quote);
    const std::string folder =
        name.starts_with('/') ? "" : toNativePath(toUtf8(FileLocations::current().folder()));
    return FileSystem::current().isFolder(folder.empty() ? name : folder + "/" + name) ? '/' : quote;
}

/// What may stand in place of `text`, which ends at the character `end` of the line.
char** completionsOf(const char* text, int end) {
    const NotReading untouched;
    rl_attempted_completion_over = 1;  // the editor's own idea is no substitute
    const std::string_view whole = rl_line_buffer;
    const std::string line(whole.substr(0, bytesOf(whole, end)));
    rl_completion_append_character = ' ';
    if (const OpenQuote open = openQuote(line); open.quote != '\0') {
        const std::string_view typed = std::string_view(line).substr(open.behind);
        const std::vector<std::string> files = filesInQuotes(typed, open.quote);
        rl_completion_append_character = behindFile(files, open.quote);
        return offer(text, typed.size(), files);
    }
    const std::optional<std::string_view> help = behindHelp(line);
    const std::string syntax = fromUtf8(help ? std::string(*help) : editor.before + line);
    const Completion completion = help ? completeHelp(syntax) : completeSyntax(*editor.session, syntax);
    std::vector<std::string> words;
    for (const std::string& candidate : completion.candidates) words.push_back(toUtf8(candidate));
    return offer(text, toUtf8(std::string_view(syntax).substr(completion.from)).size(), words);
}

/// Called by the editor when the user asks for completion of the characters `start` to `end` of the line,
/// which are `text`. Holds nothing but what it gives back when a signal that came meanwhile ends the line.
char** complete(const char* text, int /*start*/, int end) {
    char** const found = completionsOf(text, end);
    if (lineIsLost != 0) leaveTheLine();
    return found;
}

/// One line, to be freed; null at the end of the input and after an interrupt. Holds nothing that a jump
/// could leave behind.
char* readLine(const char* prompt) {
    lineIsLost = 0;
    if (sigsetjmp(behindTheLine, 1) != 0) {
        return nullptr;
    }
    reading = 1;
    char* const line = readline(prompt);
    reading = 0;
    return line;
}

/// The editor takes characters by the locale. What is typed is UTF-8, as what is shown, also where the locale
/// is C or one that the system lacks.
void readCharacters() {
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(nl_langinfo(CODESET)) != "UTF-8") std::setlocale(LC_CTYPE, "C.UTF-8");
}

}  // namespace

void prepareLineEditor(Session& session) {
    readCharacters();
    editor.session = &session;
    catchInterrupts(leaveTheLine);
    catchStops();
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
    // A signal is no end of the input, at which documents are left.
    if (lineIsLost != 0) {
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
