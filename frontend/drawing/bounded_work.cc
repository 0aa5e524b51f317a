#include "frontend/drawing/bounded_work.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string_view>

namespace vexa::frontend {

namespace {

using Clock = std::chrono::steady_clock;

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

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

[[noreturn]] void workAndEnd(const std::function<std::string()>& work, const WorkLimits& limits, int file) {
    // The program's own handlers are about the program's own files.
    for (const int each : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) std::signal(each, SIG_DFL);
    const int nowhere = open("/dev/null", O_WRONLY);
    if (nowhere >= 0) dup2(nowhere, STDERR_FILENO);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, limits.seconds + 1);
    limit(RLIMIT_DATA, ownData() + limits.memory);
    bool whole = false;
    try {
        // The last byte says that all of it came.
        whole = writeAll(file, work() + '.');
    } catch (...) {
        whole = false;
    }
    _exit(whole ? 0 : 1);
}

/// Reads up to the end of the pipe; false when that takes too long, or there is too much.
bool readAll(int file, const WorkLimits& limits, std::string& result) {
    const Clock::time_point end = Clock::now() + std::chrono::seconds(limits.seconds);
    std::string buffer(1U << 16U, '\0');
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0 || result.size() > limits.resultBytes) return false;
        pollfd waiting{file, POLLIN, 0};
        const int ready = poll(&waiting, 1, static_cast<int>(left));
        if (ready < 0 && errno != EINTR) return false;
        if (ready <= 0) continue;
        const ssize_t length = read(file, buffer.data(), buffer.size());
        if (length < 0 && errno == EINTR) continue;
        if (length <= 0) return length == 0;
        result.append(buffer.data(), static_cast<std::size_t>(length));
    }
}

}  // namespace

WorkEnd workApart(const std::function<std::string()>& work, const WorkLimits& limits, std::string& result) {
    result.clear();
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return WorkEnd::noProcess;
    const pid_t process = fork();
    if (process == 0) workAndEnd(work, limits, ends[1]);
    close(ends[1]);
    if (process < 0) {
        close(ends[0]);
        return WorkEnd::noProcess;
    }
    const bool inTime = readAll(ends[0], limits, result);
    close(ends[0]);
    if (!inTime) kill(process, SIGKILL);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    if (!inTime) return WorkEnd::tooLong;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || result.empty()) {
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU ? WorkEnd::tooLong : WorkEnd::crashed;
    }
    result.pop_back();
    return WorkEnd::done;
}

}  // namespace vexa::frontend
