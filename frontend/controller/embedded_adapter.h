// The client adapter of a program that has its front end in its own process.
#pragma once

#include <string>

#include "backend/adapter/client_adapter.h"
#include "frontend/controller/embedded_controller.h"

namespace vexa::frontend {

class EmbeddedAdapter : public ClientAdapter {
  public:
    /// `localMode` is what `isLocalMode` answers.
    explicit EmbeddedAdapter(bool localMode) : localMode_(localMode) {}

    bool isLocalMode() override { return localMode_; }
    OutputController* outputController() override { return &controller_; }
    /// Documents cannot be exported yet: the answer is empty, as that of a client that does not answer.
    std::string exchangeExport(const std::string& specification) override;
    /// Documents cannot be modified yet: the reply counts nothing and says so.
    std::string exchangeModify(const std::string& request) override;

    [[nodiscard]] OpenDocuments& documents() { return controller_.documents(); }

  private:
    bool localMode_;
    EmbeddedController controller_;
};

}  // namespace vexa::frontend
