// What a copy of the process finds of the threads that it does not have.
#include "backend/platform/thread_work.h"

#include <gtest/gtest.h>

#ifndef _WIN32

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace vexa {
namespace {

using std::chrono::milliseconds;

/// The status of a copy that ends at once with what `status` tells there.
template <typename Status>
int statusOfCopy(const Status& status) {
    const pid_t copy = fork();
    if (copy == 0) _exit(status());
    int ended = 0;
    waitpid(copy, &ended, 0);
    return WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
}

TEST(ThreadWork, IsOverWhenTheProcessIsCopied) {
    std::atomic<bool> hasBegun = false;
    std::atomic<bool> isDone = false;
    std::thread other([&] {
        const ThreadWork work;
        hasBegun = true;
        std::this_thread::sleep_for(milliseconds(200));
        isDone = true;
    });
    while (!hasBegun) std::this_thread::yield();
    EXPECT_EQ(statusOfCopy([&] { return isDone ? 7 : 8; }), 7);
    other.join();
}

// A copy waits for nobody who only waits for the next work, and is not put off for ever by those who always
// have some.
TEST(ThreadWork, LetsCopiesGoFirst) {
    std::atomic<bool> isStopped = false;
    std::atomic<int> amid = 0;
    std::vector<std::thread> others;
    for (int i = 0; i < 3; ++i) {
        others.emplace_back([&] {
            while (!isStopped) {
                const ThreadWork work;
                ++amid;
                std::this_thread::sleep_for(milliseconds(1));
                --amid;
            }
        });
    }
    for (int i = 0; i < 20; ++i) EXPECT_EQ(statusOfCopy([&] { return amid.load(); }), 0);
    isStopped = true;
    for (std::thread& other : others) other.join();
}

TEST(ThreadWork, KeepsNoThreadFromCopyingItsOwnProcess) {
    const ThreadWork work;
    EXPECT_EQ(statusOfCopy([] {
                  const ThreadWork more;
                  return 7;
              }),
              7);
}

}  // namespace
}  // namespace vexa

#endif
