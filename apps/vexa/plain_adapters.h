// Adapters that need no front end.
#pragma once

#include <string>

#include "apps/vexa/scripted_answers.h"
#include "backend/adapter/client_adapter.h"

namespace vexa::program {

/// An adapter without an output controller: a modification is answered as if nothing was selected, an export
/// not at all.
class NoControllerAdapter : public ClientAdapter {
  public:
    explicit NoControllerAdapter(bool localMode) : localMode_(localMode) {}

    bool isLocalMode() override { return localMode_; }
    OutputController* outputController() override { return nullptr; }
    std::string exchangeExport(const std::string& specification) override;
    std::string exchangeModify(const std::string& request) override;

  private:
    bool localMode_;
};

/// Answers the n-th exchange of a kind with the n-th answer of that kind. When none is left: a document
/// request is carried out and answers no documents, a modification selects nothing, an export has no answer.
class ScriptedAdapter : public ClientAdapter, private OutputController {
  public:
    ScriptedAdapter(ScriptedAnswers answers, bool localMode)
        : answers_(std::move(answers)), localMode_(localMode) {}

    bool isLocalMode() override { return localMode_; }
    OutputController* outputController() override { return this; }
    std::string exchangeExport(const std::string& specification) override;
    std::string exchangeModify(const std::string& request) override;

  private:
    bool Send(const VexawMsgOutputControllerRequest& request,
              VexawMsgOutputControllerResponse& response) override;

    ScriptedAnswers answers_;
    bool localMode_;
};

}  // namespace vexa::program
