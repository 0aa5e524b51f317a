#include "frontend/controller/embedded_controller.h"

#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {
namespace {

constexpr OutputErrorSeverity refusalSeverity = 3;
constexpr std::size_t fewDocuments = 5;

}  // namespace

std::string withOpenNames(const std::string& name, const OpenDocuments& documents) {
    if (documents.all().size() > fewDocuments) {
        return name;
    }
    std::string names;
    for (const auto& document : documents.all()) {
        names += (names.empty() ? "" : ", ") + shownName(*document);
    }
    return composed(messages::withOpenDocuments, {name, names});
}

std::string shownName(const ViewerDocument& document) {
    return document.name().empty() ? translated(messages::unnamed) : document.name();
}

bool EmbeddedController::Send(const Request& request, Response& response) {
    switch (request.command()) {
        case OutputControllerCommand::activate:
            return activate(request, response);
        case OutputControllerCommand::close:
            return close(request, response);
        case OutputControllerCommand::display:
            return display(response);
        case OutputControllerCommand::name:
            return name(request, response);
        case OutputControllerCommand::newDocument:
            return newDocument(request, response);
        case OutputControllerCommand::open:
            return open(request, response);
        case OutputControllerCommand::save:
            return save(request, response);
    }
    return refuse(response, messages::unknownRequest, std::to_string(static_cast<int>(request.command())));
}

bool EmbeddedController::refuse(Response& response, SystemText message, std::string_view argument) {
    response.setError(refusalSeverity, VUString(fromUtf8(message)), VUString(fromUtf8(argument)));
    return false;
}

bool EmbeddedController::checkNewName(const std::string& name, const ViewerDocument* except,
                                      Response& response) const {
    if (isSameName(name, "ALL") || name == "*") {
        return refuse(response, messages::nameReserved, name);
    }
    const ViewerDocument* holder = documents_.find(name);
    return holder == nullptr || holder == except || refuse(response, messages::nameTaken, name);
}

ViewerDocument* EmbeddedController::documentNamed(const std::string& name, Response& response) const {
    if (documents_.active() == nullptr) {
        refuse(response, messages::noDocumentOpen);
        return nullptr;
    }
    ViewerDocument* document = name == "*" ? documents_.active() : documents_.find(name);
    if (document == nullptr) {
        refuse(response, messages::noSuchDocument, withOpenNames(name, documents_));
    }
    return document;
}

}  // namespace vexa::frontend
