#include "apps/vexa/export_progress.h"

#include <iostream>
#include <string>

#include "apps/vexa/diagnostics.h"
#include "backend/platform/interrupt.h"
#include "backend/platform/terminal.h"
#include "backend/strings/dictionary.h"

namespace vexa::program {

namespace {

constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::milliseconds kStep{100};
constexpr std::size_t kLineWidth = 60;

}  // namespace

ExportProgress::ExportProgress() : isShown_(isTerminal(StandardStream::error) && !areDiagnosticsJson()) {}

bool ExportProgress::operator()(std::size_t done, std::size_t all) {
    // At the prompt an interrupt ends the export and keeps the session.
    const bool goesOn = !wasInterrupted();
    if (!isShown_) return goesOn;
    const Clock::time_point now = Clock::now();
    if (done == 1) next_ = now + kPatience;
    if (done == all || !goesOn) {
        if (isWritten_) std::cerr << '\r' << std::string(kLineWidth, ' ') << '\r' << std::flush;
        isWritten_ = false;
    } else if (now >= next_) {
        std::cerr << '\r'
                  << composed("Exporting: item ^1 of ^2"_text, {std::to_string(done), std::to_string(all)})
                  << std::flush;
        isWritten_ = true;
        next_ = now + kStep;
    }
    return goesOn;
}

}  // namespace vexa::program
