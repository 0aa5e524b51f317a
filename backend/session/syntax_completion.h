// Completion of a command that is being typed: its name first, then what its description has.
#pragma once

#include <string_view>

#include "backend/session/session.h"
#include "backend/syntax/completion.h"

namespace vexa {

/// What could stand at the end of `text`, the command so far in the back end's character set, its last word
/// perhaps unfinished. `session` is asked for the command's grammar.
[[nodiscard]] Completion completeSyntax(Session& session, std::string_view text);

}  // namespace vexa
