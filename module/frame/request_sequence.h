// The numbers of the requests to the output controller: the only state of the module that outlives a command.
#pragma once

#include <cstdint>

namespace vexa {

/// Counts 1, 2, ... 2,000,000,000 and begins again at 1.
class RequestSequence {
  public:
    explicit RequestSequence(std::int32_t last = 0) : last_(last) {}

    /// The next number.
    std::int32_t next();

    /// The module's own counter, 0 when the module is loaded. Commands run one at a time, so it takes no
    /// lock.
    static RequestSequence& ofModule();

  private:
    std::int32_t last_;
};

}  // namespace vexa
