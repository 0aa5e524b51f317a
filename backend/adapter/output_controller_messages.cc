#include "backend/adapter/output_controller_messages.h"

#include <cstddef>

namespace vexa {

namespace {

std::string textOf(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

VexawMsgOutputControllerRequest::VexawMsgOutputControllerRequest(int sequence,
                                                                 OutputControllerCommand command,
                                                                 const char* first, const char* second,
                                                                 OutputDocumentMinimized minimized)
    : form_(Form::shortForm),
      sequence_(sequence),
      command_(command),
      first_(textOf(first)),
      second_(textOf(second)),
      minimized_(minimized) {}

VexawMsgOutputControllerRequest::VexawMsgOutputControllerRequest(
    int sequence, OutputControllerCommand command, const char* first, const char* second,
    OutputDocumentLock lock, OutputDocumentMinimized minimized, OutputDocumentType type, const char* password,
    OutputDocumentEncryptPW encrypted, YesNoEnum yesNo)
    : form_(Form::longForm),
      sequence_(sequence),
      command_(command),
      first_(textOf(first)),
      second_(textOf(second)),
      lock_(lock),
      minimized_(minimized),
      type_(type),
      password_(textOf(password)),
      encrypted_(encrypted),
      yesNo_(yesNo) {}

const VexawMsgOutputDocument* VexawMsgOutputControllerResponse::GetOutputDocumentItem(int index) const {
    if (index < 0 || index >= GetOutputDocumentCount()) {
        return nullptr;
    }
    return &documents_[static_cast<std::size_t>(index)];
}

void VexawMsgOutputControllerResponse::setError(OutputErrorSeverity severity, VUString message,
                                                VUString argument) {
    severity_ = severity;
    message_ = std::move(message);
    argument_ = std::move(argument);
}

void VexawMsgOutputControllerResponse::addDocument(VexawMsgOutputDocument document) {
    documents_.push_back(std::move(document));
}

}  // namespace vexa
