// Counts how commands fared.
#pragma once

#include <cstddef>

#include "backend/pivot/output_log.h"

namespace vexa {

/// Listens to the log and counts what is an error: a message of level 3 or above, an error in the syntax, a
/// refused value.
class OutcomeCounter : public LogListener {
  public:
    void receive(const LogEvent& event) override;

    [[nodiscard]] std::size_t errors() const { return errors_; }

  private:
    std::size_t errors_ = 0;
};

/// True when `event` means that a command failed.
[[nodiscard]] bool isErrorEvent(const LogEvent& event);

}  // namespace vexa
