// The console of Windows edits lines and remembers them by itself; nothing is completed.

#include <iostream>
#include <optional>
#include <string>
#include <utility>

#include "apps/vexa/line_editor.h"
#include "backend/platform/interrupt.h"
#include "backend/platform/terminal.h"

namespace vexa::program {

void prepareLineEditor(Session& /*session*/) { catchInterrupts(nullptr); }

void rememberCommand(const std::string& /*lines*/) {}

SystemText lineEditorWelcome() {
    return "Commands end with a period. \"help\" lists the commands, and the end of input (Ctrl-Z) quits."_text;
}

EditedLine readEditedLine(const char* prompt, const std::string& /*before*/) {
    std::cout << prompt << std::flush;
    std::optional<std::string> line = readTerminalLine();
    if (wasInterrupted()) {
        std::cin.clear();
        return {EditedLine::Kind::interrupted};
    }
    return line ? EditedLine{EditedLine::Kind::line, std::move(*line)} : EditedLine{};
}

}  // namespace vexa::program
