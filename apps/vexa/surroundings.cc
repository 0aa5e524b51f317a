#include "apps/vexa/surroundings.h"

#include <algorithm>
#include <iostream>
#include <string_view>
#include <vector>

#include "apps/vexa/adapter_stack.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/installation.h"
#include "apps/vexa/password_mask.h"
#include "apps/vexa/terminal_look.h"
#include "backend/platform/clock.h"
#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"
#include "backend/platform/kept_file.h"
#include "backend/platform/terminal.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "backend/tokens/command_text.h"
#include "frontend/controller/messages.h"
#include "frontend/controller/open_documents.h"

namespace vexa::program {

namespace {

/// From the program's folder.
#if defined(_WIN32)
constexpr const char* kModulePlace = "/vexaoutput.dll";
#else
constexpr const char* kModulePlace = "/../lib/vexaoutput.so";
#endif

bool isWide(const std::string& charset) {
    const std::string name = toUpperCase(charset);
    return name.starts_with("UTF-16") || name.starts_with("UTF16") || name.starts_with("UTF-32") ||
           name.starts_with("UTF32") || name.starts_with("UCS");
}

/// Installs character set, folders and texts; false, with a `problem`, when one of them is not there.
bool installForTexts(const SessionChoices& choices, std::vector<std::string>& warnings,
                     std::string& problem) {
    std::unique_ptr<CharacterSet> set = CharacterSet::find(choices.charset);
    const bool known = set != nullptr;
    if (known) {
        installCharacterSet(std::move(set));
    }
    if (!openInstallation(choices, warnings, problem)) {
        return false;
    }
    // Only now, so that it is said in the language of the user.
    if (!known) {
        problem =
            isWide(choices.charset)
                ? composed(
                      "The characters of ^1 have two bytes or more each, so commands are not read from it. Save the syntax files as UTF-8 and leave --charset out."_text,
                      {choices.charset})
                : composed(
                      "The character set ^1 is not known. Use a name such as UTF-8, windows-1252, "
                      "ISO-8859-1, "
                      "Shift_JIS or "
                      "GB18030."_text,
                      {choices.charset});
    }
    return known;
}

/// Whether the run reads `file`, by whatever name.
bool isInput(const std::string& file, const SessionChoices& choices) {
    const auto is = [&](const std::string& input) {
        return !input.empty() && input != "-" && FileSystem::current().isSameFile(input, file);
    };
    return is(choices.answersFile) || std::any_of(choices.inputs.begin(), choices.inputs.end(), is) ||
           isStreamAt(StandardStream::input, file);
}

/// Why the trace must not be written to `file`; empty when nothing that anybody needs is lost. A trace that
/// is there is replaced.
std::string traceObjection(const std::string& file, const SessionChoices& choices) {
    FileSystem& files = FileSystem::current();
    if (file == "-" || !files.isFile(file) || isStreamAt(StandardStream::output, file)) return {};
    if (isStreamAt(StandardStream::error, file)) {
        return composed("The trace ^1 would replace the messages of this run. Name another file."_text,
                        {file});
    }
    if (isInput(file, choices)) {
        return composed("The trace ^1 would replace a file that this run reads. Name another one."_text,
                        {file});
    }
    constexpr std::string_view kFirstOfATrace = R"({"event":)";
    std::string beginning;
    if (!files.readBeginning(file, beginning, kFirstOfATrace.size()) ||
        (!beginning.empty() && beginning != kFirstOfATrace)) {
        return composed(
            "The file ^1 is there and is no trace, so it is not replaced. Name another one for the trace, or delete this one first."_text,
            {file});
    }
    return {};
}

TerminalLook lookFor(const SessionChoices& choices) {
    TerminalLook look = terminalLook();
    look.jsonMessages = areDiagnosticsJson();
    look.quiet = choices.quiet;
    return look;
}

}  // namespace

Surroundings::Surroundings(const SessionChoices& choices)
    : module_(choices.moduleFile.empty() ? programFolder() + kModulePlace : choices.moduleFile),
      terminal_(std::cout, std::cerr, lookFor(choices)) {
    OutputLog::current().addListener(terminal_);
}

bool Surroundings::openTrace(const SessionChoices& choices, std::string& problem) {
    if (!choices.traceFile) {
        return true;
    }
    traceFile_ = *choices.traceFile;
    problem = traceObjection(traceFile_, choices);
    if (!problem.empty()) {
        return false;
    }
    if (const FileResult result = trace_.open(traceFile_); !result) {
        problem = composed("The trace ^1 cannot be written: ^2."_text, {traceFile_, shownReason(result)});
        return false;
    }
    if (FileSystem::current().isFile(traceFile_)) {
        keepFile(traceFile_);
    }
    if (!trace_.isPrivate() && !choices.tracesPasswords) {
        trace_.setFilter([](nlohmann::ordered_json& line) {
            const CommandText* const command = currentCommand();
            maskPasswords(line, command == nullptr ? std::string() : toUtf8(command->text));
        });
    }
    traceListener_.emplace(trace_);
    OutputLog::current().addListener(*traceListener_);
    return true;
}

std::unique_ptr<Surroundings> Surroundings::make(const SessionChoices& choices, std::string& problem) {
    std::vector<std::string> warnings;
    if (!installForTexts(choices, warnings, problem)) {
        return nullptr;
    }
    if (choices.now) {
        installLocalTime(choices.now);
    }
    std::unique_ptr<Surroundings> made(new Surroundings(choices));
    for (const std::string& warning : warnings) {
        made->terminal_.showMessage(2, warning);
    }
    if (!made->openTrace(choices, problem)) {
        return nullptr;
    }
    made->adapters_ =
        AdapterStack::make(choices, made->terminal_, made->traceListener_ ? &made->trace_ : nullptr, problem);
    if (made->adapters_ == nullptr) {
        return nullptr;
    }
    SessionOptions options;
    options.stopOnError = choices.stopOnError;
    options.checkOnly = choices.checkOnly;
    options.language = languageCode();
    made->session_ = std::make_unique<Session>(made->module_, options);
    return made;
}

Surroundings::~Surroundings() {
    session_.reset();
    adapters_.reset();
    OutputLog::current().removeListener(terminal_);
    if (traceListener_) {
        OutputLog::current().removeListener(*traceListener_);
    }
    keepFile("");
}

frontend::OpenDocuments* Surroundings::documents() { return adapters_->documents(); }

std::vector<std::string> Surroundings::unsavedDocuments() const {
    std::vector<std::string> names;
    if (frontend::OpenDocuments* const open = adapters_->documents(); open != nullptr) {
        for (const auto& document : open->all()) {
            const bool isNothing = document->file().empty() && document->outline().size() == 0;
            if (document->isModified() && !isNothing) {
                names.push_back(document->name().empty() ? translated(frontend::messages::unnamed)
                                                         : document->name());
            }
        }
    }
    return names;
}

void Surroundings::beginTrace() { trace_.begin(); }

int Surroundings::finish() {
    trace_.flush();
    std::cout.flush();
    if (!trace_.result()) {
        terminal_.showMessage(3, composed("The trace ^1 could not be written: ^2."_text,
                                          {traceFile_, shownReason(trace_.result())}));
        return exit_status::kUsage;
    }
    if (!session_->moduleFailure().empty()) {
        return exit_status::kUsage;
    }
    return session_->hadErrors() ? exit_status::kCommandError : exit_status::kSuccess;
}

}  // namespace vexa::program
