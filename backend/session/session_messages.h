// How the session puts its own complaints into the log. Internal to this folder.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "backend/pivot/bp_text.h"
#include "backend/text/source_place.h"
#include "backend/text/system_text.h"
#include "backend/tokens/command_text.h"

namespace vexa {

inline constexpr BpErrorLevel kWarningLevel = 2;
inline constexpr BpErrorLevel kErrorLevel = 3;

/// An error in the syntax at the byte `offset` of the command. `message` is UTF-8.
void reportSyntaxError(const CommandText& command, std::size_t offset, std::string message);

/// A message of level 3 whose marker ^1 is replaced by `argument`, which is in the back end's character set.
void reportError(SystemText text, std::string_view argument);

/// A message, a text of the string tables with its markers replaced by the arguments, which are UTF-8, about
/// one place in a syntax file.
void reportAt(const SourcePlace& place, BpErrorLevel level, std::string_view text,
              const std::vector<std::string>& arguments);

}  // namespace vexa
