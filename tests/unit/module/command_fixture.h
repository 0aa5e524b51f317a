// Runs commands of the module against a controller that records requests, and collects what the log receives.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

#include "backend/adapter/client_adapter.h"
#include "backend/pivot/output_log.h"
#include "backend/tokens/command_text.h"

namespace vexa {

class RecordingController : public OutputController {
  public:
    bool Send(const VexawMsgOutputControllerRequest& request,
              VexawMsgOutputControllerResponse& response) override {
        requests.push_back(request);
        response = answer;
        return accept;
    }

    std::vector<VexawMsgOutputControllerRequest> requests;
    VexawMsgOutputControllerResponse answer;
    bool accept = true;
};

class FixedAdapter : public ClientAdapter {
  public:
    bool isLocalMode() override { return localMode; }
    OutputController* outputController() override { return controller; }
    std::string exchangeExport(const std::string& specification) override {
        exports.push_back(specification);
        return answer;
    }
    std::string exchangeModify(const std::string& request) override {
        modifications.push_back(request);
        return reply;
    }

    OutputController* controller = nullptr;
    bool localMode = true;
    std::vector<std::string> modifications;  ///< requests of modifications
    std::string reply;                       ///< to each of them
    std::vector<std::string> exports;        ///< specifications of exports
    std::string answer;                      ///< to each of them
};

class CommandFixture : public testing::Test, public LogListener {
  public:
    void receive(const LogEvent& event) override { events.push_back(event); }

    /// The events of one kind, in order.
    template <typename Event>
    [[nodiscard]] std::vector<Event> all() const {
        std::vector<Event> found;
        for (const LogEvent& each : events) {
            if (const auto* event = std::get_if<Event>(&each)) {
                found.push_back(*event);
            }
        }
        return found;
    }

  protected:
    CommandFixture() {
        adapter.controller = &controller;
        installAdapter(&adapter);
        OutputLog::current().addListener(*this);
    }
    ~CommandFixture() override {
        OutputLog::current().removeListener(*this);
        installAdapter(nullptr);
    }

    void run(void (*command)(), const std::string& arguments) {
        const CommandText text{arguments, 0, "test.vxs", 1};
        const CurrentCommandScope scope(text);
        command();
    }

    RecordingController controller;
    FixedAdapter adapter;
    std::vector<LogEvent> events;
};

}  // namespace vexa
