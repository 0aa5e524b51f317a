#include "module/frame/report.h"

namespace vexa {

namespace {

constexpr BpErrorShow kShow = 2;
constexpr int kMessageText = 1;
constexpr int kInsertedArgument = 0;

}  // namespace

void reportMessage(std::string_view text, std::string_view argument, BpErrorLevel level) {
    if (argument.empty()) {
        reportPlain(text, level);
    } else {
        reportWithArgument(text, argument, level);
    }
}

void reportWithArgument(std::string_view text, std::string_view argument, BpErrorLevel level) {
    reportList(text, {argument}, level);
}

void reportList(std::string_view text, const std::vector<std::string_view>& arguments, BpErrorLevel level) {
    BpComposite message(text, kMessageText);
    for (const std::string_view argument : arguments) {
        message.Add(BpString(argument, kInsertedArgument));
    }
    message.Finish();
    BpError(message, kShow, level);
}

void reportNotImplemented(std::string_view command) {
    reportMessage("^1 currently not implemented."_text, command, kErrorLevel);
}

void reportPlain(std::string_view text, BpErrorLevel level) {
    BpError(BpString(text, kMessageText), kShow, level);
}

}  // namespace vexa
