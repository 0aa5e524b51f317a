// The client adapter of a program that has its front end in its own process.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "backend/adapter/client_adapter.h"
#include "frontend/controller/embedded_controller.h"
#include "frontend/controller/export_requests.h"
#include "frontend/controller/modify_requests.h"
#include "frontend/looks/look_library.h"

namespace vexa::frontend {

struct EmbeddedChoices {
    bool localMode = false;                ///< what `isLocalMode` answers
    Carrying carrying = Carrying::out;     ///< in a dry run no document is modified and no file written
    std::vector<std::string> lookFolders;  ///< where table looks stand, UTF-8
};

class EmbeddedAdapter : public ClientAdapter {
  public:
    explicit EmbeddedAdapter(EmbeddedChoices choices)
        : choices_(std::move(choices)), controller_(choices_.carrying), looks_(choices_.lookFolders) {}

    bool isLocalMode() override { return choices_.localMode; }
    OutputController* outputController() override { return &controller_; }
    /// Exports the document that `specification` names; what the answer has no code for goes to the log, as
    /// far as the export wants to hear of it.
    std::string exchangeExport(const std::string& specification) override;
    std::string exchangeModify(const std::string& request) override;

    [[nodiscard]] OpenDocuments& documents() { return controller_.documents(); }
    void setExportSurroundings(ExportSurroundings surroundings) {
        exportSurroundings_ = std::move(surroundings);
    }

  private:
    EmbeddedChoices choices_;
    EmbeddedController controller_;
    LookLibrary looks_;
    ExportSurroundings exportSurroundings_;
};

}  // namespace vexa::frontend
