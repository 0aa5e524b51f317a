// The front end in this process. Not every system has it: there, another file stands in its place and says
// so.
#pragma once

#include <memory>
#include <string>

#include "apps/vexa/options.h"
#include "apps/vexa/terminal_listener.h"
#include "backend/adapter/client_adapter.h"
#include "backend/pivot/output_log.h"

namespace vexa::program {

/// What the embedded front end consists of, as the back end sees it.
struct EmbeddedFrontEnd {
    std::unique_ptr<ClientAdapter> adapter;
    std::unique_ptr<LogListener>
        recorder;  ///< puts what the log produces into the active document; dies first
};

/// False when this program has no front end.
[[nodiscard]] bool hasEmbeddedFrontEnd();

/// Without an adapter when this program has no front end; `problem` then says so, and what there is instead.
/// `terminal` outlives what is made.
[[nodiscard]] EmbeddedFrontEnd makeEmbeddedFrontEnd(const SessionChoices& choices, TerminalListener& terminal,
                                                    std::string& problem);

}  // namespace vexa::program
