// The command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "backend/platform/clock.h"
#include "frontend/import/import_context.h"

namespace vexa::program {

enum class AdapterKind { embedded, none, noController, script };

/// What a session runs with.
struct SessionChoices {
    AdapterKind adapter = AdapterKind::embedded;
    std::string answersFile;          ///< for `AdapterKind::script`
    std::vector<std::string> inputs;  ///< the syntax files that are read, which a trace must not replace
    bool localMode = false;
    std::optional<std::string> traceFile;
    bool tracesPasswords = false;  ///< also where others than the user may see them
    std::optional<LocalTime> now;
    std::string charset = "UTF-8";
    std::optional<std::string> language;  ///< without one: that of the system's settings
    std::string installationFolder;       ///< empty: the one that the program stands in
    std::string moduleFile;               ///< empty: the one beside the program
    bool recordAll = false;  ///< documents take what the document commands say of themselves, too
    bool dryRun = false;     ///< the embedded front end says what it would modify and write
    bool stopOnError = false;
    bool quiet = false;  ///< no results on standard output, and of messages only warnings and errors
    bool diagnosticsAsJson = false;
    bool checkOnly = false;
};

/// What `vexa import`, `vexa show` and `vexa export` are told.
struct DocumentChoices {
    std::string document;
    std::string passwordFile;           ///< empty: the password is asked for
    frontend::ImportOptions import;     ///< of import
    std::optional<std::size_t> item;    ///< of show: the number of the item to show
    bool asJson = false;                ///< of show
    std::string exportFile;             ///< of export: the file to be made
    std::string exportAs;               ///< of export: the format; empty for that of the file's extension
    std::vector<std::string> keywords;  ///< of export: "KEYWORD=VALUE"
};

enum class Action { prompt, run, check, help, password, import, show, exportFile, completion, manual };

struct Options {
    Action action = Action::prompt;
    SessionChoices session;
    DocumentChoices document;               ///< of import, show and export
    std::vector<std::string> files;         ///< of run, check and import; "-" is standard input
    std::vector<std::string> commandWords;  ///< of help
    std::string shell;                      ///< of completion
};

/// Reads the command line. Nothing when there is nothing more to do: help or a version was asked for, or the
/// usage is wrong and has been complained of; `exitStatus` is then what the program ends with.
[[nodiscard]] std::optional<Options> readOptions(int argc, const char* const* argv, int& exitStatus);

}  // namespace vexa::program
