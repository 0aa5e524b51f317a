// Opens document files for the program's own commands.
#pragma once

#include <memory>
#include <string>

#include "apps/vexa/options.h"
#include "frontend/document/viewer_document.h"
#include "frontend/import/statistic_words.h"
#include "frontend/looks/look_library.h"
#include "frontend/store/store_result.h"

namespace vexa::program {

/// A document that was opened, and what it is protected with.
struct OpenedDocument {
    std::unique_ptr<frontend::ViewerDocument> document;  ///< null when it cannot be opened
    std::string
        passwordForm;    ///< the encrypted form that opened it; empty without protection. Wipe it after use.
    int exitStatus = 0;  ///< when it cannot be opened; the user has been told why
};

/// Opens the document that `choices` name, with its password where it has one: out of the file of the
/// choices, or asked for on the terminal.
[[nodiscard]] OpenedDocument openForUser(const DocumentChoices& choices);

/// Complains of a problem of saving or opening `file`.
void complainOf(const frontend::StoreResult& result, const std::string& file);

/// What the installation says about tables.
struct TableSurroundings {
    /// The installation must have been opened.
    TableSurroundings();

    frontend::LookLibrary looks;
    frontend::StatisticWords words;
};

/// Opens the installation that the choices name; false, after a complaint, when it is not there.
[[nodiscard]] bool openForUser(const SessionChoices& choices);

}  // namespace vexa::program
