#include "backend/session/session.h"

#include <exception>
#include <limits>
#include <new>
#include <utility>

#include "backend/adapter/go_to_caller.h"
#include "backend/paths/file_specification.h"
#include "backend/pivot/output_log.h"
#include "backend/platform/interrupt.h"
#include "backend/session/command_cutter.h"
#include "backend/session/own_commands.h"
#include "backend/session/session_messages.h"
#include "backend/session/swallowed_command.h"
#include "backend/session/text_check.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/memory_text.h"
#include "backend/syntax/parse_mode.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

constexpr std::uint64_t kMostBytesOfAPipe = std::uint64_t{1} << 30U;
constexpr std::size_t kLongestCommand = std::numeric_limits<std::int32_t>::max();
constexpr int kDeepestInsert = 32;
constexpr int kMostInserts = 10000;

/// Keeps a number raised for as long as the object lives.
class DepthScope {
  public:
    explicit DepthScope(int& depth) : depth_(depth) { ++depth_; }
    ~DepthScope() { --depth_; }
    DepthScope(const DepthScope&) = delete;
    DepthScope& operator=(const DepthScope&) = delete;

  private:
    int& depth_;
};

}  // namespace

Session::Session(CommandModule& module, SessionOptions options) : module_(module), options_(options) {
    OutputLog::current().addListener(outcome_);
}

Session::~Session() { OutputLog::current().removeListener(outcome_); }

FileResult Session::runFile(const std::string& path) {
    std::string content;
    FileResult result = FileSystem::current().readStream(path, content, kMostBytesOfAPipe);
    if (!result) {
        return result;
    }
    return runInput(std::move(content), path);
}

FileResult Session::runInput(std::string text, std::string_view file) {
    if (looksLikeUtf16(text)) {
        return {false, std::string("it is UTF-16 text; save it as UTF-8"_text)};
    }
    text = withPlainLineEnds(std::move(text));
    if (const int line = firstBrokenLine(text); line > 0) {
        const std::string& set = currentCharacterSet().name();
        reportWarning(
            "Line ^1 of ^2 is no text in ^3. Give the character set that the file has, as in --charset windows-1252, or save the file as UTF-8."_text,
            {std::to_string(line), fromUtf8(file), set});
    }
    runText(std::move(text), file);
    return {};
}

void Session::runText(std::string text, std::string_view file, int firstLine) {
    const std::string plain = withPlainLineEnds(std::move(text));
    CommandCutter cutter(plain, file, firstLine);
    CommandText command;
    while (!stopped_ && !abandoned_ && !wasInterrupted() && cutter.next(command)) {
        const std::size_t errorsBefore = outcome_.errors();
        runCommand(command);
        if (outcome_.errors() != errorsBefore) {
            explainError(command);
        }
        stopped_ = stopped_ || (options_.stopOnError && hadErrors());
    }
    if (insertDepth_ == 0) {
        inserted_ = 0;
        abandoned_ = false;
    }
}

void Session::runCommand(CommandText& command) {
    if (command.text.size() > kLongestCommand) {
        reportSyntaxError(command, command.arguments,
                          translated("This command is longer than 2 GiB. Is a period missing?"_text));
        return;
    }
    const std::optional<FoundCommand> found = findCommandName(command.text, command.arguments);
    if (!found) {
        reportUnknown(command);
        return;
    }
    const std::size_t nameOffset = std::exchange(command.arguments, found->end);
    const CurrentCommandScope scope(command);
    if (found->command->own != OwnCommand::none) {
        runOwnCommand(found->command->own, command);
        return;
    }
    if (!moduleUsable()) {
        return;
    }
    runModuleCommand(*found->command, command, nameOffset);
}

void Session::reportUnknown(const CommandText& command) {
    if (std::string_view(command.text).substr(command.arguments).starts_with("/*")) {
        reportSyntaxError(command, command.arguments,
                          translated("This comment is not closed: \"*/\" is missing."_text));
        return;
    }
    const std::string name = unknownCommandName(command.text, command.arguments);
    std::string message = composed("There is no command \"^1\"."_text, {toUtf8(name)});
    const KnownCommand* const nearest = nearestCommand(name);
    appendSentence(
        message,
        nearest != nullptr
            ? composed("Did you mean ^1?"_text, {std::string(nearest->name)})
            : translated("A command begins with its name, for example: OUTPUT NEW NAME=report."_text));
    reportSyntaxError(command, command.arguments, std::move(message));
}

bool Session::moduleUsable() {
    if (!moduleFailure_.empty()) {
        return false;
    }
    if (module_.load(moduleFailure_)) {
        return true;
    }
    reportError("The command library cannot be loaded: ^1"_text, fromUtf8(moduleFailure_));
    stopped_ = true;
    return false;
}

void Session::runModuleCommand(const KnownCommand& known, const CommandText& command,
                               std::size_t nameOffset) {
    const CommandModule::Entry entry = module_.find(known.entry);
    if (entry == nullptr) {
        reportError("This module has no command ^1."_text, known.name);
        return;
    }
    OutputLog& log = OutputLog::current();
    std::string name(known.name);
    const std::size_t errorsBefore = outcome_.errors();
    log.publish(CommandStarted{name, known.entry, placeOf(command, nameOffset)});
    if (options_.checkOnly) {
        const ParseModeScope mode(ParseMode::checkOnly);
        callEntry(entry);
    } else {
        callEntry(entry);
    }
    if (outcome_.errors() == errorsBefore) {
        warnOfSwallowedCommand(command);
    }
    log.publish(CommandFinished{std::move(name)});
}

/// Values that are any tokens go on over lines, so that a missing period need not be an error in the syntax.
void Session::warnOfSwallowedCommand(const CommandText& command) const {
    if (const KnownCommand* const behind = commandBehindPeriod(command, false)) {
        reportWarning("A command ends at the end of a line only: begin a new line before ^1."_text,
                      {std::string(behind->name)});
    }
    if (const std::optional<SwallowedCommand> found = findSwallowedCommand(command)) {
        reportWarning(
            "Line ^1 belongs to this command and was not run, although it begins with ^2. Is the period at the end of the line before it missing?"_text,
            {std::to_string(placeOf(command, found->offset).line), std::string(found->command->name)});
    }
}

/// Says what an error may come from that its message cannot know.
void Session::explainError(const CommandText& command) const {
    if (const std::optional<StrangeMark> found = findStrangeMark(command)) {
        const bool blank = found->kind == StrangeMark::Kind::blank;
        reportWarning(
            blank
                ? "Line ^1 has a blank of another kind (^2). Type a plain blank in its place."_text
                : "Line ^1 has a typographic quote (^2). Texts stand between plain ones, as in 'text'."_text,
            {std::to_string(found->line), fromUtf8(found->mark)});
    }
    if (const KnownCommand* const behind = commandBehindPeriod(command, true)) {
        reportWarning("A command ends at the end of a line only: begin a new line before ^1."_text,
                      {std::string(behind->name)});
    }
}

void Session::callEntry(CommandModule::Entry entry) {
    try {
        entry();
    } catch (const VexaGoToCaller&) {
        // The command was left on purpose, and whoever left it has said why.
    } catch (const std::bad_alloc&) {
        reportError(notEnoughMemory, {});
    } catch (const std::exception& error) {
        reportError("The command was interrupted: ^1"_text, error.what());
    } catch (...) {
        reportError("The command was interrupted: ^1"_text,
                    fromUtf8(translated("it failed without saying why."_text)));
    }
}

void Session::runOwnCommand(OwnCommand own, const CommandText& command) {
    const CommandTokens tokens(command);
    switch (own) {
        case OwnCommand::fileHandle:
            runFileHandle(tokens);
            break;
        case OwnCommand::changeFolder:
            runChangeFolder(tokens);
            break;
        case OwnCommand::insert:
            if (const std::optional<std::string> path = readInsert(tokens)) {
                insertFile(*path);
            }
            break;
        case OwnCommand::echo:
            if (const std::optional<std::string> text = readEcho(tokens); text && !options_.checkOnly) {
                OutputLog::current().publish(TextPrinted{toUtf8(*text) + "\n"});
            }
            break;
        case OwnCommand::none:
            break;
    }
}

void Session::insertFile(const std::string& path) {
    // From here on the file is one that the user looks for with other programs, so it is named in the
    // system's form.
    const std::string file = toNativePath(toUtf8(path));
    if (insertDepth_ >= kDeepestInsert) {
        reportError("INSERT is nested more than 32 files deep at ^1. Does a file insert itself?"_text,
                    fromUtf8(file));
        return;
    }
    if (++inserted_ > kMostInserts) {
        // Files that insert each other multiply; each of their commands would complain.
        reportError(
            "More than 10000 files were inserted, so the run ends at ^1. Do files insert each other?"_text,
            fromUtf8(file));
        abandoned_ = true;
        return;
    }
    const DepthScope depth(insertDepth_);
    const FileResult result = runFile(file);
    if (!result) {
        reportError("The file cannot be read: ^1"_text,
                    fromUtf8(composed("^1 (^2)"_text, {file, shownReason(result)})));
    }
}

std::optional<CommandDescriptor> Session::describe(const KnownCommand& command) {
    if (command.own != OwnCommand::none) {
        return describeOwnCommand(command.own);
    }
    if (!module_.load(moduleFailure_)) {
        return std::nullopt;
    }
    const CommandModule::Entry entry = module_.find(command.entry);
    if (entry == nullptr) {
        return std::nullopt;
    }
    const CommandText nothing;
    const CurrentCommandScope current(nothing);
    const SilentLogScope silence;
    const ParseModeScope mode(ParseMode::describe);
    callEntry(entry);
    return mode.description();
}

}  // namespace vexa
