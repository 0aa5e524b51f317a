#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "backend/platform/file_system.h"
#include "backend/platform/terminal.h"

namespace vexa {

namespace {

constexpr std::array<int, 4> kWatchedSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// What the handler gives back: the terminal as it was, then what the signal did before.
termios terminalBefore{};
std::array<struct sigaction, kWatchedSignals.size()> actionsBefore{};

extern "C" void giveTerminalBack(int signal) {
    tcsetattr(STDIN_FILENO, TCSANOW, &terminalBefore);
    for (std::size_t i = 0; i < kWatchedSignals.size(); ++i) {
        if (kWatchedSignals[i] == signal) sigaction(signal, &actionsBefore[i], nullptr);
    }
    raise(signal);
}

/// Keeps the terminal from showing what is typed for as long as the object lives. A signal that ends the
/// program meanwhile gives the terminal back first. One that does not end it, such as an interrupt that
/// somebody else handles, waits, so that nothing is typed in sight.
class EchoOff {
  public:
    EchoOff() {
        sigset_t held;
        sigemptyset(&held);
        sigaddset(&held, SIGTSTP);
        for (std::size_t i = 0; i < kWatchedSignals.size(); ++i) {
            sigaction(kWatchedSignals[i], nullptr, &actionsBefore[i]);
            if (waits(i)) sigaddset(&held, kWatchedSignals[i]);
        }
        sigprocmask(SIG_BLOCK, &held, &signalsBefore_);
        works_ = tcgetattr(STDIN_FILENO, &terminalBefore) == 0;
        if (!works_) return;
        handleEnds();
        termios silent = terminalBefore;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        works_ = tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) == 0;
    }
    ~EchoOff() {
        if (works_) {
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &terminalBefore);
        }
        for (std::size_t i = 0; i < kWatchedSignals.size(); ++i) {
            sigaction(kWatchedSignals[i], &actionsBefore[i], nullptr);
        }
        sigprocmask(SIG_SETMASK, &signalsBefore_, nullptr);
    }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

    [[nodiscard]] bool works() const { return works_; }

  private:
    /// Whether this signal is an interrupt that does not end the program.
    static bool waits(std::size_t i) {
        return kWatchedSignals[i] == SIGINT && actionsBefore[i].sa_handler != SIG_DFL;
    }
    static void handleEnds() {
        struct sigaction action {};
        action.sa_handler = &giveTerminalBack;
        sigfillset(&action.sa_mask);
        for (std::size_t i = 0; i < kWatchedSignals.size(); ++i) {
            const bool isIgnored = actionsBefore[i].sa_handler == SIG_IGN;
            if (!waits(i) && !isIgnored) sigaction(kWatchedSignals[i], &action, nullptr);
        }
    }

    sigset_t signalsBefore_{};
    bool works_ = false;
};

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

bool isTerminal(StandardStream stream) { return isatty(static_cast<int>(stream)) == 1; }

std::size_t terminalColumns(StandardStream stream) {
    winsize size{};
    const bool known = isTerminal(stream) && ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0;
    return known ? size.ws_col : 0;
}

bool showsColors(StandardStream stream) {
    return isTerminal(stream) && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
}

bool isStreamAt(StandardStream stream, const std::string& path) {
    struct stat here {};
    struct stat there {};
    return fstat(static_cast<int>(stream), &here) == 0 && stat(toNativePath(path).c_str(), &there) == 0 &&
           here.st_dev == there.st_dev && here.st_ino == there.st_ino;
}

std::optional<std::string> readTerminalLine() {
    std::string line;
    return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

std::optional<std::string> readSecretLine(const std::string& prompt) {
    const EchoOff silence;
    if (!silence.works()) {
        return std::nullopt;
    }
    std::cerr << prompt << std::flush;
    std::optional<std::string> line = readTerminalLine();
    std::cerr << '\n' << std::flush;
    return line;
}

}  // namespace vexa
