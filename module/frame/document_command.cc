#include "module/frame/document_command.h"

#include <utility>

#include "module/frame/report.h"

namespace vexa {

namespace {

constexpr std::int32_t kLargestNumber = 2'000'000'000;
constexpr SystemText kNameTooLong = "Output name ^1 is too long."_text;

}  // namespace

std::int32_t RequestSequence::next() {
    last_ = last_ >= kLargestNumber ? 1 : last_ + 1;
    return last_;
}

RequestSequence& RequestSequence::ofModule() {
    static RequestSequence sequence;
    return sequence;
}

bool DocumentCommand::refusesLongName(std::string_view name) {
    if (name.size() <= kLongestName) {
        return false;
    }
    reportMessage(kNameTooLong, name, kErrorLevel);
    return true;
}

std::optional<VexawMsgOutputControllerResponse> DocumentCommand::send(OutputControllerCommand command,
                                                                      const std::string& name,
                                                                      OutputDocumentMinimized minimized) {
    const VexawMsgOutputControllerRequest request(RequestSequence::ofModule().next(), command, name.c_str(),
                                                  "", minimized);
    return exchange(request);
}

std::optional<VexawMsgOutputControllerResponse> DocumentCommand::send(OutputControllerCommand command,
                                                                      const FileRequest& file) {
    const VexawMsgOutputControllerRequest request(
        RequestSequence::ofModule().next(), command, file.name.c_str(), file.file.c_str(), file.lock,
        file.minimized, file.type, file.password.c_str(), file.encrypted, file.yesNo);
    return exchange(request);
}

void DocumentCommand::sendUnanswered(OutputControllerCommand command, const std::string& name,
                                     OutputDocumentMinimized minimized) {
    const VexawMsgOutputControllerRequest request(RequestSequence::ofModule().next(), command, name.c_str(),
                                                  "", minimized);
    VexawMsgOutputControllerResponse response;
    controller().Send(request, response);
}

std::optional<VexawMsgOutputControllerResponse> DocumentCommand::exchange(
    const VexawMsgOutputControllerRequest& request) {
    std::optional<VexawMsgOutputControllerResponse> response(std::in_place);
    if (controller().Send(request, *response)) {
        return response;
    }
    const VUString message = response->GetMsgString();
    const VUString argument = response->GetArgumentString();
    reportAnswer(message.str(), argument.str(), response->GetErrorSeverity());
    return std::nullopt;
}

}  // namespace vexa
