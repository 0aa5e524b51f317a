// The command program: reads its command line and does one thing.

#include <algorithm>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "apps/vexa/actions.h"
#include "apps/vexa/command_line.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/installation.h"
#include "apps/vexa/options.h"
#include "backend/platform/process.h"
#include "backend/strings/memory_text.h"

namespace {

/// The texts of the user's language, where the installation has them. A problem with it is none here.
void openTexts(const vexa::program::SessionChoices& choices) {
    std::vector<std::string> warnings;
    std::string problem;
    static_cast<void>(vexa::program::openInstallation(choices, warnings, problem));
}

int act(const vexa::program::Options& options) {
    using vexa::program::Action;
    switch (options.action) {
        case Action::prompt:
            return vexa::program::runPrompt(options);
        case Action::run:
        case Action::check:
            return vexa::program::runFiles(options);
        case Action::help:
            return vexa::program::showHelp(options);
        case Action::password:
            openTexts(options.session);
            return vexa::program::printEncryptedPassword();
        case Action::import:
            return vexa::program::importFiles(options);
        case Action::show:
            return vexa::program::showDocument(options);
        case Action::exportFile:
            return vexa::program::exportFile(options);
        case Action::completion:
            std::cout << vexa::program::completionScript(options.shell,
                                                         vexa::program::describedCommandLine());
            return vexa::program::exit_status::kSuccess;
        case Action::manual:
            std::cout << vexa::program::manualPage(vexa::program::describedCommandLine());
            return vexa::program::exit_status::kSuccess;
    }
    return vexa::program::exit_status::kUsage;
}

/// What no command has caught: the program has no more to do then.
int actInMemory(const vexa::program::Options& options) {
    try {
        return act(options);
    } catch (const std::bad_alloc&) {
        vexa::program::complain(vexa::notEnoughMemory, {});
        return vexa::program::exit_status::kUsage;
    }
}

/// Whether an action writes nothing but to standard output.
bool onlyShows(vexa::program::Action action) {
    using vexa::program::Action;
    return action != Action::run && action != Action::prompt && action != Action::import &&
           action != Action::exportFile;
}

}  // namespace

int main(int argc, char** argv) {
    vexa::prepareStandardStreams();
    const std::vector<std::string> words = vexa::commandLineWords(argc, argv);
    std::vector<const char*> texts(words.size());
    std::transform(words.begin(), words.end(), texts.begin(),
                   [](const std::string& word) { return word.c_str(); });
    int exitStatus = vexa::program::exit_status::kUsage;
    const std::optional<vexa::program::Options> options =
        vexa::program::readOptions(static_cast<int>(texts.size()), texts.data(), exitStatus);
    const int status = options ? actInMemory(*options) : exitStatus;
    return vexa::program::statusWithOutput(status, !options || onlyShows(options->action));
}
