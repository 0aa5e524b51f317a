// Reads syntax and runs its commands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "backend/platform/file_system.h"
#include "backend/session/command_catalog.h"
#include "backend/session/command_module.h"
#include "backend/session/outcome_counter.h"
#include "backend/syntax/descriptors.h"
#include "backend/tokens/command_text.h"

namespace vexa {

struct InsertedFile;

/// Whether a file was run, and why it was not.
struct [[nodiscard]] InputResult : FileResult {
    bool isRead = true;  ///< it could be read: the reason is a whole sentence then
};

struct SessionOptions {
    bool stopOnError = false;  ///< nothing is run after a command that reported an error
    bool checkOnly = false;    ///< commands of the module are parsed but do and send nothing; ECHO is silent
    /// That of the user, such as "ja" or "zh-TW"; for a guess at the character set of a file that is not in
    /// the current one.
    std::string language{};
    /// Of all files of INSERT in one run.
    std::uint64_t mostInsertedBytes = std::uint64_t{1} << 30U;
};

/// Runs syntax against a module. One session runs at a time; what happens is published into
/// `OutputLog::current()`.
///
/// The commands FILE HANDLE, CD, INSERT and ECHO are the session's own. Where files are taken from is kept in
/// `FileLocations::current()`.
class Session {
  public:
    /// `module` must outlive the session.
    explicit Session(CommandModule& module, SessionOptions options = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Runs a syntax file in the back end's character set. `path` is UTF-8. Not ok when the file cannot be
    /// read or run; what its commands do is told by the log only.
    InputResult runFile(const std::string& path);
    /// Runs what was read from `file`, in the back end's character set. Not ok, and nothing is run, when it
    /// is no text that can be one; doubts about its character set are told by the log.
    InputResult runInput(std::string text, std::string_view file);
    /// Runs commands; `file` (UTF-8) names the text in places, `firstLine` is the number of its first line.
    /// Ends early when the user interrupts it (backend/platform/interrupt.h), or when too much was inserted
    /// on the way.
    void runText(std::string text, std::string_view file, int firstLine = 1);

    /// True when a command so far reported an error.
    [[nodiscard]] bool hadErrors() const { return outcome_.errors() > 0; }
    /// Nothing more will be run: after an error where that was asked for, or because the module cannot be
    /// used.
    [[nodiscard]] bool stopped() const { return stopped_; }
    /// Why the module cannot be used, UTF-8; empty while it can.
    [[nodiscard]] const std::string& moduleFailure() const { return moduleFailure_; }

    /// The grammar of a command, asked from its entry function (which sends nothing and reports nothing).
    /// Nothing when the module cannot be used or lacks the command. Its texts live as long as the module.
    [[nodiscard]] std::optional<CommandDescriptor> describe(const KnownCommand& command);

  private:
    void runCommand(CommandText& command);
    static bool reportedAsMark(const CommandText& command);
    void reportUnknown(const CommandText& command);
    void runModuleCommand(const KnownCommand& known, const CommandText& command, std::size_t nameOffset);
    void explain(const CommandText& command, bool hasFailed) const;
    void warnOfSwallowedCommand(const CommandText& command) const;
    void runOwnCommand(OwnCommand own, const CommandText& command);
    void insertFile(const InsertedFile& inserted, const CommandText& command);
    /// False, after a complaint, when this would be too much.
    bool countInserted(const std::string& file, const SourcePlace& place);
    void callEntry(CommandModule::Entry entry);
    [[nodiscard]] bool moduleUsable();

    CommandModule& module_;
    SessionOptions options_;
    OutcomeCounter outcome_;
    std::string moduleFailure_;
    int insertDepth_ = 0;
    int inserted_ = 0;  ///< files of INSERT since the outermost text began
    std::uint64_t insertedBytes_ = 0;
    bool abandoned_ = false;  ///< nothing more of the outermost text is run
    bool stopped_ = false;
};

}  // namespace vexa
