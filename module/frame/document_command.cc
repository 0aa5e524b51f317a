#include "module/frame/document_command.h"

#include <utility>

#include "backend/pivot/output_log.h"
#include "module/frame/report.h"
#include "module/frame/request_sequence.h"

namespace vexa {

namespace {

constexpr int kProcedureValue = 2;
constexpr SystemText kNameTooLong = "Output name ^1 is too long."_text;

OutputController* findController() {
    ClientAdapter* const adapter = GetAdapter();
    return adapter == nullptr ? nullptr : adapter->outputController();
}

std::optional<ParserMessage> makeMessages(const CommandIdentity& identity) {
    std::optional<ParserMessage> messages;
    if (!identity.parserTitle.empty()) {
        messages.emplace();
        messages->SetCommandName(identity.name);
        messages->SetProcedureTitle(identity.parserTitle);
    }
    return messages;
}

CommandDescriptor makeDescriptor(const CommandIdentity& identity, GrammarTable grammar) {
    CommandDescriptor descriptor(identity.name);
    describe(descriptor, grammar);
    return descriptor;
}

}  // namespace

DocumentCommand::DocumentCommand(const CommandIdentity& identity, GrammarTable grammar)
    : name_(identity.name),
      procedure_(identity.procedureTitle, kProcedureValue),
      controller_(findController()),
      messages_(makeMessages(identity)),
      descriptor_(makeDescriptor(identity, grammar)),
      tokens_(true),
      parser_(tokens_, spec_, descriptor_) {}

bool DocumentCommand::parse() {
    const int result = parser_.getCommandSpecifications();
    BP_FLUSHLOG();
    if (result != 0) {
        return false;
    }
    if (controller_ == nullptr) {
        reportNotImplemented(name_);
        return false;
    }
    return true;
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
    controller_->Send(request, response);
}

std::optional<VexawMsgOutputControllerResponse> DocumentCommand::exchange(
    const VexawMsgOutputControllerRequest& request) {
    std::optional<VexawMsgOutputControllerResponse> response(std::in_place);
    if (controller_->Send(request, *response)) {
        return response;
    }
    const VUString message = response->GetMsgString();
    const VUString argument = response->GetArgumentString();
    reportAnswer(message.str(), argument.str(), response->GetErrorSeverity());
    return std::nullopt;
}

}  // namespace vexa
