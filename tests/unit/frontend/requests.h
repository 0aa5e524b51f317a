// Short ways to send requests to an embedded controller, and what came back.
#pragma once

#include <string>
#include <vector>

#include "frontend/controller/embedded_controller.h"

namespace vexa::frontend {

struct Answer {
    bool ok = false;
    int severity = 0;
    std::string message;
    std::string argument;
    std::vector<std::string> documents;  ///< names in answer order, the active one after a '*'
};

inline Answer exchange(EmbeddedController& controller, const VexawMsgOutputControllerRequest& request) {
    VexawMsgOutputControllerResponse response;
    Answer answer;
    answer.ok = controller.Send(request, response);
    answer.severity = response.GetErrorSeverity();
    answer.message = response.GetMsgString().str();
    answer.argument = response.GetArgumentString().str();
    for (int i = 0; i < response.GetOutputDocumentCount(); ++i) {
        const VexawMsgOutputDocument* document = response.GetOutputDocumentItem(i);
        answer.documents.push_back((document->active ? "*" : "") + document->name.str());
    }
    return answer;
}

inline Answer sendShort(EmbeddedController& controller, OutputControllerCommand command,
                        const std::string& name = "",
                        OutputDocumentMinimized minimized = OutputDocumentMinimized::no) {
    return exchange(controller, {1, command, name.c_str(), "", minimized});
}

inline std::vector<std::string> listed(EmbeddedController& controller) {
    return sendShort(controller, OutputControllerCommand::display).documents;
}

}  // namespace vexa::frontend
