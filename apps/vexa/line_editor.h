// Reads the lines that a user types at the prompt, with the help in editing that the system has. One file a
// system.
#pragma once

#include <optional>
#include <string>

#include "backend/session/session.h"
#include "backend/text/system_text.h"

namespace vexa::program {

/// To be called once before the first line. `session`, which outlives the last one, knows what can be
/// completed.
void prepareLineEditor(Session& session);
/// What a user should know before the first line.
[[nodiscard]] SystemText lineEditorWelcome();
/// One line from the terminal, UTF-8, without its end; nothing at the end of the input. `before`: the lines
/// of the same command that came earlier, each with its end.
[[nodiscard]] std::optional<std::string> readEditedLine(const char* prompt, const std::string& before);

}  // namespace vexa::program
