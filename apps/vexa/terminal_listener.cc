#include "apps/vexa/terminal_listener.h"

#include <algorithm>
#include <ostream>
#include <variant>

#include "apps/rendering/table_rendering.h"
#include "backend/strings/dictionary.h"
#include "backend/text/text_width.h"
#include "backend/tokens/command_text.h"

namespace vexa::program {

namespace {

constexpr int kErrorLevel = 3;
constexpr int kWarningLevel = 2;
constexpr std::string_view kMarker = "^1";
constexpr std::size_t kTabWidth = 8;
constexpr std::size_t kLongestBefore = 60;  // columns shown before and behind the place
constexpr std::size_t kLongestBehind = 40;

struct Severity {
    SystemText form;  ///< ^1: the message
    std::string_view colour;
};

Severity severityOf(int level) {
    if (level >= kErrorLevel) {
        return {"error: ^1"_text, "\x1b[1;31m"};
    }
    return level == kWarningLevel ? Severity{"warning: ^1"_text, "\x1b[1;35m"}
                                  : Severity{"note: ^1"_text, "\x1b[1;36m"};
}

/// Bytes of the UTF-8 character that `text` begins with.
std::size_t characterBytes(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        ++length;
    }
    return length;
}

/// Characters, each as it is shown, with the columns that it takes.
struct ShownCharacter {
    std::string text;
    std::size_t width = 0;
};

/// Appends the character that `rest` begins with, as it is shown at the column `at`, and takes it off.
std::size_t takeCharacter(std::string_view& rest, std::size_t at, ShownCharacter& shown) {
    const std::size_t bytes = characterBytes(rest);
    const std::string_view character = rest.substr(0, bytes);
    if (character == "\t") {
        shown.width = kTabWidth - at % kTabWidth;
        shown.text.assign(shown.width, ' ');
    } else {
        shown.text = printableText(character);
        shown.width = displayWidth(shown.text);
    }
    rest.remove_prefix(bytes);
    return shown.width;
}

/// The place of the command that is running, with a colon behind it; empty without a file.
std::string currentPlace() {
    const CommandText* const command = currentCommand();
    if (command == nullptr || command->file.empty()) {
        return {};
    }
    return printableText(command->file) + ':' + std::to_string(command->line) + ": ";
}

}  // namespace

std::string sourceWithCaret(const SourcePlace& place) {
    if (place.sourceLine.empty() || place.column < 1) {
        return {};
    }
    std::string_view rest = place.sourceLine;
    std::vector<ShownCharacter> before;
    std::size_t column = 0;
    ShownCharacter shown;
    for (int i = 1; i < place.column && !rest.empty(); ++i) {
        column += takeCharacter(rest, column, shown);
        before.push_back(shown);
    }
    std::size_t first = before.size();
    std::size_t caret = 0;
    while (first > 0 && caret + before[first - 1].width <= kLongestBefore) {
        caret += before[--first].width;
    }
    std::string line = first > 0 ? "..." : "";
    caret += line.size();
    for (std::size_t i = first; i < before.size(); ++i) {
        line += before[i].text;
    }
    for (std::size_t behind = 0; !rest.empty() && behind < kLongestBehind;) {
        behind += takeCharacter(rest, column + behind, shown);
        line += shown.text;
    }
    return "  " + line + (rest.empty() ? "" : "...") + "\n  " + std::string(caret, ' ') + "^\n";
}

void TerminalListener::receive(const LogEvent& event) {
    std::visit([this](const auto& specific) { show(specific); }, event);
}

void TerminalListener::showMessage(int level, std::string_view text) { showMessageAt("", level, text); }

void TerminalListener::showMessageAt(std::string_view place, int level, std::string_view text) {
    results_.flush();  // so that both streams stand in their true order where they meet
    const Severity severity = severityOf(level);
    messages_ << place;
    std::string form = translated(severity.form);
    if (form.find(kMarker) == std::string::npos) {
        form = severity.form;  // a table that loses the message is worse than none
    }
    const std::string before = form.substr(0, form.find(kMarker));
    const std::string word = before.substr(0, before.find_last_not_of(' ') + 1);
    if (look_.colouredMessages) {
        messages_ << severity.colour << word << "\x1b[0m";
    } else {
        messages_ << word;
    }
    messages_ << replaceMarkers(form.substr(word.size()), {printableText(text)}) << '\n' << std::flush;
}

void TerminalListener::show(const SyntaxErrorReported& error) {
    showAt(error.place, kErrorLevel, error.message);
}

void TerminalListener::show(const SyntaxWarned& warning) {
    showAt(warning.place, kWarningLevel, warning.message);
}

void TerminalListener::showAt(const SourcePlace& place, int level, std::string_view text) {
    std::string where;
    if (!place.file.empty()) {
        where = printableText(place.file) + ':' + std::to_string(place.line) + ':' +
                std::to_string(place.column) + ": ";
    }
    showMessageAt(where, level, text);
    messages_ << sourceWithCaret(place) << std::flush;
}

void TerminalListener::show(const ParserMessageReported& report) {
    showMessageAt(currentPlace(), report.warning ? kWarningLevel : kErrorLevel, report.message);
}

void TerminalListener::show(const ErrorReported& error) {
    showMessageAt(currentPlace(), error.level, error.message);
}

void TerminalListener::show(const NotesAdded& notes) {
    showResult(rendering::renderNotes(notes, renderOptions()));
}

void TerminalListener::show(const TableFinished& table) {
    rendering::renderTable(table.shown, renderOptions(),
                           [this](std::string_view piece) { results_ << piece; });
}

rendering::RenderOptions TerminalListener::renderOptions() const {
    rendering::RenderOptions options;
    options.width = look_.width;
    options.styled = look_.styledResults;
    options.colors = look_.resultColors;
    return options;
}

void TerminalListener::show(const TextPrinted& text) {
    std::string shown;
    std::string_view rest = text.text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        shown += printableText(rest.substr(0, end));
        shown += end < rest.size() ? "\n" : "";
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    showResult(shown);
}

void TerminalListener::showResult(const std::string& text) { results_ << text; }

}  // namespace vexa::program
