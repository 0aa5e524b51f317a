// What is wrong with a syntax file as a text, and with commands that were typed by a word processor. Internal
// to this folder.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "backend/platform/file_system.h"
#include "backend/session/command_catalog.h"
#include "backend/text/look_alikes.h"
#include "backend/tokens/command_text.h"

namespace vexa {

/// Not ok, with a whole sentence as the reason, for the content of a file (its bytes as they came) that holds
/// no commands: text in UTF-16 or UTF-32, an archive. `file` is UTF-8.
[[nodiscard]] FileResult checkSyntaxText(std::string_view bytes, std::string_view file);

/// Warns of the first byte of a file that belongs to no character of the current set, and of text that is
/// UTF-8 where another set is the current one. `language` is that of the user, for a guess at the right set.
void warnOfCharacterSet(std::string_view bytes, std::string_view file, std::string_view language);

/// Something outside of quotes and comments that looks like what the language knows.
struct StrangeMark {
    const LookAlike* lookAlike = nullptr;
    std::size_t offset = 0;  ///< in the command's text
    std::size_t length = 0;  ///< in bytes
};
[[nodiscard]] std::optional<StrangeMark> findStrangeMark(const CommandText& command);

/// Says what it is and what to type instead: as an error in the syntax, or as a warning.
void reportStrangeMark(const CommandText& command, const StrangeMark& mark, bool isError);

/// A command that begins behind a period within a line of another, outside of quotes and comments.
struct CommandBehindPeriod {
    const KnownCommand* command = nullptr;
    std::size_t offset = 0;  ///< of its name
};
/// Names of one word, which may be something else, count where `oneWord` is true.
[[nodiscard]] std::optional<CommandBehindPeriod> findCommandBehindPeriod(const CommandText& command,
                                                                         bool oneWord);

}  // namespace vexa
