#include "backend/syntax/parse_mode.h"

namespace vexa {

namespace {

ParseModeScope* currentScope = nullptr;

}  // namespace

ParseModeScope::ParseModeScope(ParseMode mode) : mode_(mode), outer_(currentScope) { currentScope = this; }

ParseModeScope::~ParseModeScope() { currentScope = outer_; }

ParseModeScope* ParseModeScope::current() { return currentScope; }

}  // namespace vexa
