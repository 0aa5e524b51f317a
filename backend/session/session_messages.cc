#include "backend/session/session_messages.h"

#include <utility>

#include "backend/pivot/output_log.h"
#include "backend/strings/dictionary.h"

namespace vexa {

namespace {
constexpr BpErrorShow kShow = 2;
}  // namespace

void reportSyntaxError(const CommandText& command, std::size_t offset, std::string message) {
    OutputLog::current().publish(SyntaxErrorReported{std::move(message), placeOf(command, offset)});
}

void reportAt(const SourcePlace& place, BpErrorLevel level, std::string_view text,
              const std::vector<std::string>& arguments) {
    OutputLog::current().publish(ErrorReported{.show = kShow,
                                               .level = level,
                                               .text = std::string(text),
                                               .arguments = arguments,
                                               .message = replaceMarkers(translated(text), arguments),
                                               .place = place});
}

void reportError(SystemText text, std::string_view argument) {
    BpComposite message(text, 1);
    message.Add(BpString(argument, 0));
    message.Finish();
    BpError(message, kShow, kErrorLevel);
}

}  // namespace vexa
