// The command of this folder; called from the module's entry functions.
#pragma once

namespace vexa {

/// OUTPUT EXPORT: reads the current command, sends one specification, reports the answer.
void outputExport();

}  // namespace vexa
