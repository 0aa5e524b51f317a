#include <iostream>
#include <memory>
#include <optional>

#include "apps/vexa/actions.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/diagnostics.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/surroundings.h"
#include "backend/platform/process.h"
#include "backend/platform/standard_input.h"
#include "backend/platform/terminal.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

constexpr const char* kStandardInput = "<stdin>";

/// What is typed until the end of the input, which a terminal gives as UTF-8.
std::string typedText() {
    std::string text;
    while (const std::optional<std::string> line = readTerminalLine()) {
        text += *line + '\n';
    }
    return fromUtf8(text);
}

/// Runs what standard input holds.
InputResult runStandardInput(Session& session) {
    if (isTerminal(StandardStream::input)) {
        session.runText(typedText(), kStandardInput);
        return {};
    }
    std::string text;
    if (FileResult result = readStandardInput(text); !result) {
        return {std::move(result), false};
    }
    return session.runInput(std::move(text), kStandardInput);
}

/// Nothing was run, so neither a trace nor a document hears of it.
void complainOf(const InputResult& result, const std::string& file, TerminalListener& terminal) {
    if (!result.isRead) {
        complain("The syntax file ^1 cannot be read: ^2. Check its name and your current folder."_text,
                 {file, shownReason(result)}, file);
        return;
    }
    terminal.receive(ErrorReported{.level = kErrorLevel,
                                   .text = result.reason,
                                   .arguments = result.arguments,
                                   .message = shownReason(result),
                                   .place = {result.arguments.front(), 1, 1, ""}});
}

}  // namespace

int statusWithOutput(int status, bool onlyShows) {
    if (std::cout.flush()) {
        return std::cerr ? status : exit_status::kUsage;  // there is nobody to be told
    }
    if (!hasOutputLostItsReader()) {
        complain("Standard output could not be written completely. Is the disk full?"_text, {});
    } else if (!onlyShows) {
        complain("Standard output could not be written completely, because its reader has gone."_text, {});
    }
    return exit_status::kUsage;
}

int runFiles(const Options& options) {
    std::string problem;
    const std::unique_ptr<Surroundings> surroundings = Surroundings::make(options.session, problem);
    if (surroundings == nullptr) {
        complain(problem);
        return exit_status::kUsage;
    }
    Session& session = surroundings->session();
    bool allRead = true;
    for (const std::string& file : options.files) {
        if (session.stopped() || !allRead) {
            break;
        }
        const InputResult result = file == "-" ? runStandardInput(session) : session.runFile(file);
        if (result) {
            surroundings->beginTrace();
        } else {
            complainOf(result, file, surroundings->terminal());
            allRead = false;
        }
    }
    if (options.action == Action::prompt) {
        warnOfUnsaved(*surroundings);
    }
    const int status = surroundings->finish();
    return allRead ? status : exit_status::kUsage;
}

}  // namespace vexa::program
