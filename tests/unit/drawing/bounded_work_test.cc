#include "frontend/drawing/bounded_work.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <future>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "tests/unit/processor_time.h"

using namespace vexa::frontend;

namespace {

TEST(BoundedWork, GivesWhatTheWorkReturned) {
    std::string result = "before";
    const std::string long_(3'000'000, 'x');
    EXPECT_EQ(WorkEnd::done, workApart([&] { return long_; }, {}, result));
    EXPECT_EQ(long_, result);
    EXPECT_EQ(WorkEnd::done, workApart([] { return std::string(); }, {}, result));
    EXPECT_EQ("", result);
}

TEST(BoundedWork, ChangesNothingHere) {
    int changed = 0;
    std::string result;
    EXPECT_EQ(WorkEnd::done, workApart([&] { return changed = 1, std::string("done"); }, {}, result));
    EXPECT_EQ(0, changed);
}

TEST(BoundedWork, OutlivesACrash) {
    std::string result;
    EXPECT_EQ(WorkEnd::crashed, workApart([]() -> std::string { abort(); }, {}, result));
    EXPECT_EQ(WorkEnd::crashed, workApart([]() -> std::string { _exit(0); }, {}, result));
    EXPECT_EQ(WorkEnd::crashed,
              workApart([]() -> std::string { throw std::runtime_error("x"); }, {}, result));
}

/// A copy made while another thread holds a lock would wait for it for ever.
TEST(BoundedWork, BeginsWhileNoOtherThreadWorks) {
    std::mutex lock;
    std::promise<void> held;
    std::promise<void> over;
    std::thread other([&] {
        std::unique_lock holding(lock);
        held.set_value();
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
        while (std::chrono::steady_clock::now() < end) {
        }
        holding.unlock();
        over.get_future().wait();
    });
    held.get_future().wait();
    std::string result;
    const auto work = [&] {
        const std::lock_guard holding(lock);
        return std::string("had it");
    };
    EXPECT_EQ(WorkEnd::done, workApart(work, {}, result));
    EXPECT_EQ("had it", result);
    over.set_value();
    other.join();
}

/// A thread that gets no processor, or that a disk keeps, is amid its work as well, however long that takes.
TEST(BoundedWork, WaitsForAnotherThreadThatIsKeptFromItsWork) {
    std::mutex lock;
    std::promise<void> held;
    std::promise<void> over;
    std::thread other([&] {
        std::unique_lock holding(lock);
        held.set_value();
        // The system keeps this thread, which is not the same as resting, until the new process ends.
        const pid_t process = vfork();  // NOLINT(clang-analyzer-security.insecureAPI.vfork)
        if (process == 0) {
            constexpr timespec threeSeconds{3, 0};
            nanosleep(&threeSeconds, nullptr);
            _exit(0);
        }
        holding.unlock();
        waitpid(process, nullptr, 0);
        over.get_future().wait();
    });
    held.get_future().wait();
    std::string result;
    const auto work = [&] { return std::string(lock.try_lock() ? "free" : "held"); };
    EXPECT_EQ(WorkEnd::done, workApart(work, {}, result));
    EXPECT_EQ("free", result);
    over.set_value();
    other.join();
}

/// The program that loaded us may calculate all the time.
TEST(BoundedWork, DoesNotWaitAgainForWhatNeverRests) {
    std::atomic<bool> isOver = false;
    std::thread other([&] {
        while (!isOver) {
        }
    });
    std::string result;
    const double taken = vexa::processorSeconds([&] {
        for (int i = 0; i < 50; ++i) {
            EXPECT_EQ(WorkEnd::done, workApart([] { return std::string("done"); }, {}, result));
        }
    });
    EXPECT_LT(taken, 30) << "by the other thread; else it would be two seconds for each";
    isOver = true;
    other.join();
}

TEST(BoundedWork, EndsWhatWorksForTooLong) {
    std::string result;
    WorkLimits limits;
    limits.seconds = 1;
    EXPECT_EQ(WorkEnd::tooLong, workApart(
                                    []() -> std::string {
                                        for (std::atomic<unsigned> count = 0;; ++count) {
                                        }
                                    },
                                    limits, result));
}

// What takes long only because much else is going on is not lost, but nothing is waited for without an end.
TEST(BoundedWork, LeavesTimeToWait) {
    std::string result;
    WorkLimits limits;
    limits.seconds = 1;
    WorkApart endless(
        []() -> std::string {
            for (;;) pause();
        },
        limits);
    limits.patience = 120;
    WorkApart slow(
        [] {
            constexpr useconds_t longer = 1'500'000;
            usleep(longer);
            return std::string("done");
        },
        limits);
    EXPECT_EQ(WorkEnd::done, slow.finish(result));
    EXPECT_EQ("done", result);
    EXPECT_EQ(WorkEnd::tooLong, endless.finish(result));
}

TEST(BoundedWork, EndsResultsThatAreTooLong) {
    std::string result;
    WorkLimits limits;
    limits.resultBytes = 1000;
    EXPECT_EQ(WorkEnd::crashed, workApart([] { return std::string(10'000'000, 'x'); }, limits, result));
}

/// Bytes between this process and its works.
class Pipe {
  public:
    Pipe() { EXPECT_EQ(0, pipe(ends_.data())); }
    ~Pipe() {
        close(ends_[0]);
        closeEnd();
    }
    [[nodiscard]] char take() const {
        char byte = 0;
        EXPECT_EQ(1, read(ends_[0], &byte, 1));
        return byte;
    }
    void put(char byte) const { EXPECT_EQ(1, write(ends_[1], &byte, 1)); }
    /// Nothing is put in here any more, only by copies of this process.
    void closeEnd() { close(std::exchange(ends_[1], -1)); }
    /// Whether the last copy that could put something in is gone, before long.
    [[nodiscard]] bool isClosed() const {
        constexpr int milliseconds = 120'000;
        pollfd waiting{ends_[0], POLLIN, 0};
        char byte = 0;
        return poll(&waiting, 1, milliseconds) == 1 && read(ends_[0], &byte, 1) == 0;
    }

  private:
    std::array<int, 2> ends_{};
};

TEST(BoundedWork, GoesOnBesideOtherWork) {
    const Pipe pipe;
    WorkApart waiting([&] { return std::string(1, pipe.take()); }, {});
    WorkApart giving([&] { return pipe.put('x'), std::string("given"); }, {});
    std::string result;
    EXPECT_EQ(WorkEnd::done, waiting.finish(result));
    EXPECT_EQ("x", result);
    EXPECT_EQ(WorkEnd::done, giving.finish(result));
    EXPECT_EQ("given", result);
}

/// Says how it went when it had so many bytes.
std::string workWith(std::size_t bytes) {
    try {
        return "+" + std::to_string(std::string(bytes, 'x').size());
    } catch (const std::bad_alloc&) {
        return "-no memory";
    }
}

TEST(BoundedWork, IsDoneAloneWhereTheMemoryBesideOthersDoesNotDo) {
    constexpr std::size_t much = 100'000'000;
    WorkLimits limits;
    limits.besideOthers = std::uint64_t{16} << 20U;
    WorkApart first([] { return workWith(much); }, limits);
    WorkApart second([] { return workWith(1'000); }, limits);
    WorkApart third([] { return workWith(much); }, limits);
    std::string result;
    EXPECT_EQ(WorkEnd::done, finishWell(first, result));
    EXPECT_EQ("+100000000", result);
    // What was given up for it begins again.
    EXPECT_EQ(WorkEnd::done, finishWell(second, result));
    EXPECT_EQ("+1000", result);
    EXPECT_EQ(WorkEnd::done, finishWell(third, result));
    EXPECT_EQ("+100000000", result);
}

TEST(BoundedWork, FailsOnceMoreWhereAllMemoryDoesNotDo) {
    WorkLimits limits;
    limits.besideOthers = std::uint64_t{16} << 20U;
    WorkApart crashing([]() -> std::string { abort(); }, limits);
    WorkApart failing([] { return std::string("-broken"); }, limits);
    std::string result;
    EXPECT_EQ(WorkEnd::crashed, finishWell(crashing, result));
    EXPECT_EQ(WorkEnd::done, finishWell(failing, result));
    EXPECT_EQ("-broken", result);
}

TEST(BoundedWork, BeginsAloneWhenItIsWaitedFor) {
    const Pipe pipe;
    WorkLimits limits;
    limits.beginsAlone = true;
    WorkApart heavy([&] { return std::string("+") + pipe.take(); }, limits);
    pipe.put('x');
    EXPECT_EQ('x', pipe.take());  // nobody else has taken it
    pipe.put('y');
    std::string result;
    EXPECT_EQ(WorkEnd::done, finishWell(heavy, result));
    EXPECT_EQ("+y", result);
}

TEST(BoundedWork, LongResultsWaitUntilTheyAreTaken) {
    const std::string long_(3'000'000, 'x');
    WorkApart one([&] { return long_; }, {});
    WorkApart other([&] { return long_ + "y"; }, {});
    std::string result;
    EXPECT_EQ(WorkEnd::done, other.finish(result));
    EXPECT_EQ(long_ + "y", result);
    EXPECT_EQ(WorkEnd::done, one.finish(result));
    EXPECT_EQ(long_, result);
}

TEST(BoundedWork, ThatNobodyWaitsForEnds) {
    const Pipe pipe;
    {
        const WorkApart work(
            [&]() -> std::string {
                pipe.put('b');
                for (;;) pause();
            },
            {});
        EXPECT_EQ('b', pipe.take());
    }
    // It would be there still, ended or not, if nobody had waited for its end.
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    EXPECT_EQ(ECHILD, errno);
}

TEST(BoundedWork, EndsWithTheProgram) {
    Pipe pipe;
    const pid_t program = fork();
    if (program == 0) {
        const WorkApart work(
            [&]() -> std::string {
                pipe.put('b');
                for (;;) pause();
            },
            {});
        for (;;) pause();
    }
    pipe.closeEnd();
    EXPECT_EQ('b', pipe.take());
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    EXPECT_TRUE(pipe.isClosed());
}

}  // namespace
