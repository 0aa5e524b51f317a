#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "apps/vexa/actions.h"
#include "apps/vexa/command_line.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/surroundings.h"
#include "backend/session/command_catalog.h"
#include "backend/strings/dictionary.h"
#include "backend/syntax/grammar_text.h"
#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

constexpr std::size_t kNameColumn = 18;

/// Those whose names begin with `beginning`, in capitals.
int listCommands(Session& session, std::string_view beginning = "") {
    std::cout << "Commands of the language:\n";
    for (const KnownCommand& command : knownCommands()) {
        if (!command.name.starts_with(beginning)) {
            continue;
        }
        std::string line = "  " + std::string(command.name);
        line.resize(kNameColumn, ' ');
        const bool lacking = !session.describe(command) && session.moduleFailure().empty();
        std::cout << line << command.summary << (lacking ? " (not in this module yet)" : "") << '\n';
    }
    std::cout << "\nA command ends with a period at the end of a line, or at a blank line.\n"
                 "vexa help COMMAND shows what one takes, for example: vexa help OUTPUT SAVE\n";
    return exit_status::kSuccess;
}

bool isCommandOfTheProgram(const std::string& name) {
    const std::vector<DescribedCommand> commands = describedCommandLine();
    return std::any_of(commands.begin(), commands.end(),
                       [&](const DescribedCommand& each) { return !each.name.empty() && each.name == name; });
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text.append(text.empty() ? "" : " ").append(word);
    }
    return text;
}

int complainOfUnknown(const std::string& name) {
    if (isCommandOfTheProgram(name)) {
        complain(R"(^1 is a command of the program: "vexa ^1 --help" shows what it takes.)"_text, {name});
        return exit_status::kUsage;
    }
    const KnownCommand* const nearest = nearestCommand(name);
    std::string message = composed("There is no command '^1'."_text, {name});
    if (nearest != nullptr) {
        appendSentence(message, composed("Did you mean ^1?"_text, {std::string(nearest->name)}));
    }
    appendSentence(message, translated(R"("vexa help" lists the commands.)"_text));
    complain(message);
    return exit_status::kUsage;
}

int showPart(const CommandDescriptor& descriptor, std::string part) {
    if (part.starts_with('/')) {
        part.erase(0, 1);
    }
    const std::optional<std::string> text = grammarText(descriptor, part);
    if (!text) {
        complain(R"(^1 has no subcommand or parameter '^2'. "vexa help ^1" shows what it has.)"_text,
                 {std::string(descriptor.name()), part});
        return exit_status::kUsage;
    }
    std::cout << *text;
    return exit_status::kSuccess;
}

int showCommand(const KnownCommand& command, const std::string& part, Session& session) {
    const std::optional<CommandDescriptor> descriptor = session.describe(command);
    if (!descriptor) {
        complain(session.moduleFailure().empty()
                     ? composed("This module has no command ^1."_text, {std::string(command.name)})
                     : composed("The command library cannot be loaded: ^1"_text, {session.moduleFailure()}));
        return exit_status::kUsage;
    }
    if (!part.empty()) {
        return showPart(*descriptor, part);
    }
    std::cout << command.name << ' ' << command.summary << ".\n\n" << grammarText(*descriptor);
    if (!command.example.empty()) {
        std::cout << "\nExample:\n  " << command.example << '\n';
    }
    return exit_status::kSuccess;
}

}  // namespace

int explain(const std::string& words, Session& session) {
    if (words.empty()) {
        return listCommands(session);
    }
    const std::optional<FoundCommand> found = findCommandName(words, 0);
    if (!found) {
        const std::string group = toUpperCase(words) + ' ';
        const auto known = knownCommands();
        return std::any_of(known.begin(), known.end(),
                           [&](const KnownCommand& each) { return each.name.starts_with(group); })
                   ? listCommands(session, group)
                   : complainOfUnknown(words);
    }
    const std::string part = found->end < words.size() ? words.substr(found->end + 1) : "";
    return showCommand(*found->command, part, session);
}

int showHelp(const Options& options) {
    std::string problem;
    const std::unique_ptr<Surroundings> surroundings = Surroundings::make(options.session, problem);
    if (surroundings == nullptr) {
        complain(problem);
        return exit_status::kUsage;
    }
    return explain(joined(options.commandWords), surroundings->session());
}

}  // namespace vexa::program
