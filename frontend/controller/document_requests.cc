// The requests that touch no file, one function each.

#include <memory>

#include "backend/text/character_set.h"
#include "frontend/controller/embedded_controller.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {
namespace {

void minimise(ViewerDocument& document, OutputDocumentMinimized minimized) {
    if (minimized != OutputDocumentMinimized::notGiven) {
        document.setMinimized(minimized == OutputDocumentMinimized::yes);
    }
}

}  // namespace

bool EmbeddedController::activate(const Request& request, Response& response) {
    const std::string name = toUtf8(request.first());
    if (name.empty()) {
        return refuse(response, messages::nameMissing);
    }
    ViewerDocument* document = documentNamed(name, response);
    if (document == nullptr) {
        return false;
    }
    documents_.activate(*document);
    minimise(*document, request.minimized());
    return true;
}

bool EmbeddedController::close(const Request& request, Response& response) {
    const std::string name = toUtf8(request.first());
    if (isSameName(name, "ALL")) {
        documents_.closeAll();
        return true;
    }
    if (name.empty()) {
        return refuse(response, messages::nameToCloseMissing);
    }
    const ViewerDocument* document = documentNamed(name, response);
    if (document == nullptr) {
        return false;
    }
    documents_.close(*document);
    return true;
}

bool EmbeddedController::display(Response& response) const {
    for (const auto& document : documents_.all()) {
        response.addDocument({VUString(fromUtf8(document->name())), document.get() == documents_.active()});
    }
    return true;
}

bool EmbeddedController::name(const Request& request, Response& response) {
    ViewerDocument* document = documents_.active();
    if (document == nullptr) {
        return refuse(response, messages::noDocumentOpen);
    }
    if (document->isLocked()) {
        return refuse(response, messages::documentLocked, shownName(*document));
    }
    const std::string name = toUtf8(request.first());
    if (!checkNewName(name, document, response)) {
        return false;
    }
    documents_.rename(*document, name);
    // Without MINIMIZED=YES the command sends 0, which is no wish to bring the document back.
    document->setMinimized(document->isMinimized() || request.minimized() == OutputDocumentMinimized::yes);
    return true;
}

bool EmbeddedController::newDocument(const Request& request, Response& response) {
    const std::string name = toUtf8(request.first());
    if (!checkNewName(name, nullptr, response)) {
        return false;
    }
    auto document = std::make_unique<ViewerDocument>();
    document->setName(name);
    document->setModified(false);
    minimise(*document, request.minimized());
    documents_.add(std::move(document));
    return true;
}

}  // namespace vexa::frontend
