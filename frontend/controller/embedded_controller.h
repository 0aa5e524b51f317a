// The output controller inside the program's own process: carries out the requests of the document commands.
#pragma once

#include <string>
#include <string_view>

#include "backend/adapter/client_adapter.h"
#include "backend/text/system_text.h"
#include "frontend/controller/carrying.h"
#include "frontend/controller/open_documents.h"
#include "frontend/store/document_file.h"

namespace vexa::frontend {

class EmbeddedController : public OutputController {
  public:
    using Request = VexawMsgOutputControllerRequest;
    using Response = VexawMsgOutputControllerResponse;

    /// In a dry run documents are made, opened, named and closed, but nothing is saved.
    explicit EmbeddedController(Carrying carrying = Carrying::out) : carrying_(carrying) {}

    /// Texts of request and response are in the back end's character set. A refusal changes nothing.
    bool Send(const Request& request, Response& response) override;

    [[nodiscard]] OpenDocuments& documents() { return documents_; }

  private:
    /// What a refused request says; the argument is as it is shown, UTF-8.
    static bool refuse(Response& response, SystemText message, std::string_view argument = {});

    bool activate(const Request& request, Response& response);
    bool close(const Request& request, Response& response);
    bool display(Response& response) const;
    bool name(const Request& request, Response& response);
    bool newDocument(const Request& request, Response& response);
    bool open(const Request& request, Response& response);
    bool save(const Request& request, Response& response);

    /// Whether `name` may be given to a document, `except` not counted among those that have it already.
    bool checkNewName(const std::string& name, const ViewerDocument* except, Response& response) const;
    /// The document that a request names: "*" is the active one. Null, and a refusal, when there is none.
    ViewerDocument* documentNamed(const std::string& name, Response& response) const;

    /// Whether the file may be used: some file is named, and it is none of an open document other than
    /// `except`.
    bool checkFile(const Request& request, const ViewerDocument* except, Response& response) const;

    /// Whether nobody else has written the document's own file; asked again, yes.
    static bool checkUnchanged(const Request& request, ViewerDocument& document, Response& response);

    void warnOfOpenFile(const Request& request, const ViewerDocument& document, const std::string& file);
    void follow(ViewerDocument& document, const SaveOptions& options, OutputDocumentLock wish,
                const std::string& file);

    Carrying carrying_;
    OpenDocuments documents_;
};

/// The name as messages show it: a document without one has a substitute.
[[nodiscard]] std::string shownName(const ViewerDocument& document);

/// A name that no document has, as messages show it: with those of the open documents where these are few.
[[nodiscard]] std::string withOpenNames(const std::string& name, const OpenDocuments& documents);

}  // namespace vexa::frontend
