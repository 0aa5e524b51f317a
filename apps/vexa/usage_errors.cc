#include "apps/vexa/usage_errors.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <string_view>
#include <vector>

#include "apps/vexa/diagnostics.h"
#include "backend/platform/file_system.h"
#include "backend/syntax/nearest_keyword.h"
#include "backend/text/text_width.h"

namespace vexa::program {

namespace {

constexpr const char* kWayOut = "Run with --help for more information.";

/// The command of the program that was given, or the program itself.
const CLI::App& chosenCommand(const CLI::App& app) {
    const std::vector<CLI::App*> given = app.get_subcommands();
    return given.empty() ? app : *given.front();
}

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

std::string nameOf(const CLI::App& app, const CLI::App& command) {
    return &app == &command ? "vexa" : "vexa " + command.get_name();
}

bool isOption(const std::string& word) { return word.size() > 1 && word.front() == '-'; }

bool hasOption(const CLI::App& command, const std::string& name) {
    return command.get_option_no_throw(name) != nullptr;
}

std::string nearestOf(const std::string& word, const std::vector<std::string>& names) {
    const std::vector<std::string_view> views(names.begin(), names.end());
    return std::string(nearestKeyword(word, views));
}

/// "run, check or show".
std::string listOf(const std::vector<std::string>& names) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list.append(i == 0 ? "" : i + 1 == names.size() ? " or " : ", ").append(names[i]);
    }
    return list;
}

/// The words that a command takes: "DOCUMENT FILE...".
std::string positionalWordsOf(const CLI::App& command) {
    std::string words;
    for (const CLI::Option* const option : command.get_options()) {
        if (!option->get_positional()) continue;
        words.append(" ").append(option->get_name(true));
        words += option->get_items_expected_max() > 1 ? "..." : "";
    }
    return words;
}

/// The first word that nothing has taken; options first, for what follows them was taken for something else.
std::string firstExtra(const CLI::App& app) {
    const std::vector<std::string> extras = app.remaining(true);
    const auto option = std::find_if(extras.begin(), extras.end(), isOption);
    if (option != extras.end()) return *option;
    return extras.empty() ? std::string() : extras.front();
}

std::string complaintOfOption(const CLI::App& app, const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    const CLI::App& command = chosenCommand(app);
    std::vector<std::string> others;
    for (const CLI::App* const each : commandsOf(app)) {
        if (each != &command && hasOption(*each, name)) others.push_back("vexa " + each->get_name());
    }
    if (!others.empty()) {
        return nameOf(app, command) + " has no option " + name + ", but " + listOf(others) + " does.";
    }
    std::vector<std::string> names;
    for (const CLI::Option* const option : command.get_options()) {
        for (const std::string& each : option->get_lnames()) names.push_back("--" + each);
    }
    const std::string nearest = nearestOf(name, names);
    return nameOf(app, command) + " has no option " + name + "." +
           (nearest.empty() ? "" : " Did you mean " + nearest + "?");
}

std::string complaintOfWord(const CLI::App& app, const std::string& word) {
    const CLI::App& command = chosenCommand(app);
    return "'" + word + "' is a word too many: " + nameOf(app, command) + " takes" +
           (positionalWordsOf(command).empty() ? " none" : positionalWordsOf(command)) + ".";
}

/// What the library's complaint says behind "^name: ", or the whole.
std::string optionNamed(const std::string& complaint) { return complaint.substr(0, complaint.find(':')); }

std::string complaintOfValue(const CLI::App& app, const std::string& complaint) {
    const std::string name = optionNamed(complaint);
    const CLI::Option* const option = chosenCommand(app).get_option_no_throw(name);
    if (option == nullptr) return complaint;
    if (option->results().size() > 1) return name + " is given more than once.";
    return name + " needs a value: " + name + " " + option->get_option_text();
}

/// The library says "Could not convert: NAME = VALUE".
std::string complaintOfNumber(const std::string& complaint) {
    const std::size_t name = complaint.find(": ");
    const std::size_t value = complaint.find(" = ");
    if (name == std::string::npos || value == std::string::npos) return complaint;
    return complaint.substr(name + 2, value - name - 2) + ": takes a whole number, not '" +
           complaint.substr(value + 3) + "'";
}

/// The library says "NAME: Value VALUE not in range LEAST to MOST".
std::string complaintOfRange(const std::string& complaint) {
    constexpr std::string_view kValue = ": Value ";
    constexpr std::string_view kRange = " not in range ";
    const std::size_t value = complaint.find(kValue);
    const std::size_t range = complaint.rfind(kRange);
    if (value == std::string::npos || range == std::string::npos || range < value) return complaint;
    const std::size_t from = value + kValue.size();
    return complaint.substr(0, value) + ": takes a whole number from " +
           complaint.substr(range + kRange.size()) + ", not '" + complaint.substr(from, range - from) + "'";
}

}  // namespace

std::string usageComplaint(const CLI::App& app, const CLI::ParseError& error) {
    std::string said = error.what();
    const std::string extra = firstExtra(app);
    if (isOption(extra)) return complaintOfOption(app, extra);
    const auto kind = static_cast<CLI::ExitCodes>(error.get_exit_code());
    if (kind == CLI::ExitCodes::ExtrasError && !extra.empty()) return complaintOfWord(app, extra);
    if (kind == CLI::ExitCodes::ArgumentMismatch) return complaintOfValue(app, said);
    if (kind == CLI::ExitCodes::ConversionError) return complaintOfNumber(said);
    if (kind == CLI::ExitCodes::ValidationError) return complaintOfRange(said);
    if (kind == CLI::ExitCodes::RequiredError) {
        const CLI::App& command = chosenCommand(app);
        return said.substr(0, said.find(' ')) + " is missing: " + nameOf(app, command) +
               positionalWordsOf(command);
    }
    return said;
}

std::string objectionToFile(const CLI::App& app, const std::string& word) {
    if (word == "-" || word.ends_with(".vxs") || FileSystem::current().isFile(word)) {
        return {};
    }
    std::vector<std::string> names;
    for (const CLI::App* const command : commandsOf(app)) names.push_back(command->get_name());
    const std::string nearest = nearestOf(word, names);
    return "'" + word + "' is neither a command of this program nor a syntax file" +
           (nearest.empty() ? "" : ". Did you mean vexa " + nearest + "?");
}

void complainOfUsage(const std::string& complaint) {
    if (areDiagnosticsJson()) {
        const bool isSentence = complaint.ends_with('.') || complaint.ends_with('?');
        std::cerr << diagnosticLine(
            {.code = diagnostic_code::kUsage, .text = complaint + (isSentence ? " " : ". ") + kWayOut});
    } else {
        std::cerr << printableText(complaint) << '\n' << kWayOut << '\n';
    }
}

}  // namespace vexa::program
