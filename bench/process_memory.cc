#include "bench/process_memory.h"

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>

namespace vexa::bench {

namespace {

constexpr const char* kAlone = "--alone";
constexpr const char* kProgram = "program";

std::map<std::string, LoneWork>& loneWorks() {
    static std::map<std::string, LoneWork> works;
    return works;
}

/// A line of this process's status, such as "VmHWM", in bytes.
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

std::size_t measure(const LoneWork& lone, const Arguments& arguments) {
    lone.prepare(arguments);
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5" << std::flush;  // the peak begins anew
    const std::size_t before = readStatus("VmRSS");
    lone.work(arguments);
    const std::size_t peak = readStatus("VmHWM");
    return peak > before ? peak - before : 0;
}

double nanoseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_usec) * 1e3;
}

/// Runs a program to its end; false when it could not be run or failed.
bool run(const Arguments& command, const std::string& folder, rusage& usage) {
    const pid_t child = fork();
    if (child == 0) {
        std::vector<std::string> texts = command;
        std::vector<char*> arguments;
        for (std::string& each : texts) {
            arguments.push_back(each.data());
        }
        arguments.push_back(nullptr);
        if (chdir(folder.c_str()) == 0) {
            execvp(arguments[0], arguments.data());
        }
        _exit(127);
    }
    int status = 0;
    return child > 0 && wait4(child, &status, 0, &usage) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

/// What a fresh process of this program prints for these arguments.
std::size_t askFreshProcess(const Arguments& arguments) {
    std::string command = "exec /proc/" + std::to_string(getpid()) + "/exe " + kAlone;
    for (const std::string& each : arguments) {
        command += " '" + each + "'";
    }
    FILE* const answer = popen(command.c_str(), "r");
    std::size_t bytes = 0;
    if (answer == nullptr) {
        return 0;
    }
    const bool read = std::fscanf(answer, "%zu", &bytes) == 1;
    return pclose(answer) == 0 && read ? bytes : 0;
}

}  // namespace

void registerLoneWork(const std::string& name, LoneWork work) { loneWorks()[name] = std::move(work); }

std::size_t peakMemoryOf(const std::string& name, const Arguments& arguments) {
    Arguments all{name};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return askFreshProcess(all);
}

std::size_t peakMemoryOfProgram(const Arguments& command, const std::string& folder) {
    Arguments all{kProgram, folder};
    all.insert(all.end(), command.begin(), command.end());
    return askFreshProcess(all);
}

bool runAlone(int argc, char** argv) {
    if (argc < 3 || std::string(argv[1]) != kAlone) {
        return false;
    }
    const Arguments arguments(argv + 3, argv + argc);
    std::size_t bytes = 0;
    if (std::string(argv[2]) == kProgram) {
        rusage usage{};
        const bool ok = run(Arguments(arguments.begin() + 1, arguments.end()), arguments[0], usage);
        bytes = ok ? static_cast<std::size_t>(usage.ru_maxrss) * 1024 : 0;
    } else {
        bytes = measure(loneWorks().at(argv[2]), arguments);
    }
    std::printf("%zu\n", bytes);
    return true;
}

double timeOfProgram(const Arguments& command, const std::string& folder) {
    rusage usage{};
    return run(command, folder, usage) ? nanoseconds(usage.ru_utime) + nanoseconds(usage.ru_stime) : -1;
}

}  // namespace vexa::bench
