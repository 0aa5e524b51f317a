// How the session puts its own complaints into the log. Internal to this folder.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "backend/text/system_text.h"
#include "backend/tokens/command_text.h"

namespace vexa {

/// An error in the syntax at the byte `offset` of the command. `message` is UTF-8.
void reportSyntaxError(const CommandText& command, std::size_t offset, std::string message);

/// A message of level 3 whose marker ^1 is replaced by `argument`, which is in the back end's character set.
void reportError(SystemText text, std::string_view argument);

/// A message of level 2 with its markers replaced by the arguments, which are in the back end's character
/// set.
void reportWarning(SystemText text, std::initializer_list<std::string> arguments);

}  // namespace vexa
