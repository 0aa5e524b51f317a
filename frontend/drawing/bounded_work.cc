#include "frontend/drawing/bounded_work.h"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <ctime>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexa::frontend {

namespace {

using Clock = std::chrono::steady_clock;

/// Bytes of a pipe: the most that systems give to everybody.
constexpr int waitingBytes = 1 << 20;

void limit(int resource, rlim_t value) {
    rlimit limits{};
    if (getrlimit(static_cast<__rlimit_resource>(resource), &limits) != 0) return;
    limits.rlim_cur = std::min(value, limits.rlim_max);
    setrlimit(static_cast<__rlimit_resource>(resource), &limits);
}

/// Bytes of data that the process has; a checked build's shadows count among them.
std::uint64_t ownData() {
    std::array<char, 256> text{};
    const int file = open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file < 0) return 0;
    const ssize_t length = read(file, text.data(), text.size() - 1);
    close(file);
    std::uint64_t pages = 0;
    std::uint64_t number = 0;
    int field = 0;
    for (ssize_t i = 0; i < length; ++i) {
        const char each = text[static_cast<std::size_t>(i)];
        if (each >= '0' && each <= '9') {
            number = number * 10 + static_cast<std::uint64_t>(each - '0');
        } else {
            if (field++ == 5) pages = number;
            number = 0;
        }
    }
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

/// Whether a thread of this process waits for something, or is over; true where that is not known.
bool isAtRest(const char* thread) {
    std::array<char, 256> text{};
    const std::string path = std::string("/proc/self/task/") + thread + "/stat";
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return true;
    const ssize_t length = read(file, text.data(), text.size());
    close(file);
    // The state stands behind the name, which stands in parentheses and may hold some itself.
    const std::string_view line(text.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    const std::size_t name = line.rfind(')');
    return name == std::string_view::npos || name + 2 >= line.size() || line[name + 2] == 'S' ||
           line[name + 2] == 'Z';
}

struct FolderEnd {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool areOthersAtRest() {
    const std::string own = std::to_string(gettid());
    const std::unique_ptr<DIR, FolderEnd> threads(opendir("/proc/self/task"));
    if (threads == nullptr) return true;
    for (const dirent* each = readdir(threads.get()); each != nullptr; each = readdir(threads.get())) {
        if (each->d_name[0] != '.' && each->d_name != own && !isAtRest(each->d_name)) return false;
    }
    return true;
}

/// What a processor has worked for this process.
std::chrono::nanoseconds processorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// Libraries let threads look for fonts. A copy of the process has no such threads, but the locks that they
/// held, for which it would wait in vain: it is made while they have nothing to do. What works for longer
/// than two seconds is somebody else's, a calculation of the program that loaded us perhaps, and no later
/// copy waits for it as long. Only what the processor works counts: on a busy machine, or one whose disk is
/// slow, the same takes much longer.
void waitForOtherThreads() {
    static std::chrono::milliseconds most(2'000);
    static std::chrono::milliseconds mostWithoutWork(60'000);
    constexpr std::chrono::milliseconds mostBesideLongWork(20);
    constexpr timespec moment{0, 1'000'000};
    const Clock::time_point begin = Clock::now();
    const std::chrono::nanoseconds worked = processorTime();
    while (!areOthersAtRest()) {
        if (processorTime() - worked > most || Clock::now() - begin > mostWithoutWork) {
            most = mostBesideLongWork;
            mostWithoutWork = std::chrono::milliseconds(1'000);
            return;
        }
        nanosleep(&moment, nullptr);
    }
}

/// Bytes of data that a process may have which does the work.
std::uint64_t dataLimit(const WorkLimits& limits, bool isAlone) {
    constexpr std::uint64_t enough = std::uint64_t{128} << 20;
    constexpr std::uint64_t shadows = std::uint64_t{64} << 30;  // only a checked build has so much
    const std::uint64_t own = ownData();
    if (own > shadows) return own + limits.memory;
    if (!isAlone && limits.besideOthers != UINT64_MAX) return own + limits.besideOthers;
    return std::min(own + limits.memory, std::max(limits.wholeMemory, own + enough));
}

/// All work of the process that is not finished or given up.
std::vector<WorkApart*>& goingOn() {
    static std::vector<WorkApart*> all;
    return all;
}

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// A copy whose parent is gone works for nobody.
void endWith(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);
}

/// The status with which a process ended.
int waitFor(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

[[noreturn]] void workAndEnd(const std::function<std::string()>& work, const WorkLimits& limits,
                             std::uint64_t data, const sigset_t& signals, int file) {
    // What ends the program ends the copy as well, and what does not is no reason to lose a picture.
    for (const int each : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) std::signal(each, SIG_IGN);
    for (const int each : {SIGPIPE, SIGXCPU}) std::signal(each, SIG_DFL);
    pthread_sigmask(SIG_SETMASK, &signals, nullptr);
    const int nowhere = open("/dev/null", O_WRONLY);
    if (nowhere >= 0) dup2(nowhere, STDERR_FILENO);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, limits.seconds);
    limit(RLIMIT_DATA, data);
    bool whole = false;
    try {
        // The last byte says that all of it came.
        whole = writeAll(file, work() + '.');
    } catch (...) {
        whole = false;
    }
    _exit(whole ? 0 : 1);
}

/// Reads up to the end of the pipe, unless that takes too long, or there is too much.
WorkEnd readAll(int file, const WorkLimits& limits, std::string& result) {
    constexpr std::uint64_t usualBytes = std::uint64_t{128} << 20;
    // What grows step by step takes twice as much meanwhile.
    if (limits.resultBytes < usualBytes) result.reserve(limits.resultBytes);
    const Clock::time_point end = Clock::now() + limits.patience * std::chrono::seconds(limits.seconds);
    std::string buffer(1U << 16U, '\0');
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0) return WorkEnd::tooLong;
        if (result.size() > limits.resultBytes) return WorkEnd::crashed;
        pollfd waiting{file, POLLIN, 0};
        const int ready = poll(&waiting, 1, static_cast<int>(left));
        if (ready < 0 && errno != EINTR) return WorkEnd::crashed;
        if (ready <= 0) continue;
        const ssize_t length = read(file, buffer.data(), buffer.size());
        if (length < 0 && errno == EINTR) continue;
        if (length <= 0) return length == 0 ? WorkEnd::done : WorkEnd::crashed;
        result.append(buffer.data(), static_cast<std::size_t>(length));
    }
}

}  // namespace

WorkApart::WorkApart(std::function<std::string()> work, const WorkLimits& limits)
    : work_(std::move(work)), limits_(limits) {
    goingOn().push_back(this);
    if (!limits_.beginsAlone) begin();
}

WorkApart::~WorkApart() {
    giveUp();
    std::erase(goingOn(), this);
}

void WorkApart::giveUp() {
    closePipe();
    if (process_ == 0) return;
    kill(process_, SIGKILL);
    waitFor(process_);
    process_ = 0;
}

void WorkApart::closePipe() {
    if (pipe_ >= 0) close(pipe_);
    pipe_ = -1;
}

void WorkApart::begin() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
    // So that most results wait there, and what made them ends; less is no harm.
    fcntl(ends[1], F_SETPIPE_SZ, waitingBytes);
    const pid_t parent = getpid();
    waitForOtherThreads();
    // None is handled by the copy as if it were the program.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t process = fork();
    if (process == 0) {
        endWith(parent);
        workAndEnd(work_, limits_, dataLimit(limits_, isAlone_), before, ends[1]);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    close(ends[1]);
    pipe_ = ends[0];
    process_ = std::max(process, 0);
    if (process_ == 0) closePipe();
}

WorkEnd WorkApart::finish(std::string& result) {
    if (limits_.beginsAlone) return finishAlone(result);
    if (process_ == 0) begin();
    return wait(result);
}

WorkEnd WorkApart::finishAlone(std::string& result) {
    for (WorkApart* const each : goingOn()) each->giveUp();
    isAlone_ = true;
    begin();
    return wait(result);
}

WorkEnd WorkApart::wait(std::string& result) {
    result.clear();
    if (process_ == 0) return WorkEnd::noProcess;
    const WorkEnd end = readAll(pipe_, limits_, result);
    closePipe();
    const pid_t process = std::exchange(process_, 0);
    if (end != WorkEnd::done) kill(process, SIGKILL);
    const int status = waitFor(process);
    if (end != WorkEnd::done) return end;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || result.empty()) {
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU ? WorkEnd::tooLong : WorkEnd::crashed;
    }
    result.pop_back();
    return WorkEnd::done;
}

WorkEnd finishWell(WorkApart& work, std::string& result) {
    const WorkEnd end = work.finish(result);
    const bool isWell = end == WorkEnd::tooLong || (end == WorkEnd::done && result.starts_with('+'));
    return isWell || !work.hadLess() ? end : work.finishAlone(result);
}

WorkEnd workApart(const std::function<std::string()>& work, const WorkLimits& limits, std::string& result) {
    return WorkApart(work, limits).finish(result);
}

}  // namespace vexa::frontend
