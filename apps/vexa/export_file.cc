#include <iostream>
#include <memory>
#include <utility>

#include "apps/vexa/actions.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/document_access.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/export_command.h"
#include "apps/vexa/surroundings.h"
#include "backend/platform/file_system.h"
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

/// The folder of a file as the user names both; empty for the current one.
std::string folderOfFile(const std::string& file) {
    const std::size_t end = file.find_last_of("/\\");
    if (end == std::string::npos) return {};
    const bool isRoot = end == 0 || file[end - 1] == ':';
    return file.substr(0, isRoot ? end + 1 : end);
}

/// Looked at before the command, which knows files by the names that they have for commands.
bool hasFolder(const std::string& file) {
    const std::string folder = folderOfFile(file);
    if (folder.empty() || FileSystem::current().isFolder(folder)) return true;
    complain("There is no folder ^1 for the file ^2. Make it, or check how it is spelt."_text, {folder, file},
             file);
    return false;
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
    if (!hasFolder(options.document.exportFile)) {
        return exit_status::kCommandError;
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
