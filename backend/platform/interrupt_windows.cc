#include <windows.h>

#include <atomic>

#include "backend/platform/interrupt.h"

namespace vexa {

namespace {

std::atomic<bool> caught{false};
std::atomic<bool> interrupted{false};
std::atomic<void (*)()> answer{nullptr};

// Runs on a thread of its own.
BOOL WINAPI rememberInterrupt(DWORD event) {
    if (event != CTRL_C_EVENT) return FALSE;
    interrupted = true;
    if (void (*const call)() = answer; call != nullptr) call();
    return TRUE;
}

}  // namespace

void catchInterrupts(void (*whenInterrupted)()) {
    answer = whenInterrupted;
    caught = true;
    SetConsoleCtrlHandler(rememberInterrupt, TRUE);
}

bool catchesInterrupts() { return caught; }
bool wasInterrupted() { return interrupted; }
void forgetInterrupt() { interrupted = false; }

}  // namespace vexa
