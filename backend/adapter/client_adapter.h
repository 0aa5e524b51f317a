// How the back end reaches the front end.
#pragma once

#include <string>

#include "backend/adapter/output_controller_messages.h"

namespace vexa {

/// The front end's output controller: carries out one document request at a time.
class OutputController {
  public:
    virtual ~OutputController() = default;

    /// Carries out `request` and fills `response`. False when it was refused; severity, message and argument
    /// of the response then say why.
    virtual bool Send(const VexawMsgOutputControllerRequest& request,
                      VexawMsgOutputControllerResponse& response) = 0;
};

/// The back end's client adapter. It belongs to the back end; whoever gets a pointer to it never frees it.
class ClientAdapter {
  public:
    virtual ~ClientAdapter() = default;

    /// True when front end and back end see the same files; when false, file names are expanded on the back
    /// end's side.
    virtual bool isLocalMode() = 0;
    /// The output controller, or null when the front end has none.
    virtual OutputController* outputController() = 0;
    /// Hands over the XML of an export and returns the client's answer, empty when there was none.
    virtual std::string exchangeExport(const std::string& specification) = 0;
    /// Hands over the XML request of a modification and returns the controller's reply.
    virtual std::string exchangeModify(const std::string& request) = 0;
};

/// The adapter of the running back end, or null.
[[nodiscard]] ClientAdapter* GetAdapter();

/// Makes `adapter` (or none, for null) what `GetAdapter` returns. Not owned: whoever installs it keeps it
/// alive until another one is installed.
void installAdapter(ClientAdapter* adapter);

}  // namespace vexa
