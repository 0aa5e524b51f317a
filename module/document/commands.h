// The commands that manage output documents. Each runs the current command of the back end to its end: it
// parses, checks, sends one request to the output controller and reports into the output log. (A comment
// sends nothing and goes into the log.) No exception of the module's own leaves it.
#pragma once

#include "module/frame/grammar.h"

namespace vexa {

void outputNew();
void outputActivate();
void outputName();
void outputClose();
void outputDisplay();
void outputOpen();
void outputSave();
void outputComment();

/// The rows of OUTPUT COMMENT in the order in which they are added; a later row of a name replaces the
/// earlier.
[[nodiscard]] GrammarTable outputCommentGrammar();

}  // namespace vexa
