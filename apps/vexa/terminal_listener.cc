#include "apps/vexa/terminal_listener.h"

#include <algorithm>
#include <ostream>
#include <utility>
#include <variant>

#include "apps/rendering/table_rendering.h"
#include "apps/vexa/diagnostics.h"
#include "backend/session/command_cutter.h"
#include "backend/strings/dictionary.h"
#include "backend/text/text_width.h"
#include "backend/tokens/command_text.h"

namespace vexa::program {

namespace {

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

/// "case.vxs:3:2: ", as far as it is known; empty without a file.
std::string shownPlace(const Diagnostic& diagnostic) {
    if (diagnostic.file.empty()) return {};
    std::string place = printableText(diagnostic.file) + ':' + std::to_string(diagnostic.line) + ':';
    if (diagnostic.column > 0) place += std::to_string(diagnostic.column) + ':';
    return place + ' ';
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

void TerminalListener::showMessage(int level, std::string_view text) {
    Diagnostic diagnostic{.code = diagnostic_code::kProgram, .level = level, .text = std::string(text)};
    if (look_.jsonMessages) {
        showHere(std::move(diagnostic));
    } else {
        showDiagnostic(diagnostic);
    }
}

void TerminalListener::showDiagnostic(const Diagnostic& diagnostic) {
    if (look_.quiet && diagnostic.level < kWarningLevel) return;
    results_.flush();  // so that both streams stand in their true order where they meet
    if (look_.jsonMessages) {
        messages_ << diagnosticLine(diagnostic) << std::flush;
    } else {
        showSentence(diagnostic);
    }
}

void TerminalListener::showSentence(const Diagnostic& diagnostic) {
    const Severity severity = severityOf(diagnostic.level);
    messages_ << shownPlace(diagnostic);
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
    messages_ << replaceMarkers(form.substr(word.size()), {printableText(diagnostic.text)}) << '\n'
              << std::flush;
}

void TerminalListener::show(const SyntaxErrorReported& error) {
    showAt(error.place, {.code = diagnostic_code::kSyntax, .level = kErrorLevel, .text = error.message});
}

void TerminalListener::show(const SyntaxWarned& warning) {
    showAt(warning.place,
           {.code = diagnostic_code::kIgnoredValue, .level = kWarningLevel, .text = warning.message});
}

void TerminalListener::showAt(const SourcePlace& place, Diagnostic diagnostic) {
    diagnostic.file = place.file;
    diagnostic.line = place.line;
    diagnostic.column = place.column;
    showDiagnostic(diagnostic);
    if (!look_.jsonMessages) messages_ << sourceWithCaret(place) << std::flush;
}

void TerminalListener::showHere(Diagnostic diagnostic) {
    const CommandText* const command = currentCommand();
    if (command != nullptr && !command->file.empty()) {
        diagnostic.file = command->file;
        diagnostic.line = command->line;
        // A sentence needs no more than the line; for a program every place is whole.
        const std::size_t first = skipBlanksAndComments(command->text, 0);
        if (look_.jsonMessages) diagnostic.column = placeOf(*command, first).column;
    }
    showDiagnostic(diagnostic);
}

void TerminalListener::show(const ParserMessageReported& report) {
    Diagnostic diagnostic{.code = diagnostic_code::kRefusedValue,
                          .level = report.warning ? kWarningLevel : kErrorLevel,
                          .text = report.message};
    for (const ParserMessageReported::Argument& argument : report.arguments) {
        const auto* const text = std::get_if<std::string>(&argument);
        if (text != nullptr) diagnostic.arguments.push_back(*text);
    }
    showHere(std::move(diagnostic));
}

void TerminalListener::show(const ErrorReported& error) {
    Diagnostic diagnostic{.code = diagnostic_code::kCommand,
                          .level = error.level,
                          .text = error.message,
                          .key = error.text,
                          .arguments = error.arguments};
    if (error.place.line > 0) {
        showAt(error.place, std::move(diagnostic));
    } else {
        showHere(std::move(diagnostic));
    }
}

void TerminalListener::show(const NotesAdded& notes) {
    showResult(rendering::renderNotes(notes, renderOptions()));
}

void TerminalListener::show(const TableFinished& table) {
    if (look_.quiet) return;
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

void TerminalListener::showResult(const std::string& text) {
    if (!look_.quiet) results_ << text;
}

}  // namespace vexa::program
