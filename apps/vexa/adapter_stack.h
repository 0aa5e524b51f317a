// The client adapter that the user asked for, with the trace around it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "apps/vexa/options.h"
#include "apps/vexa/terminal_listener.h"
#include "apps/vexa/tracing_adapter.h"
#include "backend/adapter/client_adapter.h"
#include "backend/pivot/output_log.h"
#include "frontend/controller/open_documents.h"

namespace vexa::program {

/// Installed as the back end's adapter for as long as it lives. With the embedded front end, the active
/// document takes what the log produces.
class AdapterStack {
  public:
    /// `trace` may be null. Null when the answers of a script cannot be read; `problem` then says why.
    [[nodiscard]] static std::unique_ptr<AdapterStack> make(const SessionChoices& choices,
                                                            TerminalListener& terminal, JsonLines* trace,
                                                            std::string& problem);
    ~AdapterStack();
    AdapterStack(const AdapterStack&) = delete;
    AdapterStack& operator=(const AdapterStack&) = delete;

    /// Those of the embedded front end; null with any other.
    [[nodiscard]] frontend::OpenDocuments* documents() { return documents_; }

  private:
    AdapterStack() = default;
    void install(JsonLines* trace);

    std::unique_ptr<ClientAdapter> adapter_;
    std::optional<TracingAdapter> tracing_;
    std::unique_ptr<LogListener> recorder_;
    frontend::OpenDocuments* documents_ = nullptr;
};

}  // namespace vexa::program
