#include "bench/process_memory.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

namespace vexa::bench {

namespace {

/// A line of the process's status, such as "VmHWM", in bytes.
std::size_t readStatus(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key + ":")) {
            std::size_t kibibytes = 0;
            std::istringstream(line.substr(key.size() + 1)) >> kibibytes;
            return kibibytes * 1024;
        }
    }
    return 0;
}

std::size_t measure(const std::function<void()>& prepare, const std::function<void()>& work) {
    prepare();
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak begins anew
    const std::size_t before = readStatus("VmRSS");
    work();
    const std::size_t peak = readStatus("VmHWM");
    return peak > before ? peak - before : 0;
}

double nanoseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_usec) * 1e3;
}

}  // namespace

std::size_t peakMemoryOf(const std::function<void()>& prepare, const std::function<void()>& work) {
    int ends[2];
    if (pipe(ends) != 0) {
        return 0;
    }
    const pid_t child = fork();
    if (child == 0) {
        const std::size_t peak = measure(prepare, work);
        const bool written = write(ends[1], &peak, sizeof peak) == sizeof peak;
        _exit(written ? 0 : 1);
    }
    close(ends[1]);
    std::size_t peak = 0;
    const bool received = read(ends[0], &peak, sizeof peak) == sizeof peak;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return received ? peak : 0;
}

ProgramCost runProgram(const std::vector<std::string>& command, const std::string& folder) {
    const pid_t child = fork();
    if (child == 0) {
        std::vector<char*> arguments;
        for (const std::string& each : command) {
            arguments.push_back(const_cast<char*>(each.c_str()));
        }
        arguments.push_back(nullptr);
        if (chdir(folder.c_str()) == 0) {
            execvp(arguments[0], arguments.data());
        }
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    ProgramCost cost;
    if (child > 0 && wait4(child, &status, 0, &usage) == child) {
        cost.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        cost.nanoseconds = nanoseconds(usage.ru_utime) + nanoseconds(usage.ru_stime);
        cost.peakMemory = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
    }
    return cost;
}

}  // namespace vexa::bench
