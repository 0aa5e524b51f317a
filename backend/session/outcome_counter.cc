#include "backend/session/outcome_counter.h"

#include <variant>

#include "backend/session/session_messages.h"

namespace vexa {

bool isErrorEvent(const LogEvent& event) {
    if (const auto* const error = std::get_if<ErrorReported>(&event)) {
        return error->level >= kErrorLevel;
    }
    if (const auto* const refused = std::get_if<ParserMessageReported>(&event)) {
        return !refused->warning;
    }
    return std::holds_alternative<SyntaxErrorReported>(event);
}

void OutcomeCounter::receive(const LogEvent& event) { errors_ += isErrorEvent(event) ? 1U : 0U; }

}  // namespace vexa
