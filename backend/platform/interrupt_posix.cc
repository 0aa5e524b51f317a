#include "backend/platform/interrupt.h"

#include <atomic>
#include <csignal>

namespace vexa {

namespace {

std::atomic<bool> caught{false};
std::atomic<bool> interrupted{false};
std::atomic<void (*)()> answer{nullptr};

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<void (*)()>::is_always_lock_free);

extern "C" void rememberInterrupt(int /*signal*/) {
    interrupted = true;
    if (void (*const call)() = answer; call != nullptr) call();
}

}  // namespace

void catchInterrupts(void (*whenInterrupted)()) {
    answer = whenInterrupted;
    caught = true;
    struct sigaction action {};
    action.sa_handler = rememberInterrupt;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
}

bool catchesInterrupts() { return caught; }
bool wasInterrupted() { return interrupted; }
void forgetInterrupt() { interrupted = false; }

}  // namespace vexa
