// The commands that the back end knows, and how their names are found in a command's text.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vexa {

/// A command that the back end carries out itself.
enum class OwnCommand { none, fileHandle, changeFolder, insert, echo };

/// One known command.
struct KnownCommand {
    std::string_view name;     ///< in capitals, words separated by one blank
    const char* entry;         ///< the module's entry function; null for the back end's own commands
    OwnCommand own;            ///< none for a command of the module
    std::string_view summary;  ///< one line of help
    std::string_view example;  ///< one worked example, a whole command
};

/// All commands, in the order in which help lists them.
[[nodiscard]] std::span<const KnownCommand> knownCommands();

/// The command of that name, without regard to case, or null. Words may be separated by any blanks.
[[nodiscard]] const KnownCommand* findKnownCommand(std::string_view name);

/// A command name found in a text.
struct FoundCommand {
    const KnownCommand* command;
    std::size_t end;  ///< offset behind the name
};

/// The longest known name that the words at `offset` spell, without regard to case, separated by blanks and
/// comments.
[[nodiscard]] std::optional<FoundCommand> findCommandName(std::string_view text, std::size_t offset);

/// The words at `offset` as an unknown command's name, one blank between them: two words at most, for names
/// have no more, and none that "=" follows. Without a word, the first character.
[[nodiscard]] std::string unknownCommandName(std::string_view text, std::size_t offset);

/// The known name that is nearest to `name`, or null when none is near.
[[nodiscard]] const KnownCommand* nearestCommand(std::string_view name);

}  // namespace vexa
