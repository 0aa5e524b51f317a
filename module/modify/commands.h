// The command of this folder; called from the module's entry functions.
#pragma once

namespace vexa {

/// OUTPUT MODIFY: reads the current command, sends one request, reports the reply.
void outputModify();

}  // namespace vexa
