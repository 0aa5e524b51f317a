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

/// True when the command has a known name once a blank stands in the place of each mark of that kind.
bool isNameWithout(const CommandText& command, const StrangeMark& mark) {
    std::string text = command.text;
    const std::string strange = text.substr(mark.offset, mark.length);
    const std::string_view plain = mark.lookAlike->plain == " " ? " " : "";
    for (std::size_t at = mark.offset; at != std::string::npos; at = text.find(strange, at)) {
        text.replace(at, strange.size(), plain);
    }
    return findCommandName(text, skipBlanksAndComments(text, command.arguments)).has_value();
}

}  // namespace

Session::Session(CommandModule& module, SessionOptions options)
    : module_(module), options_(std::move(options)) {
    OutputLog::current().addListener(outcome_);
}

Session::~Session() { OutputLog::current().removeListener(outcome_); }

InputResult Session::runFile(const std::string& path) {
    std::string content;
    FileResult result = FileSystem::current().readStream(path, content, kMostBytesOfAPipe);
    if (!result) {
        return {std::move(result), false};
    }
    return runInput(std::move(content), path);
}

InputResult Session::runInput(std::string text, std::string_view file) {
    FileResult result = checkSyntaxText(text, file);
    if (!result) {
        return {std::move(result), true};
    }
    warnOfCharacterSet(text, file, options_.language);
    runText(std::move(text), file);
    return {};
}

void Session::runText(std::string text, std::string_view file, int firstLine) {
    const std::string plain = withPlainLineEnds(std::move(text));
    CommandCutter cutter(plain, file, firstLine);
    CommandText command;
    while (!stopped_ && !abandoned_ && !wasInterrupted() && cutter.next(command)) {
        runCommand(command);
        stopped_ = stopped_ || (options_.stopOnError && hadErrors());
    }
    if (insertDepth_ == 0) {
        inserted_ = 0;
        insertedBytes_ = 0;
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
        if (!reportedAsMark(command)) {
            reportUnknown(command);
            explain(command, true);
        }
        warnOfSwallowedCommand(command);
        return;
    }
    const std::size_t nameOffset = std::exchange(command.arguments, found->end);
    const CurrentCommandScope scope(command);
    if (found->command->own != OwnCommand::none) {
        const std::size_t errorsBefore = outcome_.errors();
        runOwnCommand(found->command->own, command);
        // What went wrong in a file of INSERT is explained there.
        explain(command, found->command->own != OwnCommand::insert && outcome_.errors() != errorsBefore);
        return;
    }
    if (!moduleUsable()) {
        return;
    }
    runModuleCommand(*found->command, command, nameOffset);
}

/// True, after an error, when a character that looks like another is all that keeps a name from being one.
bool Session::reportedAsMark(const CommandText& command) {
    const std::optional<StrangeMark> mark = findStrangeMark(command);
    const bool isIt = mark && isNameWithout(command, *mark);
    if (isIt) {
        reportStrangeMark(command, *mark, true);
    }
    return isIt;
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
        nearest != nullptr && !equalsIgnoringCase(nearest->name, name)
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
    explain(command, outcome_.errors() != errorsBefore);
    log.publish(CommandFinished{std::move(name)});
}

/// Says of a command what its own messages cannot know: what it has of another command, and of characters
/// that look like others.
void Session::explain(const CommandText& command, bool hasFailed) const {
    if (const std::optional<StrangeMark> mark = findStrangeMark(command)) {
        reportStrangeMark(command, *mark, false);
    }
    if (const std::optional<CommandBehindPeriod> behind = findCommandBehindPeriod(command, hasFailed)) {
        reportAt(placeOf(command, behind->offset), kWarningLevel,
                 "A command ends at the end of a line only: begin a new line before ^1."_text,
                 {std::string(behind->command->name)});
    }
    if (!hasFailed) {
        warnOfSwallowedCommand(command);
    }
}

/// Values that are any tokens go on over lines, so that a missing period need not be an error in the syntax;
/// nor does anybody read the values of an unknown command.
void Session::warnOfSwallowedCommand(const CommandText& command) const {
    if (const std::optional<SwallowedCommand> found = findSwallowedCommand(command)) {
        const SourcePlace place = placeOf(command, found->offset);
        reportAt(
            place, kWarningLevel,
            "Line ^1 belongs to this command and was not run, although it begins with ^2. Is the period at the end of the line before it missing?"_text,
            {std::to_string(place.line), std::string(found->command->name)});
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
            if (const std::optional<InsertedFile> inserted = readInsert(tokens)) {
                insertFile(*inserted, command);
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

bool Session::countInserted(const std::string& file, const SourcePlace& place) {
    if (insertDepth_ >= kDeepestInsert) {
        reportAt(place, kErrorLevel,
                 "INSERT is nested more than 32 files deep at ^1. Does a file insert itself?"_text, {file});
        return false;
    }
    // Files that insert each other multiply; each of their commands would complain.
    abandoned_ = ++inserted_ > kMostInserts || insertedBytes_ > options_.mostInsertedBytes;
    if (inserted_ > kMostInserts) {
        reportAt(
            place, kErrorLevel,
            "More than 10000 files were inserted, so the run ends at ^1. Do files insert each other?"_text,
            {file});
    } else if (abandoned_) {
        reportAt(place, kErrorLevel,
                 "More than ^2 bytes were inserted, so the run ends at ^1. Do files insert each other?"_text,
                 {file, std::to_string(options_.mostInsertedBytes)});
    }
    return !abandoned_;
}

void Session::insertFile(const InsertedFile& inserted, const CommandText& command) {
    // From here on the file is one that the user looks for with other programs, so it is named in the
    // system's form.
    const std::string file = toNativePath(toUtf8(inserted.path));
    const SourcePlace place = placeOf(command, inserted.offset);
    if (!countInserted(file, place)) {
        return;
    }
    std::string content;
    const FileResult result = FileSystem::current().readStream(file, content, kMostBytesOfAPipe);
    if (!result) {
        reportAt(place, kErrorLevel, "The file cannot be read: ^1"_text,
                 {composed("^1 (^2)"_text, {file, shownReason(result)})});
        return;
    }
    insertedBytes_ += content.size();
    const DepthScope depth(insertDepth_);
    if (const InputResult run = runInput(std::move(content), file); !run) {
        reportAt({file, 1, 1, ""}, kErrorLevel, run.reason, run.arguments);
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
