// The back end's own way out of a command.
#pragma once

namespace vexa {

/// Thrown by the back end's libraries to leave the running command at once and go back to whoever called it.
/// Commands let it pass. On purpose no std::exception, so that handlers of those do not stop it.
class __attribute__((visibility("default"))) VexaGoToCaller {};

}  // namespace vexa
