// The trace: what happens, as JSON lines, in the order in which it happens. See docs/trace.md.
#pragma once

#include "apps/vexa/json_lines.h"
#include "backend/pivot/output_log.h"

namespace vexa::program {

/// Writes the events of the log. `lines` is not owned.
class TraceListener : public LogListener {
  public:
    explicit TraceListener(JsonLines& lines) : lines_(lines) {}

    void receive(const LogEvent& event) override;

  private:
    JsonLines& lines_;
};

}  // namespace vexa::program
