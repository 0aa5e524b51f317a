// An adapter that writes every exchange into the trace and leaves the work to another one.
#pragma once

#include <string>

#include "apps/vexa/json_lines.h"
#include "backend/adapter/client_adapter.h"

namespace vexa::program {

/// Neither the adapter nor the lines are owned.
class TracingAdapter : public ClientAdapter, private OutputController {
  public:
    TracingAdapter(ClientAdapter& inner, JsonLines& lines) : inner_(inner), lines_(lines) {}

    bool isLocalMode() override { return inner_.isLocalMode(); }
    OutputController* outputController() override;
    std::string exchangeExport(const std::string& specification) override;
    std::string exchangeModify(const std::string& request) override;

  private:
    bool Send(const VexawMsgOutputControllerRequest& request,
              VexawMsgOutputControllerResponse& response) override;
    std::string exchange(const char* kind, const std::string& text,
                         std::string (ClientAdapter::*operation)(const std::string&));

    ClientAdapter& inner_;
    JsonLines& lines_;
};

}  // namespace vexa::program
