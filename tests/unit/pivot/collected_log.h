// A listener that keeps what the output log publishes while it lives.
#pragma once

#include <memory>
#include <vector>

#include "backend/pivot/output_log.h"

namespace vexa {

class CollectedLog : public LogListener {
  public:
    CollectedLog() { OutputLog::current().addListener(*this); }
    ~CollectedLog() override { OutputLog::current().removeListener(*this); }
    CollectedLog(const CollectedLog&) = delete;
    CollectedLog& operator=(const CollectedLog&) = delete;

    void receive(const LogEvent& event) override { events.push_back(event); }

    /// The events of one kind, in their order.
    template <typename Event>
    [[nodiscard]] std::vector<Event> all() const {
        std::vector<Event> found;
        for (const LogEvent& event : events) {
            if (const auto* one = std::get_if<Event>(&event)) found.push_back(*one);
        }
        return found;
    }

    /// The finished tables, in their order.
    [[nodiscard]] std::vector<PivotTable> tables() const {
        std::vector<PivotTable> found;
        for (const TableFinished& finished : all<TableFinished>()) found.push_back(*finished.table);
        return found;
    }

    std::vector<LogEvent> events;
};

}  // namespace vexa
