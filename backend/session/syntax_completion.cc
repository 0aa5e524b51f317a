#include "backend/session/syntax_completion.h"

#include <optional>
#include <string>

#include "backend/session/command_catalog.h"
#include "backend/session/command_cutter.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

/// `text` in capitals, one blank in the place of several and of line ends.
std::string normalised(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (!isBlank(c)) {
            result += c;
        } else if (!result.empty() && result.back() != ' ') {
            result += ' ';
        }
    }
    return toUpperCase(result);
}

/// Names of commands that begin with what `text` holds from `first` on; a candidate is the rest of the name
/// from its unfinished word.
Completion completeName(std::string_view text, std::size_t first) {
    const std::string typed = normalised(text.substr(first));
    const std::size_t lastBlank = typed.rfind(' ');
    const std::size_t words = lastBlank == std::string::npos ? 0 : lastBlank + 1;
    Completion completion;
    completion.from = text.size() - (typed.size() - words);
    for (const KnownCommand& command : knownCommands()) {
        if (command.name.starts_with(typed)) {
            completion.candidates.emplace_back(command.name.substr(words));
        }
    }
    return completion;
}

}  // namespace

Completion completeSyntax(Session& session, std::string_view text) {
    const std::size_t first = skipBlanksAndComments(text, 0);
    const std::optional<FoundCommand> found = findCommandName(text, first);
    if (!found || found->end == text.size()) {
        return completeName(text, first);
    }
    const std::optional<CommandDescriptor> descriptor = session.describe(*found->command);
    if (!descriptor) {
        return {text.size(), {}};
    }
    CommandText command;
    command.text = text;
    command.arguments = found->end;
    return completeCommand(*descriptor, command);
}

}  // namespace vexa
