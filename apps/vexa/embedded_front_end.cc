#include "apps/vexa/embedded_front_end.h"

#include <string>
#include <utility>
#include <vector>

#include "apps/vexa/diagnostics.h"
#include "apps/vexa/export_progress.h"
#include "apps/vexa/installation.h"
#include "backend/paths/path_factory.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "frontend/controller/document_recorder.h"
#include "frontend/controller/embedded_adapter.h"

namespace vexa::program {

namespace {

/// Those of the installation before those of the language, as a document names looks by what all have.
std::vector<std::string> lookFolders() {
    std::vector<std::string> folders;
    for (const int instance : {PathFactory::kInstallation, PathFactory::kLanguage}) {
        const PathFinder* const finder = PathFactory::getPathInstance(instance);
        if (finder != nullptr) folders.push_back(toUtf8(finder->getPath()) + "Looks");
    }
    return folders;
}

frontend::ExportSurroundings exportSurroundings() {
    frontend::ExportSurroundings surroundings;
    surroundings.language = languageCode();
    surroundings.styleFolders = lookFolders();
    surroundings.progress = ExportProgress();
    return surroundings;
}

}  // namespace

EmbeddedFrontEnd makeEmbeddedFrontEnd(const SessionChoices& choices, TerminalListener& terminal) {
    auto adapter = std::make_unique<frontend::EmbeddedAdapter>(frontend::EmbeddedChoices{
        choices.localMode, choices.dryRun ? frontend::Carrying::dryRun : frontend::Carrying::out,
        lookFolders()});
    adapter->setExportSurroundings(exportSurroundings());
    const auto reportLocked = [&terminal](const std::string& name) {
        terminal.showMessage(
            kWarningLevel, composed("The output document ^1 is locked and takes no output; what comes now is "
                                    "shown here alone. OUTPUT SAVE with LOCK=NO unlocks it."_text,
                                    {name}));
    };
    auto recorder = std::make_unique<frontend::DocumentRecorder>(
        adapter->documents(), reportLocked,
        choices.recordAll ? frontend::Recording::all : frontend::Recording::output);
    frontend::OpenDocuments* const documents = &adapter->documents();
    return {std::move(adapter), std::move(recorder), documents};
}

}  // namespace vexa::program
