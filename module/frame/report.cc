#include "module/frame/report.h"

namespace vexa {

namespace {

constexpr BpErrorShow kShow = 2;
constexpr int kMessageText = 1;
constexpr int kInsertedArgument = 0;

void report(std::string_view text, const std::vector<std::string_view>& arguments, BpErrorLevel level) {
    BpComposite message(text, kMessageText);
    for (const std::string_view argument : arguments) {
        message.Add(BpString(argument, kInsertedArgument));
    }
    message.Finish();
    BpError(message, kShow, level);
}

}  // namespace

void reportMessage(SystemText text, std::string_view argument, BpErrorLevel level) {
    reportAnswer(text, argument, level);
}

void reportAnswer(std::string_view text, std::string_view argument, BpErrorLevel level) {
    if (argument.empty()) {
        BpError(BpString(text, kMessageText), kShow, level);
    } else {
        report(text, {argument}, level);
    }
}

void reportWithArgument(SystemText text, std::string_view argument, BpErrorLevel level) {
    report(text, {argument}, level);
}

void reportList(SystemText text, const std::vector<std::string_view>& arguments, BpErrorLevel level) {
    report(text, arguments, level);
}

void reportNotImplemented(std::string_view command) {
    reportMessage("^1 currently not implemented."_text, command, kErrorLevel);
}

void reportPlain(SystemText text, BpErrorLevel level) { BpError(BpString(text, kMessageText), kShow, level); }

}  // namespace vexa
