#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "apps/vexa/actions.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/diagnostics.h"
#include "apps/vexa/document_access.h"
#include "apps/vexa/exit_status.h"
#include "backend/platform/file_system.h"
#include "backend/platform/standard_input.h"
#include "backend/strings/dictionary.h"
#include "frontend/controller/messages.h"
#include "frontend/import/import_file.h"
#include "frontend/store/document_file.h"
#include "frontend/store/password.h"

namespace vexa::program {

namespace {

constexpr const char* kTypedInput = "-";
constexpr const char* kReaderExtension = ".vxw";

/// The document, opened or made; its `document` is null after a complaint.
OpenedDocument openOrMake(const DocumentChoices& choices) {
    FileSystem& files = FileSystem::current();
    if (!files.isFile(choices.document) && !files.isFolder(choices.document)) {
        return {std::make_unique<frontend::ViewerDocument>(), {}, 0};
    }
    OpenedDocument opened = openForUser(choices);
    if (opened.document != nullptr && opened.document->isLocked()) {
        complain(
            "The document ^1 is locked: it was saved with LOCK=YES and takes no change. OUTPUT SAVE with "
            "LOCK=NO unlocks it."_text,
            {choices.document}, choices.document);
        opened.document.reset();
        opened.exitStatus = exit_status::kCommandError;
    }
    return opened;
}

void report(int level, const frontend::ImportProblem& problem) {
    Diagnostic diagnostic{.code = diagnostic_code::kProgram,
                          .level = level,
                          .file = problem.file,
                          .line = static_cast<int>(problem.place.line),
                          .column = static_cast<int>(problem.place.column)};
    diagnostic.text = problem.path.empty() ? problem.message : problem.path + ": " + problem.message;
    complain(std::move(diagnostic), problem.shown());
}

/// Reads all files; false after a complaint about the first that does not fit.
bool readFiles(const Options& options, frontend::Imported& imported, int& exitStatus) {
    TableSurroundings surroundings;
    const frontend::ImportContext context{surroundings.looks, surroundings.words};
    for (const std::string& file : options.files) {
        const bool isTyped = file == kTypedInput;
        std::string typed;
        if (const FileResult result = isTyped ? readStandardInput(typed) : FileResult(); !result) {
            complain("The file ^1 cannot be read: ^2."_text, {file, shownReason(result)}, file);
            exitStatus = exit_status::kUsage;
            return false;
        }
        frontend::ImportProblem problem;
        if (frontend::importFile(file, options.document.import, context, imported, problem,
                                 isTyped ? &typed : nullptr)) {
            continue;
        }
        report(kErrorLevel, problem);
        exitStatus = problem.isFile ? exit_status::kUsage : exit_status::kCommandError;
        return false;
    }
    for (const frontend::ImportProblem& warning : imported.warnings) {
        report(kWarningLevel, warning);
    }
    return true;
}

bool endsInReaderExtension(const std::string& file) {
    const std::string extension(kReaderExtension);
    return file.size() >= extension.size() && file.substr(file.size() - extension.size()) == extension;
}

int save(OpenedDocument& opened, const std::string& file) {
    frontend::SaveOptions options;
    options.passwordForm = std::move(opened.passwordForm);
    if (endsInReaderExtension(file)) {
        options.type = frontend::DocumentFileType::reader;
    }
    if (const std::optional<LocalTime> changed = frontend::changedByOthers(*opened.document, file)) {
        frontend::wipe(options.passwordForm);
        complain(
            "Another program has changed the document ^1 (^2) since this command opened it, and nothing was added. Repeat the command."_text,
            {file, shownTime(*changed)}, file);
        return exit_status::kCommandError;
    }
    frontend::ReplacedFile replaced;
    const frontend::StoreResult result = frontend::saveDocument(*opened.document, file, options, &replaced);
    frontend::wipe(options.passwordForm);
    if (replaced.lostRights) warn(frontend::messages::otherRights, {file}, file);
    if (replaced.staysElsewhere) warn(frontend::messages::otherNames, {file}, file);
    if (!result) {
        complainOf(result, file);
        return exit_status::kUsage;
    }
    return exit_status::kSuccess;
}

}  // namespace

int importFiles(const Options& options) {
    const DocumentChoices& choices = options.document;
    if (!openForUser(options.session)) {
        return exit_status::kUsage;
    }
    OpenedDocument opened = openOrMake(choices);
    if (opened.document == nullptr) {
        return opened.exitStatus;
    }
    const bool isNew = !FileSystem::current().isFile(choices.document);
    frontend::Imported imported;
    imported.outline = opened.document->outline();
    const std::size_t before = imported.outline.size();
    int exitStatus = exit_status::kSuccess;
    if (!readFiles(options, imported, exitStatus)) {
        frontend::wipe(opened.passwordForm);
        return exitStatus;
    }
    const std::size_t added = imported.outline.size() - before;
    if (isNew) {
        opened.document->setName(imported.name);
    }
    opened.document->edit(std::move(imported.outline));
    exitStatus = save(opened, choices.document);
    if (exitStatus == exit_status::kSuccess && !options.session.quiet) {
        std::cout << composed("Items added to ^1: ^2"_text, {choices.document, std::to_string(added)})
                  << std::endl;
    }
    return exitStatus;
}

}  // namespace vexa::program
