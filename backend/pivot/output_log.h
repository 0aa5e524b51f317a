// The output log: one stream of finished events, in the order in which things happen.
//
// Whoever wants to know (terminal, trace, active document) listens; nothing in this library knows who does.
// Every text in an event is UTF-8.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "backend/pivot/pivot_table.h"
#include "backend/tables/model/table.h"
#include "backend/text/source_place.h"

namespace vexa {

/// The back end calls an entry function.
struct CommandStarted {
    std::string name;   ///< "OUTPUT NEW"
    std::string entry;  ///< "OUTNEW"
    SourcePlace place;  ///< where the command begins
};

/// The entry function has returned.
struct CommandFinished {
    std::string name;
};

struct ProcedureBegan {
    std::string title;
    int value = 0;
};

struct ProcedureEnded {
    std::string title;
};

/// `BP_FLUSHLOG` was called.
struct LogFlushed {};

/// The parser library (or the reader of syntax files) refused the syntax.
struct SyntaxErrorReported {
    std::string message;
    SourcePlace place;
};

/// The parser library took a value that the command is going to ignore.
struct SyntaxWarned {
    std::string message;
    SourcePlace place;
};

/// A method of `ParserMessage` was called.
struct ParserMessageReported {
    using Argument = std::variant<std::string, double>;

    std::string method;
    std::vector<Argument> arguments;  ///< in the order of the method's arguments
    std::string message;              ///< as shown
    bool warning = false;             ///< the value was dropped and the command goes on
};

/// One `BpError`.
struct ErrorReported {
    int show = 0;
    int level = 0;     ///< 2 warning, 3 and above error
    std::string text;  ///< as given, markers and all
    std::vector<std::string> arguments;
    std::string message;  ///< as shown
    SourcePlace place{};  ///< what it is about; without a line the current command
};

/// One line of `AddNotes`.
struct NotesAdded {
    int level = 0;
    std::string label;
    std::string value;
};

struct TableFinished {
    std::shared_ptr<const PivotTable>
        table;              ///< what the command asked for, as the trace tells it; never null
    tables::Table shown{};  ///< what is shown and kept
    std::string subtype{};
};

/// Plain text that a command printed.
struct TextPrinted {
    std::string text;
};

using LogEvent = std::variant<CommandStarted, CommandFinished, ProcedureBegan, ProcedureEnded, LogFlushed,
                              SyntaxErrorReported, SyntaxWarned, ParserMessageReported, ErrorReported,
                              NotesAdded, TableFinished, TextPrinted>;

/// Receives every event of the log. A listener must not publish into the log that calls it.
class LogListener {
  public:
    virtual ~LogListener() = default;
    virtual void receive(const LogEvent& event) = 0;
};

/// The log that the running back end writes into. One command runs at a time, so there is one log and no
/// lock.
class OutputLog {
  public:
    /// The log of this process.
    static OutputLog& current();

    /// Adds a listener, which is not owned and must be removed before it dies. Events reach listeners in the
    /// order in which they were added. Listeners come and go between events, never from within `receive`.
    void addListener(LogListener& listener);
    void removeListener(LogListener& listener);

    [[nodiscard]] bool hasListeners() const { return !listeners_.empty(); }

    void publish(const LogEvent& event);

  private:
    friend class SilentLogScope;

    std::vector<LogListener*> listeners_;
    bool publishing_ = false;
};

/// While it lives, what is published into the current log reaches nobody. Listeners must not be added or
/// removed then.
class SilentLogScope {
  public:
    SilentLogScope() { OutputLog::current().listeners_.swap(listeners_); }
    ~SilentLogScope() { OutputLog::current().listeners_.swap(listeners_); }
    SilentLogScope(const SilentLogScope&) = delete;
    SilentLogScope& operator=(const SilentLogScope&) = delete;

  private:
    std::vector<LogListener*> listeners_;
};

/// Flushes pending log output. Called once a command, right after parsing, whatever the result.
void BP_FLUSHLOG();

}  // namespace vexa
