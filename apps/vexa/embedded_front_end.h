// The front end in this process.
#pragma once

#include <memory>

#include "apps/vexa/options.h"
#include "apps/vexa/terminal_listener.h"
#include "backend/adapter/client_adapter.h"
#include "backend/pivot/output_log.h"
#include "frontend/controller/open_documents.h"

namespace vexa::program {

/// What the embedded front end consists of, as the back end sees it.
struct EmbeddedFrontEnd {
    std::unique_ptr<ClientAdapter> adapter;
    std::unique_ptr<LogListener>
        recorder;  ///< puts what the log produces into the active document; dies first
    frontend::OpenDocuments* documents = nullptr;  ///< those of the adapter
};

/// `terminal` outlives what is made.
[[nodiscard]] EmbeddedFrontEnd makeEmbeddedFrontEnd(const SessionChoices& choices,
                                                    TerminalListener& terminal);

}  // namespace vexa::program
