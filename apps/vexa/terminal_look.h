// What the terminal of this process can do.
#pragma once

#include "apps/vexa/terminal_listener.h"

namespace vexa::program {

[[nodiscard]] TerminalLook terminalLook();

}  // namespace vexa::program
