// Stands in the place of what needs the embedded front end where the program is built without one.

#include "apps/vexa/actions.h"
#include "apps/vexa/embedded_front_end.h"
#include "apps/vexa/exit_status.h"
#include "backend/strings/dictionary.h"

namespace vexa::program {

bool hasEmbeddedFrontEnd() { return false; }

EmbeddedFrontEnd makeEmbeddedFrontEnd(const SessionChoices& /*choices*/, TerminalListener& /*terminal*/,
                                      std::string& problem) {
    problem = translated(
        "This program has no embedded front end. Say what answers requests instead: --adapter script:FILE, "
        "--adapter no-controller or --adapter none."_text);
    return {};
}

int printEncryptedPassword() {
    complain(translated("This program has no embedded front end, and so encrypts no passwords."_text));
    return exit_status::kUsage;
}

}  // namespace vexa::program
