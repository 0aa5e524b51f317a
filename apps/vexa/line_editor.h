// Reads the lines that a user types at the prompt, with the help in editing that the system has. One file a
// system.
#pragma once

#include <string>

#include "backend/session/session.h"
#include "backend/text/system_text.h"

namespace vexa::program {

/// To be called once before the first line. `session`, which outlives the last one, knows what can be
/// completed.
void prepareLineEditor(Session& session);
/// What a user should know before the first line.
[[nodiscard]] SystemText lineEditorWelcome();

/// What came of reading a line.
struct EditedLine {
    enum class Kind { line, endOfInput, interrupted };
    Kind kind = Kind::endOfInput;
    std::string text{};  ///< UTF-8, without its end
};

/// One line from the terminal. `before`: the lines of the same command that came earlier, each with its end.
/// From the first call of `prepareLineEditor` on, an interrupt drops the line and nothing else.
[[nodiscard]] EditedLine readEditedLine(const char* prompt, const std::string& before);
/// The lines of a whole command, which the user may call back as one.
void rememberCommand(const std::string& lines);

}  // namespace vexa::program
