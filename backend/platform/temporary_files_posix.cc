#include <poll.h>
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

// A handler may neither wait for a lock nor take memory, so the paths stand in places of fixed size, which
// are used again and never given back. No path that can be opened is longer.
constexpr std::size_t kPathBytes = 4096;
constexpr pid_t kNobody = 0;
constexpr pid_t kBeingWritten = -1;

struct Place {
    std::atomic<pid_t> owner{kBeingWritten};  ///< the process whose file it is
    std::array<char, kPathBytes> path{};
    Place* next = nullptr;
};

constexpr std::array<int, 5> kEndingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

std::atomic<Place*> places{nullptr};
std::atomic<int> beingMade{0};
std::atomic<bool> isEnding{false};

static_assert(std::atomic<pid_t>::is_always_lock_free);
static_assert(std::atomic<Place*>::is_always_lock_free);
static_assert(std::atomic<int>::is_always_lock_free);
static_assert(std::atomic<bool>::is_always_lock_free);

sigset_t endingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int each : kEndingSignals) sigaddset(&signals, each);
    return signals;
}

[[noreturn]] void waitForTheEnd() {
    for (;;) pause();
}

/// Files that other threads are making just now must be there before they can be removed. A file system that
/// does not answer keeps nobody for long.
void waitForFilesBeingMade() {
    constexpr int kMostWaits = 10'000;
    for (int waits = 0; beingMade != 0 && waits < kMostWaits; ++waits) poll(nullptr, 0, 1);
}

/// Ends the process as if the signal had never been handled. All of them are blocked where this is called.
void endBy(int signal) {
    struct sigaction plain {};
    plain.sa_handler = SIG_DFL;
    sigemptyset(&plain.sa_mask);
    sigaction(signal, &plain, nullptr);
    raise(signal);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
    pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
}

// The handler stays until nothing is left to be removed: the same signal may come twice, to two threads.
extern "C" void removeAndEnd(int signal) {
    if (isEnding.exchange(true)) waitForTheEnd();
    waitForFilesBeingMade();
    removeTemporaries();
    endBy(signal);
}

void handleSignals() {
    for (const int signal : kEndingSignals) {
        struct sigaction present {};
        if (sigaction(signal, nullptr, &present) != 0 || (present.sa_flags & SA_SIGINFO) != 0 ||
            present.sa_handler != SIG_DFL) {
            continue;
        }
        struct sigaction ours {};
        ours.sa_handler = removeAndEnd;
        ours.sa_mask = endingSignals();
        sigaction(signal, &ours, nullptr);
    }
}

/// A file is being made for as long as the object lives. Signals that end the process do not interrupt this
/// thread meanwhile, since their handler waits for it.
class BeingMade {
  public:
    BeingMade() {
        const sigset_t held = endingSignals();
        pthread_sigmask(SIG_BLOCK, &held, &before_);
        ++beingMade;
        if (isEnding) {
            --beingMade;
            pthread_sigmask(SIG_SETMASK, &before_, nullptr);
            waitForTheEnd();
        }
    }
    ~BeingMade() {
        --beingMade;
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    BeingMade(const BeingMade&) = delete;
    BeingMade& operator=(const BeingMade&) = delete;

  private:
    sigset_t before_{};
};

/// A place that nobody uses, for the caller to fill. A child process has its parent's places; they are free
/// to it.
Place& freePlace() {
    for (Place* place = places; place != nullptr; place = place->next) {
        pid_t owner = place->owner;
        if (owner != getpid() && owner != kBeingWritten &&
            place->owner.compare_exchange_strong(owner, kBeingWritten)) {
            return *place;
        }
    }
    auto* const added = new Place;
    added->next = places;
    while (!places.compare_exchange_weak(added->next, added)) {
    }
    return *added;
}

}  // namespace

bool makeTemporary(const std::string& path, const std::function<bool()>& make) {
    static std::once_flag handled;
    std::call_once(handled, handleSignals);
    if (path.size() >= kPathBytes) return make();  // which will find it too long
    const BeingMade now;
    if (!make()) return false;
    Place& place = freePlace();
    std::memcpy(place.path.data(), path.c_str(), path.size() + 1);
    place.owner = getpid();
    return true;
}

void forgetTemporary(const std::string& path) {
    for (Place* place = places; place != nullptr; place = place->next) {
        if (place->owner == getpid() && path == place->path.data()) place->owner = kNobody;
    }
}

void removeTemporaries() {
    for (Place* place = places; place != nullptr; place = place->next) {
        if (place->owner == getpid()) unlink(place->path.data());
    }
}

}  // namespace vexa
