#include "apps/vexa/document_access.h"

#include <optional>
#include <utility>

#include "apps/vexa/actions.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/diagnostics.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/installation.h"
#include "backend/paths/path_factory.h"
#include "backend/platform/file_system.h"
#include "backend/platform/terminal.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "frontend/controller/messages.h"
#include "frontend/controller/store_messages.h"
#include "frontend/store/document_file.h"
#include "frontend/store/password.h"

namespace vexa::program {

namespace {

using frontend::StoreProblem;
using frontend::StoreResult;

constexpr std::uint64_t kMostPasswordBytes = 65'536;

std::string folderOf(int instance) {
    const PathFinder* const finder = PathFactory::getPathInstance(instance);
    return finder == nullptr ? std::string() : toUtf8(finder->getPath());
}

/// The first line of a file; nothing, after a complaint, when it cannot be read.
std::optional<std::string> readPasswordFile(const std::string& file) {
    std::string content;
    if (const FileResult result = FileSystem::current().readStream(file, content, kMostPasswordBytes);
        !result) {
        complain("The file ^1 cannot be read: ^2."_text, {file, shownReason(result)}, file);
        return std::nullopt;
    }
    std::string line = content.substr(0, content.find_first_of("\r\n"));
    frontend::wipe(content);
    return line;
}

/// The password of a protected document; nothing, after a complaint, when there is none.
std::optional<std::string> givenPassword(const DocumentChoices& choices) {
    if (!choices.passwordFile.empty()) {
        return readPasswordFile(choices.passwordFile);
    }
    std::optional<std::string> typed;
    if (isTerminal(StandardStream::input)) {
        typed = readSecretLine(translated("Password: "_text));
    }
    if (!typed || typed->empty()) {
        complain(
            "The document ^1 is protected by a password. Type it at a terminal, or name a file that holds "
            "it: --password-file FILE."_text,
            {choices.document}, choices.document);
        return std::nullopt;
    }
    return typed;
}

/// What a password is kept as. Some passwords have the shape of an encrypted form without being one.
std::string formThatOpens(const std::string& file, const std::string& password) {
    std::string form = frontend::encryptedPassword(password);
    if (!frontend::isEncryptedPassword(password)) {
        return form;
    }
    std::unique_ptr<frontend::ViewerDocument> opened;
    return frontend::openDocument(file, form, opened) ? form : password;
}

int statusOf(const StoreResult& result) {
    switch (result.problem) {
        case StoreProblem::noSuchFile:
        case StoreProblem::isFolder:
        case StoreProblem::cannotRead:
        case StoreProblem::cannotWrite:
            return exit_status::kUsage;
        default:
            return exit_status::kCommandError;
    }
}

}  // namespace

TableSurroundings::TableSurroundings()
    : looks({folderOf(PathFactory::kInstallation) + "Looks", folderOf(PathFactory::kLanguage) + "Looks"}) {
    const FileResult result = words.open(folderOf(PathFactory::kInstallation) + "lang/statistic-roles.xml");
    if (!result) {
        warn("The words for statistics cannot be read: ^1. Roles are not inferred from labels."_text,
             {shownReason(result)});
    }
}

void complainOf(const StoreResult& result, const std::string& file) {
    const frontend::StoreMessage message = frontend::describe(result, file);
    complain(message.text, {message.argument}, file);
}

bool openForUser(const SessionChoices& choices) {
    std::vector<std::string> warnings;
    std::string problem;
    if (!openInstallation(choices, warnings, problem)) {
        complain(problem);
        return false;
    }
    for (const std::string& warning : warnings) {
        complain(Diagnostic{.code = diagnostic_code::kProgram, .level = kWarningLevel, .text = warning});
    }
    return true;
}

OpenedDocument openForUser(const DocumentChoices& choices) {
    OpenedDocument opened;
    StoreResult result = frontend::openDocument(choices.document, "", opened.document);
    if (result.problem == StoreProblem::passwordMissing) {
        std::optional<std::string> password = givenPassword(choices);
        if (!password) {
            opened.exitStatus = exit_status::kCommandError;
            return opened;
        }
        result = frontend::openDocument(choices.document, *password, opened.document);
        if (result) {
            opened.passwordForm = formThatOpens(choices.document, *password);
        }
        frontend::wipe(*password);
    }
    if (result && !choices.passwordFile.empty() && !opened.document->isFileProtected()) {
        warn(frontend::messages::notProtected, {choices.document}, choices.document);
    }
    if (!result) {
        complainOf(result, choices.document);
        opened.document.reset();
        opened.exitStatus = statusOf(result);
    }
    return opened;
}

}  // namespace vexa::program
