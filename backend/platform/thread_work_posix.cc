#include <pthread.h>

#include <condition_variable>
#include <cstddef>
#include <mutex>

#include "backend/platform/thread_work.h"

namespace vexa {

namespace {

struct Works {
    std::mutex mutex;
    std::condition_variable changed;
    std::size_t all = 0;     ///< how many there are
    std::size_t copies = 0;  ///< how many threads wait to copy the process: these go first
};

Works& works() {
    static Works all;
    return all;
}

thread_local std::size_t ofThisThread = 0;

/// Keeps the lock, so that the copy finds it as its own.
void beforeCopy() {
    std::unique_lock lock(works().mutex);
    ++works().copies;
    works().changed.wait(lock, [] { return works().all == ofThisThread; });
    lock.release();
}

void behindCopy() {
    --works().copies;
    works().mutex.unlock();
    works().changed.notify_all();
}

void inCopy() {
    works().copies = 0;
    works().mutex.unlock();
}

bool watchCopies() {
    works();
    return pthread_atfork(beforeCopy, behindCopy, inCopy) == 0;
}

}  // namespace

ThreadWork::ThreadWork() {
    static const bool isWatching = watchCopies();
    static_cast<void>(isWatching);
    std::unique_lock lock(works().mutex);
    // Whoever works already may begin more: the copy waits for all of it.
    works().changed.wait(lock, [] { return works().copies == 0 || ofThisThread > 0; });
    ++works().all;
    ++ofThisThread;
}

ThreadWork::~ThreadWork() {
    {
        const std::lock_guard lock(works().mutex);
        --works().all;
        --ofThisThread;
    }
    works().changed.notify_all();
}

}  // namespace vexa
