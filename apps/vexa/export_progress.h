// Shows on a terminal how far a long export is.
#pragma once

#include <chrono>
#include <cstddef>

namespace vexa::program {

/// Called with the items done and all of them; false when the user interrupted it at the prompt. Writes a
/// line to standard error that later ones overwrite, from half a second on, and takes it away when the last
/// item is done. Writes nothing where standard error is no terminal.
class ExportProgress {
  public:
    ExportProgress();
    bool operator()(std::size_t done, std::size_t all);

  private:
    using Clock = std::chrono::steady_clock;

    bool isShown_ = false;  // there is a terminal
    bool isWritten_ = false;
    Clock::time_point next_;
};

}  // namespace vexa::program
