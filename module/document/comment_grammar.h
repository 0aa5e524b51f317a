// What OUTPUT COMMENT adds to its description.
#pragma once

#include "module/frame/grammar.h"

namespace vexa {

/// The rows in the order in which they are added; a later row of a name replaces the earlier.
[[nodiscard]] GrammarTable outputCommentGrammar();

}  // namespace vexa
