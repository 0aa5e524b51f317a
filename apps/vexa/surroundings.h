// Everything that a session needs around it: character set, clock, adapter, trace, terminal.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/vexa/json_lines.h"
#include "apps/vexa/options.h"
#include "apps/vexa/terminal_listener.h"
#include "apps/vexa/trace_listener.h"
#include "backend/adapter/client_adapter.h"
#include "backend/session/command_module.h"
#include "backend/session/session.h"
#include "frontend/controller/open_documents.h"

namespace vexa::program {

class AdapterStack;

/// Put up once in a process, and taken down in the reverse order when it dies.
class Surroundings {
  public:
    /// Null when something cannot be put up; `problem` then says what and what to do.
    [[nodiscard]] static std::unique_ptr<Surroundings> make(const SessionChoices& choices,
                                                            std::string& problem);
    ~Surroundings();
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;

    [[nodiscard]] Session& session() { return *session_; }
    [[nodiscard]] TerminalListener& terminal() { return terminal_; }
    /// The open documents of the embedded front end; null with any other.
    [[nodiscard]] frontend::OpenDocuments* documents();

    /// The names of the open documents that have changes which no file has. One that never had a file and has
    /// nothing in it is not among them: no more is lost than its name.
    [[nodiscard]] std::vector<std::string> unsavedDocuments() const;

    /// Something is run: an earlier trace gives way to the one of this run, even if that stays empty.
    void beginTrace();

    /// Writes the rest of the trace; what the program ends with, as far as the session has gone.
    [[nodiscard]] int finish();

  private:
    explicit Surroundings(const SessionChoices& choices);
    [[nodiscard]] bool openTrace(const SessionChoices& choices, std::string& problem);

    LibraryModule module_;
    TerminalListener terminal_;
    JsonLines trace_;
    std::string traceFile_;  ///< empty for none
    std::optional<TraceListener> traceListener_;
    std::unique_ptr<AdapterStack> adapters_;
    std::unique_ptr<Session> session_;
};

}  // namespace vexa::program
