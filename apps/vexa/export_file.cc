#include <iostream>
#include <memory>
#include <utility>

#include "apps/vexa/actions.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/document_access.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/export_command.h"
#include "apps/vexa/surroundings.h"
#include "backend/session/command_catalog.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "frontend/store/password.h"

namespace vexa::program {

namespace {

constexpr const char* kCommandName = "OUTPUT EXPORT";

/// The command; empty, after a complaint, when the wish cannot be followed.
std::string commandFor(const Options& options, Session& session) {
    const KnownCommand* const known = findKnownCommand(kCommandName);
    const std::optional<CommandDescriptor> grammar =
        known == nullptr ? std::nullopt : session.describe(*known);
    if (!grammar) {
        complain("The command library cannot be loaded: ^1"_text, {session.moduleFailure()});
        return {};
    }
    const ExportCommand command = exportCommand(
        {options.document.exportFile, options.document.exportAs, options.document.keywords}, *grammar);
    if (command.text.empty()) complain(command.problem);
    return command.text;
}

}  // namespace

int exportFile(const Options& options) {
    std::string problem;
    const std::unique_ptr<Surroundings> surroundings = Surroundings::make(options.session, problem);
    if (surroundings == nullptr || surroundings->documents() == nullptr) {
        complain(problem);
        return exit_status::kUsage;
    }
    const std::string command = commandFor(options, surroundings->session());
    if (command.empty()) {
        return exit_status::kUsage;
    }
    OpenedDocument opened = openForUser(options.document);
    frontend::wipe(opened.passwordForm);
    if (opened.document == nullptr) {
        return opened.exitStatus;
    }
    surroundings->documents()->add(std::move(opened.document));
    surroundings->session().runText(fromUtf8(command), "export");
    return surroundings->finish();
}

}  // namespace vexa::program
