#include "backend/session/session_messages.h"

#include <utility>

#include "backend/pivot/bp_text.h"
#include "backend/pivot/output_log.h"

namespace vexa {

namespace {
constexpr BpErrorShow kShow = 2;
constexpr BpErrorLevel kWarning = 2;
constexpr BpErrorLevel kError = 3;
}  // namespace

void reportSyntaxError(const CommandText& command, std::size_t offset, std::string message) {
    OutputLog::current().publish(SyntaxErrorReported{std::move(message), placeOf(command, offset)});
}

void reportWarning(SystemText text, std::initializer_list<std::string> arguments) {
    BpComposite message(text, 1);
    for (const std::string& argument : arguments) {
        message.Add(BpString(argument, 0));
    }
    message.Finish();
    BpError(message, kShow, kWarning);
}

void reportError(SystemText text, std::string_view argument) {
    BpComposite message(text, 1);
    message.Add(BpString(argument, 0));
    message.Finish();
    BpError(message, kShow, kError);
}

}  // namespace vexa
