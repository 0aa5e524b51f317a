// Grammars of real commands with groups, brackets, qualifiers and bounds, for tests of the parser library.
#pragma once

#include "backend/syntax/descriptors.h"

namespace vexa {

/// A command with one plain subcommand and one selection group.
[[nodiscard]] CommandDescriptor modifyGrammar();

/// A command with many subcommands of measured values.
[[nodiscard]] CommandDescriptor exportGrammar();

/// One unnamed subcommand with the one parameter.
[[nodiscard]] CommandDescriptor grammarOf(const ParamDescriptor& parameter);

}  // namespace vexa
