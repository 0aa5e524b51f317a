#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <mutex>

#include "backend/platform/temporary_files.h"

namespace vexa {

namespace {

// A handler may neither wait for a lock nor take memory, so the paths stand in fixed places. A file beyond
// them, or with a longer path, is not remembered.
constexpr std::size_t kPlaces = 64;
constexpr std::size_t kPathBytes = 4096;

struct Place {
    std::atomic<pid_t> owner{0};  ///< the process whose file it is; 0 while there is none
    std::array<char, kPathBytes> path{};
};

static_assert(std::atomic<pid_t>::is_always_lock_free);

std::array<Place, kPlaces>& places() {
    static std::array<Place, kPlaces> all;
    return all;
}

std::mutex& guard() {
    static std::mutex mutex;
    return mutex;
}

extern "C" void removeAndEnd(int signal) {
    const int before = errno;
    removeTemporaries();
    errno = before;
    // The handler is gone by now (SA_RESETHAND), so this ends the process as if there had been none.
    raise(signal);
}

void handleSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction present {};
        if (sigaction(signal, nullptr, &present) != 0 || (present.sa_flags & SA_SIGINFO) != 0 ||
            present.sa_handler != SIG_DFL) {
            continue;
        }
        struct sigaction ours {};
        ours.sa_handler = removeAndEnd;
        ours.sa_flags = static_cast<int>(SA_RESETHAND);
        sigemptyset(&ours.sa_mask);
        sigaction(signal, &ours, nullptr);
    }
}

}  // namespace

void rememberTemporary(const std::string& path) {
    static std::once_flag handled;
    std::call_once(handled, [] {
        places();
        handleSignals();
    });
    if (path.size() >= kPathBytes) return;
    const std::lock_guard lock(guard());
    for (Place& place : places()) {
        // A child process has its parent's places; they are free to it.
        if (place.owner == getpid()) continue;
        place.owner = 0;
        std::memcpy(place.path.data(), path.c_str(), path.size() + 1);
        place.owner = getpid();
        return;
    }
}

void forgetTemporary(const std::string& path) {
    const std::lock_guard lock(guard());
    for (Place& place : places()) {
        if (place.owner == getpid() && path == place.path.data()) place.owner = 0;
    }
}

void removeTemporaries() {
    for (Place& place : places()) {
        if (place.owner == getpid()) unlink(place.path.data());
    }
}

}  // namespace vexa
