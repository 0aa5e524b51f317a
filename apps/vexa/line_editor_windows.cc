// The console of Windows edits lines and remembers them by itself; nothing is completed.

#include <iostream>

#include "apps/vexa/line_editor.h"
#include "backend/platform/terminal.h"

namespace vexa::program {

void prepareLineEditor(Session& /*session*/) {}

SystemText lineEditorWelcome() {
    return "Commands end with a period. \"help\" lists the commands, and the end of input (Ctrl-Z) quits."_text;
}

std::optional<std::string> readEditedLine(const char* prompt, const std::string& /*before*/) {
    std::cout << prompt << std::flush;
    return readTerminalLine();
}

}  // namespace vexa::program
