// A command's description as text, for people.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backend/syntax/descriptors.h"

namespace vexa {

/// The syntax of a command, a parameter a line, each line with its line end:
///
///     OUTPUT SAVE
///       OUTFILE='file'
///       [TYPE={VXV|VXW}]
///       [/PASSPROTECT
///          [ENCRYPTEDPW={YES|NO}]]
///
/// What may be left out stands in square brackets, alternatives in braces; "..." follows what may be
/// repeated. Where a number has bounds, they stand behind it.
[[nodiscard]] std::string grammarText(const CommandDescriptor& command);

/// The same for one subcommand or parameter of the command, named without regard to case; nothing when it has
/// none of that name. A name that several subcommands use gives the parameter of each.
[[nodiscard]] std::optional<std::string> grammarText(const CommandDescriptor& command, std::string_view part);

}  // namespace vexa
