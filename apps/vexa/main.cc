// The command program: reads its command line and does one thing.

#include <iostream>
#include <optional>

#include "apps/vexa/actions.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/options.h"
#include "backend/platform/terminal.h"

namespace {

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
            return vexa::program::printEncryptedPassword();
    }
    return vexa::program::exit_status::kUsage;
}

}  // namespace

int main(int argc, char** argv) {
    vexa::holdStandardStreams();
    std::ios::sync_with_stdio(false);
    int exitStatus = vexa::program::exit_status::kUsage;
    const std::optional<vexa::program::Options> options = vexa::program::readOptions(argc, argv, exitStatus);
    return options ? act(*options) : exitStatus;
}
